// Why an instance brings what it brings, stage by stage.

import { effect, signal } from "@preact/signals";
import { useEffect, useRef } from "preact/hooks";
import * as api from "./api.js";
import { change } from "./edit/change.js";
import { brokenAt, seen } from "./session.js";
import type { Explanation, Stage, StageState } from "./shapes.js";

interface Look {
  name: string;
  pageId: number; // of the instance
  answer: Explanation | null; // null as long as it is waited for
  error: string;
  time: string; // of the load that was explained then; empty for one that is explained now
}

export const look = signal<Look | null>(null);

const shapes: Record<StageState, string> = {
  ok: "✓",
  warning: "!",
  failed: "✕",
  skipped: "–",
};

const pageIdOf = (name: string): number => seen.peek().find((each) => each.name === name)?.pageId ?? 0;

let asking = new AbortController();

function show(name: string, ask: (signal: AbortSignal) => Promise<Partial<Look>>): void {
  asking.abort();
  asking = new AbortController();
  const asked: Look = { name, pageId: pageIdOf(name), answer: null, error: "", time: "" };
  const finish = (result: Partial<Look>): void => {
    if (look.value === asked) look.value = { ...asked, ...result };
  };
  look.value = asked;
  ask(asking.signal).then(finish, (fault: unknown) => finish({ error: api.sentenceOf(fault) }));
}

export function explain(name: string): void {
  show(name, async (signal) => ({ answer: await api.explain(name, signal) }));
}

/** What was found out when a load of the history had come. */
export function explainKept(name: string, id: number): void {
  const read = async (): Promise<Partial<Look>> => {
    const { load, explanation } = await api.keptLoad(name, id);
    const error = explanation === null ? "Nothing was kept of this load." : "";
    return { answer: explanation, error, time: load.time };
  };
  show(name, read);
}

export function closeWhy(): void {
  asking.abort();
  look.value = null;
}

/** What was found out of one is not for another that comes under its name. */
effect(() => {
  const shown = look.value;
  const isThere = seen.value.some(({ pageId, name }) => pageId === shown?.pageId && name === shown.name);
  if (shown !== null && !isThere) closeWhy();
});

/** Explained anew where it is still looked at. */
async function use(name: string, stage: Stage): Promise<void> {
  const shown = look.value;
  const refusal = await change(name, stage.set);
  if (look.value !== shown) return;
  if (refusal === "") explain(name);
  else look.value = { name, pageId: pageIdOf(name), answer: null, error: refusal, time: "" };
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

function StageRow({ shown, stage }: { shown: Look; stage: Stage }) {
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
        {shown.time === "" && Object.keys(stage.set).length > 0 && (
          <Proposal name={shown.name} stage={stage} />
        )}
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
          <StageRow key={stage.stage} shown={shown} stage={stage} />
        ))}
        {skipped.length > 0 && <Skipped stages={skipped} />}
      </ol>
      <Exchange look={shown.answer} />
    </>
  );
}

const timeText = (time: string): string => new Date(time).toLocaleString("en-GB");

function Panel({ shown }: { shown: Look }) {
  const head = useRef<HTMLElement>(null);
  useEffect(() => head.current?.scrollIntoView({ block: "nearest" }), [shown]);
  return (
    <section class="why" aria-label={`Why ${shown.name}?`} ref={head}>
      <header>
        <h2>
          Why {shown.name}?{shown.time !== "" && <span class="quiet"> as of {timeText(shown.time)}</span>}
        </h2>
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
