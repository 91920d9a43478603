// What can be plotted: columns of the records in the store, and fields over the last loads.

import { signal } from "@preact/signals";
import * as api from "../api.js";
import { details } from "../edit/settings.js";
import type { Column, Field, Series } from "../shapes.js";

/** A column by record, or a field by time. */
export interface Choice {
  id: string;
  title: string;
  field: string;
  column: string; // empty for a field by time
  isText: boolean; // its values are texts that are numbers
  isOwn: boolean; // the instance writes it
}

export const choices = signal<Choice[]>([]);
export const leftOut = signal(0);
export const failure = signal("");

const mostFields = 20; // of which the columns are asked for

const byRecord = (field: string, { name, numbers }: Column, isOwn: boolean): Choice => ({
  id: `${field}\n${name}`,
  title: `${field}: ${name}`,
  field,
  column: name,
  isText: numbers === 0,
  isOwn,
});

const byTime = ({ field, texts }: Series): Choice => ({
  id: `${field}\n`,
  title: `${field} over time`,
  field,
  column: "",
  isText: texts,
  isOwn: true,
});

const hasNumbers = ({ numbers, texts }: Column): boolean => numbers + texts > 0;

const isList = ({ kind, size }: Field): boolean => (kind === "structure" || kind === "array") && size > 0;

type IsOwn = (field: Field) => boolean;

/** What the instance has written, or is set to write. */
function ownOf(instance: string): IsOwn {
  const target = String(details.peek()?.values["table"] ?? "");
  return ({ name, writer }) => writer === instance || (writer === "" && name === target);
}

async function columnsOf(field: Field, isOwn: IsOwn): Promise<Choice[]> {
  const { columns } = await api.columns(field.name);
  return columns.filter(hasNumbers).map((column) => byRecord(field.name, column, isOwn(field)));
}

/** The fields with records, those of the instance first. */
function listsOf(fields: Field[], isOwn: IsOwn): Field[] {
  return fields.filter(isList).sort((a, b) => Number(isOwn(b)) - Number(isOwn(a))).slice(0, mostFields);
}

/** What the store has, and the fields that the instance has written with its loads. */
export async function readChoices(instance: string): Promise<void> {
  try {
    const { fields } = await api.store();
    const isOwn = ownOf(instance);
    const columns = await Promise.all(listsOf(fields, isOwn).map((field) => columnsOf(field, isOwn)));
    const { series, leftOut: further } = await api.series(instance);
    const times = series.map(byTime);
    choices.value = [...columns.flat(), ...times];
    leftOut.value = further;
    failure.value = "";
  } catch (fault) {
    failure.value = api.sentenceOf(fault);
  }
}
