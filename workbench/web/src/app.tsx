// What is around each screen: the scene, the lock, the connection, and dark or light.

import { Announcements } from "./announcements.js";
import { Edit } from "./edit/edit.js";
import { History } from "./history/history.js";
import { Reports } from "./history/reports.js";
import { Lock, LockWords } from "./lock.js";
import { route } from "./route.js";
import { scene } from "./scene.js";
import { SceneScreen } from "./scene/scene.js";
import { brokenAt, error, fileName } from "./session.js";
import { swapTheme, theme } from "./theme.js";
import { Wall } from "./wall/wall.js";

function Broken() {
  if (brokenAt.value === 0 && error.value === "") return null;
  const since = new Date(brokenAt.value).toLocaleTimeString("en-GB");
  return (
    <p class="broken" role="alert">
      {brokenAt.value === 0 ? "" : `No connection since ${since}. `}
      {error.value}
    </p>
  );
}

const screens: [string, string, string][] = [
  ["wall", "#", "Wall"],
  ["scene", "#scene", "Scene"],
  ["reports", "#reports", "Reports"],
];

function Ways() {
  return (
    <nav aria-label="Screens">
      {screens.map(([screen, address, title]) => (
        <a key={screen} href={address} aria-current={route.value.screen === screen ? "page" : undefined}>
          {title}
        </a>
      ))}
    </nav>
  );
}

/** The file of the scene, and whether it is as the page shows it: that has its place also where it is. */
function FileName() {
  const now = scene.value;
  const isChanged = now !== null && !now.isSaved;
  return (
    <span class="scene">
      {now === null ? fileName.value : now.file === "" ? "a new scene" : now.file}
      <span class={isChanged ? "unsaved" : "unsaved none"}> not saved</span>
    </span>
  );
}

function Head() {
  const other = theme.value === "dark" ? "Light" : "Dark";
  return (
    <header class="top">
      <FileName />
      <Ways />
      <Lock />
      <button class="small" onClick={swapTheme}>
        {other}
      </button>
    </header>
  );
}

function Screen() {
  const { screen, of } = route.value;
  if (screen === "edit") return <Edit key={of} name={of} />;
  if (screen === "history") return <History key={of} name={of} />;
  if (screen === "reports") return <Reports />;
  return screen === "scene" ? <SceneScreen /> : <Wall />;
}

export function App() {
  return (
    <>
      <Head />
      <Broken />
      <LockWords />
      <Screen />
      <Announcements />
    </>
  );
}
