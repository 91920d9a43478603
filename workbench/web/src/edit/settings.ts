// The settings of the instance that is edited, and what is typed and not sent yet.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { edited, servers } from "../session.js";
import type { Details, Values } from "../shapes.js";

export const details = signal<Details | null>(null);

let openName = "";

/** Answers may come when another instance has been opened; those are left. */
export const isOpen = (name: string): boolean => name === openName;

/** What is typed and not taken by the server, by parameter. */
export const drafts = signal<Record<string, string>>({});

/** What is wrong with it. */
export const problems = signal<Record<string, string>>({});

/** What concerns the whole instance. */
export const notice = signal("");

/** Counts up when the source may have become another one. */
export const sourceChanges = signal(0);

const sources = new Set([
  "queryMode", "filename", "connStr", "useAuth", "userName", "password", "avoidCache", "inputFormat",
  "enableProxy", "proxyMode", "proxyUrl", "proxyUser", "proxyPwd", "useCustomHeaders", "customHeaders",
]);

const staleNotice =
  "Somebody else has changed this instance just now. What you typed is still here; send it again.";

function without<T>(record: Record<string, T>, names: string[]): Record<string, T> {
  return Object.fromEntries(Object.entries(record).filter(([name]) => !names.includes(name)));
}

function changedNames(before: Details, after: Details): string[] {
  const names = new Set([...Object.keys(before.values), ...Object.keys(after.values)]);
  return [...names].filter((name) => before.values[name] !== after.values[name]);
}

function take(fresh: Details, sent: string[]): void {
  const before = details.value;
  const changed = before?.name === fresh.name ? changedNames(before, fresh) : ["filename"];
  details.value = fresh;
  if ([...changed, ...sent].some((name) => sources.has(name))) ++sourceChanges.value;
}

/** Answers may overtake each other; the newest settings count. */
function isOvertaken(fresh: Details): boolean {
  const now = details.value;
  return now?.name === fresh.name && now.revision > fresh.revision;
}

/** Reads the settings of an instance. Anew, they count even where their revision is an older one: a
    server that was started again has begun to count from one. */
async function read(name: string, isAnew: boolean): Promise<void> {
  const known = details.peek()?.revision ?? 0;
  try {
    const fresh = await api.details(name);
    if (!isOpen(name)) return;
    const isAnother = fresh.revision < known; // revisions rise, but those of another of the same name
    if (isAnew || isAnother || !isOvertaken(fresh)) take(fresh, []);
    if (isAnew) notice.value = "";
  } catch (fault) {
    if (isOpen(name)) notice.value = api.sentenceOf(fault);
  }
}

export function open(name: string): void {
  openName = name;
  details.value = null;
  drafts.value = {};
  problems.value = {};
  notice.value = "";
  void read(name, true);
}

export function draft(name: string, typed: string, problem: string): void {
  drafts.value = { ...drafts.value, [name]: typed };
  problems.value = problem === "" ? without(problems.value, [name]) : { ...problems.value, [name]: problem };
}

function refuse(fault: unknown, names: string[]): string {
  const sentence = api.sentenceOf(fault);
  if (fault instanceof api.Refusal && fault.status === 422)
    problems.value = { ...problems.value, ...Object.fromEntries(names.map((name) => [name, sentence])) };
  else notice.value = sentence;
  return sentence;
}

const differs = ({ values }: Details, set: Values): boolean =>
  Object.entries(set).some(([name, value]) => String(values[name]) !== String(value));

async function edit(before: Details, set: Values): Promise<string> {
  try {
    const fresh = await api.edit(before.name, before.revision, set);
    if (isOpen(before.name) && !isOvertaken(fresh)) take(fresh, Object.keys(set));
    return "";
  } catch (fault) {
    if (!isOpen(before.name)) return api.sentenceOf(fault);
    if (!(fault instanceof api.Refusal) || fault.status !== 409) return refuse(fault, Object.keys(set));
    await read(before.name, true);
    if (isOpen(before.name)) notice.value = staleNotice;
    return staleNotice;
  }
}

/** What was typed meanwhile stays. */
function forgetDrafts(set: Values): void {
  const isTaken = (name: string): boolean =>
    [undefined, String(set[name])].includes(drafts.value[name]);
  const taken = Object.keys(set).filter(isTaken);
  drafts.value = without(drafts.value, taken);
  problems.value = without(problems.value, taken);
}

async function sendNow(name: string, set: Values): Promise<string> {
  const before = details.value;
  if (before === null || before.name !== name) return "This instance is not edited any more.";
  const refusal = differs(before, set) ? await edit(before, set) : "";
  if (refusal !== "" || !isOpen(name)) return refusal;
  forgetDrafts(set);
  notice.value = "";
  return "";
}

let queue: Promise<unknown> = Promise.resolve();

/** One after the other, since each needs the revision that the one before has made. Gives what is
    wrong; empty when nothing is. */
export function send(name: string, set: Values): Promise<string> {
  const sent = queue.then(() => sendNow(name, set));
  queue = sent;
  return sent;
}

/** Goes back to the live settings. Gives what is wrong; empty when nothing is. */
export async function discardDraft(name: string): Promise<string> {
  try {
    const fresh = await api.discard(name);
    if (isOpen(name)) take(fresh, []);
    return "";
  } catch (fault) {
    return api.sentenceOf(fault);
  }
}

effect(() => {
  const revisions = edited.value; // read first: what is not read is not followed
  const shown = details.peek();
  if (shown === null) return;
  const revision = revisions.get(shown.name);
  if (revision !== undefined && revision !== shown.revision) void read(shown.name, false);
});

effect(() => {
  const shown = details.peek();
  if (servers.value > 1 && shown !== null) void read(shown.name, true);
});
