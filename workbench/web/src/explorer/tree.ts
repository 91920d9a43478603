// What a source has, as a tree of which parts are known and parts are open.

import type { Entry } from "../shapes.js";

export interface Node {
  id: string;
  entry: Entry;
  level: number; // 1 at the top
  position: number; // among those beside it, from 1
  siblings: number;
  parent: Node | null;
  children: Node[] | null; // null as long as they have not been asked for
  isOpen: boolean;
  rest: number; // of a row that stands for those that are not listed: how many are before it
}

export const isRest = ({ rest }: Node): boolean => rest > 0;

export const canOpen = (node: Node): boolean =>
  node.children === null ? node.entry.place !== "" : node.children.length > 0;

function nodeOf(entry: Entry, parent: Node | null, position: number): Node {
  const id = parent === null ? `row-${position}` : `${parent.id}-${position}`;
  const level = parent === null ? 1 : parent.level + 1;
  return { id, entry, level, position, siblings: 0, parent, children: null, isOpen: false, rest: 0 };
}

/** One entry of several by itself, which stands above what all of them have. */
export function withEntry(node: Node, entries: Entry[]): void {
  const id = `${node.id}-one`;
  const [one] = nodesOf(entries, { ...node, id }, []);
  if (one === undefined) return;
  one.parent = node;
  one.isOpen = true;
  const others = (node.children ?? []).filter((each) => !each.id.startsWith(id));
  node.children = [one, ...others];
  node.isOpen = true;
  count(node.children);
}

/** What stands behind those that are listed. */
export interface Rest {
  leftOut: number;
  isCounted: boolean; // else nobody knows how many there are
  from: number; // entries that are before it
}

/** Stands for entries that are not listed yet. */
function restOf({ leftOut, isCounted, from }: Rest, parent: Node | null, before: number): Node {
  const name = isCounted ? `${leftOut} more` : "more";
  const entry: Entry = { name, depth: 0, kind: "", type: "value", records: null, value: "", place: "", set: {} };
  return { ...nodeOf(entry, parent, before + 1), rest: from };
}

/** The nodes with those that follow them, and a row for what is still not listed. */
export function withPage(listed: Node[], entries: Entry[], parent: Node | null, rest: Rest): Node[] {
  const before = listed.filter((node) => !isRest(node));
  const nodes = [...before, ...nodesOf(entries, parent, before)];
  const total = rest.isCounted ? nodes.length + rest.leftOut : -1; // unknown
  if (rest.leftOut > 0) nodes.push(restOf(rest, parent, nodes.length));
  for (const node of nodes) node.siblings = total;
  return nodes;
}

/** The entries stand in the order of an outline, each as deep as it says. */
function nodesOf(entries: Entry[], parent: Node | null, before: Node[]): Node[] {
  const top: Node[] = [];
  const above: Node[] = before.slice(-1); // the first may still belong to the last one before
  for (const entry of entries) {
    const owner = entry.depth === 0 ? parent : (above[entry.depth - 1] ?? parent);
    const list = entry.depth === 0 || owner === null ? top : (owner.children ??= []);
    const node = nodeOf(entry, owner, list.length + 1 + (list === top ? before.length : 0));
    list.push(node);
    above[entry.depth] = node;
  }
  count(top);
  return top;
}

function count(nodes: Node[]): void {
  for (const node of nodes) {
    node.siblings = nodes.length;
    if (node.children !== null) count(node.children);
  }
}

/** Opens whole levels as long as there are few rows. */
export function openFirstLevels(top: Node[], most: number): void {
  let shown = top.length;
  let level = top;
  while (level.length > 0) {
    const below = level.flatMap((node) => node.children ?? []);
    shown += below.length;
    if (shown > most) return;
    for (const node of level) node.isOpen = (node.children?.length ?? 0) > 0;
    level = below;
  }
}

export function openIds(nodes: Node[]): string[] {
  return nodes.flatMap((node) => [...(node.isOpen ? [node.id] : []), ...openIds(node.children ?? [])]);
}

/** The rows that are to be seen. */
export function visible(nodes: Node[]): Node[] {
  return nodes.flatMap((node) =>
    node.isOpen && node.children !== null ? [node, ...visible(node.children)] : [node],
  );
}

export function all(nodes: Node[]): Node[] {
  return nodes.flatMap((node) => [node, ...all(node.children ?? [])]);
}

export function openAbove(node: Node): void {
  for (let above = node.parent; above !== null; above = above.parent) above.isOpen = true;
}
