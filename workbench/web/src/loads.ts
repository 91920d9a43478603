// The last loads of each instance, and the lines that they left in the log.

import { signal } from "@preact/signals";
import * as api from "./api.js";
import type { Load } from "./shapes.js";

const mostLoads = 100; // of each instance
const mostLines = 200;

export const loadsOf = signal<ReadonlyMap<string, Load[]>>(new Map());

/** A line of the log, and how often the instance has said it in a row. */
interface Line {
  load: Load;
  times: number;
}

/** Newest first. */
export const log = signal<Line[]>([]);

function isSame(one: Load, other: Load): boolean {
  return (
    one.instance === other.instance && one.time === other.time && one.duration === other.duration
  );
}

/** The list that was read and the first events may both tell of a load. */
function isKnown(load: Load): boolean {
  const recent = loadsOf.value.get(load.instance)?.slice(-20) ?? [];
  return recent.some((each) => isSame(each, load));
}

const inTime = (loads: Load[]): Load[] =>
  [...loads].sort((one, other) => one.time.localeCompare(other.time));

/** What an instance says again and again has one line, that of the first time. */
function withLine(lines: Line[], load: Load): Line[] {
  const last = lines.find((line) => line.load.instance === load.instance);
  if (last?.load.line !== load.line) return [{ load, times: 1 }, ...lines];
  return lines.map((line) => (line === last ? { ...line, times: line.times + 1 } : line));
}

function byInstance(loads: Load[], known: ReadonlyMap<string, Load[]>): Map<string, Load[]> {
  const all = new Map(known);
  for (const load of loads)
    all.set(load.instance, [...(all.get(load.instance) ?? []), load].slice(-mostLoads));
  return all;
}

/** Another instance may get the name of one that is gone. */
export function forgetLoads(names: string[]): void {
  loadsOf.value = new Map([...loadsOf.value].filter(([name]) => !names.includes(name)));
}

/** The loads of an instance that was renamed are told under its new name. */
export async function readLoads(): Promise<void> {
  const { loads } = await api.loads();
  loadsOf.value = byInstance(inTime(loads), new Map());
}

export function noteLoads(loads: Load[], isAll: boolean): void {
  const fresh = isAll ? inTime(loads) : loads.filter((load) => !isKnown(load));
  loadsOf.value = byInstance(fresh, isAll ? new Map() : loadsOf.value);
  const news = fresh.filter((load) => load.line !== "");
  log.value = news.reduce(withLine, isAll ? [] : log.value).slice(0, mostLines);
}
