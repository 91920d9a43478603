// What a load would change in the data store, and what it would leave over.

import type { Change, DryRun } from "../shapes.js";
import { counted, shortTime } from "../words.js";

function kindText({ kind, age }: Change): string {
  if (kind !== "left") return kind;
  return age === null ? "stays" : `stays, ${shortTime(age)} old`;
}

function Row({ change }: { change: Change }) {
  return (
    <tr class={change.kind}>
      <td>{change.field}</td>
      <td>{change.key}</td>
      <td class="what">{kindText(change)}</td>
      <td class="value">{change.before}</td>
      <td class="value">{change.after}</td>
    </tr>
  );
}

function Action({ answer }: { answer: DryRun }) {
  if (answer.action === "") return null;
  return (
    <p class="action">
      Then the post update action: <code>{answer.action}</code>
      {answer.actionError !== "" && <span class="bad"> {answer.actionError}</span>}
    </p>
  );
}

function Commands({ commands }: { commands: string[] }) {
  const told = commands.length === 0 ? "." : ": ";
  return (
    <p class="commands quiet">
      Commands to the host are not sent in a dry run{told}
      <code>{commands.join(" ")}</code>
    </p>
  );
}

function summary({ changes, changesLeftOut, same }: DryRun): string {
  const left = changes.filter(({ kind }) => kind === "left").length;
  const told = counted(changes.length - left, "change");
  const more = changesLeftOut > 0 ? `, ${changesLeftOut} further not shown` : "";
  return `${told}, ${left} left over from older loads, ${same} the same${more}.`;
}

export function Changes({ answer }: { answer: DryRun }) {
  return (
    <div class="scrolls" tabIndex={0} role="region" aria-label="Changes">
      <p class="quiet">{summary(answer)}</p>
      <Action answer={answer} />
      {answer.action !== "" && <Commands commands={answer.commands} />}
      {answer.changes.length > 0 && (
        <table class="list">
          <thead>
            <tr>
              {["field", "key", "what", "before", "after"].map((title) => (
                <th key={title} scope="col">
                  {title}
                </th>
              ))}
            </tr>
          </thead>
          <tbody>
            {answer.changes.map((change) => (
              <Row key={`${change.field}\n${change.key}\n${change.kind}`} change={change} />
            ))}
          </tbody>
        </table>
      )}
    </div>
  );
}
