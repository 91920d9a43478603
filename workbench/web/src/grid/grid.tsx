// A table of texts of any size, of which only what can be seen is in the document. The focus is on
// the whole of it; keys move the active cell.

import type { RefObject } from "preact";
import { useEffect, useId, useLayoutEffect, useMemo, useRef, useState } from "preact/hooks";
import { Rows, rowsIn, scrollFor, useSight, type Window } from "../virtual.js";
import { columnsIn, edgesOf, isNumbers } from "./columns.js";
import { inside, moved, titles, type Cell } from "./keys.js";

const rowHeight = 30; // pixels, as in the style sheet

export interface Table {
  label: string;
  columns: string[];
  rows: string[][];
  marks?: string[]; // what a column is used for, by its place
  onTitle?: (column: number) => void;
}

interface Shown extends Table {
  id: string;
  edges: number[];
  window: Window; // of the columns
  active: Cell;
  move: (cell: Cell) => void;
}

const idOf = (id: string, { row, column }: Cell): string => `${id}-${row}-${column}`;

function press(shown: Shown, { row, column }: Cell): void {
  shown.move({ row, column });
  if (row === titles) shown.onTitle?.(column);
}

function CellText({ shown, at, text }: { shown: Shown; at: Cell; text: string }) {
  const isActive = at.row === shown.active.row && at.column === shown.active.column;
  const mark = at.row === titles ? (shown.marks?.[at.column] ?? "") : "";
  const styles = [isNumbers(shown.rows, at.column) ? "number" : "", isActive ? "active" : ""];
  return (
    <span
      id={idOf(shown.id, at)}
      role={at.row === titles ? "columnheader" : "gridcell"}
      class={`${styles.join(" ")} ${mark === "" ? "" : "marked"}`}
      aria-colindex={at.column + 1}
      title={text}
      onClick={() => press(shown, at)}
    >
      {text}
      {mark !== "" && <em> {mark}</em>}
    </span>
  );
}

function Line({ shown, row, cells }: { shown: Shown; row: number; cells: string[] }) {
  const { edges, window } = shown;
  const widths = edges.slice(window.first, window.last).map((edge, i) => (edges[window.first + i + 1] ?? 0) - edge);
  return (
    <div
      class="line"
      role="row"
      aria-rowindex={row - titles + 1}
      style={{
        paddingLeft: `${edges[window.first] ?? 0}px`,
        width: `${edges.at(-1) ?? 0}px`,
        gridTemplateColumns: widths.map((width) => `${width}px`).join(" "),
      }}
    >
      {cells.slice(window.first, window.last).map((text, i) => (
        <CellText key={window.first + i} shown={shown} at={{ row, column: window.first + i }} text={text} />
      ))}
    </div>
  );
}

/** How wide a letter is about, in pixels. */
function useLetter(box: RefObject<HTMLElement>): number {
  const [letter, setLetter] = useState(10);
  useLayoutEffect(() => {
    if (box.current !== null) setLetter(parseFloat(getComputedStyle(box.current).fontSize) * 0.6);
  }, [box]);
  return letter;
}

/** The active cell can be seen. */
function useFollowing(box: RefObject<HTMLElement>, { row, column }: Cell, edges: number[]): void {
  useEffect(() => {
    const element = box.current;
    if (element === null) return;
    const height = element.clientHeight - rowHeight; // the titles stay
    if (row !== titles) element.scrollTop = scrollFor(row * rowHeight, rowHeight, element.scrollTop, height);
    const left = edges[column] ?? 0;
    const width = (edges[column + 1] ?? left) - left;
    element.scrollLeft = scrollFor(left, width, element.scrollLeft, element.clientWidth);
  }, [box, row, column, edges]);
}

/** Whether the active cell is in the document. */
function isThere({ active, window: columns }: Shown, rows: Window): boolean {
  const isIn = (place: number, { first, last }: Window): boolean => place >= first && place < last;
  return isIn(active.column, columns) && (active.row === titles || isIn(active.row, rows));
}

export function Grid(table: Table) {
  const { label, columns, rows, marks } = table;
  const box = useRef<HTMLDivElement>(null);
  const id = useId();
  const [wanted, move] = useState<Cell>({ row: titles, column: 0 });
  const active = inside(wanted, rows.length, columns.length);
  const sight = useSight(box);
  const letter = useLetter(box);
  const titlesShown = columns.map((name, i) => name + (marks?.[i] ? `  ${marks[i]} ` : "")).join("\0");
  const edges = useMemo(() => edgesOf(titlesShown.split("\0"), rows, letter), [titlesShown, rows, letter]);
  const window = rowsIn(sight, rows.length, rowHeight);
  const shown: Shown = { ...table, id, edges, window: columnsIn(edges, sight), active, move };
  useFollowing(box, active, edges);
  const onKey = (event: KeyboardEvent): void => {
    const next = moved(event.key, active, rows.length, columns.length);
    if (next === null && event.key !== "Enter") return;
    event.preventDefault();
    if (next !== null) move(next);
    else if (!event.repeat) press(shown, active);
  };
  return (
    <div
      class="grid"
      role="grid"
      aria-label={label}
      aria-rowcount={rows.length + 1}
      aria-colcount={columns.length}
      {...(isThere(shown, window) ? { "aria-activedescendant": idOf(id, active) } : {})}
      tabIndex={0}
      ref={box}
      onKeyDown={onKey}
    >
      <div class={table.onTitle === undefined ? "titles" : "titles usable"} role="rowgroup">
        <Line shown={shown} row={titles} cells={columns} />
      </div>
      <Rows window={window} count={rows.length} rowHeight={rowHeight} role="rowgroup">
        {rows.slice(window.first, window.last).map((cells, i) => (
          <Line key={window.first + i} shown={shown} row={window.first + i} cells={cells} />
        ))}
      </Rows>
    </div>
  );
}
