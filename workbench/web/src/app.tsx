// What is around each screen: the scene, the connection, and dark or light.

import { Announcements } from "./announcements.js";
import { Edit } from "./edit/edit.js";
import { edits } from "./route.js";
import { brokenAt, error, scene } from "./session.js";
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

function Head() {
  const other = theme.value === "dark" ? "Light" : "Dark";
  return (
    <header class="top">
      <span class="scene">{scene.value}</span>
      <button class="small" onClick={swapTheme}>
        {other}
      </button>
    </header>
  );
}

export function App() {
  const name = edits.value;
  return (
    <>
      <Head />
      <Broken />
      {name === null ? <Wall /> : <Edit key={name} name={name} />}
      <Announcements />
    </>
  );
}
