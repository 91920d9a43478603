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

const titles: [string, string][] = [
  ["time", "time"],
  ["outcome", "outcome"],
  ["records", "number"],
  ["new", "number"],
  ["gone", "number"],
  ["size", "number"],
  ["took", "number"],
  ["what was said", "words"],
];

type Row = Load & Partial<KeptLoad>;

interface Props {
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

function Why({ load, onWhy }: { load: Row; onWhy: ((load: Row) => void) | undefined }) {
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

function Line({ load, index, onWhy }: { load: Row; index: number; onWhy: Props["onWhy"] }) {
  const numbers = [load.records, load.new ?? "", load.gone ?? "", sizeText(load.bytes), duration(load.duration)];
  return (
    <div class={`load ${load.outcome}`} role="row" aria-rowindex={index}>
      <time role="cell" dateTime={load.time}>
        {timeText(load.time)}
      </time>
      <Outcome outcome={load.outcome} />
      {numbers.map((text, i) => (
        <span key={i} role="cell" class="number">
          {text}
        </span>
      ))}
      <Why load={load} onWhy={onWhy} />
    </div>
  );
}

function Titles() {
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

export function Loads({ loads, count, label, onWhy }: Props) {
  const box = useRef<HTMLDivElement>(null);
  const window = useWindow(box, loads.length, rowHeight);
  return (
    <div class="load-list" role="table" aria-label={label} aria-rowcount={count + 1} tabIndex={0} ref={box}>
      <Titles />
      <Rows window={window} count={loads.length} rowHeight={rowHeight} role="rowgroup">
        {loads.slice(window.first, window.last).map((load, i) => (
          <Line
            key={load.id ?? window.first + i}
            load={load}
            index={window.first + i + 2}
            onWhy={onWhy}
          />
        ))}
      </Rows>
    </div>
  );
}
