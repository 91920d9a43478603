// Why an instance brings what it brings, stage by stage.

import { signal } from "@preact/signals";
import { useEffect, useRef } from "preact/hooks";
import * as api from "./api.js";
import { change } from "./edit/change.js";
import { brokenAt } from "./session.js";
import type { Explanation, Stage, StageState } from "./shapes.js";

interface Look {
  name: string;
  answer: Explanation | null; // null as long as it is waited for
  error: string;
}

export const look = signal<Look | null>(null);

const shapes: Record<StageState, string> = {
  ok: "✓",
  warning: "!",
  failed: "✕",
  skipped: "–",
};

export function explain(name: string): void {
  const asked: Look = { name, answer: null, error: "" };
  const finish = (result: Partial<Look>): void => {
    if (look.value === asked) look.value = { ...asked, ...result };
  };
  look.value = asked;
  api.explain(name).then(
    (answer) => finish({ answer }),
    (fault: unknown) => finish({ error: api.sentenceOf(fault) }),
  );
}

export function closeWhy(): void {
  look.value = null;
}

/** Explained anew where it is still looked at. */
async function use(name: string, stage: Stage): Promise<void> {
  const shown = look.value;
  const refusal = await change(name, stage.set);
  if (look.value !== shown) return;
  if (refusal === "") explain(name);
  else look.value = { name, answer: null, error: refusal };
}

function settings(stage: Stage): string {
  return Object.entries(stage.set)
    .map(([name, value]) => `${name} = ${value}`)
    .join(", ");
}

/** What was seen, with the part marked that the cause is about. */
function Seen({ stage }: { stage: Stage }) {
  const at = stage.place === "" ? -1 : stage.seen.lastIndexOf(stage.place);
  if (at < 0) return <span>{stage.seen}</span>;
  return (
    <span>
      {stage.seen.slice(0, at)}
      <mark>{stage.place}</mark>
      {stage.seen.slice(at + stage.place.length)}
    </span>
  );
}

function Proposal({ name, stage }: { name: string; stage: Stage }) {
  return (
    <p class="proposal">
      <span>
        Try: {settings(stage)} ({stage.records} {stage.records === 1 ? "record" : "records"}, checked)
      </span>
      <button disabled={brokenAt.value !== 0} onClick={() => void use(name, stage)}>
        Use this
      </button>
    </p>
  );
}

function StageRow({ name, stage }: { name: string; stage: Stage }) {
  return (
    <li class={stage.state}>
      <span class="shape">
        <span aria-hidden="true">{shapes[stage.state]}</span>
        <span class="unseen">{stage.state}</span>
      </span>
      <span class="stage">{stage.stage}</span>
      <div>
        <Seen stage={stage} />
        {stage.cause !== "" && <p>{stage.cause}</p>}
        {stage.next !== "" && <p class="next">{stage.next}</p>}
        {Object.keys(stage.set).length > 0 && <Proposal name={name} stage={stage} />}
      </div>
    </li>
  );
}

function Skipped({ stages }: { stages: Stage[] }) {
  return (
    <li class="skipped">
      <span class="shape" aria-hidden="true">
        {shapes.skipped}
      </span>
      <span class="rest">not reached: {stages.map(({ stage }) => stage).join(", ")}</span>
    </li>
  );
}

/** What was asked of a server and what it answered, for those who run it. */
function Exchange({ look }: { look: Explanation }) {
  if (look.request === "") return null;
  return (
    <details class="exchange">
      <summary>Request and answer</summary>
      <pre>{look.request}</pre>
      <pre>{look.answer}</pre>
    </details>
  );
}

function Answer({ shown }: { shown: Look }) {
  if (shown.answer === null)
    return <p role="status">{shown.error === "" ? "Looking at the source …" : shown.error}</p>;
  const { stages } = shown.answer;
  const skipped = stages.filter(({ state, cause }) => state === "skipped" && cause === "");
  const reached = stages.filter((stage) => !skipped.includes(stage));
  return (
    <>
      <ol>
        {reached.map((stage) => (
          <StageRow key={stage.stage} name={shown.name} stage={stage} />
        ))}
        {skipped.length > 0 && <Skipped stages={skipped} />}
      </ol>
      <Exchange look={shown.answer} />
    </>
  );
}

function Panel({ shown }: { shown: Look }) {
  const head = useRef<HTMLElement>(null);
  useEffect(() => head.current?.scrollIntoView({ block: "nearest" }), [shown]);
  return (
    <section class="why" aria-label={`Why ${shown.name}?`} ref={head}>
      <header>
        <h2>Why {shown.name}?</h2>
        <button class="small" onClick={closeWhy}>
          Close
        </button>
      </header>
      <Answer shown={shown} />
    </section>
  );
}

export function Why() {
  return look.value === null ? null : <Panel shown={look.value} />;
}
