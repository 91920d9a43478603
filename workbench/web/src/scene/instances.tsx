// The instances of the scene: new ones, copies, other names, and gone ones.

import { signal } from "@preact/signals";
import { useLayoutEffect, useRef, useState } from "preact/hooks";
import * as api from "../api.js";
import { Ask } from "../ask.js";
import { addressOf } from "../route.js";
import { isLocked } from "../scene.js";
import { brokenAt, catchUp, seen } from "../session.js";
import type { Instance } from "../shapes.js";

const fault = signal("");

const isOff = (): boolean => brokenAt.value !== 0 || isLocked.value;

async function act(what: Promise<unknown>): Promise<void> {
  try {
    await what;
    fault.value = "";
  } catch (refused) {
    if (api.isStale(refused)) await catchUp().catch(() => undefined); // what is told is the refusal
    fault.value = api.sentenceOf(refused);
  }
}

type Doing = "rename" | "copy" | "delete";

/** What was begun with an instance, as it was shown then. */
interface Begun {
  doing: Doing;
  name: string;
  revision: number;
}

/** Asks for a name. */
function NameForm(props: { label: string; name: string; onDone: (name: string | null) => void }) {
  const [typed, type] = useState(props.name);
  const field = useRef<HTMLInputElement>(null);
  useLayoutEffect(() => {
    field.current?.focus();
    field.current?.select();
  }, []);
  const submit = (event: Event): void => {
    event.preventDefault();
    props.onDone(typed.trim() === "" ? null : typed.trim());
  };
  return (
    <form class="asks" onSubmit={submit}>
      <input
        type="text"
        aria-label="Name"
        ref={field}
        value={typed}
        onInput={(event) => type(event.currentTarget.value)}
        onKeyDown={(event) => event.key === "Escape" && props.onDone(null)}
      />
      <button class="small" disabled={isOff() || typed.trim() === ""}>
        {props.label}
      </button>
      <button class="small" type="button" onClick={() => props.onDone(null)}>
        Cancel
      </button>
    </form>
  );
}

const words: [Doing, string][] = [
  ["rename", "Rename"],
  ["copy", "Duplicate"],
  ["delete", "Delete"],
];

function Buttons({ name, start }: { name: string; start: (doing: Doing) => void }) {
  return (
    <>
      <button class="small" onClick={() => (location.hash = addressOf(name))}>
        Edit
      </button>
      {words.map(([doing, word]) => (
        <button key={doing} class="small" disabled={isOff()} onClick={() => start(doing)}>
          {word}
        </button>
      ))}
    </>
  );
}

function Deed({ doing, name, revision, end }: Begun & { end: () => void }) {
  const close = (request: (given: string) => Promise<unknown>) => (given: string | null) => {
    end();
    if (given !== null && given !== name) void act(request(given));
  };
  if (doing === "rename")
    return <NameForm label="Rename" name={name} onDone={close((given) => api.rename(name, given, revision))} />;
  if (doing === "copy")
    return <NameForm label="Duplicate" name={`${name} 2`} onDone={close((given) => api.create(given, name))} />;
  const answer = (isMeant: boolean): void => {
    end();
    if (isMeant) void act(api.remove(name, revision));
  };
  return (
    <Ask
      question="What it has written stays in the store."
      yes={`Delete ${name}`}
      isOff={isOff()}
      onAnswer={answer}
    />
  );
}

function Row({ name, revision, isDraft }: Instance) {
  const [begun, setBegun] = useState<Begun | null>(null);
  return (
    <li>
      <span class="file" title={name}>
        {name} {isDraft === true && <span class="draft">draft</span>}
      </span>
      {begun === null ? (
        <Buttons name={name} start={(doing) => setBegun({ doing, name, revision })} />
      ) : (
        <Deed {...begun} end={() => setBegun(null)} />
      )}
    </li>
  );
}

function New() {
  const [isAsked, setAsked] = useState(false);
  const done = (name: string | null): void => {
    setAsked(false);
    if (name !== null) void act(api.create(name, ""));
  };
  if (isAsked) return <NameForm label="Create" name="" onDone={done} />;
  return (
    <button class="small" disabled={isOff()} onClick={() => setAsked(true)}>
      New instance
    </button>
  );
}

export function Instances() {
  return (
    <section class="box" aria-label="Instances">
      <header>
        <h2>Instances</h2>
        <span class="quiet">{seen.value.length}</span>
        <New />
      </header>
      <p class="bad" role="status">
        {fault.value}
      </p>
      <ul class="files">
        {seen.value.map((each) => (
          <Row key={each.pageId} {...each} />
        ))}
      </ul>
      {seen.value.length === 0 && <p class="quiet">The scene has no instances.</p>}
    </section>
  );
}
