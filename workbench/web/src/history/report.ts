// A report of a night that was written to a file.

import { signal } from "@preact/signals";
import * as api from "../api.js";
import type { FileList, Load, Report } from "../shapes.js";

export const files = signal<FileList>({ files: [], leftOut: 0, endedEarly: false });
export const failure = signal("");

interface Open {
  file: string;
  instance: string; // empty for all
  answer: Report;
  loads: Load[];
  isReading: boolean;
}

export const open = signal<Open | null>(null);

let asked = 0;

export async function readFiles(): Promise<void> {
  try {
    files.value = await api.reports();
    failure.value = "";
  } catch (fault) {
    failure.value = api.sentenceOf(fault);
  }
}

async function readPage(file: string, instance: string, before: Load[]): Promise<void> {
  const mine = ++asked;
  try {
    const answer = await api.report(file, instance, before.length);
    if (mine !== asked) return;
    open.value = { file, instance, answer, loads: [...before, ...answer.loads], isReading: false };
    failure.value = "";
  } catch (fault) {
    if (mine !== asked) return;
    failure.value = api.sentenceOf(fault);
    const now = open.peek();
    if (now !== null) open.value = { ...now, isReading: false };
  }
}

export const choose = (file: string, instance: string): Promise<void> => readPage(file, instance, []);

export function readFurther(): void {
  const now = open.peek();
  if (now === null || now.isReading) return;
  open.value = { ...now, isReading: true };
  void readPage(now.file, now.instance, now.loads);
}
