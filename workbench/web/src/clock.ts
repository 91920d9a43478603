// The time as texts on the page tell it, in milliseconds.

import { signal } from "@preact/signals";

const period = 250; // milliseconds

/** Set also with what has come from the server, since all of it is drawn then. */
export const clock = signal(Date.now());

setInterval(() => {
  const now = Date.now();
  if (now - clock.peek() >= period) clock.value = now;
}, period / 2);
