// What the server is asked, and what it tells. Shapes are those of /api/v1.

export type State = "failed" | "late" | "empty" | "stale" | "loading" | "waiting" | "loaded";

export interface Instance {
  name: string;
  state: State;
  records: number | null;
  before: number | null;
  leftOver: number;
  age: number | null; // seconds, at the time of the event
  duration: number | null;
  next: number | null;
  words: string;
}

export interface About {
  program: string;
  scene: string;
  seq: number;
}

export type StageState = "ok" | "warning" | "failed" | "skipped";

export interface Stage {
  stage: string;
  state: StageState;
  seen: string;
  place: string;
  cause: string;
  next: string;
  set: Record<string, string>;
  records?: number;
}

export interface Explanation {
  ok: boolean;
  records: number;
  stages: Stage[];
}

export type Event =
  | { seq: number; type: "instances"; instances: Instance[] }
  | { seq: number; type: "resync" };

const base = "/api/v1";

async function ask<T>(method: string, path: string, body?: object): Promise<T> {
  const init: RequestInit = { method };
  if (method !== "GET") {
    init.headers = { "Content-Type": "application/json" };
    init.body = JSON.stringify(body ?? {});
  }
  const response = await fetch(base + path, init);
  const text = await response.text();
  if (!response.ok) throw new Error(errorIn(text) ?? `The server answers with ${response.status}.`);
  return (text === "" ? undefined : JSON.parse(text)) as T;
}

function errorIn(text: string): string | undefined {
  try {
    return (JSON.parse(text) as { error?: string }).error;
  } catch {
    return undefined;
  }
}

/** Swaps the token of the address for a cookie, and takes it out of the address bar. */
export async function logIn(): Promise<void> {
  const token = new URLSearchParams(location.hash.slice(1)).get("t");
  if (token === null) return;
  history.replaceState(null, "", location.pathname);
  await ask("POST", "/session", { token });
}

export const about = (): Promise<About> => ask("GET", "/about");
export const instances = (): Promise<Instance[]> => ask("GET", "/instances");
export const load = (name: string): Promise<void> =>
  ask("POST", `/instances/${encodeURIComponent(name)}/load`);

export const explain = (name: string): Promise<Explanation> =>
  ask("POST", `/instances/${encodeURIComponent(name)}/explain`);

export function openEvents(since: number): WebSocket {
  return new WebSocket(`ws://${location.host}${base}/events?since=${since}`);
}
