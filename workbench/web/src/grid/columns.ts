// How wide the columns of a grid are, and which of them can be seen.

import type { Sight, Window } from "../virtual.js";

const narrowest = 6; // letters
const widest = 32;
const margin = 20; // pixels, as in the style sheet
const spare = 200; // pixels beside those that can be seen

const bounded = (length: number): number => Math.min(widest, Math.max(narrowest, length));

/** Where each column begins, in pixels, and where the last one ends. The titles are given with their marks. */
export function edgesOf(columns: string[], rows: string[][], letter: number): number[] {
  const edges = [0];
  columns.forEach((name, i) => {
    const longest = rows.reduce((most, row) => Math.max(most, row[i]?.length ?? 0), name.length);
    edges.push((edges[i] ?? 0) + Math.ceil(bounded(longest + 1) * letter) + margin);
  });
  return edges;
}

export function columnsIn(edges: number[], { left, width }: Sight): Window {
  const count = edges.length - 1;
  const first = edges.findIndex((edge) => edge > left - spare) - 1;
  const behind = edges.findIndex((edge) => edge > left + width + spare);
  return { first: Math.max(0, first), last: behind < 0 ? count : behind };
}

const isNumeric = (text: string): boolean => text === "" || /^-?\d+(\.\d+)?(e[+-]?\d+)?$/i.test(text);

/** Numbers stand at the right. */
export const isNumbers = (rows: string[][], column: number): boolean =>
  rows.every((row) => isNumeric(row[column] ?? ""));
