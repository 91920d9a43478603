// One look at a time: of those of a kind that are wished for meanwhile, only the last one is sent.

type Task = () => Promise<void>; // tells by itself what goes wrong
type Kind = "source" | "below" | "table";

const waiting = new Map<Kind, Task>();
let isBusy = false;

export async function runLatest(kind: Kind, task: Task): Promise<void> {
  waiting.set(kind, task);
  if (isBusy) return;
  isBusy = true;
  for (let [next] = waiting; next !== undefined; [next] = waiting) {
    waiting.delete(next[0]);
    await next[1]();
  }
  isBusy = false;
}
