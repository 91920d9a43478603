// What the columns of a table can be used for, and the settings that do it.

import type { Outline, Values } from "../shapes.js";
import { settingsForKey, settingsForKind } from "./offers.js";
import type { Table } from "./table.js";

/** The columns of a sheet that are read, as they are written; none when all are. */
export function readColumns(values: Values): string[] {
  const names = String(values["range"] ?? "").match(/\[[^\]]*\]|[^,\s][^,]*/g) ?? []; // commas stand in brackets, too
  return names.map((name) => name.trim());
}

/** How a column is written where columns are listed. */
export function written(table: Table, name: string): string {
  const column = table.columns.find((each) => each.name === name);
  return column?.set["range"] ?? `[${name}]`;
}

/** What names records by a column; empty where it cannot. */
export const keyOfColumn = (table: Table, name: string): string =>
  table.columns.find((each) => each.name === name)?.key ?? "";

/** Each record is named by this column, which must be among those that are read. */
export function settingsForKeyColumn(table: Table, name: string, outline: Outline, values: Values): Values {
  const read = readColumns(values);
  const isMissing = outline.queryMode === "EXCEL" && read.length > 0 && !read.includes(written(table, name));
  return {
    ...table.entry.set,
    ...settingsForKind(outline, values),
    ...settingsForKey(keyOfColumn(table, name), values),
    ...(isMissing ? { range: [...read, written(table, name)].join(", ") } : {}),
  };
}

/** Of a sheet these columns only. */
export function settingsForColumns(table: Table, names: string[], outline: Outline, values: Values): Values {
  return { ...table.entry.set, ...settingsForKind(outline, values), range: names.join(", ") };
}

/** What the columns are used for already, by their places. */
export function marksOf(table: Table, columns: string[], values: Values): string[] {
  const key = String(values["key"] ?? "").toLowerCase();
  const read = readColumns(values);
  return columns.map((name) => {
    if (key !== "" && keyOfColumn(table, name).toLowerCase() === key) return "key";
    return read.includes(written(table, name)) ? "read" : "";
  });
}
