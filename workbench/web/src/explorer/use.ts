// Takes settings over that the explorer offers, and tries them.

import { change } from "../edit/change.js";
import { isOpen } from "../edit/settings.js";
import { promise, runDry } from "../result/dryrun.js";
import type { Values } from "../shapes.js";

export async function use(instance: string, set: Values, records: number | null): Promise<void> {
  promise.value = null;
  if ((await change(instance, set)) !== "" || !isOpen(instance)) return;
  promise.value = records;
  await runDry(instance, false);
}
