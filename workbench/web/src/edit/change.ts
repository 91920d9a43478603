// Changes settings of any instance, whether it is edited on this page or not.

import * as api from "../api.js";
import type { Values } from "../shapes.js";
import { inNumbers } from "./parameters.js";
import { details, send } from "./settings.js";

/** Gives what is wrong; empty when nothing is. */
export async function change(name: string, set: Values): Promise<string> {
  try {
    const encoded = await inNumbers(set);
    if (details.peek()?.name === name) return await send(name, encoded);
    await api.edit(name, (await api.details(name)).revision, encoded);
    return "";
  } catch (fault) {
    return api.sentenceOf(fault);
  }
}
