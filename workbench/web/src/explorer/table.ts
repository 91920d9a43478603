// The table of a source that is looked at.

import { computed, effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { details } from "../edit/settings.js";
import type { Entry, Outline, Preview } from "../shapes.js";
import { runLatest, whileOpen } from "./latest.js";
import { active, found, rows } from "./look.js";
import type { Node } from "./tree.js";

/** The sources that consist of tables. */
const modes = new Set(["EXCEL", "SQL", "HTML", "4"]);

export const hasTables = computed(() => modes.has(found.value.outline?.queryMode ?? ""));

export interface Table {
  entry: Entry;
  columns: Entry[];
  preview: Preview | null; // null where the source shows none
  failure: string;
}

export const table = signal<Table | null>(null);

/** The column of it that was chosen, by its name. */
export const column = signal("");

/** A row is a table, or the column of one. */
const tableOf = (node: Node): Node | null => (node.entry.place === "" ? node.parent : node);

const wanted = computed(() => {
  const node = hasTables.value ? rows.value.find(({ id }) => id === active.value) : undefined;
  return node === undefined ? null : tableOf(node);
});

/** The table itself may stand above its columns. */
const columnsOf = ({ entries }: Outline): Entry[] => entries.filter(({ type }) => type === "column");

/** A key that is held goes on to the next table before the source is asked for this one. */
const pause = 150; // milliseconds

const later = (): Promise<void> => new Promise((resolve) => setTimeout(resolve, pause));

async function read(entry: Entry, name: string, signal: AbortSignal): Promise<void> {
  const show = (seen: Partial<Table>): void => {
    const isWanted = wanted.peek()?.entry === entry;
    if (isWanted) table.value = { entry, columns: [], preview: null, failure: "", ...seen };
  };
  await later();
  if (wanted.peek()?.entry !== entry) return;
  try {
    const outline = await api.explore(name, { at: entry.place }, signal);
    show({ columns: columnsOf(outline), preview: outline.preview ?? null });
  } catch (fault) {
    if (!signal.aborted) show({ failure: api.sentenceOf(fault) });
  }
}

effect(() => {
  const entry = wanted.value?.entry;
  const name = details.peek()?.name;
  if (entry !== undefined && entry === table.peek()?.entry) return;
  column.value = "";
  table.value = null;
  if (entry !== undefined && name !== undefined) void runLatest("table", (signal) => read(entry, name, signal));
});

/** Counts the rows of a table of a database, which may take a while. Its row tells them, too. */
export async function countRows(instance: string): Promise<void> {
  const shown = table.peek();
  if (shown === null) return;
  const { entry } = shown;
  try {
    const { entries } = await api.explore(instance, { at: entry.place, count: 1 }, whileOpen());
    entry.records = entries.find(({ place }) => place === entry.place)?.records ?? null;
    if (table.peek() === shown) table.value = { ...shown };
    found.value = { ...found.peek() };
  } catch (fault) {
    if (table.peek() === shown) table.value = { ...shown, failure: api.sentenceOf(fault) };
  }
}
