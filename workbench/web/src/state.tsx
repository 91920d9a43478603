// The state of an instance, by shape, word and colour.

import type { State } from "./shapes.js";

const shapes: Record<State, string> = {
  failed: "✕",
  late: "◔",
  empty: "○",
  stale: "◇",
  loading: "◐",
  waiting: "–",
  loaded: "●",
};

export function StateWord({ state }: { state: State }) {
  return (
    <>
      <span class="sign" aria-hidden="true">
        {shapes[state]}
      </span>{" "}
      {state}
    </>
  );
}
