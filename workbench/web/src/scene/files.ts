// The file that the scene is saved to, and the difference against it.

import { effect, signal } from "@preact/signals";
import * as api from "../api.js";
import { scene, take } from "../scene.js";
import type { FileList, Scene } from "../shapes.js";

export const files = signal<FileList>({ files: [], leftOut: 0, endedEarly: false });

/** Another file to save to; the scene's own while nothing is typed. */
export const other = signal("");

/** What a save to it would change there; null while that is not known. */
export const compared = signal<Scene | null>(null);

export const withoutSecrets = signal(false);
export const notice = signal("");

let asked = 0;

async function compare(): Promise<void> {
  const mine = ++asked;
  compared.value = null;
  try {
    const answer = await api.scene(other.peek());
    if (mine === asked) compared.value = answer;
  } catch (fault) {
    if (mine === asked) notice.value = api.sentenceOf(fault);
  }
}

/** Follows what is typed and what changes in the scene and on disk. */
effect(() => {
  if (other.value !== "" && scene.value !== null) void compare();
});

/** The difference that is shown, and that a save would make. */
export const difference = (): Scene | null => (other.value === "" ? scene.value : compared.value);

export async function readFiles(): Promise<void> {
  try {
    files.value = await api.sceneFiles();
  } catch (fault) {
    notice.value = api.sentenceOf(fault);
  }
}

async function tellOf(what: Promise<void>, done: string): Promise<void> {
  try {
    await what;
    notice.value = done;
    other.value = "";
    void readFiles();
  } catch (fault) {
    notice.value = api.sentenceOf(fault);
  }
}

/** Only what was seen is overwritten: the stamp names the content that the difference is against. */
export function wishFor({ stamp }: Scene): object {
  const file = other.value === "" ? {} : { file: other.value };
  return { ...file, stamp, withoutSecrets: withoutSecrets.value };
}

export function save(wish: object, held: boolean): Promise<void> {
  return tellOf(take(api.saveScene({ ...wish, held })), "Saved.");
}

/** In the place of the scene as it is shown. */
export function open(file: string): Promise<void> {
  return tellOf(take(api.openScene(file, scene.peek()?.revision ?? 0)), `${file} is open.`);
}
