// Looks into the source of the instance that is edited.

import { computed, effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { details, sourceChanges } from "../edit/settings.js";
import { parameters } from "../edit/parameters.js";
import type { Details, Outline } from "../shapes.js";
import { leave, runLatest } from "./latest.js";
import { isSelected, queryModeOf } from "./offers.js";
import { all, isRest, openAbove, openFirstLevels, visible, withEntry, withPage, type Node, type Rest } from "./tree.js";

const most = 1000; // entries of one look
const fewRows = 40;

export interface Seen {
  outline: Outline | null;
  top: Node[];
}

const nothing: Seen = { outline: null, top: [] };

export const found = signal<Seen>(nothing);
/** Names for which there was no room while the source was read. */
export const notKept = signal(0);

export const isLooking = signal(false);
export const failure = signal("");
export const wanted = signal(""); // what is searched for
export const active = signal(""); // the row that the keys move, by id

/** Rows that were opened or closed are shown anew. */
function showTurned(): void {
  found.value = { ...found.peek() };
}

export const rows = computed(() => visible(found.value.top));

/** The row that the settings select, when it is known. */
export const selected = computed(() => {
  const values = details.value?.values;
  if (values === undefined || parameters.value.length === 0) return null;
  return all(found.value.top).find((node) => isSelected(node.entry, values)) ?? null;
});

const sqlMode = 1;

function hasSource({ values }: Details): boolean {
  return (values["queryMode"] === sqlMode ? values["connStr"] : values["filename"]) !== "";
}

/** Whole levels are listed as long as they fit; rows are missing where not even one did. Names that
    were not kept cannot be listed, but found. */
function missing({ entries, leftOut, notKept, total, queryMode }: Outline, before: number): Rest {
  const isFlat = entries.length > 0 && entries.every(({ depth }) => depth === 0);
  const isTree = queryMode === "JSON" || queryMode === "XML";
  const isCut = isFlat || (!isTree && entries.length > 0);
  return {
    leftOut: isCut ? Math.max(0, leftOut - notKept) : 0,
    isCounted: isFlat && (total !== null || notKept > 0),
    from: before + entries.length,
  };
}

let asked = 0;
let seenAt = ""; // where what was found is from
let seenFind = ""; // what was searched for then

const addressOf = ({ name, values }: Details): string =>
  [name, values["filename"], values["connStr"]].join("\n");

/** Whether what was found is what the settings name, read as they say. */
function isOfSource(now: Details): boolean {
  const { outline } = found.peek();
  const isReadSo = outline !== null && queryModeOf(outline) === now.values["queryMode"];
  return isReadSo && addressOf(now) === seenAt;
}

/** A row of one source must not be used for another. An answer that is on its way counts no more. */
export function forgetSource(): void {
  ++asked;
  found.value = nothing;
  notKept.value = 0;
  failure.value = "";
  isLooking.value = false;
  leave();
}

export function lookAgain(): void {
  const now = details.peek();
  if (now === null || !hasSource(now)) {
    forgetSource();
    return;
  }
  const mine = ++asked;
  isLooking.value = true;
  void runLatest("source", (signal) => lookInto(now, mine, signal));
}

async function lookInto(now: Details, mine: number, signal: AbortSignal): Promise<void> {
  if (mine !== asked) return;
  try {
    const find = wanted.peek();
    const outline = await api.explore(now.name, { find, limit: most }, signal);
    if (mine !== asked) return;
    seenFind = find;
    seenAt = addressOf(now);
    show(outline);
  } catch (fault) {
    if (mine !== asked) return;
    forgetSource();
    failure.value = api.sentenceOf(fault);
    return;
  }
  isLooking.value = false;
}

function show(outline: Outline): void {
  const top = withPage([], outline.entries, null, missing(outline, 0));
  openFirstLevels(top, fewRows);
  failure.value = "";
  notKept.value = outline.notKept;
  found.value = { outline, top };
  active.value = selected.value?.id ?? top[0]?.id ?? "";
}

export function turn(node: Node, isOpen: boolean): void {
  const mine = asked;
  const name = details.peek()?.name;
  const isKnown = node.children !== null && !isRest(node);
  if (!isOpen || isKnown || name === undefined) {
    node.isOpen = isOpen;
    showTurned();
  } else if (!isLooking.peek()) {
    const look = isRest(node) ? lookFurther : lookBelow;
    void runLatest("below", (signal) => look(node, { name, mine, signal })); // else the row is about to go
  }
}

/** A look at a part of the tree; the tree may be another one when it is answered. */
interface Asking {
  name: string; // of the instance
  mine: number;
  signal: AbortSignal;
}

/** What is below a row is asked for when it is opened first. */
async function lookBelow(node: Node, { name, mine, signal }: Asking): Promise<void> {
  if (mine !== asked || node.children !== null) return;
  try {
    const outline = await api.explore(name, { at: node.entry.place, limit: most }, signal);
    if (mine !== asked) return;
    node.children = withPage([], outline.entries, node, missing(outline, 0));
    node.isOpen = true;
    showTurned();
  } catch (fault) {
    if (mine === asked) failure.value = api.sentenceOf(fault);
  }
}

/** Where one of several entries is, counted from 1. */
function placeOf({ entry }: Node, number: number): string {
  const isXml = found.peek().outline?.queryMode === "XML";
  return `${entry.place}[${isXml ? number : number - 1}]`;
}

async function lookAtOne(node: Node, number: number, asking: Asking): Promise<void> {
  const { name, mine, signal } = asking;
  await lookBelow(node, asking);
  if (mine !== asked) return;
  try {
    const outline = await api.explore(name, { at: placeOf(node, number), limit: most }, signal);
    if (mine !== asked) return;
    withEntry(node, outline.entries);
    active.value = node.children?.[0]?.id ?? active.peek();
    failure.value = "";
    showTurned();
  } catch (fault) {
    if (mine === asked) failure.value = api.sentenceOf(fault);
  }
}

/** Shows one of several entries by itself, with the settings of it alone. */
export function showOne(node: Node, number: number): void {
  const mine = asked;
  const name = details.peek()?.name;
  if (name === undefined) return;
  void runLatest("below", (signal) => lookAtOne(node, number, { name, mine, signal }));
}

/** The next rows take the place of the one that stands for them. */
async function lookFurther({ parent, rest }: Node, { name, mine, signal }: Asking): Promise<void> {
  if (mine !== asked) return;
  const place = parent === null ? { find: seenFind } : { at: parent.entry.place };
  try {
    const outline = await api.explore(name, { ...place, from: rest, limit: most }, signal);
    if (mine !== asked) return;
    const listed = parent === null ? found.peek().top : (parent.children ?? []);
    const nodes = withPage(listed, outline.entries, parent, missing(outline, rest));
    if (parent !== null) parent.children = nodes;
    found.value = { ...found.peek(), ...(parent === null ? { top: nodes } : {}) };
  } catch (fault) {
    if (mine === asked) failure.value = api.sentenceOf(fault);
  }
}

sourceChanges.subscribe((count) => {
  if (count === 0) return;
  const now = details.peek();
  if (now === null || !isOfSource(now)) forgetSource();
  lookAgain();
});

/** The row follows the settings, and is shown. */
effect(() => {
  const node = selected.value;
  if (node === null) return;
  active.value = node.id;
  if (rows.peek().includes(node)) return;
  openAbove(node);
  showTurned();
});
