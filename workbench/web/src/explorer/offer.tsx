// What can be done with the active row.

import { details } from "../edit/settings.js";
import { dry, promise } from "../result/dryrun.js";
import { brokenAt } from "../session.js";
import type { Entry, Outline } from "../shapes.js";
import { counted } from "../words.js";
import { active, found, rows, selected } from "./look.js";
import { isSelectable, isSelected, keyOf, settingsForAll, settingsForKey } from "./offers.js";
import { ColumnOffer } from "./columnoffer.js";
import { OneOfThese } from "./oneofthese.js";
import { column, hasTables, table } from "./table.js";
import { isRest, type Node } from "./tree.js";
import { use } from "./use.js";

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

function Unselectable({ entry }: { entry: Entry }) {
  return (
    <p class="offer">
      The path language cannot write the name "{entry.name}" or one above it, so nothing selects it.
    </p>
  );
}

interface Props {
  instance: string;
  node: Node;
  outline: Outline;
}

function placeText(entry: Entry): string {
  return Object.entries(entry.set)
    .filter(([name]) => name !== "namespaces")
    .map(([name, value]) => (name === "xpath" ? value : `${name} = ${value}`))
    .join(", ");
}

/** All entries that have the value of this one. */
function Where({ instance, node, outline }: Props) {
  const { where } = node.entry;
  if (where === undefined) return null;
  const entry = { ...node.entry, ...where };
  const values = details.value?.values ?? {};
  const take = (): Promise<void> =>
    use(instance, settingsForAll({ ...node, entry }, outline, values), where.records);
  return (
    <>
      <button disabled={brokenAt.value !== 0} onClick={() => void take()}>
        All with this value ({counted(where.records, "record")})
      </button>
      {isSelected(entry, values) && <Promised />}
    </>
  );
}

function Buttons(props: Props) {
  const { instance, node, outline } = props;
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
      <Where {...props} />
      {!hasTables.value && <OneOfThese key={node.id} node={node} />}
      <code title={placeText(entry)}>{placeText(entry)}</code>
      {selected.value === node && <Promised />}
    </div>
  );
}

export function Offer({ instance }: { instance: string }) {
  const node = rows.value.find((each) => each.id === active.value);
  const { outline } = found.value;
  if (node === undefined || outline === null || isRest(node)) return <p class="offer" />;
  if (column.value !== "" && table.value !== null && outline.queryMode === "EXCEL")
    return <ColumnOffer instance={instance} shown={table.value} name={column.value} outline={outline} />;
  if (!isSelectable(node.entry) && hasTables.value) return <p class="offer" />;
  if (!isSelectable(node.entry)) return <Unselectable entry={node.entry} />;
  return <Buttons instance={instance} node={node} outline={outline} />;
}
