// What a load would bring and do, and what is in the data store now.

import { signal } from "@preact/signals";
import { load } from "../edit/load.js";
import { details } from "../edit/settings.js";
import { HoldButton } from "../hold.js";
import { brokenAt } from "../session.js";
import type { DryRun } from "../shapes.js";
import { counted, duration, outcomeWords } from "../words.js";
import { Plot } from "../plot/plot.js";
import { Changes } from "./changes.js";
import { dry, isOutdated, promise, runDry } from "./dryrun.js";
import { Records } from "./records.js";
import { Script } from "./script.js";
import { Store } from "./store.js";
import { Tabs } from "./tabs.js";

const tabs: Record<string, (props: { answer: DryRun }) => preact.JSX.Element> = {
  RECORDS: Records,
  SCRIPT: Script,
  CHANGES: Changes,
};
const others: Record<string, (props: { instance: string }) => preact.JSX.Element> = { STORE: Store, PLOT: Plot };
const names = [...Object.keys(tabs), ...Object.keys(others)];
const chosen = signal("RECORDS");

function summary(answer: DryRun): string {
  if (answer.outcome === "mayWrite") return "";
  return `${counted(answer.records, "record")}, ${duration(answer.duration)}`;
}

function Said() {
  const { isRunning, answer, error } = dry.value;
  if (isRunning) return <p role="status">Trying …</p>;
  if (error !== "") return <p role="status" class="bad">{error}</p>;
  if (answer === null) return <p role="status">Nothing tried yet.</p>;
  return (
    <p role="status" class={`outcome ${answer.outcome}`}>
      <strong>{outcomeWords[answer.outcome]}</strong> {summary(answer)}
    </p>
  );
}

/** A query that may write is run only when somebody has said so. */
function AskFirst({ instance }: { instance: string }) {
  return (
    <p class="ask">
      This query may write into its database, so it has not been run.
      <button onClick={() => void runDry(instance, true)}>Run it once all the same</button>
    </p>
  );
}

function Answer({ instance }: { instance: string }) {
  const { answer } = dry.value;
  const Tab = tabs[chosen.value];
  const Other = others[chosen.value];
  if (Other !== undefined) return <Other instance={instance} />;
  if (Tab === undefined) return null;
  if (answer === null) return <p class="quiet">A dry run shows here what a load would bring.</p>;
  if (answer.outcome === "mayWrite") return <AskFirst instance={instance} />;
  return (
    <>
      {isOutdated() && <p class="bad">The settings have changed since this dry run.</p>}
      {answer.error !== "" && <p class="fault">{answer.error}</p>}
      <Tab answer={answer} />
    </>
  );
}

/** What the explorer has promised was meant for the settings of then. */
function tryAgain(instance: string): void {
  promise.value = null;
  void runDry(instance, false);
}

export function Results({ instance }: { instance: string }) {
  const isLive = brokenAt.value === 0;
  const revision = details.value?.revision ?? 0;
  return (
    <section class="results" aria-label="Results">
      <header>
        <Tabs names={names} chosen={chosen} />
        <Said />
        <button
          class="small"
          disabled={!isLive || dry.value.isRunning}
          onClick={() => tryAgain(instance)}
        >
          Dry run
        </button>
        <HoldButton
          label="Load to store"
          style="small"
          isOff={!isLive}
          onPress={(held) => void load(instance, held, revision)}
        />
      </header>
      <div class="answer" id="results" role="tabpanel" aria-labelledby={`tab-${chosen.value}`}>
        <Answer instance={instance} />
      </div>
    </section>
  );
}
