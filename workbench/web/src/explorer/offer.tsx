// What can be done with the active row.

import { change } from "../edit/change.js";
import { details, isOpen } from "../edit/settings.js";
import { dry, promise, runDry } from "../result/dryrun.js";
import { brokenAt } from "../session.js";
import type { Entry, Outline, Values } from "../shapes.js";
import { counted } from "../words.js";
import { active, found, rows, selected } from "./look.js";
import { isSelectable, keyOf, settingsForAll, settingsForKey } from "./offers.js";
import type { Node } from "./tree.js";

async function use(instance: string, set: Values, records: number | null): Promise<void> {
  promise.value = null;
  if ((await change(instance, set)) !== "" || !isOpen(instance)) return;
  promise.value = records;
  await runDry(instance, false);
}

/** What was promised, and what a dry run has brought. */
function Promised() {
  if (promise.value === null || dry.value.isRunning || dry.value.answer === null) return null;
  const arrived = dry.value.answer.records;
  return (
    <span class={arrived === promise.value ? "kept" : "broken-promise"}>
      {promise.value} promised, {arrived} by the dry run
    </span>
  );
}

function Unselectable({ entry, outline }: { entry: Entry; outline: Outline }) {
  const isPath = outline.queryMode === "JSON" || outline.queryMode === "XML";
  return (
    <p class="offer">
      {isPath
        ? `The path language cannot write the name "${entry.name}" or one above it, so nothing selects it.`
        : "No setting selects this."}
    </p>
  );
}

function placeText(entry: Entry): string {
  return Object.entries(entry.set)
    .filter(([name]) => name !== "namespaces")
    .map(([name, value]) => (name === "xpath" ? value : `${name} = ${value}`))
    .join(", ");
}

function Buttons({ instance, node, outline }: { instance: string; node: Node; outline: Outline }) {
  const values = details.value?.values ?? {};
  const { entry } = node;
  const key = keyOf(entry, outline, values);
  const isLive = brokenAt.value === 0;
  const all = (): Promise<void> => use(instance, settingsForAll(node, outline, values), entry.records);
  const asKey = (): Promise<void> => use(instance, settingsForKey(key, values), null);
  return (
    <div class="offer">
      <button id="all-of-these" disabled={!isLive} onClick={() => void all()}>
        All of these{entry.records === null ? "" : ` (${counted(entry.records, "record")})`}
      </button>
      {key !== "" && (
        <button disabled={!isLive} onClick={() => void asKey()}>
          As key
        </button>
      )}
      <code title={placeText(entry)}>{placeText(entry)}</code>
      {selected.value === node && <Promised />}
    </div>
  );
}

export function Offer({ instance }: { instance: string }) {
  const node = rows.value.find((each) => each.id === active.value);
  const { outline } = found.value;
  if (node === undefined || outline === null) return <p class="offer" />;
  if (!isSelectable(node.entry)) return <Unselectable entry={node.entry} outline={outline} />;
  return <Buttons instance={instance} node={node} outline={outline} />;
}
