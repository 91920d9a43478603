// The settings of the instance that is edited, and what is typed and not sent yet.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { edited } from "../session.js";
import type { Details, Values } from "../shapes.js";

export const details = signal<Details | null>(null);

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

/** Answers may overtake each other; the newest settings count. */
function take(fresh: Details, sent: string[]): void {
  const before = details.value;
  if (before?.name === fresh.name && before.revision > fresh.revision) return;
  const changed = before?.name === fresh.name ? changedNames(before, fresh) : ["filename"];
  details.value = fresh;
  if ([...changed, ...sent].some((name) => sources.has(name))) ++sourceChanges.value;
}

/** Reads the settings of an instance; false when that is not possible. */
export async function read(name: string): Promise<boolean> {
  try {
    take(await api.details(name), []);
    return true;
  } catch (fault) {
    notice.value = api.sentenceOf(fault);
    return false;
  }
}

export function open(name: string): void {
  details.value = null;
  drafts.value = {};
  problems.value = {};
  notice.value = "";
  void read(name);
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

async function sendNow(name: string, set: Values): Promise<string> {
  const before = details.value;
  if (before === null || before.name !== name) return "This instance is not edited any more.";
  const names = Object.keys(set);
  try {
    take(await api.edit(name, before.revision, set), names);
  } catch (fault) {
    if (!(fault instanceof api.Refusal) || fault.status !== 409) return refuse(fault, names);
    await read(name);
    return (notice.value = staleNotice);
  }
  const taken = names.filter((each) => [undefined, String(set[each])].includes(drafts.value[each]));
  drafts.value = without(drafts.value, taken);
  problems.value = without(problems.value, taken);
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

effect(() => {
  const { name, revision } = edited.value;
  const shown = details.peek();
  if (shown?.name === name && shown.revision !== revision) void read(name);
});
