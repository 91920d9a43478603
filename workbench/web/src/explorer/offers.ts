// What a row of the source can be used for, and the settings that do it.

import { entriesOf, parameters } from "../edit/parameters.js";
import type { Entry, Outline, Values } from "../shapes.js";
import type { Node } from "./tree.js";

/** The modes by their numbers. */
const dataTable = 0;
const dataArray = 1;
const dataStructure = 2;

/** What tells where the records are; all else tells what becomes of them. */
const places = ["xpath", "namespaces", "sheet", "range", "query"];

export const isSelectable = (entry: Entry): boolean => Object.keys(entry.set).length > 0;

/** Whether the settings are those of this row. */
export function isSelected(entry: Entry, values: Values): boolean {
  if (entry.selectors?.includes(String(values["sheet"])) === true) return true;
  const named = places.filter((name) => entry.set[name] !== undefined);
  return named.length > 0 && named.every((name) => String(values[name] ?? "") === entry.set[name]);
}

/** The rest of a path behind that of the records; empty where it is no part of them. */
function below(records: string, path: string): string {
  return records !== "" && path.startsWith(`${records}/`) ? path.slice(records.length + 1) : "";
}

/** The key that names each of the selected records by this row; empty where it is none. */
export function keyOf(entry: Entry, outline: Outline, values: Values): string {
  const rest = below(String(values["xpath"] ?? ""), entry.set["xpath"] ?? "");
  const isMember = outline.queryMode !== "JSON" || !rest.includes("/"); // JSON knows no deeper keys
  return isMember ? rest : "";
}

const singles = new Set(["texts", "numbers", "switches", "attributes"]);

/** Whether the mode takes each of these as a record. */
function takesAll(node: Node, outline: Outline, values: Values): boolean {
  const mode = Number(values["mode"] ?? 0);
  if (mode === dataArray) return true;
  if (mode === dataStructure) return node.entry.records === 1;
  if (mode !== dataTable) return singles.has(node.entry.kind);
  const key = String(values["key"] ?? "");
  const after = { ...values, ...node.entry.set };
  const members = node.children ?? [];
  return key !== "" && members.some(({ entry }) => keyOf(entry, outline, after) === key);
}

/** The query type, by its name or, where it has none, by its number. */
export function queryModeOf({ queryMode }: Outline): number {
  if (/^\d+$/.test(queryMode)) return Number(queryMode);
  const parameter = parameters.value.find(({ name }) => name === "queryMode");
  return parameter === undefined ? -1 : entriesOf(parameter).indexOf(queryMode);
}

/** What must be set so that the source is read as what it is. */
export function settingsForKind(outline: Outline, values: Values): Values {
  const queryMode = queryModeOf(outline);
  if (queryMode < 0 || values["queryMode"] === queryMode) return {};
  return outline.connStr === undefined ? { queryMode } : { queryMode, connStr: outline.connStr };
}

/** Everything that is needed so that these records arrive. */
export function settingsForAll(node: Node, outline: Outline, values: Values): Values {
  const set: Values = { ...node.entry.set, ...settingsForKind(outline, values) };
  if (set["mode"] === undefined && !takesAll(node, outline, values)) set["mode"] = dataArray;
  return set;
}

/** A key names records in tables, and in the structures of some sources. */
export function settingsForKey(key: string, values: Values): Values {
  const usesKey = values["mode"] === dataTable || values["mode"] === dataStructure;
  return usesKey ? { key } : { key, mode: dataTable };
}
