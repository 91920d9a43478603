// The text that a load would hand to the data store.

import type { DryRun } from "../shapes.js";

export function Script({ answer }: { answer: DryRun }) {
  return (
    <>
      {answer.isScriptCut && <p class="quiet">The script is longer; this is its beginning.</p>}
      <pre tabIndex={0} aria-label="Script">
        {answer.script}
      </pre>
    </>
  );
}
