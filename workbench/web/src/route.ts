// Which screen is shown. It stands in the address bar, so that a reload keeps it.

import { signal } from "@preact/signals";

/** The instance that is edited; nothing on the wall. */
export const edits = signal<string | null>(null);

const prefix = "#edit/";

export const addressOf = (name: string): string => prefix + encodeURIComponent(name);

function nameIn(hash: string): string | null {
  if (!hash.startsWith(prefix)) return null;
  try {
    return decodeURIComponent(hash.slice(prefix.length));
  } catch {
    return null;
  }
}

function follow(): void {
  edits.value = nameIn(location.hash);
}

export function startRoute(): void {
  addEventListener("hashchange", follow);
  follow();
}
