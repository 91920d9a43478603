// What the server is asked.

import type {
  About,
  Details,
  DryRun,
  Explanation,
  Field,
  FieldPage,
  Instance,
  Load,
  Outline,
  Parameter,
  Values,
} from "./shapes.js";

const base = "/api/v1";

/** An answer other than a good one, with the sentence that came with it. */
export class Refusal extends Error {
  constructor(
    readonly status: number,
    sentence: string,
  ) {
    super(sentence);
  }
}

async function ask<T>(method: string, path: string, body?: object): Promise<T> {
  const init: RequestInit = { method };
  if (method !== "GET") {
    init.headers = { "Content-Type": "application/json" };
    init.body = JSON.stringify(body ?? {});
  }
  const response = await fetch(base + path, init);
  const text = await response.text();
  if (!response.ok)
    throw new Refusal(response.status, errorIn(text) ?? `The server answers with ${response.status}.`);
  return (text === "" ? undefined : JSON.parse(text)) as T;
}

function errorIn(text: string): string | undefined {
  try {
    return (JSON.parse(text) as { error?: string }).error;
  } catch {
    return undefined;
  }
}

export function sentenceOf(fault: unknown): string {
  return fault instanceof Error ? fault.message : String(fault);
}

/** Swaps the token of the address for a cookie, and takes it out of the address bar. */
export async function logIn(): Promise<void> {
  const token = new URLSearchParams(location.hash.slice(1)).get("t");
  if (token === null) return;
  history.replaceState(null, "", location.pathname);
  await ask("POST", "/session", { token });
}

const pathOf = (name: string): string => `/instances/${encodeURIComponent(name)}`;

export const about = (): Promise<About> => ask("GET", "/about");
export const parameters = (): Promise<Parameter[]> => ask("GET", "/parameters");
export const instances = (): Promise<Instance[]> => ask("GET", "/instances");
export const details = (name: string): Promise<Details> => ask("GET", pathOf(name));
export const edit = (name: string, revision: number, set: Values): Promise<Details> =>
  ask("PATCH", pathOf(name), { revision, set });
export const load = (name: string): Promise<void> => ask("POST", `${pathOf(name)}/load`);
export const explain = (name: string): Promise<Explanation> => ask("POST", `${pathOf(name)}/explain`);
export const dryRun = (name: string, allowWrites: boolean): Promise<DryRun> =>
  ask("POST", `${pathOf(name)}/dryrun`, { allowWrites });
export const store = (): Promise<{ fields: Field[]; leftOut: number }> => ask("GET", "/store");
export const storeField = (field: string, from: number, count: number): Promise<FieldPage> =>
  ask("GET", `/store/${encodeURIComponent(field)}?from=${from}&count=${count}`);
export const loads = (): Promise<{ loads: Load[] }> => ask("GET", "/loads");

/** What the source has at a place, or all that has a text in its name or value. */
export function explore(name: string, at: string, find: string, limit: number): Promise<Outline> {
  const wish = new URLSearchParams({ limit: String(limit) });
  if (at !== "") wish.set("at", at);
  if (find !== "") wish.set("find", find);
  return ask("GET", `${pathOf(name)}/explore?${wish}`);
}

export function openEvents(since: number): WebSocket {
  return new WebSocket(`ws://${location.host}${base}/events?since=${since}`);
}
