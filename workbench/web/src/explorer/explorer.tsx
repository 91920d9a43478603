// What the source has, to choose from.

import { useRef } from "preact/hooks";
import { brokenAt } from "../session.js";
import { sizeText } from "../words.js";
import { Offer } from "./offer.js";
import { failure, found, isLooking, lookAgain, notKept, rows, wanted } from "./look.js";
import { OtherKind } from "./otherkind.js";
import { hasTables } from "./table.js";
import { TableView } from "./tableview.js";
import { Tree } from "./treeview.js";

function said(): string {
  if (isLooking.value) return "Looking at the source …";
  if (failure.value !== "") return failure.value;
  const { outline } = found.value;
  if (outline === null) return "Set a source, and what it has is shown here.";
  const size = outline.bytes === null ? "" : `, ${sizeText(outline.bytes)}`;
  const more = notKept.value > 0 ? ` ${notKept.value} names had no room: find them.` : "";
  return `${outline.kind}${size}.${more}`;
}

/** Searches a moment after the last letter. */
function FindField() {
  const pause = 300; // milliseconds
  const timer = useRef<ReturnType<typeof setTimeout>>();
  const find = (text: string): void => {
    wanted.value = text;
    clearTimeout(timer.current);
    timer.current = setTimeout(lookAgain, pause);
  };
  return (
    <input
      type="search"
      aria-label="Find in the source"
      placeholder="Find"
      value={wanted.value}
      onInput={(event) => find(event.currentTarget.value)}
    />
  );
}

/** A tree has no heads of columns; each row tells its kind by itself. */
function Columns() {
  return (
    <div class="columns" aria-hidden="true">
      <span>name</span>
      <span>kind</span>
      <span class="number">records</span>
      <span>first value</span>
      <span />
    </div>
  );
}

export function Explorer({ instance }: { instance: string }) {
  return (
    <section class="explorer" aria-label="Source">
      <header>
        <h2>Source</h2>
        <p class={failure.value === "" ? "said" : "said bad"} role="status">
          {said()}
        </p>
        <FindField />
        <button class="small" disabled={brokenAt.value !== 0} onClick={lookAgain}>
          Look again
        </button>
      </header>
      <OtherKind instance={instance} />
      {rows.value.length > 0 && (
        <>
          <div class={hasTables.value ? "sides" : "whole"}>
            <div class="names">
              <Columns />
              <Tree />
            </div>
            {hasTables.value && <TableView instance={instance} />}
          </div>
          <Offer instance={instance} />
        </>
      )}
    </section>
  );
}
