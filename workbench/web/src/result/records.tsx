// The records that arrived, as a table.

import { Grid } from "../grid/grid.js";
import type { DryRun } from "../shapes.js";
import { counted } from "../words.js";

export function Records({ answer }: { answer: DryRun }) {
  const { columns, rows, leftOut } = answer.table;
  if (rows.length === 0) return <p class="quiet">No records.</p>;
  return (
    <>
      <Grid label="Records" columns={columns} rows={rows} />
      {leftOut > 0 && <p class="quiet">{counted(leftOut, "further record")} not shown.</p>}
    </>
  );
}
