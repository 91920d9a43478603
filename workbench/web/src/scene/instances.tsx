// The instances of the scene: new ones, copies, other names, and gone ones.

import { signal } from "@preact/signals";
import { useLayoutEffect, useRef, useState } from "preact/hooks";
import * as api from "../api.js";
import { Ask } from "../ask.js";
import { addressOf } from "../route.js";
import { isLocked } from "../scene.js";
import { brokenAt, seen } from "../session.js";

const fault = signal("");

const isOff = (): boolean => brokenAt.value !== 0 || isLocked.value;

function act(what: Promise<unknown>): void {
  what.then(
    () => (fault.value = ""),
    (refused: unknown) => (fault.value = api.sentenceOf(refused)),
  );
}

type Doing = "nothing" | "rename" | "copy" | "delete";

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

function Deed({ name, doing, end }: { name: string; doing: Doing; end: () => void }) {
  const close = (request: (given: string) => Promise<unknown>) => (given: string | null) => {
    end();
    if (given !== null && given !== name) act(request(given));
  };
  if (doing === "rename")
    return <NameForm label="Rename" name={name} onDone={close((given) => api.rename(name, given))} />;
  if (doing === "copy")
    return <NameForm label="Duplicate" name={`${name} 2`} onDone={close((given) => api.create(given, name))} />;
  const answer = (isMeant: boolean): void => {
    end();
    if (isMeant) act(api.remove(name));
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

function Row({ name, isDraft }: { name: string; isDraft: boolean }) {
  const [doing, setDoing] = useState<Doing>("nothing");
  return (
    <li>
      <span class="file" title={name}>
        {name} {isDraft && <span class="draft">draft</span>}
      </span>
      {doing === "nothing" ? (
        <Buttons name={name} start={setDoing} />
      ) : (
        <Deed name={name} doing={doing} end={() => setDoing("nothing")} />
      )}
    </li>
  );
}

function New() {
  const [isAsked, setAsked] = useState(false);
  const done = (name: string | null): void => {
    setAsked(false);
    if (name !== null) act(api.create(name, ""));
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
        {seen.value.map(({ name, isDraft }) => (
          <Row key={name} name={name} isDraft={isDraft === true} />
        ))}
      </ul>
      {seen.value.length === 0 && <p class="quiet">The scene has no instances.</p>}
    </section>
  );
}
