// What has happened, newest first.

import { log } from "../loads.js";
import { version } from "../session.js";
import type { Load } from "../shapes.js";

function Line({ load, times }: { load: Load; times: number }) {
  const time = new Date(load.time);
  return (
    <li>
      <time dateTime={load.time}>{time.toLocaleTimeString("en-GB")}</time>
      <span class="who">{load.instance}</span>
      <span>
        {load.line}
        {times > 1 && <span class="quiet"> ({times} times)</span>}
      </span>
    </li>
  );
}

/** Changes of state are announced elsewhere, at a pace that can be listened to. */
export function Log() {
  return (
    <section class="log">
      <header>
        <h2>Log</h2>
        <span class="version">intake-workbench {version.value}</span>
      </header>
      <div role="log" aria-live="off" aria-label="Log" tabIndex={0}>
        <ol>
          {log.value.map(({ load, times }) => (
            <Line key={`${load.time} ${load.instance} ${load.duration}`} load={load} times={times} />
          ))}
        </ol>
      </div>
      {log.value.length === 0 && <p class="quiet">Nothing has happened yet.</p>}
    </section>
  );
}
