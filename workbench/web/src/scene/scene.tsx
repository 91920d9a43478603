// The scene as a file: its instances, what has been changed, and other scenes.

import { Instances } from "./instances.js";
import { OpenBox } from "./openbox.js";
import { SaveBox } from "./savebox.js";

export function SceneScreen() {
  return (
    <main class="scene-screen">
      <h1 class="unseen">Scene</h1>
      <div class="boxes">
        <Instances />
        <SaveBox />
        <OpenBox />
      </div>
    </main>
  );
}
