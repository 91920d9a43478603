// What the server is asked.

import type {
  About,
  Details,
  DryRun,
  Explanation,
  Field,
  FieldPage,
  FileList,
  Column,
  ColumnValues,
  Instance,
  KeptLoad,
  Load,
  Outline,
  Parameter,
  Report,
  Scene,
  Series,
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

/** Ends with an error when the signal says that nobody waits for the answer any more. */
async function ask<T>(method: string, path: string, body?: object, signal?: AbortSignal): Promise<T> {
  const init: RequestInit = { method, signal: signal ?? null };
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

/** Whether it was made on what is not so any more. */
export const isStale = (fault: unknown): boolean => fault instanceof Refusal && fault.status === 409;

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
const fieldPath = (field: string): string => `/store/${encodeURIComponent(field)}`;

export const about = (): Promise<About> => ask("GET", "/about");
export const parameters = (): Promise<Parameter[]> => ask("GET", "/parameters");
export const instances = (): Promise<Instance[]> => ask("GET", "/instances");
export const details = (name: string): Promise<Details> => ask("GET", pathOf(name));
export const edit = (name: string, revision: number, set: Values): Promise<Details> =>
  ask("PATCH", pathOf(name), { revision, set });
/** Tells what the revision of a draft has become. */
export const load = (name: string, held: boolean, revision: number): Promise<{ revision?: number }> =>
  ask("POST", `${pathOf(name)}/load`, held ? { revision, held } : { revision });
export const discard = (name: string, revision: number): Promise<Details> =>
  ask("POST", `${pathOf(name)}/discard`, { revision });
export const explain = (name: string, signal: AbortSignal): Promise<Explanation> =>
  ask("POST", `${pathOf(name)}/explain`, {}, signal);
export const dryRun = (name: string, allowWrites: boolean, signal: AbortSignal): Promise<DryRun> =>
  ask("POST", `${pathOf(name)}/dryrun`, { allowWrites }, signal);
export const store = (): Promise<{ fields: Field[]; leftOut: number }> => ask("GET", "/store");
export const storeField = (field: string, from: number, count: number): Promise<FieldPage> =>
  ask("GET", `${fieldPath(field)}?from=${from}&count=${count}`);
export const loads = (): Promise<{ loads: Load[] }> => ask("GET", "/loads");

/** A look into a source: at a place, or for all that has a text in its name or value. */
export interface Wish {
  at?: string;
  find?: string;
  from?: number; // skips so many entries
  limit?: number;
  count?: 1; // counts the rows of a table of a database
}

export function explore(name: string, wish: Wish, signal: AbortSignal): Promise<Outline> {
  const said = Object.entries(wish).filter(([, value]) => value !== "" && value !== 0);
  const query = new URLSearchParams(said.map(([key, value]) => [key, String(value)]));
  return ask("GET", `${pathOf(name)}/explore?${query}`, undefined, signal);
}

export const scene = (file = ""): Promise<Scene> =>
  ask("GET", file === "" ? "/scene" : `/scene?${new URLSearchParams({ file })}`);
export const sceneFiles = (): Promise<FileList> => ask("GET", "/scene/files");
export const openScene = (file: string, revision: number): Promise<Scene> =>
  ask("POST", "/scene/open", { file, revision });
export const saveScene = (wish: object): Promise<Scene> => ask("POST", "/scene/save", wish);
export const lock = (locked: boolean): Promise<Scene> => ask("POST", "/lock", { locked });
export const create = (name: string, like: string): Promise<Details> =>
  ask("POST", "/instances", like === "" ? { name } : { name, like });
export const rename = (name: string, other: string, revision: number): Promise<Details> =>
  ask("POST", `${pathOf(name)}/rename`, { name: other, revision });
export const remove = (name: string, revision: number): Promise<void> =>
  ask("DELETE", pathOf(name), { revision });

export const loadHistory = (name: string, from: number): Promise<{ loads: KeptLoad[]; count: number }> =>
  ask("GET", `${pathOf(name)}/history?from=${from}&count=100`);
export const keptLoad = (name: string, id: number): Promise<{ load: KeptLoad; explanation: Explanation | null }> =>
  ask("GET", `${pathOf(name)}/history/${id}`);
export const reports = (): Promise<FileList> => ask("GET", "/reports");
export function report(file: string, instance: string, from: number): Promise<Report> {
  const query = new URLSearchParams({ instance, from: String(from), count: "100" });
  return ask("GET", `/reports/${encodeURIComponent(file)}?${query}`);
}

export const columns = (field: string): Promise<{ columns: Column[]; records: number }> =>
  ask("GET", `${fieldPath(field)}/columns`);
export const columnValues = (field: string, name: string): Promise<ColumnValues> =>
  ask("GET", `${fieldPath(field)}/column/${encodeURIComponent(name)}`);
export const series = (instance: string): Promise<{ series: Series[]; leftOut: number }> =>
  ask("GET", `/series?${new URLSearchParams({ instance })}`);
export const seriesValues = (field: string, instance: string): Promise<{ times: number[]; values: (number | null)[] }> =>
  ask("GET", `/series/${encodeURIComponent(field)}?${new URLSearchParams({ instance })}`);

export function openEvents(since: number): WebSocket {
  return new WebSocket(`ws://${location.host}${base}/events?since=${since}`);
}
