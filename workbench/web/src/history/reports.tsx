// Reports of earlier runs, looked at as the history of an instance is.

import { useEffect } from "preact/hooks";
import { NotListed } from "../filelist.js";
import { counted } from "../words.js";
import { Loads } from "./loads.js";
import { choose, failure, files, open, readFiles, readFurther } from "./report.js";

function Files() {
  return (
    <ul class="files" aria-label="Reports">
      {files.value.files.map((file) => (
        <li key={file}>
          <button class="plain" aria-pressed={open.value?.file === file} onClick={() => void choose(file, "")}>
            {file}
          </button>
        </li>
      ))}
    </ul>
  );
}

const clockTime = (time: string): string => new Date(time).toLocaleString("en-GB");

/** Which instances it tells of; a press shows the loads of one. */
function Summary() {
  const now = open.value;
  if (now === null) return null;
  const all = now.answer.instances;
  return (
    <div class="summary" role="group" aria-label="Instances">
      <button class="small" aria-pressed={now.instance === ""} onClick={() => void choose(now.file, "")}>
        All
      </button>
      {all.map(({ name, loads, bad, first, last }) => (
        <button
          key={name}
          class="small"
          aria-pressed={now.instance === name}
          title={`${clockTime(first)} to ${clockTime(last)}`}
          onClick={() => void choose(now.file, name)}
        >
          {name} <span class="quiet">{counted(loads, "load")}</span>
          {bad > 0 && <span class="bad"> {bad} bad</span>}
        </button>
      ))}
    </div>
  );
}

function Opened() {
  const now = open.value;
  if (now === null) return <p class="quiet">Choose a report to see its loads.</p>;
  const { count, unreadable, endedEarly } = now.answer;
  return (
    <>
      <Summary />
      {unreadable > 0 && <p class="bad">{counted(unreadable, "line")} of it cannot be read.</p>}
      {endedEarly && <p class="bad">It is too long to be read whole: what comes behind these loads is left out.</p>}
      <Loads
        key={`${now.file}\n${now.instance}`}
        of="report"
        loads={now.loads}
        count={count}
        label={`Loads of ${now.file}`}
      />
      {now.loads.length < count && (
        <p class="quiet">
          The first {now.loads.length} of {count} are listed.{" "}
          <button class="small" disabled={now.isReading} onClick={readFurther}>
            Next 100
          </button>
        </p>
      )}
    </>
  );
}

export function Reports() {
  useEffect(() => void readFiles(), []);
  return (
    <main class="history reports">
      <header class="head">
        <h1>Reports</h1>
        <span class="quiet">of earlier runs, oldest load first</span>
      </header>
      {failure.value !== "" && <p class="bad">{failure.value}</p>}
      <NotListed {...files.value} />
      {files.value.files.length === 0 ? (
        <p class="quiet">There is no report in this folder or below it.</p>
      ) : (
        <div class="sides">
          <Files />
          <div class="opened">
            <Opened />
          </div>
        </div>
      )}
    </main>
  );
}
