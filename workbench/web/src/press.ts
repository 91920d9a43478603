// The button Load of an instance.

import * as api from "./api.js";
import { error } from "./session.js";

const pause = 500; // milliseconds
const pressed = new Set<string>();

/** A double press loads once. Under the lock only one that was held loads. */
export function press(name: string, held: boolean): void {
  if (pressed.has(name)) return;
  pressed.add(name);
  setTimeout(() => pressed.delete(name), pause);
  api.load(name, held).then(
    () => (error.value = ""),
    (fault: unknown) => (error.value = api.sentenceOf(fault)),
  );
}
