// One instance: its parameters, what its source has, and what a load would do.

import { useLayoutEffect } from "preact/hooks";
import { Explorer } from "../explorer/explorer.js";
import { forgetSource, wanted } from "../explorer/look.js";
import { forgetDry } from "../result/dryrun.js";
import { Results } from "../result/results.js";
import { historyOf } from "../route.js";
import { isLocked } from "../scene.js";
import { brokenAt, seen, servers } from "../session.js";
import { StateWord } from "../state.js";
import { closeWhy, explain, look, Why } from "../why.js";
import { DraftWords } from "./draft.js";
import { Fields } from "./fields.js";
import { readParameters } from "./parameters.js";
import { details, notice, open } from "./settings.js";

/** What was found out, and what is still asked. */
function forgetAll(): void {
  closeWhy();
  forgetDry();
  forgetSource();
  wanted.value = "";
}

function begin(name: string): () => void {
  forgetAll();
  open(name);
  void readParameters().catch((fault: unknown) => (notice.value = String(fault)));
  return forgetAll;
}

function State({ name }: { name: string }) {
  const row = seen.value.find((each) => each.name === name);
  if (row === undefined) return null;
  return (
    <span class={`now ${row.state}`}>
      <span class="state">
        <StateWord state={row.state} />
      </span>
      <span class="number">{row.records === null ? "" : `${row.records} records`}</span>
    </span>
  );
}

function Head({ name }: { name: string }) {
  const isLive = brokenAt.value === 0;
  const isDirect = details.value?.isDraft !== true && !isLocked.value;
  const isAutomatic = isDirect && details.value?.values["autoLoad"] === 1;
  return (
    <header class="head">
      <a href="#">◂ All instances</a>
      <h1>{name}</h1>
      <State name={name} />
      <a href={historyOf(name)}>History</a>
      <span class="onAir">{isAutomatic && "Changes are on air with the next load."}</span>
      <button disabled={!isLive} onClick={() => explain(name)}>
        Why?
      </button>
    </header>
  );
}

function Gone() {
  return (
    <main class="edit">
      <p class="head">
        <a href="#">◂ All instances</a> This instance is not there any more.
      </p>
    </main>
  );
}

function Editor({ name }: { name: string }) {
  useLayoutEffect(() => begin(name), [name]); // before anything of another instance can be pressed
  return (
    <main class="edit">
      <Head name={name} />
      <DraftWords name={name} />
      <p class="notice" role="status">
        {notice.value}
      </p>
      <div class="panes">
        <Fields instance={name} />
        <div class="looks">
          <Explorer instance={name} />
          {look.value === null ? <Results instance={name} /> : <Why />}
        </div>
      </div>
    </main>
  );
}

/** Another one that comes under the name is begun anew: nothing that was meant for the former stays. */
export function Edit({ name }: { name: string }) {
  const row = seen.value.find((each) => each.name === name);
  if (row !== undefined) return <Editor key={row.pageId} name={name} />;
  return servers.value > 0 ? <Gone /> : null;
}
