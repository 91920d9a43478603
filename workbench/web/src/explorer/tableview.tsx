// The first rows of a table of the source. Its titles can be pressed.

import { details } from "../edit/settings.js";
import { Grid } from "../grid/grid.js";
import { brokenAt } from "../session.js";
import type { Outline } from "../shapes.js";
import { counted } from "../words.js";
import { keyOfColumn, marksOf, settingsForKeyColumn } from "./columns.js";
import { found } from "./look.js";
import { isSelected } from "./offers.js";
import { column, countRows, table, type Table } from "./table.js";
import { use } from "./use.js";

function sizes({ entry, preview }: Table): string {
  const columns = counted(preview?.columns.length ?? 0, "column");
  if (entry.records !== null) return `${columns}, ${counted(entry.records, "record")}`;
  return preview?.leftOut === 0 ? `${columns}, ${counted(preview.rows.length, "row")}` : columns;
}

function Title({ instance, shown, outline }: { instance: string; shown: Table; outline: Outline }) {
  const isCountable = outline.queryMode === "SQL" && shown.entry.records === null;
  return (
    <p class="title">
      <strong title={shown.entry.name}>{shown.entry.name}</strong>
      <span class="quiet">{sizes(shown)}</span>
      {isCountable && (
        <button class="small" disabled={brokenAt.value !== 0} onClick={() => void countRows(instance)}>
          Count rows
        </button>
      )}
    </p>
  );
}

/** The columns of a sheet can be used in more than one way, so that it is asked. */
function press(instance: string, shown: Table, outline: Outline, name: string): void {
  column.value = name;
  const isNoKey = keyOfColumn(shown, name) === "";
  if (outline.queryMode === "EXCEL" || isNoKey || brokenAt.value !== 0) return;
  const values = details.peek()?.values ?? {};
  void use(instance, settingsForKeyColumn(shown, name, outline, values), null);
}

function Rows({ instance, shown, outline }: { instance: string; shown: Table; outline: Outline }) {
  const { preview } = shown;
  if (preview === null) return <p class="quiet">{shown.failure}</p>;
  const values = details.value?.values ?? {};
  const marks = isSelected(shown.entry, values) ? marksOf(shown, preview.columns, values) : [];
  return (
    <Grid
      key={shown.entry.place}
      label={`First rows of ${shown.entry.name}`}
      columns={preview.columns}
      rows={preview.rows}
      marks={marks}
      onTitle={(place) => press(instance, shown, outline, preview.columns[place] ?? "")}
    />
  );
}

export function TableView({ instance }: { instance: string }) {
  const shown = table.value;
  const { outline } = found.value;
  if (shown === null || outline === null)
    return <p class="table quiet">Choose a table, and its first rows are shown here.</p>;
  return (
    <section class="table" aria-label="Table">
      <Title instance={instance} shown={shown} outline={outline} />
      <Rows instance={instance} shown={shown} outline={outline} />
    </section>
  );
}
