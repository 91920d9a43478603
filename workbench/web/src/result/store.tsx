// What is in the data store, who wrote it, and what is left over from older loads.

import { Fragment } from "preact";
import { useEffect } from "preact/hooks";
import type { Field, FieldEntry, FieldPage, Written } from "../shapes.js";
import { counted, shortTime } from "../words.js";
import { closeField, entriesOfPage, failure, fields, from, leftOut, page, showStore, turnTo } from "./stored.js";

/** The cells that tell who wrote it and when. */
function Origin({ written }: { written: Written }) {
  return (
    <>
      <td title={written.writer}>{written.writer}</td>
      <td class="number">{written.age === null ? "" : shortTime(written.age)}</td>
      <td class="what">{written.leftOver ? "left over" : ""}</td>
    </>
  );
}

/** The titles of the columns and their classes. */
const columns: [string, string][] = [
  ["field", "title"],
  ["kind", "kind"],
  ["size", "number size"],
  ["value", ""],
  ["written by", "writer"],
  ["age", "number age"],
  ["note", "note"],
];

const canOpen = ({ kind }: Field): boolean => kind === "structure" || kind === "array";

function FieldRow({ field }: { field: Field }) {
  const isOpen = page.value?.name === field.name;
  const turn = (): void => (isOpen ? closeField() : void turnTo(field.name, 0));
  return (
    <tr class={field.leftOver ? "left" : ""}>
      <td title={field.name}>
        {canOpen(field) ? (
          <button class="plain" aria-expanded={isOpen} onClick={turn}>
            {isOpen ? "▾" : "▸"} {field.name}
          </button>
        ) : (
          <span class="leaf">{field.name}</span>
        )}
      </td>
      <td>{field.kind}</td>
      <td class="number">{canOpen(field) ? field.size : ""}</td>
      <td class="value">{field.value}</td>
      <Origin written={field} />
    </tr>
  );
}

function EntryRow({ entry }: { entry: FieldEntry }) {
  return (
    <tr class={`entry ${entry.leftOver ? "left" : ""}`}>
      <td class="key" colSpan={3}>
        {entry.key}
      </td>
      <td class="value">{entry.value}</td>
      <Origin written={entry} />
    </tr>
  );
}

function Turner({ shown }: { shown: FieldPage }) {
  if (shown.size <= entriesOfPage) return null;
  const last = Math.min(shown.size, from.value + entriesOfPage);
  return (
    <tr class="entry">
      <td colSpan={7}>
        <button
          class="small"
          disabled={from.value === 0}
          onClick={() => void turnTo(shown.name, Math.max(0, from.value - entriesOfPage))}
        >
          Earlier
        </button>
        <button class="small" disabled={last === shown.size} onClick={() => void turnTo(shown.name, last)}>
          Later
        </button>
        <span class="quiet">
          {" "}
          {from.value + 1} to {last} of {shown.size}
        </span>
      </td>
    </tr>
  );
}

function Opened({ shown }: { shown: FieldPage }) {
  return (
    <>
      {shown.entries.map((entry) => (
        <EntryRow key={entry.key} entry={entry} />
      ))}
      <Turner shown={shown} />
    </>
  );
}

export function Store() {
  useEffect(showStore, []);
  if (failure.value !== "") return <p class="quiet">{failure.value}</p>;
  return (
    <div class="scrolls" tabIndex={0} role="region" aria-label="Data store">
      <table class="list stored">
        <thead>
          <tr>
            {columns.map(([title, style]) => (
              <th key={title} scope="col" class={style}>
                {title}
              </th>
            ))}
          </tr>
        </thead>
        <tbody>
          {fields.value.map((field) => (
            <Fragment key={field.name}>
              <FieldRow field={field} />
              {page.value?.name === field.name && <Opened shown={page.value} />}
            </Fragment>
          ))}
        </tbody>
      </table>
      {leftOut.value > 0 && (
        <p class="quiet">
          {counted(leftOut.value, "more field")} {leftOut.value === 1 ? "is" : "are"} not listed.
        </p>
      )}
      {fields.value.length === 0 && <p class="quiet">The data store is empty.</p>}
    </div>
  );
}
