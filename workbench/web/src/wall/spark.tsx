// The last loads of an instance: how long each took, and how it came out.

import { loadsOf } from "../loads.js";
import type { Load, Outcome } from "../shapes.js";
import { counted, duration, outcomeWords } from "../words.js";

const height = 28;
const slots = 100;
const least = 3; // how high the shortest load is

/** How a load is drawn at x, when its duration is this high. Each outcome has a shape of its own. */
const shapes: Record<Outcome, (x: number, high: number) => string> = {
  loaded: (x, high) => `M${x} ${height}v${-high}`,
  empty: (x, high) => `M${x} ${height - high}v${least}`,
  failed: (x) => `M${x} ${height}V0`,
  notExecuted: (x) => `M${x} ${height}V${height * 0.6}M${x} ${height * 0.4}V0`,
  actionFailed: (x, high) => `M${x} ${height}v${-high}M${x} 0v${least}`,
  late: (x) => `M${x} ${height}v-5m0 -4v-5m0 -4v-5`,
};

function paths(loads: Load[]): [Outcome, string][] {
  const longest = Math.max(...loads.map((load) => load.duration), 0.001);
  const drawn = new Map<Outcome, string>();
  loads.forEach((load, i) => {
    const high = least + (height - least) * (load.duration / longest);
    const x = slots - loads.length + i + 0.5;
    const shape = shapes[load.outcome](x, Math.round(high * 10) / 10);
    drawn.set(load.outcome, (drawn.get(load.outcome) ?? "") + shape);
  });
  return [...drawn];
}

function words(loads: Load[]): string {
  const counts = new Map<Outcome, number>();
  for (const { outcome } of loads) counts.set(outcome, (counts.get(outcome) ?? 0) + 1);
  const outcomes = [...counts].map(([outcome, count]) => `${count} ${outcomeWords[outcome]}`).join(", ");
  const longest = Math.max(...loads.map((load) => load.duration));
  return `The last ${counted(loads.length, "load")}: ${outcomes}. The longest took ${duration(longest)}.`;
}

export function Spark({ name }: { name: string }) {
  const loads = loadsOf.value.get(name) ?? [];
  if (loads.length === 0) return <svg class="spark" aria-hidden="true" />;
  return (
    <svg
      class="spark"
      role="img"
      aria-label={words(loads)}
      viewBox={`0 0 ${slots} ${height}`}
      preserveAspectRatio="none"
    >
      <title>{words(loads)}</title>
      {paths(loads).map(([outcome, path]) => (
        <path key={outcome} class={outcome} d={path} />
      ))}
    </svg>
  );
}
