// Looks into the source of the instance that is edited.

import { computed, effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { details, sourceChanges } from "../edit/settings.js";
import { parameters } from "../edit/parameters.js";
import type { Details, Outline } from "../shapes.js";
import { runLatest } from "./latest.js";
import { isSelected, queryModeOf } from "./offers.js";
import { all, nodesOf, openAbove, openFirstLevels, visible, type Node } from "./tree.js";

const most = 1000; // entries of one look
const fewRows = 40;

export interface Seen {
  outline: Outline | null;
  top: Node[];
}

const nothing: Seen = { outline: null, top: [] };

export const found = signal<Seen>(nothing);
/** How many names beside those that are listed are not; 0 when all are. */
export const leftOut = signal(0);

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

/** Whole levels are listed as long as they fit; names are missing where not even one did. */
function missing({ entries, leftOut, notKept }: Outline): number {
  const isCut = entries.length >= most && entries.every(({ depth }) => depth === 0);
  return (isCut ? leftOut : 0) + notKept;
}

let asked = 0;
let seenAt = ""; // where what was found is from

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
  leftOut.value = 0;
  failure.value = "";
  isLooking.value = false;
}

export function lookAgain(): void {
  const now = details.peek();
  if (now === null || !hasSource(now)) {
    forgetSource();
    return;
  }
  const mine = ++asked;
  isLooking.value = true;
  void runLatest(() => lookInto(now, mine));
}

async function lookInto(now: Details, mine: number): Promise<void> {
  if (mine !== asked) return;
  try {
    const outline = await api.explore(now.name, "", wanted.peek(), most);
    if (mine !== asked) return;
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
  const top = nodesOf(outline.entries, null);
  openFirstLevels(top, fewRows);
  failure.value = "";
  leftOut.value = missing(outline);
  found.value = { outline, top };
  active.value = selected.value?.id ?? top[0]?.id ?? "";
}

export function turn(node: Node, isOpen: boolean): void {
  const mine = asked;
  const name = details.peek()?.name;
  if (!isOpen || node.children !== null || name === undefined) {
    node.isOpen = isOpen;
    showTurned();
  } else if (!isLooking.peek()) {
    void runLatest(() => lookBelow(node, name, mine)); // else the row is about to go
  }
}

/** What is below a row is asked for when it is opened first; the tree may be another one then. */
async function lookBelow(node: Node, name: string, mine: number): Promise<void> {
  if (mine !== asked) return;
  try {
    const outline = await api.explore(name, node.entry.place, "", most);
    if (mine !== asked) return;
    node.children = nodesOf(outline.entries, node);
    leftOut.value = missing(outline);
    node.isOpen = true;
    showTurned();
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
