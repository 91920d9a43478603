// The last loads of an instance, and why the bad ones were bad.

import { useEffect } from "preact/hooks";
import { addressOf } from "../route.js";
import { counted } from "../words.js";
import { explainKept, look, closeWhy, Why } from "../why.js";
import { failure, kept, show } from "./kept.js";
import { Loads } from "./loads.js";

export function History({ name }: { name: string }) {
  useEffect(() => {
    closeWhy();
    const end = show(name);
    return () => {
      end();
      closeWhy();
    };
  }, [name]);
  const loads = kept.value;
  return (
    <main class="history">
      <header class="head">
        <a href="#">◂ All instances</a>
        <h1>{name}</h1>
        <span class="quiet">the last {counted(loads.length, "load")}, newest first</span>
        <a href={addressOf(name)}>Edit</a>
      </header>
      {failure.value !== "" && <p class="bad">{failure.value}</p>}
      {loads.length === 0 && failure.value === "" && <p class="quiet">Nothing has been loaded yet.</p>}
      {loads.length > 0 && (
        <Loads
          of="history"
          loads={loads}
          count={loads.length}
          label={`Loads of ${name}`}
          onWhy={({ id }) => id !== undefined && explainKept(name, id)}
        />
      )}
      {look.value !== null && <Why />}
    </main>
  );
}
