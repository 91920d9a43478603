// Why an instance brings what it brings, stage by stage.

import { signal } from "@preact/signals";
import * as api from "./api.js";

interface Look {
  name: string;
  answer: api.Explanation | null; // null as long as it is waited for
  error: string;
}

const look = signal<Look | null>(null);

const shapes: Record<api.StageState, string> = {
  ok: "✓",
  warning: "!",
  failed: "✕",
  skipped: "–",
};

export function explain(name: string): void {
  look.value = { name, answer: null, error: "" };
  const isStillWanted = (): boolean => look.value?.name === name;
  api.explain(name).then(
    (answer) => {
      if (isStillWanted()) look.value = { name, answer, error: "" };
    },
    (fault: unknown) => {
      if (!isStillWanted()) return;
      look.value = { name, answer: null, error: fault instanceof Error ? fault.message : "" };
    },
  );
}

function settings(stage: api.Stage): string {
  return Object.entries(stage.set)
    .map(([name, value]) => `${name} = ${value}`)
    .join(", ");
}

/** What was seen, with the part marked that the cause is about. */
function Seen({ stage }: { stage: api.Stage }) {
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

function StageRow({ stage }: { stage: api.Stage }) {
  const hasProposal = Object.keys(stage.set).length > 0;
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
        {hasProposal && (
          <p class="proposal">
            Try: {settings(stage)} ({stage.records} {stage.records === 1 ? "record" : "records"},
            checked)
          </p>
        )}
      </div>
    </li>
  );
}

export function Why() {
  const shown = look.value;
  if (shown === null) return null;
  return (
    <section class="why" aria-label={`Why ${shown.name}?`}>
      <header>
        <h2>Why {shown.name}?</h2>
        <button onClick={() => (look.value = null)}>Close</button>
      </header>
      {shown.answer === null && (
        <p role="status">{shown.error === "" ? "Looking at the source …" : shown.error}</p>
      )}
      {shown.answer !== null && (
        <ol>
          {shown.answer.stages.map((stage) => (
            <StageRow key={stage.stage} stage={stage} />
          ))}
        </ol>
      )}
    </section>
  );
}
