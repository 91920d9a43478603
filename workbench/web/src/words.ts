import type { Outcome } from "./shapes.js";

/** How a load came out. */
export const outcomeWords: Record<Outcome | "mayWrite", string> = {
  loaded: "loaded",
  empty: "empty",
  failed: "failed",
  notExecuted: "not executed",
  actionFailed: "action failed",
  late: "late",
  mayWrite: "not run",
};

/** "12 s", "4 min", "3 h": as short as it can be read from afar. */
export function shortTime(seconds: number): string {
  if (seconds < 10) return `${seconds.toFixed(1)} s`;
  if (seconds < 100) return `${Math.round(seconds)} s`;
  if (seconds < 6000) return `${Math.round(seconds / 60)} min`;
  return `${Math.round(seconds / 3600)} h`;
}

export function duration(seconds: number): string {
  return seconds < 1 ? `${Math.round(seconds * 1000)} ms` : `${seconds.toFixed(1)} s`;
}

/** "1 record", "3 records". */
export function counted(count: number, thing: string): string {
  return `${count} ${thing}${count === 1 ? "" : "s"}`;
}

export function sizeText(bytes: number): string {
  if (bytes < 1000) return counted(bytes, "byte");
  if (bytes < 1e6) return `${(bytes / 1e3).toFixed(1)} kB`;
  return `${(bytes / 1e6).toFixed(1)} MB`;
}
