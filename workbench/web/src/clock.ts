// The time as texts on the page tell it, in milliseconds.

import { signal } from "@preact/signals";

const period = 200; // milliseconds

export const clock = signal(Date.now());
setInterval(() => (clock.value = Date.now()), period);
