// One look at a time: of those of a kind that are wished for meanwhile, only the last one is sent. A
// new look at the source, another table and another instance end those that nobody waits for any more.

type Task = (signal: AbortSignal) => Promise<void>; // tells by itself what goes wrong
type Kind = "source" | "below" | "table";

const waiting = new Map<Kind, Task>();
let running: { kind: Kind; looks: AbortController } | null = null;
let screen = new AbortController();

/** Ends the looks that are under way, and those that wait are not begun. */
function giveUp(): void {
  waiting.clear();
  running?.looks.abort();
}

/** The same with what is asked beside them: another instance is opened. */
export function leave(): void {
  giveUp();
  screen.abort();
  screen = new AbortController();
}

/** For what is asked beside the looks, as long as the instance is open. */
export const whileOpen = (): AbortSignal => screen.signal;

function giveWay(kind: Kind): void {
  if (kind === "source") giveUp();
  else if (kind === "table" && running?.kind === kind) running.looks.abort();
}

export async function runLatest(kind: Kind, task: Task): Promise<void> {
  giveWay(kind);
  waiting.set(kind, task);
  if (running !== null) return;
  for (let [next] = waiting; next !== undefined; [next] = waiting) {
    waiting.delete(next[0]);
    running = { kind: next[0], looks: new AbortController() };
    await next[1](running.looks.signal);
  }
  running = null;
}
