// The lock of the scene: while it is closed, nothing goes on air by a slip of the hand.

import * as api from "./api.js";
import { isLocked, scene, take } from "./scene.js";
import { brokenAt, error } from "./session.js";

function turn(): void {
  take(api.lock(!isLocked.peek())).catch((fault: unknown) => (error.value = api.sentenceOf(fault)));
}

/** Its word and its shape tell the state; a press changes it. */
export function Lock() {
  if (scene.value === null) return null;
  const isClosed = isLocked.value;
  return (
    <button
      class={`small lock ${isClosed ? "closed" : ""}`}
      aria-pressed={isClosed}
      disabled={brokenAt.value !== 0}
      onClick={turn}
    >
      <svg viewBox="0 0 16 16" aria-hidden="true">
        <path d={isClosed ? "M5 7V5a3 3 0 0 1 6 0v2" : "M5 7V4a3 3 0 0 1 6-1"} />
        <rect x="3" y="7" width="10" height="7" rx="1.5" />
      </svg>
      {isClosed ? "Locked" : "Unlocked"}
    </button>
  );
}

export function LockWords() {
  if (!isLocked.value) return null;
  return (
    <p class="locked">
      <strong>Locked.</strong> Automatic loads go on. Edits stay drafts. Load to store and Save need a hold of
      one second. Instances cannot be added, renamed or deleted.
    </p>
  );
}
