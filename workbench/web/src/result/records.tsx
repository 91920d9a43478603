// The records that arrived, as a table.

import { useRef } from "preact/hooks";
import type { DryRun } from "../shapes.js";
import { Rows, useWindow } from "../virtual.js";
import { counted } from "../words.js";

const rowHeight = 30; // pixels, as in the style sheet
const narrowest = 5; // letters
const widest = 32;

type Table = DryRun["table"];

const isNumeric = (text: string): boolean => text === "" || /^-?\d+(\.\d+)?(e[+-]?\d+)?$/i.test(text);

function widths({ columns, rows }: Table): string {
  return columns
    .map((name, i) => Math.max(name.length, ...rows.map((row) => row[i]?.length ?? 0)))
    .map((length) => `${Math.min(widest, Math.max(narrowest, length)) + 3}ch`)
    .join(" ");
}

function Line({ cells, styles, index, role }: {
  cells: string[];
  styles: string[];
  index: number;
  role: "cell" | "columnheader";
}) {
  return (
    <div class="line" role="row" aria-rowindex={index}>
      {cells.map((text, i) => (
        <span key={i} role={role} class={styles[i] ?? ""} title={text}>
          {text}
        </span>
      ))}
    </div>
  );
}

function Grid({ table }: { table: Table }) {
  const box = useRef<HTMLDivElement>(null);
  const { columns, rows } = table;
  const window = useWindow(box, rows.length, rowHeight);
  const styles = columns.map((_, i) => (rows.every((row) => isNumeric(row[i] ?? "")) ? "number" : ""));
  return (
    <div
      class="grid"
      role="table"
      aria-label="Records"
      aria-rowcount={rows.length + 1}
      tabIndex={0}
      ref={box}
      style={{ "--columns": widths(table) }}
    >
      <div class="titles" role="rowgroup">
        <Line cells={columns} styles={styles} index={1} role="columnheader" />
      </div>
      <Rows window={window} count={rows.length} rowHeight={rowHeight} role="rowgroup">
        {rows.slice(window.first, window.last).map((row, i) => (
          <Line
            key={window.first + i}
            cells={row}
            styles={styles}
            index={window.first + i + 2}
            role="cell"
          />
        ))}
      </Rows>
    </div>
  );
}

export function Records({ answer }: { answer: DryRun }) {
  const { table } = answer;
  if (table.rows.length === 0) return <p class="quiet">No records.</p>;
  return (
    <>
      <Grid table={table} />
      {table.leftOut > 0 && <p class="quiet">{counted(table.leftOut, "further record")} not shown.</p>}
    </>
  );
}
