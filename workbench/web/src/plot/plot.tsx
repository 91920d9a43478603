// A plot of what was loaded, with the same numbers as a table beside it.

import { useEffect, useMemo } from "preact/hooks";
import { Grid } from "../grid/grid.js";
import { counted } from "../words.js";
import { Chart } from "./chart.js";
import { choices, failure, leftOut, readChoices } from "./choices.js";
import { choose, plotted, showPlot, type Plotted } from "./plotted.js";

/** What can be plotted is asked again when somebody is about to choose. */
function Chooser({ instance }: { instance: string }) {
  const current = plotted.value?.choice.id ?? "";
  return (
    <label class="chooser">
      <span>Plot</span>
      <select
        value={current}
        onFocus={() => void readChoices(instance)}
        onChange={(event) => choose(event.currentTarget.value)}
      >
        {current === "" && <option value="">choose what is plotted</option>}
        {choices.value.map(({ id, title, isText }) => (
          <option key={id} value={id}>
            {title + (isText ? " (texts that are numbers)" : "")}
          </option>
        ))}
      </select>
      <span class="quiet">
        {leftOut.value > 0 && `${counted(leftOut.value, "further field")} not listed.`}
        {plotted.value !== null &&
          plotted.value.leftOut > 0 &&
          ` ${counted(plotted.value.leftOut, "further record")} not plotted.`}
      </span>
    </label>
  );
}

function Numbers({ shown }: { shown: Plotted }) {
  const { isByTime, choice } = shown;
  const columns = useMemo(() => [isByTime ? "time" : "key", "value"], [isByTime]);
  return <Grid label={`Numbers of ${choice.title}`} columns={columns} rows={shown.rows} />;
}

export function Plot({ instance }: { instance: string }) {
  useEffect(() => showPlot(instance), [instance]);
  const shown = plotted.value;
  if (failure.value !== "") return <p class="quiet">{failure.value}</p>;
  if (choices.value.length === 0)
    return <p class="quiet">Nothing that this instance has loaded is a number.</p>;
  return (
    <div class="plot">
      <Chooser instance={instance} />
      {shown !== null && (
        <div class="plotted">
          <Chart shown={shown} />
          <Numbers shown={shown} />
        </div>
      )}
    </div>
  );
}
