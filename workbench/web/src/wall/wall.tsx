// One row for each instance.

import { useEffect } from "preact/hooks";
import { clock } from "../clock.js";
import { HoldButton } from "../hold.js";
import { press } from "../press.js";
import { addressOf, historyOf } from "../route.js";
import { brokenAt, seen, type Seen } from "../session.js";
import { StateWord } from "../state.js";
import { duration, shortTime, sizeText } from "../words.js";
import { explain, Why } from "../why.js";
import { Log } from "./log.js";
import { hold, ordered, release, releaseAll } from "./order.js";
import { Spark } from "./spark.js";

function recordsText(row: Seen): string {
  if (row.records === null) return "";
  return row.before === null ? `${row.records}` : `${row.before} → ${row.records}`;
}

function Actions({ name, revision }: Seen) {
  const isLive = brokenAt.value === 0;
  return (
    <td class="actions">
      <button disabled={!isLive} onClick={() => (location.hash = addressOf(name))}>
        Edit
      </button>
      <button disabled={!isLive} onClick={() => explain(name)}>
        Why?
      </button>
      <HoldButton label="Load" isOff={!isLive} onPress={(held) => void press(name, held, revision)} />
    </td>
  );
}

/** What is wrong; where nothing is, where the records go and how much was written. */
function Words({ row }: { row: Seen }) {
  if (row.words !== "")
    return (
      <span class="words" title={row.words}>
        {row.words}
      </span>
    );
  const size = row.bytes === null ? "" : `, ${sizeText(row.bytes).replace(" ", "\u00a0")}`;
  return <span class="words target">{row.target + size}</span>;
}

function Row({ row }: { row: Seen }) {
  const passed = (clock.value - row.at) / 1000;
  const next = row.next === null ? null : Math.max(0, row.next - passed);
  return (
    <tr class={row.state}>
      <td class="state">
        <StateWord state={row.state} />
      </td>
      <th scope="row">
        <span class="name">{row.name}</span>
        {row.isDraft === true && <span class="draft">draft</span>}
        <Words row={row} />
      </th>
      <td class="number">{recordsText(row)}</td>
      <td class="number">{row.leftOver > 0 ? row.leftOver : ""}</td>
      <td class="number">{row.age === null ? "" : shortTime(row.age + passed)}</td>
      <td class="number minor">{next === null ? "" : shortTime(next)}</td>
      <td class="number">{row.duration === null ? "" : duration(row.duration)}</td>
      <td class="minor">
        <a href={historyOf(row.name)} aria-label={`History of ${row.name}`}>
          <Spark name={row.name} />
        </a>
      </td>
      <Actions {...row} />
    </tr>
  );
}

const columns: [string, string][] = [
  ["state", "state"],
  ["instance", "instance"],
  ["records", "number records"],
  ["left over", "number left"],
  ["age", "number time"],
  ["next in", "number time minor"],
  ["took", "number time took"],
  ["last 100 loads", "loads minor"],
];

/** A row that moves loses the focus; one that was only pressed by the pointer may move. */
function onFocusIn({ target }: FocusEvent): void {
  if (target instanceof Element && target.matches(":focus-visible")) hold("focus");
}

function onFocusOut({ currentTarget, relatedTarget }: FocusEvent): void {
  const isWithin = relatedTarget instanceof Node && (currentTarget as Node).contains(relatedTarget);
  if (!isWithin) release("focus");
}

export function Wall() {
  useEffect(() => releaseAll, []);
  return (
    <main class="wall">
      <h1 class="unseen">Instances</h1>
      <table
        onPointerEnter={() => hold("pointer")}
        onPointerLeave={() => release("pointer")}
        onFocusIn={onFocusIn}
        onFocusOut={onFocusOut}
      >
        <thead>
          <tr>
            {columns.map(([title, style]) => (
              <th key={title} scope="col" class={style}>
                {title}
              </th>
            ))}
            <th scope="col" class="actions">
              <span class="unseen">action</span>
            </th>
          </tr>
        </thead>
        <tbody>
          {ordered().map((row) => (
            <Row key={row.name} row={row} />
          ))}
        </tbody>
      </table>
      {seen.value.length === 0 && <p class="quiet">The scene has no instances.</p>}
      <Why />
      <Log />
    </main>
  );
}
