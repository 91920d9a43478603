// Dark or light. Dark unless this browser was told otherwise.

import { signal } from "@preact/signals";

type Theme = "dark" | "light";

export const theme = signal<Theme>(localStorage.getItem("theme") === "light" ? "light" : "dark");

function show(): void {
  document.documentElement.dataset["theme"] = theme.value;
}

export function swapTheme(): void {
  theme.value = theme.value === "dark" ? "light" : "dark";
  localStorage.setItem("theme", theme.value);
  show();
}

show();
