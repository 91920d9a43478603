// One row for each instance, the worst first.

import { signal } from "@preact/signals";
import * as api from "./api.js";
import { brokenAt, error, scene, seen, type Seen } from "./session.js";
import { duration, shortTime } from "./times.js";
import { explain, Why } from "./why.js";

const marks: Record<api.State, { shape: string; rank: number }> = {
  failed: { shape: "✕", rank: 0 },
  late: { shape: "◔", rank: 1 },
  empty: { shape: "○", rank: 2 },
  stale: { shape: "◇", rank: 3 },
  loading: { shape: "◐", rank: 4 },
  waiting: { shape: "–", rank: 5 },
  loaded: { shape: "●", rank: 6 },
};

const clock = signal(Date.now());
setInterval(() => (clock.value = Date.now()), 200);

/** The order while the pointer is on the wall: then nothing moves away below it. */
const heldOrder = signal<string[] | null>(null);

function ordered(): Seen[] {
  const rows = [...seen.value];
  const held = heldOrder.value;
  if (held !== null) {
    const place = new Map(held.map((name, i) => [name, i]));
    const at = (row: Seen): number => place.get(row.name) ?? held.length;
    return rows.sort((a, b) => at(a) - at(b));
  }
  return rows.sort((a, b) => marks[a.state].rank - marks[b.state].rank);
}

function hold(): void {
  heldOrder.value ??= ordered().map((row) => row.name);
}

function recordsText(row: Seen): string {
  if (row.records === null) return "";
  return row.before === null ? `${row.records}` : `${row.before} → ${row.records}`;
}

function Row({ row }: { row: Seen }) {
  const passed = (clock.value - row.at) / 1000;
  const isLive = brokenAt.value === 0;
  const next = row.next === null ? null : Math.max(0, row.next - passed);
  return (
    <tr class={row.state}>
      <td class="state">
        <span aria-hidden="true">{marks[row.state].shape}</span> {row.state}
      </td>
      <th scope="row">{row.name}</th>
      <td class="number">{recordsText(row)}</td>
      <td class="number">{row.leftOver > 0 ? row.leftOver : ""}</td>
      <td class="number">{row.age === null ? "" : shortTime(row.age + passed)}</td>
      <td class="number minor">{row.duration === null ? "" : duration(row.duration)}</td>
      <td class="number minor">{next === null ? "" : shortTime(next)}</td>
      <td class="words">{row.words}</td>
      <td class="actions">
        <button disabled={!isLive} onClick={() => explain(row.name)}>
          Why?
        </button>
        <button disabled={!isLive} onClick={() => press(row.name)}>
          Load
        </button>
      </td>
    </tr>
  );
}

const pressed = new Set<string>();

/** A double press loads once. */
function press(name: string): void {
  const pause = 500; // milliseconds
  if (pressed.has(name)) return;
  pressed.add(name);
  setTimeout(() => pressed.delete(name), pause);
  api.load(name).catch((fault: unknown) => {
    error.value = fault instanceof Error ? fault.message : String(fault);
  });
}

function Broken() {
  if (brokenAt.value === 0) return null;
  const since = new Date(brokenAt.value).toLocaleTimeString();
  return (
    <p class="broken" role="alert">
      No connection since {since}. {error.value}
    </p>
  );
}

export function Wall() {
  return (
    <main>
      <header>
        <h1>{scene.value}</h1>
        <Broken />
      </header>
      <table onPointerEnter={hold} onPointerLeave={() => (heldOrder.value = null)}>
        <thead>
          <tr>
            <th scope="col">state</th>
            <th scope="col">instance</th>
            <th scope="col" class="number">records</th>
            <th scope="col" class="number">left over</th>
            <th scope="col" class="number">age</th>
            <th scope="col" class="number minor">took</th>
            <th scope="col" class="number minor">next</th>
            <th scope="col">what is wrong</th>
            <th scope="col"><span class="unseen">action</span></th>
          </tr>
        </thead>
        <tbody>
          {ordered().map((row) => (
            <Row key={row.name} row={row} />
          ))}
        </tbody>
      </table>
      <Why />
    </main>
  );
}
