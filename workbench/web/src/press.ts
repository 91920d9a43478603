// The button Load of an instance.

import * as api from "./api.js";
import { error } from "./session.js";

const pause = 500; // milliseconds
const pressed = new Set<string>();

/** A double press loads once. */
export function press(name: string): void {
  if (pressed.has(name)) return;
  pressed.add(name);
  setTimeout(() => pressed.delete(name), pause);
  api.load(name).then(
    () => (error.value = ""),
    (fault: unknown) => (error.value = api.sentenceOf(fault)),
  );
}
