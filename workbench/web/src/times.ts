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
