// A source of another kind than the query type is read in vain.

import { change } from "../edit/change.js";
import { entriesOf, parameters } from "../edit/parameters.js";
import { details } from "../edit/settings.js";
import { brokenAt } from "../session.js";
import { found } from "./look.js";
import { settingsForKind } from "./offers.js";

export function OtherKind({ instance }: { instance: string }) {
  const { outline } = found.value;
  const values = details.value?.values;
  const queryMode = parameters.value.find(({ name }) => name === "queryMode");
  if (outline === null || values === undefined || queryMode === undefined) return null;
  const set = settingsForKind(outline, values);
  if (Object.keys(set).length === 0) return null;
  const kinds = entriesOf(queryMode);
  return (
    <p class="offer other-kind">
      The query type is {kinds[Number(values["queryMode"])]}; this is {kinds[Number(set["queryMode"])]}.
      <button class="small" disabled={brokenAt.value !== 0} onClick={() => void change(instance, set)}>
        Read it so
      </button>
    </p>
  );
}
