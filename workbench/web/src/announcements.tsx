// Tells those who listen to the page what has changed: not more often than can be listened to.

import { effect, signal } from "@preact/signals";
import { seen } from "./session.js";
import type { State } from "./shapes.js";

const pause = 2000; // milliseconds
const spoken = signal("");
const known = new Map<string, State>();
const news = new Map<string, State>();
let timer: ReturnType<typeof setTimeout> | undefined;

function speak(): void {
  timer = undefined;
  if (news.size === 0) return;
  spoken.value = [...news].map(([name, state]) => `${name}: ${state}`).join(", ");
  news.clear();
  timer = setTimeout(speak, pause);
}

/** Loading is no news, nor is what was so already when the page was opened. */
function listen(): void {
  for (const { name, state } of seen.value) {
    if (state === "loading" || known.get(name) === state) continue;
    if (known.has(name)) news.set(name, state);
    known.set(name, state);
  }
  if (news.size > 0) timer ??= setTimeout(speak, 0);
}

effect(listen);

export function Announcements() {
  return (
    <p class="unseen" aria-live="polite">
      {spoken.value}
    </p>
  );
}
