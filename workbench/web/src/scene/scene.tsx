// The scene as a file: its instances, what has been changed, and other scenes.

import { scene } from "../scene.js";
import type { Scene } from "../shapes.js";
import { Instances } from "./instances.js";
import { OpenBox } from "./openbox.js";
import { SaveBox } from "./savebox.js";

const words: Record<Scene["onDisk"], string> = {
  same: "",
  none: "",
  changed:
    "The file has been changed on disk since it was opened. The difference below is against what it says now: " +
    "a save overwrites it, and opening it again takes it over.",
  missing: "The file is not there any more. A save writes it anew.",
};

function OnDisk({ state }: { state: Scene["onDisk"] }) {
  if (words[state] === "") return null;
  return (
    <p class="on-disk" role="alert">
      {words[state]}
    </p>
  );
}

export function SceneScreen() {
  return (
    <main class="scene-screen">
      <h1 class="unseen">Scene</h1>
      {scene.value !== null && <OnDisk state={scene.value.onDisk} />}
      {scene.value?.notes.map((note) => (
        <p key={note} class="on-disk">
          {note}
        </p>
      ))}
      <div class="boxes">
        <Instances />
        <SaveBox />
        <OpenBox />
      </div>
    </main>
  );
}
