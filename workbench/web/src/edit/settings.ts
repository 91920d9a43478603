// The settings of the instance that is edited, and what is typed and not sent yet.

import { computed, effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { seen, servers } from "../session.js";
import type { Details, Values } from "../shapes.js";

export const details = signal<Details | null>(null);

/** The server that tells them, of those that were. */
const source = signal(0);

/** Whether a server that was started again may have other ones. */
export const isBehind = computed(() => servers.value !== source.value);

let openName = "";

/** Answers may come when another instance has been opened; those are left. */
export const isOpen = (name: string): boolean => name === openName;

/** What is typed and not taken by the server, by parameter. */
export const drafts = signal<Record<string, string>>({});

/** The revision that was shown when each was begun: of what has come since, whoever typed knows nothing. */
const begun = new Map<string, number>();

/** Those that were refused, since the instance has been changed since then. */
export const contested = signal<ReadonlySet<string>>(new Set());

/** Which revision our own change has made of which: nobody else's is between them. */
const ownSteps = new Map<number, number>();

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

const staleNotices = {
  typed: "This instance has been changed meanwhile. What you typed is still here: send it again, or drop it.",
  chosen: "This instance has been changed meanwhile, so nothing was set. Look at it, and set it again.",
};

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

/** Another server has begun to count from one. What is typed was begun on what it has only where all
    is still as it was shown. */
function carryOver(fresh: Details): void {
  const shown = details.peek();
  const isAsShown = shown?.name === fresh.name && changedNames(shown, fresh).length === 0;
  for (const [name, revision] of begun)
    begun.set(name, isAsShown && followed(revision) === shown.revision ? fresh.revision : 0);
  ownSteps.clear();
}

/** Reads the settings of an instance. Anew, they count even where their revision is an older one. */
async function read(name: string, isAnew: boolean): Promise<void> {
  const known = details.peek()?.revision ?? 0;
  const server = servers.peek();
  try {
    const fresh = await api.details(name);
    if (!isOpen(name)) return;
    const isFurther = server !== source.peek();
    if (isFurther) carryOver(fresh);
    const isAnother = fresh.revision < known; // revisions rise, but those of another of the same name
    if (isAnew || isFurther || isAnother || !isOvertaken(fresh)) take(fresh, []);
    source.value = server;
    if (isAnew || isFurther) notice.value = "";
  } catch (fault) {
    if (isOpen(name)) notice.value = api.sentenceOf(fault);
  }
}

export function open(name: string): void {
  openName = name;
  details.value = null;
  drafts.value = {};
  begun.clear();
  contested.value = new Set();
  ownSteps.clear();
  problems.value = {};
  notice.value = "";
  void read(name, true);
}

const shownRevision = (): number => details.peek()?.revision ?? 0;

export function draft(name: string, typed: string, problem: string): void {
  if (drafts.peek()[name] === undefined) begun.set(name, shownRevision());
  drafts.value = { ...drafts.value, [name]: typed };
  problems.value = problem === "" ? without(problems.value, [name]) : { ...problems.value, [name]: problem };
}

/** On which revision a typed text goes. Of one that was refused, what it goes over is shown beside it. */
export function begunAt(name: string): number {
  const revision = contested.peek().has(name) ? undefined : begun.get(name);
  return revision ?? shownRevision();
}

/** The revision with what we have changed since by ourselves. */
function followed(revision: number): number {
  const next = ownSteps.get(revision);
  return next === undefined ? revision : followed(next);
}

/** Gives what to say of it. */
function contest(names: string[]): string {
  const typed = names.filter((name) => drafts.peek()[name] !== undefined);
  contested.value = new Set([...contested.peek(), ...typed]);
  return typed.length > 0 ? staleNotices.typed : staleNotices.chosen;
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

/** Notes what our change, made on `revision`, has become. */
export function noteOwnStep(name: string, revision: number, next: number): void {
  if (isOpen(name) && next !== revision) ownSteps.set(revision, next);
}

function step(revision: number, fresh: Details, sent: string[]): void {
  noteOwnStep(fresh.name, revision, fresh.revision);
  if (!isOvertaken(fresh)) take(fresh, sent);
}

async function edit(name: string, revision: number, set: Values): Promise<string> {
  const names = Object.keys(set);
  try {
    const fresh = await api.edit(name, revision, set);
    if (isOpen(name)) step(revision, fresh, names);
    return "";
  } catch (fault) {
    if (!isOpen(name)) return api.sentenceOf(fault);
    if (!api.isStale(fault)) return refuse(fault, names);
    const sentence = contest(names);
    await read(name, true);
    if (isOpen(name)) notice.value = sentence;
    return sentence;
  }
}

function forget(names: string[]): void {
  drafts.value = without(drafts.value, names);
  problems.value = without(problems.value, names);
  contested.value = new Set([...contested.peek()].filter((name) => !names.includes(name)));
}

/** What was typed meanwhile stays. */
function forgetDrafts(set: Values): void {
  const isTaken = (name: string): boolean =>
    [undefined, String(set[name])].includes(drafts.value[name]);
  forget(Object.keys(set).filter(isTaken));
}

/** Goes back to what the parameter is. */
export function drop(name: string): void {
  forget([name]);
  if (contested.peek().size === 0) notice.value = "";
}

async function sendNow(name: string, set: Values, revision: number): Promise<string> {
  const before = details.value;
  if (before === null || before.name !== name) return "This instance is not edited any more.";
  const refusal = differs(before, set) ? await edit(name, followed(revision), set) : "";
  if (refusal !== "" || !isOpen(name)) return refusal;
  forgetDrafts(set);
  notice.value = "";
  return "";
}

const nothingSent = Promise.resolve("");

/** All that is under way; gives the first refusal. */
let queue: Promise<string> = nothingSent;

/** One after the other, since each needs the revision that the one before has made of `revision`,
    which was shown to whoever wants it. Gives what is wrong; empty when nothing is. */
export function send(name: string, set: Values, revision = shownRevision()): Promise<string> {
  const sent = queue.then(() => sendNow(name, set, revision));
  const all = Promise.all([queue, sent]).then(([former, last]) => former || last);
  queue = all;
  void all.then(() => {
    if (queue === all) queue = nothingSent;
  });
  return sent;
}

/** What a revision has become once all that was sent is answered; null where that was refused. */
export async function settled(revision: number): Promise<number | null> {
  return (await queue) === "" ? followed(revision) : null;
}

/** Goes back to the live settings. Gives what is wrong; empty when nothing is. */
export async function discardDraft(name: string): Promise<string> {
  const revision = await settled(shownRevision());
  if (revision === null || !isOpen(name)) return notice.peek();
  try {
    const fresh = await api.discard(name, revision);
    if (isOpen(name)) step(revision, fresh, []);
    return "";
  } catch (fault) {
    if (api.isStale(fault) && isOpen(name)) await read(name, true);
    return api.sentenceOf(fault);
  }
}

effect(() => {
  const rows = seen.value; // read first: what is not read is not followed
  const shown = details.peek();
  const row = rows.find(({ name }) => name === shown?.name);
  if (shown === null || row === undefined) return;
  if (isBehind.peek() || row.revision > shown.revision) void read(shown.name, false);
});
