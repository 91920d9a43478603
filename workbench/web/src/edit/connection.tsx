// Puts a connection string together for those who do not know its words.

import { useState } from "preact/hooks";
import { brokenAt } from "../session.js";
import { kinds, nothingTyped, type Kind, type Part, type Typed } from "./connectionString.js";
import { problemWith } from "./limits.js";
import { parameters } from "./parameters.js";
import { draft, send } from "./settings.js";

const labels: Record<Part, string> = {
  file: "File",
  server: "Server",
  port: "Port",
  database: "Database",
  user: "User",
  password: "Password",
};

function Line({ part, typed, onType }: { part: Part; typed: string; onType: (text: string) => void }) {
  return (
    <label>
      <span>{labels[part]}</span>
      <input
        type={part === "password" ? "password" : "text"}
        name={part}
        autocomplete="off"
        spellcheck={false}
        value={typed}
        onInput={(event) => onType(event.currentTarget.value)}
      />
    </label>
  );
}

/** One that does not fit stands in its field, which says so. */
function use(instance: string, text: string): void {
  const parameter = parameters.value.find(({ name }) => name === "connStr");
  const problem = parameter === undefined ? "" : problemWith(parameter, text);
  if (problem !== "") draft("connStr", text, problem);
  else void send(instance, { connStr: text });
}

function Choice({ kind, onChoose }: { kind: Kind; onChoose: (kind: Kind) => void }) {
  return (
    <label>
      <span>Kind</span>
      <select
        value={kind.name}
        onChange={(event) => onChoose(kinds[event.currentTarget.selectedIndex] ?? kind)}
      >
        {kinds.map(({ name }) => (
          <option key={name}>{name}</option>
        ))}
      </select>
    </label>
  );
}

export function Connection({ instance }: { instance: string }) {
  const [kind, choose] = useState<Kind>(kinds[0] as Kind);
  const [typed, type] = useState<Typed>(nothingTyped);
  const isEmpty = typed[kind.asks[0] ?? "file"] === "";
  const onEnter = (event: KeyboardEvent): void => {
    if (event.key === "Enter" && !isEmpty) use(instance, kind.string(typed));
  };
  return (
    <details class="connection" onKeyDown={onEnter}>
      <summary>Put a connection string together</summary>
      <Choice kind={kind} onChoose={choose} />
      {kind.asks.map((part) => (
        <Line
          key={part}
          part={part}
          typed={typed[part]}
          onType={(text) => type({ ...typed, [part]: text })}
        />
      ))}
      <button
        type="button"
        class="small"
        disabled={isEmpty || brokenAt.value !== 0}
        onClick={() => use(instance, kind.string(typed))}
      >
        Use this
      </button>
    </details>
  );
}
