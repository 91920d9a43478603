// Looks into the source of the instance that is edited.

import { computed, effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { details, sourceChanges } from "../edit/settings.js";
import { parameters } from "../edit/parameters.js";
import type { Details, Outline } from "../shapes.js";
import { isSelected } from "./offers.js";
import { all, nodesOf, openAbove, openFirstLevels, visible, type Node } from "./tree.js";

const most = 1000; // entries of one look
const fewRows = 40;

export interface Seen {
  outline: Outline | null;
  top: Node[];
}

export const found = signal<Seen>({ outline: null, top: [] });
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

export async function lookAgain(): Promise<void> {
  const now = details.peek();
  const mine = ++asked;
  if (now === null || !hasSource(now)) {
    found.value = { outline: null, top: [] };
    failure.value = "";
    isLooking.value = false;
    return;
  }
  isLooking.value = true;
  try {
    const outline = await api.explore(now.name, "", wanted.peek(), most);
    if (mine === asked) show(outline);
  } catch (fault) {
    if (mine !== asked) return;
    found.value = { outline: null, top: [] };
    failure.value = api.sentenceOf(fault);
  }
  if (mine === asked) isLooking.value = false;
}

function show(outline: Outline): void {
  const top = nodesOf(outline.entries, null);
  openFirstLevels(top, fewRows);
  failure.value = "";
  leftOut.value = missing(outline);
  found.value = { outline, top };
  active.value = selected.value?.id ?? top[0]?.id ?? "";
}

/** What is below a row is asked for when it is opened first. */
export async function turn(node: Node, isOpen: boolean): Promise<void> {
  const name = details.peek()?.name;
  if (isOpen && node.children === null && name !== undefined) {
    try {
      const outline = await api.explore(name, node.entry.place, "", most);
      node.children = nodesOf(outline.entries, node);
      leftOut.value = missing(outline);
    } catch (fault) {
      failure.value = api.sentenceOf(fault);
      return;
    }
  }
  node.isOpen = isOpen;
  showTurned();
}

effect(() => {
  if (sourceChanges.value > 0) void lookAgain();
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
