// The order of the rows: the worst first.

import { signal } from "@preact/signals";
import { seen, type Seen } from "../session.js";
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

/** The order while the pointer is on the wall: then nothing moves away below it. */
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

export function hold(): void {
  heldOrder.value ??= ordered().map((row) => row.name);
}

export function release(): void {
  heldOrder.value = null;
}
