// The data store as it is, read again when a load has come.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { loadsOf } from "../loads.js";
import { servers } from "../session.js";
import type { Field, FieldPage } from "../shapes.js";

export const entriesOfPage = 50;

export const fields = signal<Field[]>([]);
export const leftOut = signal(0); // further fields, which are not listed
export const page = signal<FieldPage | null>(null); // of the field that is open
export const from = signal(0);
export const failure = signal("");

const pause = 1000; // milliseconds, so that a fast instance does not keep the page busy
const isShown = signal(false);
let timer: ReturnType<typeof setTimeout> | undefined;

let opened: string | null = null;

/** A field that is not there any more has no page. */
async function pageOf(field: string, first: number): Promise<FieldPage | null> {
  try {
    return await api.storeField(field, first, entriesOfPage);
  } catch (fault) {
    if (fault instanceof api.Refusal && fault.status === 404) return null;
    throw fault;
  }
}

const lastPage = (size: number): number =>
  Math.max(0, Math.ceil(size / entriesOfPage) - 1) * entriesOfPage;

/** Reads what is open; an answer to what is not wanted any more is left. */
async function readPage(): Promise<void> {
  const field = opened;
  const first = from.value;
  if (field === null) return;
  const answer = await pageOf(field, first);
  if (field !== opened || first !== from.value) return;
  if (answer === null) closeField();
  else if (first > lastPage(answer.size)) await turnTo(field, lastPage(answer.size)); // it has become shorter
  else page.value = answer;
}

async function read(): Promise<void> {
  try {
    const answer = await api.store();
    fields.value = answer.fields;
    leftOut.value = answer.leftOut;
    await readPage();
    failure.value = "";
  } catch (fault) {
    failure.value = api.sentenceOf(fault);
  }
}

function readSoon(): void {
  timer ??= setTimeout(() => {
    timer = undefined;
    if (isShown.peek()) void read();
  }, pause);
}

/** Reads as long as it is shown; gives what ends that. */
export function showStore(): () => void {
  isShown.value = true;
  void read();
  return () => {
    isShown.value = false;
    closeField();
  };
}

export async function turnTo(field: string, first: number): Promise<void> {
  opened = field;
  from.value = first; // at once, for the next press
  try {
    await readPage();
  } catch (fault) {
    failure.value = api.sentenceOf(fault);
  }
}

export function closeField(): void {
  opened = null;
  page.value = null;
}

/** A server that was started again has another store. */
effect(() => {
  if (servers.value <= 1) return;
  closeField();
  if (isShown.peek()) void read();
});

effect(() => {
  if (isShown.value && loadsOf.value.size > 0) readSoon();
});
