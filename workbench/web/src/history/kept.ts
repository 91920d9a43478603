// The last loads of an instance, read again when one has come.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { loadsOf } from "../loads.js";
import type { KeptLoad } from "../shapes.js";

const most = 500;
const pause = 1000; // milliseconds, so that a fast instance does not keep the page busy

export const kept = signal<KeptLoad[]>([]);
export const failure = signal("");

const shown = signal("");
let timer: ReturnType<typeof setTimeout> | undefined;

async function readAll(name: string): Promise<KeptLoad[]> {
  const all = new Map<number, KeptLoad>(); // loads that come meanwhile move the pages
  let isEnd = false;
  for (let from = 0; !isEnd && from < most; ) {
    const { loads, count } = await api.loadHistory(name, from);
    for (const load of loads) all.set(load.id, load);
    from += loads.length;
    isEnd = loads.length === 0 || from >= count;
  }
  return [...all.values()].sort((one, other) => other.id - one.id);
}

let asked = 0;

/** Of answers that overtake each other the last one counts. */
async function read(name: string): Promise<void> {
  const mine = ++asked;
  try {
    const loads = await readAll(name);
    if (shown.peek() !== name || mine !== asked) return;
    kept.value = loads;
    failure.value = "";
  } catch (fault) {
    if (shown.peek() === name) failure.value = api.sentenceOf(fault);
  }
}

/** Reads as long as it is shown; gives what ends that. */
export function show(name: string): () => void {
  shown.value = name;
  kept.value = [];
  failure.value = "";
  void read(name);
  return () => (shown.value = "");
}

function readSoon(name: string): void {
  timer ??= setTimeout(() => {
    timer = undefined;
    if (shown.peek() === name) void read(name);
  }, pause);
}

/** The server knows now why a load of it was bad. */
export function noteLadder(name: string): void {
  if (shown.peek() === name) readSoon(name);
}

effect(() => {
  const name = shown.value;
  const latest = loadsOf.value.get(name)?.at(-1);
  if (name !== "" && latest !== undefined && latest.time !== kept.peek()[0]?.time) readSoon(name);
});
