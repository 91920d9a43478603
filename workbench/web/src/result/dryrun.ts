// What a load would do, tried out without doing it.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { details } from "../edit/settings.js";
import { servers } from "../session.js";
import type { DryRun } from "../shapes.js";

interface Dry {
  isRunning: boolean;
  answer: DryRun | null;
  error: string;
  revision: number; // of the settings that were tried
}

const none: Dry = { isRunning: false, answer: null, error: "", revision: 0 };

export const dry = signal<Dry>(none);

/** How many records the explorer has promised; nothing when it has promised none. */
export const promise = signal<number | null>(null);

let asked = 0;
let asking = new AbortController();

export function forgetDry(): void {
  ++asked;
  asking.abort();
  dry.value = none;
  promise.value = null;
}

/** A server that was started again has other settings and another store. */
effect(() => {
  if (servers.value > 1) forgetDry();
});

export async function runDry(name: string, allowWrites: boolean): Promise<void> {
  const mine = ++asked;
  asking.abort();
  asking = new AbortController();
  const revision = details.peek()?.revision ?? 0;
  dry.value = { ...dry.peek(), isRunning: true };
  try {
    const answer = await api.dryRun(name, allowWrites, asking.signal);
    if (mine === asked) dry.value = { isRunning: false, answer, error: "", revision };
  } catch (fault) {
    if (mine === asked) dry.value = { ...none, error: api.sentenceOf(fault), revision };
  }
}

/** Whether settings have been changed since. */
export function isOutdated(): boolean {
  return dry.value.answer !== null && dry.value.revision !== details.value?.revision;
}
