// What a save would change in the file, instance by instance.

import type { SceneChange } from "../shapes.js";

const titles = ["instance", "what", "parameter", "in the file", "after saving"];

function Name({ change }: { change: SceneChange }) {
  return (
    <>
      {change.instance}
      {change.was !== "" && <span class="quiet"> (was {change.was})</span>}
    </>
  );
}

/** The instance is named once, beside the first of its parameters. */
function Rows({ change }: { change: SceneChange }) {
  const parameters = change.parameters.length > 0 ? change.parameters : [{ name: "", before: "", after: "" }];
  return (
    <>
      {parameters.map(({ name, before, after }, i) => (
        <tr key={name} class={change.kind}>
          <td>{i === 0 && <Name change={change} />}</td>
          <td class="what">{i === 0 ? change.kind : ""}</td>
          <td>{name}</td>
          <td class="value" title={before}>
            {before}
          </td>
          <td class="value" title={after}>
            {after}
          </td>
        </tr>
      ))}
    </>
  );
}

export function Difference({ changes }: { changes: SceneChange[] }) {
  if (changes.length === 0) return <p class="quiet">A save would change nothing in the file.</p>;
  return (
    <div class="difference" tabIndex={0} role="region" aria-label="Difference against the file">
      <table class="list">
        <thead>
          <tr>
            {titles.map((title) => (
              <th key={title} scope="col">
                {title}
              </th>
            ))}
          </tr>
        </thead>
        <tbody>
          {changes.map((change) => (
            <Rows key={`${change.kind} ${change.instance}`} change={change} />
          ))}
        </tbody>
      </table>
    </div>
  );
}
