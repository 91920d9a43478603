// The tree of the source. The focus is on the whole of it; keys move the active row.

import { useEffect, useRef } from "preact/hooks";
import { Rows, scrollFor, useWindow } from "../virtual.js";
import { active, rows, selected, turn } from "./look.js";
import { isSelectable } from "./offers.js";
import type { Entry } from "../shapes.js";
import { column, hasTables } from "./table.js";
import { canOpen, isRest, type Node } from "./tree.js";

const rowHeight = 30; // pixels, as in the style sheet

function moveTo(index: number): void {
  const node = rows.value[Math.max(0, Math.min(index, rows.value.length - 1))];
  if (node !== undefined) active.value = node.id;
}

function right(node: Node, index: number): void {
  if (isRest(node)) turn(node, true);
  else if (!canOpen(node)) return;
  else if (node.isOpen) moveTo(index + 1);
  else turn(node, true);
}

function left(node: Node): void {
  if (node.isOpen) turn(node, false);
  else if (node.parent !== null) active.value = node.parent.id;
}

const keys: Record<string, (node: Node, index: number) => void> = {
  ArrowDown: (_, index) => moveTo(index + 1),
  ArrowUp: (_, index) => moveTo(index - 1),
  Home: () => moveTo(0),
  End: () => moveTo(rows.value.length - 1),
  ArrowRight: right,
  ArrowLeft: left,
  Enter: (node) => (isRest(node) ? turn(node, true) : document.getElementById("all-of-these")?.focus()),
};

function onKey(event: KeyboardEvent): void {
  const index = rows.value.findIndex((node) => node.id === active.value);
  const node = rows.value[index];
  const act = keys[event.key];
  if (act === undefined) return;
  event.preventDefault();
  if (node === undefined) moveTo(0);
  else act(node, index);
}

/** Whether a row is open, as the row shows it; nothing where there is nothing below. */
type Opening = boolean | undefined;

function Opener({ node, opening }: { node: Node; opening: Opening }) {
  const toggle = (event: MouseEvent): void => {
    event.stopPropagation();
    turn(node, !node.isOpen);
  };
  const sign = opening === undefined ? "" : opening ? "▾" : "▸";
  return (
    <span class="opener" aria-hidden="true" onClick={toggle}>
      {sign}
    </span>
  );
}

function choose(node: Node): void {
  active.value = node.id;
  column.value = "";
  if (isRest(node)) turn(node, true);
}

function stylesOf({ entry }: Node, isActive: boolean, isUsed: boolean): string {
  const isTable = hasTables.value && entry.place !== "";
  const isHeading = entry.type === "heading";
  const styles = { row: true, active: isActive, used: isUsed, "a-table": isTable, heading: isHeading };
  const mute = isSelectable(entry) || isHeading ? "" : " mute";
  return Object.entries(styles).filter(([, isSo]) => isSo).map(([name]) => name).join(" ") + mute;
}

/** In few words; the whole stands in its title. */
function kindOf({ kind, type, hidden, rows, columns }: Entry): string {
  if (type === "table" && rows !== undefined) return `table, ${rows} × ${columns}`;
  return hidden === true ? "sheet, hidden" : kind;
}

function Row({ node, opening }: { node: Node; opening: Opening }) {
  const { entry } = node;
  const isActive = node.id === active.value;
  const isUsed = selected.value === node;
  return (
    <div
      id={node.id}
      class={stylesOf(node, isActive, isUsed)}
      role="treeitem"
      aria-level={node.level}
      aria-setsize={node.siblings}
      aria-posinset={node.position}
      aria-selected={isActive}
      aria-current={isUsed}
      aria-expanded={opening}
      onClick={() => choose(node)}
      onDblClick={() => opening !== undefined && turn(node, !node.isOpen)}
    >
      <span class="name" style={{ paddingLeft: `${(node.level - 1) * 18}px` }}>
        <Opener node={node} opening={opening} />
        <span class="text" title={entry.name}>
          {entry.name}
        </span>
      </span>
      <span class="kind" title={entry.kind}>
        {kindOf(entry)}
      </span>
      <span class="number">{entry.records}</span>
      <span class="value" title={entry.value}>
        {entry.value}
      </span>
      <span class="use">{isUsed ? "selected" : ""}</span>
    </div>
  );
}

export function Tree() {
  const box = useRef<HTMLDivElement>(null);
  const shown = rows.value;
  const window = useWindow(box, shown.length, rowHeight);
  const at = shown.findIndex((node) => node.id === active.value);
  useEffect(() => {
    const element = box.current;
    if (element === null || at < 0) return;
    element.scrollTop = scrollFor(at * rowHeight, rowHeight, element.scrollTop, element.clientHeight);
  }, [at, active.value]);
  const isThere = at >= window.first && at < window.last;
  return (
    <div
      class="tree"
      role="tree"
      aria-label="What the source has"
      tabIndex={0}
      ref={box}
      {...(isThere ? { "aria-activedescendant": active.value } : {})}
      onKeyDown={onKey}
    >
      <Rows window={window} count={shown.length} rowHeight={rowHeight} role="presentation">
        {shown.slice(window.first, window.last).map((node) => (
          <Row key={node.id} node={node} opening={canOpen(node) ? node.isOpen : undefined} />
        ))}
      </Rows>
    </div>
  );
}
