// The button Load of an instance.

import * as api from "./api.js";
import { noteOwnStep } from "./edit/settings.js";
import { catchUp, error } from "./session.js";

const pause = 500; // milliseconds
const pressed = new Set<string>();

/** A double press loads once. Under the lock only one that was held loads, and a draft only as it was
    shown: in that revision. */
export async function press(name: string, held: boolean, revision: number): Promise<void> {
  if (pressed.has(name)) return;
  pressed.add(name);
  setTimeout(() => pressed.delete(name), pause);
  try {
    const loaded = await api.load(name, held, revision);
    if (loaded.revision !== undefined) noteOwnStep(name, revision, loaded.revision);
    error.value = "";
  } catch (fault) {
    error.value = api.sentenceOf(fault);
    if (api.isStale(fault)) await catchUp().catch(() => undefined); // what is told is the refusal
  }
}
