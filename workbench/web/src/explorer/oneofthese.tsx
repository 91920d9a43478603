// Goes to one of several entries by its number.

import { useState } from "preact/hooks";
import { brokenAt } from "../session.js";
import { showOne } from "./look.js";
import type { Node } from "./tree.js";

export function OneOfThese({ node }: { node: Node }) {
  const [typed, type] = useState("1");
  const { records, place } = node.entry;
  if (records === null || records < 2 || place === "") return null;
  const number = Number(typed);
  const isThere = Number.isInteger(number) && number >= 1 && number <= records;
  const submit = (event: Event): void => {
    event.preventDefault();
    if (isThere) showOne(node, number);
  };
  return (
    <form class="one-of" onSubmit={submit}>
      <input
        type="text"
        inputMode="numeric"
        aria-label={`Which of ${records}`}
        aria-invalid={!isThere}
        value={typed}
        onInput={(event) => type(event.currentTarget.value)}
      />
      <span class="quiet">of {records}</span>
      <button class="small" disabled={!isThere || brokenAt.value !== 0}>
        Only this one
      </button>
    </form>
  );
}
