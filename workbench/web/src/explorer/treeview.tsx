// The tree of the source. The focus is on the whole of it; keys move the active row.

import { useEffect, useRef } from "preact/hooks";
import { Rows, useWindow } from "../virtual.js";
import { active, rows, selected, turn } from "./look.js";
import { isSelectable } from "./offers.js";
import { canOpen, type Node } from "./tree.js";

const rowHeight = 30; // pixels, as in the style sheet

function moveTo(index: number): void {
  const node = rows.value[Math.max(0, Math.min(index, rows.value.length - 1))];
  if (node !== undefined) active.value = node.id;
}

function right(node: Node, index: number): void {
  if (!canOpen(node)) return;
  if (node.isOpen) moveTo(index + 1);
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
  Enter: () => document.getElementById("all-of-these")?.focus(),
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

function Row({ node, opening }: { node: Node; opening: Opening }) {
  const { entry } = node;
  const isActive = node.id === active.value;
  const isUsed = selected.value === node;
  return (
    <div
      id={node.id}
      class={`row ${isActive ? "active" : ""} ${isUsed ? "used" : ""} ${isSelectable(entry) ? "" : "mute"}`}
      role="treeitem"
      aria-level={node.level}
      aria-setsize={node.siblings}
      aria-posinset={node.position}
      aria-selected={isActive}
      aria-current={isUsed}
      aria-expanded={opening}
      onClick={() => (active.value = node.id)}
      onDblClick={() => opening !== undefined && turn(node, !node.isOpen)}
    >
      <span class="name" style={{ paddingLeft: `${(node.level - 1) * 18}px` }}>
        <Opener node={node} opening={opening} />
        <span class="text" title={entry.name}>
          {entry.name}
        </span>
      </span>
      <span class="kind">{entry.kind}</span>
      <span class="number">{entry.records}</span>
      <span class="value" title={entry.value}>
        {entry.value}
      </span>
      <span class="use">{isUsed ? "selected" : ""}</span>
    </div>
  );
}

/** How far to scroll so that a row can be seen: by a row at its edge, to the middle from afar. */
function scrollFor(top: number, scrolled: number, height: number): number {
  const above = scrolled - top;
  const below = top + rowHeight - scrolled - height;
  if (above <= 0 && below <= 0) return scrolled;
  if (Math.max(above, below) > rowHeight) return top - (height - rowHeight) / 2;
  return above > 0 ? top : top + rowHeight - height;
}

export function Tree() {
  const box = useRef<HTMLDivElement>(null);
  const shown = rows.value;
  const window = useWindow(box, shown.length, rowHeight);
  const at = shown.findIndex((node) => node.id === active.value);
  useEffect(() => {
    const element = box.current;
    if (element === null || at < 0) return;
    element.scrollTop = scrollFor(at * rowHeight, element.scrollTop, element.clientHeight);
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
