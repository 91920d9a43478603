// Which screen is shown. It stands in the address bar, so that a reload keeps it.

import { computed, signal } from "@preact/signals";

type Screen = "wall" | "edit" | "scene" | "history" | "reports";

interface Route {
  screen: Screen;
  of: string; // the instance; nothing where the screen is about all
}

const wall: Route = { screen: "wall", of: "" };
const others = new Set(["edit", "scene", "history", "reports"]);

export const route = signal<Route>(wall);

/** The instance that is edited; nothing on other screens. */
export const edits = computed(() => (route.value.screen === "edit" ? route.value.of : null));

export const addressOf = (name: string): string => `#edit/${encodeURIComponent(name)}`;
export const historyOf = (name: string): string => `#history/${encodeURIComponent(name)}`;

function routeIn(hash: string): Route {
  const [screen = "", of = ""] = hash.slice(1).split("/");
  try {
    return others.has(screen) ? { screen: screen as Screen, of: decodeURIComponent(of) } : wall;
  } catch {
    return wall;
  }
}

function follow(): void {
  route.value = routeIn(location.hash);
}

export function startRoute(): void {
  addEventListener("hashchange", follow);
  follow();
}
