// What a save would change in the file, instance by instance.

import type { Scene, SceneChange } from "../shapes.js";

const titles = [
  ["instance", "instance"],
  ["what", "what"],
  ["parameter", "parameter"],
  ["in the file", "value"],
  ["after saving", "value"],
];

/** A name that has changed is told like a parameter. */
function rowsOf({ instance, was, parameters }: SceneChange): SceneChange["parameters"] {
  const name = was === "" ? [] : [{ name: "name", before: was, after: instance }];
  const rows = [...name, ...parameters];
  return rows.length > 0 ? rows : [{ name: "", before: "", after: "" }];
}

/** The instance is named once, beside the first of its parameters. */
function Rows({ change }: { change: SceneChange }) {
  return (
    <>
      {rowsOf(change).map(({ name, before, after }, i) => (
        <tr key={name} class={change.kind}>
          <td title={change.instance}>{i === 0 && change.instance}</td>
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
