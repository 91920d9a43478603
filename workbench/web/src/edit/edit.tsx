// One instance: its parameters, and why it brings what it brings.

import { useEffect } from "preact/hooks";
import { brokenAt, seen } from "../session.js";
import { StateWord } from "../state.js";
import { closeWhy, explain, Why } from "../why.js";
import { Fields } from "./fields.js";
import { readParameters } from "./parameters.js";
import { details, notice, open } from "./settings.js";

function begin(name: string): () => void {
  closeWhy();
  open(name);
  void readParameters().catch((fault: unknown) => (notice.value = String(fault)));
  return closeWhy;
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
  const isAutomatic = details.value?.values["autoLoad"] === 1;
  return (
    <header class="head">
      <a href="#">◂ All instances</a>
      <h1>{name}</h1>
      <State name={name} />
      <span class="onAir">{isAutomatic && "Changes are on air with the next load."}</span>
      <button disabled={!isLive} onClick={() => explain(name)}>
        Why?
      </button>
    </header>
  );
}

export function Edit({ name }: { name: string }) {
  useEffect(() => begin(name), [name]);
  return (
    <main class="edit">
      <Head name={name} />
      <p class="notice" role="status">
        {notice.value}
      </p>
      <div class="panes">
        <Fields instance={name} />
        <div class="looks">
          <Why />
        </div>
      </div>
    </main>
  );
}
