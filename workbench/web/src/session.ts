// The state of the scene as the page knows it, kept current by events.

import { batch, signal } from "@preact/signals";
import * as api from "./api.js";
import { clock } from "./clock.js";
import { noteLadder } from "./history/kept.js";
import { forgetLoads, noteLoads, readLoads } from "./loads.js";
import { readScene } from "./scene.js";
import type { Event, Instance } from "./shapes.js";

/** An instance, and when the page heard of it, by the browser's clock in milliseconds. */
export interface Seen extends Instance {
  at: number;
  pageId: number; // the same for an instance also where a server that was started again has another `id` for it
}

export const fileName = signal("");
export const version = signal("");
export const seen = signal<Seen[]>([]);
export const error = signal("");

/** Counts the servers that the page has read from, since one may be started again. */
export const servers = signal(0);

/** When the connection broke; 0 while it stands. */
export const brokenAt = signal(0);

const retryAfter = 1000; // milliseconds
let last = 0;
let started = ""; // of the server
let lastPageId = 0;

function pageIdOf({ name, id }: Instance, isFurther: boolean): number {
  const known = seen.peek().find((each) => each.name === name);
  const isSame = known !== undefined && (isFurther || known.id === id);
  return isSame ? known.pageId : ++lastPageId;
}

/** `isFurther`: those of a server that was started again. */
function note(states: Instance[], isAll: boolean, isFurther = false): void {
  const at = Date.now();
  const taken = (state: Instance): Seen => ({ ...state, at, pageId: pageIdOf(state, isFurther) });
  const fresh = new Map(states.map((state) => [state.name, taken(state)]));
  const kept = isAll ? [] : seen.value.map((each) => fresh.get(each.name) ?? each);
  const known = new Set(kept.map((each) => each.name));
  seen.value = [...kept, ...[...fresh.values()].filter((each) => !known.has(each.name))];
}

const readings = new Set<Event[]>(); // what is taken while everything is read, for each reading

/** `meanwhile`: what is taken while it reads; answers may be older, so that it is taken once more. */
async function readStates(meanwhile: Event[]): Promise<void> {
  const about = await api.about();
  fileName.value = about.scene;
  version.value = about.version;
  last = about.seq;
  const [states, { loads }] = await Promise.all([api.instances(), api.loads()]);
  batch(() => {
    const isFurther = started !== about.started;
    note(states, true, isFurther);
    noteLoads(loads, true);
    if (isFurther) ++servers.value;
    else meanwhile.filter(({ seq }) => seq > about.seq).forEach(takeStates);
    started = about.started;
  });
}

async function readAll(): Promise<void> {
  const meanwhile: Event[] = [];
  readings.add(meanwhile);
  await readStates(meanwhile).finally(() => readings.delete(meanwhile));
  await readScene().catch(tell);
}

/** Whose settings have been changed since the last event, when a refusal says that some have. One that is not known
    may be gone since they were asked for. */
export async function catchUp(): Promise<void> {
  const states = await api.instances();
  const known = new Map(seen.peek().map(({ name, revision }) => [name, revision]));
  note(states.filter(({ name, revision }) => revision > (known.get(name) ?? Infinity)), false);
}

function tell(fault: unknown): void {
  error.value = api.sentenceOf(fault);
}

function forget(names: string[]): void {
  seen.value = seen.value.filter(({ name }) => !names.includes(name));
  forgetLoads(names);
  readLoads().catch(tell);
}

/** What is told of the instances. */
function takeStates(event: Event): void {
  if (event.type === "instances") note(event.instances, false);
  else if (event.type === "loads") noteLoads(event.loads, false);
  else if (event.type === "gone") forget(event.names);
}

function take(event: Event): void {
  last = event.seq;
  readings.forEach((meanwhile) => meanwhile.push(event));
  takeStates(event);
  if (event.type === "ladder") noteLadder(event.name);
  else if (event.type === "scene") readScene().catch(tell);
  else if (event.type === "resync") readAll().catch(tell);
}

const pace = 250; // milliseconds, so that fast instances do not keep the page busy
let waiting: Event[] = [];
let takenAt = 0;
let timer: ReturnType<typeof setTimeout> | undefined;

function takeAll(): void {
  timer = undefined;
  takenAt = Date.now();
  const events = waiting;
  waiting = [];
  batch(() => {
    clock.value = takenAt;
    events.forEach(take);
  });
}

/** The first at once, those that follow quickly together. */
function takeSoon(event: Event): void {
  waiting.push(event);
  timer ??= setTimeout(takeAll, Math.max(0, takenAt + pace - Date.now()));
}

function listen(): void {
  const socket = api.openEvents(last);
  socket.onopen = () => {
    brokenAt.value = 0;
  };
  socket.onmessage = (message: MessageEvent<string>) => 
    takeSoon(JSON.parse(message.data) as Event);
  socket.onclose = () => {
    if (brokenAt.value === 0) brokenAt.value = Date.now();
    setTimeout(() => void start(), retryAfter);
  };
}

/** Reads everything and listens from there on; tries again until the server answers. */
export async function start(): Promise<void> {
  try {
    await api.logIn();
    await readAll();
    error.value = "";
    listen();
  } catch (fault) {
    error.value = api.sentenceOf(fault);
    if (brokenAt.value === 0) brokenAt.value = Date.now();
    setTimeout(() => void start(), retryAfter);
  }
}
