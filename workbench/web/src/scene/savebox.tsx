// Saves the scene. What that would change in the file is shown first.

import { useEffect, useRef, useState } from "preact/hooks";
import { HoldButton } from "../hold.js";
import { scene } from "../scene.js";
import { brokenAt } from "../session.js";
import type { Scene } from "../shapes.js";
import { Difference } from "./difference.js";
import { difference, notice, other, save, wishFor, withoutSecrets } from "./files.js";

const pause = 300; // milliseconds without a key, until what is typed is compared

/** A name without an ending gets that of scenes. */
const ended = (name: string): string => (name === "" || name.endsWith(".json") ? name : `${name}.scene.json`);

function Target() {
  const own = scene.value?.file ?? "";
  const [typed, setTyped] = useState<string | null>(null); // while it is typed
  const timer = useRef<ReturnType<typeof setTimeout>>();
  const compare = (typed: string): void => {
    clearTimeout(timer.current);
    other.value = ended(typed.trim());
  };
  useEffect(() => () => clearTimeout(timer.current), []);
  return (
    <label class="line">
      <span>File</span>
      <input
        type="text"
        name="file"
        spellcheck={false}
        placeholder={own === "" ? "show.scene.json" : own}
        value={typed ?? other.value}
        onInput={({ currentTarget }) => {
          setTyped(currentTarget.value);
          clearTimeout(timer.current);
          timer.current = setTimeout(() => compare(currentTarget.value), pause);
        }}
        onChange={(event) => {
          setTyped(null);
          compare(event.currentTarget.value);
        }}
      />
    </label>
  );
}

function Secrets() {
  return (
    <label class="check">
      <input
        type="checkbox"
        checked={withoutSecrets.value}
        onChange={(event) => (withoutSecrets.value = event.currentTarget.checked)}
      />
      Leave passwords and other secrets out
    </label>
  );
}

const ownWords: Record<Scene["onDisk"], string> = {
  same: "The file on disk is as it was opened or saved.",
  none: "The scene has no file yet.",
  changed:
    "The file has been changed on disk since it was opened. The difference above is against what it says now: " +
    "a save overwrites it, and opening it again takes it over.",
  missing: "The file is not there any more. A save writes it anew.",
};

function wordsOf({ onDisk }: Scene): string {
  if (other.value === "") return ownWords[onDisk];
  if (onDisk === "missing") return `${other.value} is not there yet.`;
  return `${other.value} is there already; the difference above is against it.`;
}

/** How the file is that a save writes. It has its place whatever there is to say: what is below does not move. */
function OnDisk({ shown }: { shown: Scene | null }) {
  const isUsual = shown === null || shown.onDisk === "same" || shown.onDisk === "none";
  return (
    <p class={`on-disk ${isUsual ? "quiet" : "told"}`} role="status" tabIndex={0}>
      {shown === null ? "" : wordsOf(shown)}
    </p>
  );
}

export function SaveBox() {
  const shown = difference();
  const wish = shown === null ? null : wishFor(shown);
  const hasFile = other.value !== "" || scene.value?.file !== "";
  return (
    <section class="box save-box" aria-label="Save">
      <h2>Save</h2>
      <Difference shown={shown} />
      <OnDisk shown={shown} />
      <Target />
      <Secrets />
      <div class="line saves">
        <HoldButton
          label="Save"
          isOff={brokenAt.value !== 0 || wish === null || !hasFile}
          onPress={(held) => wish !== null && void save(wish, held)}
        />
        <p class="said" role="status">
          {notice.value}
        </p>
      </div>
    </section>
  );
}
