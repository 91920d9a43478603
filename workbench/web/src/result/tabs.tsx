// Tabs, moved by the arrow keys.

import type { Signal } from "@preact/signals";

export function Tabs({ names, chosen }: { names: string[]; chosen: Signal<string> }) {
  const step = (by: number): void => {
    const next = (names.indexOf(chosen.value) + by + names.length) % names.length;
    chosen.value = names[next] ?? chosen.value;
    document.getElementById(`tab-${chosen.value}`)?.focus();
  };
  const onKey = (event: KeyboardEvent): void => {
    if (event.key === "ArrowRight") step(1);
    if (event.key === "ArrowLeft") step(-1);
  };
  return (
    <div class="tabs" role="tablist" onKeyDown={onKey}>
      {names.map((name) => (
        <button
          key={name}
          id={`tab-${name}`}
          role="tab"
          aria-selected={chosen.value === name}
          aria-controls="results"
          tabIndex={chosen.value === name ? 0 : -1}
          onClick={() => (chosen.value = name)}
        >
          {name}
        </button>
      ))}
    </div>
  );
}
