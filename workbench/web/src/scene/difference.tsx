// What a save would change in the file, instance by instance.

import type { Scene, SceneChange } from "../shapes.js";

const titles = [
  ["instance", "instance"],
  ["what", "what"],
  ["parameter", "parameter"],
  ["in the file", "value"],
  ["after saving", "value"],
];

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
          <td title={change.instance}>{i === 0 && <Name change={change} />}</td>
          <td class="what">{i === 0 ? change.kind : ""}</td>
          <td title={name}>{name}</td>
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

function Changes({ changes }: { changes: SceneChange[] }) {
  return (
    <table class="list">
      <thead>
        <tr>
          {titles.map(([title, style]) => (
            <th key={title} scope="col" class={style}>
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
  );
}

/** With what was met in the file. Null as long as nobody knows. */
export function Difference({ shown }: { shown: Scene | null }) {
  if (shown === null) return <p class="difference quiet">Comparing …</p>;
  return (
    <div class="difference" tabIndex={0} role="region" aria-label="Difference against the file">
      {shown.changes.length === 0 ? (
        <p class="quiet">A save would change nothing in the file.</p>
      ) : (
        <Changes changes={shown.changes} />
      )}
      {shown.notes.map((note) => (
        <p key={note} class="bad">
          {note}
        </p>
      ))}
    </div>
  );
}
