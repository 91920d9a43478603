// One look at a time: of those that are wished for meanwhile, only the last one is sent.

type Task = () => Promise<void>; // tells by itself what goes wrong

let waiting: Task | null = null;
let isBusy = false;

export async function runLatest(task: Task): Promise<void> {
  waiting = task;
  if (isBusy) return;
  isBusy = true;
  for (let next: Task | null = task; next !== null; next = waiting) {
    waiting = null;
    await next();
  }
  isBusy = false;
}
