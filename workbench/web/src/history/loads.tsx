// A long list of loads, newest or oldest first, each with its outcome by word, shape and colour.

import { useRef } from "preact/hooks";
import type { KeptLoad, Load, Outcome } from "../shapes.js";
import { Rows, useWindow } from "../virtual.js";
import { duration, outcomeWords, sizeText } from "../words.js";

const rowHeight = 34; // pixels, as in the style sheet

const shapes: Record<Outcome, string> = {
  loaded: "●",
  empty: "○",
  failed: "✕",
  notExecuted: "⊘",
  actionFailed: "▲",
  late: "◔",
};

type Row = Load & Partial<KeptLoad>;

interface Column {
  title: string;
  style: "number" | "who";
  text: (load: Row) => string | number;
}

const records: Column = { title: "records", style: "number", text: (load) => load.records };
const size: Column = { title: "size", style: "number", text: (load) => sizeText(load.bytes) };
const took: Column = { title: "took", style: "number", text: (load) => duration(load.duration) };

/** Between the outcome and what was said. A report tells of several instances, and not what was new. */
const columns: Record<"history" | "report", Column[]> = {
  history: [
    records,
    { title: "new", style: "number", text: (load) => load.new ?? "" },
    { title: "gone", style: "number", text: (load) => load.gone ?? "" },
    size,
    took,
  ],
  report: [{ title: "instance", style: "who", text: (load) => load.instance }, records, size, took],
};

interface Props {
  of: keyof typeof columns;
  loads: Row[];
  count: number; // of all, of which some may not have been read yet
  label: string;
  onWhy?: (load: Row) => void;
}

function timeText(time: string): string {
  const moment = new Date(time);
  return `${moment.toLocaleDateString("en-GB")} ${moment.toLocaleTimeString("en-GB")}`;
}

function Outcome({ outcome }: { outcome: Outcome }) {
  return (
    <span role="cell" class="outcome">
      <span aria-hidden="true">{shapes[outcome]}</span> {outcomeWords[outcome]}
    </span>
  );
}

function Why({ load, onWhy }: { load: Row; onWhy: Props["onWhy"] }) {
  return (
    <span role="cell" class="words" title={load.error || load.line}>
      {load.ladder === true && onWhy !== undefined && (
        <button class="small" onClick={() => onWhy(load)}>
          Why?
        </button>
      )}
      <span>{load.error || load.line}</span>
    </span>
  );
}

function Line(props: { of: Props["of"]; load: Row; index: number; onWhy: Props["onWhy"] }) {
  const { of, load, index, onWhy } = props;
  return (
    <div class={`load ${load.outcome}`} role="row" aria-rowindex={index}>
      <time role="cell" dateTime={load.time}>
        {timeText(load.time)}
      </time>
      <Outcome outcome={load.outcome} />
      {columns[of].map(({ title, style, text }) => (
        <span key={title} role="cell" class={style} title={style === "who" ? String(text(load)) : undefined}>
          {text(load)}
        </span>
      ))}
      <Why load={load} onWhy={onWhy} />
    </div>
  );
}

function Titles({ of }: Pick<Props, "of">) {
  const between = columns[of].map(({ title, style }) => [title, style]);
  const titles = [["time", "time"], ["outcome", "outcome"], ...between, ["what was said", "words"]];
  return (
    <div class="titles" role="rowgroup">
      <div class="load" role="row" aria-rowindex={1}>
        {titles.map(([title, style]) => (
          <span key={title} role="columnheader" class={style}>
            {title}
          </span>
        ))}
      </div>
    </div>
  );
}

export function Loads({ of, loads, count, label, onWhy }: Props) {
  const box = useRef<HTMLDivElement>(null);
  const window = useWindow(box, loads.length, rowHeight);
  return (
    <div class="load-list" role="table" aria-label={label} aria-rowcount={count + 1} tabIndex={0} ref={box}>
      <Titles of={of} />
      <Rows window={window} count={loads.length} rowHeight={rowHeight} role="rowgroup">
        {loads.slice(window.first, window.last).map((load, i) => (
          <Line
            key={load.id ?? window.first + i}
            of={of}
            load={load}
            index={window.first + i + 2}
            onWhy={onWhy}
          />
        ))}
      </Rows>
    </div>
  );
}
