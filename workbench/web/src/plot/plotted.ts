// The numbers that are plotted, read again when a load has come.

import { computed, effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { loadsOf } from "../loads.js";
import { choices, failure, readChoices, type Choice } from "./choices.js";

export interface Plotted {
  choice: Choice;
  isByTime: boolean;
  at: number[]; // the number of the record, or seconds since 1970
  values: (number | null)[];
  rows: string[][]; // the same as texts
  leftOut: number;
}

export const chosen = signal("");
export const plotted = signal<Plotted | null>(null);

const pause = 1000; // milliseconds, so that a fast instance does not keep the page busy
const shown = signal("");
let chosenFor = ""; // the instance that the choice was made for
let timer: ReturnType<typeof setTimeout> | undefined;

async function readColumn(choice: Choice): Promise<Plotted> {
  const { keys, values, written, leftOut } = await api.columnValues(choice.field, choice.column);
  const rows = keys.map((key, i) => [key, written[i] ?? ""]);
  return { choice, isByTime: false, at: keys.map((_, i) => i + 1), values, rows, leftOut };
}

const clockTime = (seconds: number): string => new Date(seconds * 1000).toLocaleTimeString("en-GB");

async function readSeries(choice: Choice, instance: string): Promise<Plotted> {
  const { times, values } = await api.seriesValues(choice.field, instance);
  const rows = times.map((time, i) => [clockTime(time), String(values[i] ?? "")]);
  return { choice, isByTime: true, at: times, values, rows, leftOut: 0 };
}

/** Texts, and what other instances write, are plotted when somebody has chosen them. */
function currentChoice(): Choice | undefined {
  const all = choices.peek();
  return all.find(({ id }) => id === chosen.peek()) ?? all.find(({ isText, isOwn }) => isOwn && !isText);
}

async function readValues(instance: string): Promise<void> {
  const choice = currentChoice();
  if (choice === undefined) {
    plotted.value = null;
    return;
  }
  try {
    const fresh = await (choice.column === "" ? readSeries(choice, instance) : readColumn(choice));
    if (shown.peek() === instance && currentChoice()?.id === choice.id) plotted.value = fresh;
  } catch (fault) {
    failure.value = api.sentenceOf(fault);
  }
}

async function read(instance: string): Promise<void> {
  await readChoices(instance);
  if (shown.peek() === instance) await readValues(instance);
}

export function choose(id: string): void {
  chosen.value = id;
  void readValues(shown.peek());
}

/** Reads as long as it is shown; gives what ends that. */
export function showPlot(instance: string): () => void {
  if (instance !== chosenFor) chosen.value = "";
  chosenFor = instance;
  shown.value = instance;
  plotted.value = null;
  choices.value = [];
  void read(instance);
  return () => (shown.value = "");
}

function readSoon(instance: string): void {
  timer ??= setTimeout(() => {
    timer = undefined;
    if (shown.peek() !== instance) return;
    void (choices.peek().length === 0 || failure.peek() !== "" ? read : readValues)(instance);
  }, pause);
}

/** Loads of other instances are left alone. */
const latest = computed(() => loadsOf.value.get(shown.value)?.at(-1));

effect(() => {
  const instance = shown.value;
  if (instance !== "" && latest.value !== undefined) readSoon(instance);
});
