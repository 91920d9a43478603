// The plugin's parameters, as it registers them. They do not change while the server runs.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { error, servers } from "../session.js";
import type { Parameter, Values } from "../shapes.js";

export const parameters = signal<Parameter[]>([]);

let reading: Promise<Parameter[]> | undefined;

export async function readParameters(): Promise<Parameter[]> {
  reading ??= api.parameters();
  try {
    return (parameters.value = await reading);
  } catch (fault) {
    reading = undefined;
    throw fault;
  }
}

/** A server that was started again may have another plugin. */
effect(() => {
  if (servers.value <= 1 || parameters.peek().length === 0) return;
  reading = undefined;
  void readParameters().catch((fault: unknown) => (error.value = api.sentenceOf(fault)));
});

/** A parameter without a label needs one all the same. */
const labels: Record<string, string> = { customHeaders: "Custom Headers" };

export function labelOf(parameter: Parameter): string {
  return labels[parameter.name] ?? parameter.label.trim().replace(/:$/, "");
}

/** Values that are stored and mean something, without being an entry of the list. */
const unlisted: Record<string, string[]> = { queryMode: ["HTML"] };

export function entriesOf(parameter: Parameter): string[] {
  const listed = (parameter.entries ?? []).map((entry) => entry.trim());
  return [...listed, ...(unlisted[parameter.name] ?? [])];
}

const secrets = new Set(["password", "proxyPwd"]);

export const isSecret = (parameter: Parameter): boolean => secrets.has(parameter.name);

/** Settings in words become those in numbers: "JSON" is 3. */
export async function inNumbers(set: Values): Promise<Values> {
  const all = await readParameters();
  const encoded: Values = {};
  for (const [name, value] of Object.entries(set)) {
    const parameter = all.find((each) => each.name === name);
    const entry = parameter === undefined ? -1 : entriesOf(parameter).indexOf(String(value));
    encoded[name] = entry < 0 ? value : entry;
  }
  return encoded;
}
