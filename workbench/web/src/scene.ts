// The scene as the server tells it: its file, what a save would change, and the lock.

import { computed, signal } from "@preact/signals";
import * as api from "./api.js";
import type { Scene } from "./shapes.js";

export const scene = signal<Scene | null>(null);

export const isLocked = computed(() => scene.value?.locked === true);

let asked = 0;

/** Of answers that overtake each other the last one counts. */
export async function readScene(): Promise<void> {
  const mine = ++asked;
  const fresh = await api.scene();
  if (mine === asked) scene.value = fresh;
}

/** What a request has made of the scene. One that was refused may have been made on what is not so
    any more, and an answer that told of that was overtaken by it. */
export async function take(answer: Promise<Scene>): Promise<void> {
  const mine = ++asked;
  try {
    const fresh = await answer;
    if (mine === asked) scene.value = fresh;
  } catch (fault) {
    await readScene().catch(() => undefined); // what is told is the refusal
    throw fault;
  }
}
