// The button Load of the instance that is edited.

import { press } from "../press.js";
import { error } from "../session.js";
import { settled } from "./settings.js";

/** Loads what was shown. What the press took out of a field goes before; where that is refused,
    nothing is loaded. */
export async function load(name: string, held: boolean, shown: number): Promise<void> {
  const revision = await settled(shown);
  if (revision === null) error.value = "Nothing was loaded, since what was just set was refused.";
  else await press(name, held, revision);
}
