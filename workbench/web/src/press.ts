// The button Load of an instance.

import * as api from "./api.js";
import { error } from "./session.js";

const pause = 500; // milliseconds
const pressed = new Set<string>();

/** A double press loads once. Under the lock only one that was held loads, and a draft only as it was
    shown: in that revision. */
export function press(name: string, held: boolean, revision: number): void {
  if (pressed.has(name)) return;
  pressed.add(name);
  setTimeout(() => pressed.delete(name), pause);
  api.load(name, held, revision).then(
    () => (error.value = ""),
    (fault: unknown) => (error.value = api.sentenceOf(fault)),
  );
}
