// The order of the rows: the worst first.

import { effect, signal } from "@preact/signals";
import { brokenAt, seen, type Seen } from "../session.js";
import type { State } from "../shapes.js";

const ranks: Record<State, number> = {
  failed: 0,
  late: 1,
  empty: 2,
  stale: 3,
  loading: 4,
  waiting: 5,
  loaded: 6,
};

/** What is on the wall: then nothing moves away below it. */
type Holder = "pointer" | "focus";

const holders = new Set<Holder>();
const heldOrder = signal<string[] | null>(null);

export function ordered(): Seen[] {
  const rows = [...seen.value];
  const held = heldOrder.value;
  if (held !== null) {
    const place = new Map(held.map((name, i) => [name, i]));
    const at = (row: Seen): number => place.get(row.name) ?? held.length;
    return rows.sort((a, b) => at(a) - at(b));
  }
  return rows.sort((a, b) => ranks[a.state] - ranks[b.state]);
}

export function hold(holder: Holder): void {
  holders.add(holder);
  heldOrder.value ??= ordered().map((row) => row.name);
}

export function release(holder: Holder): void {
  holders.delete(holder);
  if (holders.size === 0) heldOrder.value = null;
}

/** A wall that is gone hears of neither any more. */
export function releaseAll(): void {
  release("pointer");
  release("focus");
}

/** Buttons that are switched off lose the focus without a word. */
effect(() => {
  if (brokenAt.value !== 0) release("focus");
});
