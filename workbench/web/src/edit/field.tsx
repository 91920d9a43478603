// One parameter: its label, what sets it, and what is wrong with what was typed.

import { HoldButton } from "../hold.js";
import { brokenAt } from "../session.js";
import type { Parameter } from "../shapes.js";
import { isNumber, problemWith, roomLeft } from "./limits.js";
import { load } from "./load.js";
import { entriesOf, isSecret, labelOf } from "./parameters.js";
import { begunAt, contested, details, draft, drafts, drop, isBehind, problems, send } from "./settings.js";

interface Props {
  instance: string;
  parameter: Parameter;
}

const idOf = (parameter: Parameter): string => `field-${parameter.name}`;
const noteOf = (parameter: Parameter): string => `note-${parameter.name}`;

function stored({ name, default: initial }: Parameter): string {
  return String(details.value?.values[name] ?? initial ?? "");
}

const shownText = (parameter: Parameter): string => drafts.value[parameter.name] ?? stored(parameter);

function type(parameter: Parameter, typed: string): void {
  draft(parameter.name, typed, problemWith(parameter, typed));
}

/** Sends what is typed. */
function commit({ instance, parameter }: Props): void {
  const { name } = parameter;
  const typed = drafts.value[name];
  if (typed === undefined || problemWith(parameter, typed) !== "") return;
  void send(instance, { [name]: isNumber(parameter) ? Number(typed) : typed }, begunAt(name));
}

/** What was refused waits until somebody says what is to become of it. A field is also left when the
    connection ends, which nobody means. */
function leave(props: Props): void {
  if (brokenAt.peek() === 0 && !contested.value.has(props.parameter.name)) commit(props);
}

function attributes(parameter: Parameter) {
  return {
    id: idOf(parameter),
    "aria-describedby": noteOf(parameter),
    "aria-invalid": problems.value[parameter.name] !== undefined,
    disabled: brokenAt.value !== 0 || isBehind.value,
  };
}

function TextLine(props: Props) {
  const { parameter } = props;
  return (
    <input
      {...attributes(parameter)}
      type={isSecret(parameter) ? "password" : "text"}
      inputMode={isNumber(parameter) ? "decimal" : "text"}
      autocomplete="off"
      spellcheck={false}
      value={shownText(parameter)}
      onFocus={(event) => isSecret(parameter) && event.currentTarget.select()}
      onInput={(event) => type(parameter, event.currentTarget.value)}
      onBlur={() => leave(props)}
      onKeyDown={(event) => event.key === "Enter" && commit(props)}
    />
  );
}

function TextBox(props: Props) {
  const { parameter } = props;
  return (
    <textarea
      {...attributes(parameter)}
      rows={3}
      spellcheck={false}
      value={shownText(parameter)}
      onInput={(event) => type(parameter, event.currentTarget.value)}
      onBlur={() => leave(props)}
    />
  );
}

function Switch({ instance, parameter }: Props) {
  return (
    <input
      {...attributes(parameter)}
      type="checkbox"
      checked={stored(parameter) !== "0"}
      onChange={(event) =>
        void send(instance, { [parameter.name]: event.currentTarget.checked ? 1 : 0 })
      }
    />
  );
}

function Choice({ instance, parameter }: Props) {
  return (
    <select
      {...attributes(parameter)}
      value={stored(parameter)}
      onChange={(event) => void send(instance, { [parameter.name]: Number(event.currentTarget.value) })}
    >
      {entriesOf(parameter).map((entry, i) => (
        <option key={entry} value={String(i)}>
          {entry}
        </option>
      ))}
    </select>
  );
}

function Press({ instance, parameter }: Props) {
  const revision = details.value?.revision ?? 0;
  return (
    <HoldButton
      id={idOf(parameter)}
      label={labelOf(parameter)}
      isOff={brokenAt.value !== 0}
      onPress={(held) => void load(instance, held, revision)}
    />
  );
}

const controls: Record<string, (props: Props) => preact.JSX.Element> = {
  bool: Switch,
  radio: Choice,
  int: TextLine,
  float: TextLine,
  string: TextLine,
  container: TextLine,
  text: TextBox,
  button: Press,
};

const longest = 100; // of a text beside a field

/** What the parameter has become while another text was typed, and the choice between them. */
function Contest(props: Props) {
  const { parameter } = props;
  if (!contested.value.has(parameter.name)) return null;
  const now = stored(parameter);
  const shown = now.length > longest ? `${now.slice(0, longest)}…` : now;
  return (
    <p class="contest">
      <span>{shown === "" ? "It is empty now." : `It says ${shown} now.`}</span>
      <button type="button" class="small" disabled={brokenAt.value !== 0} onClick={() => commit(props)}>
        Send what you typed
      </button>
      <button type="button" class="small" onClick={() => drop(parameter.name)}>
        Drop it
      </button>
    </p>
  );
}

export function Field(props: Props) {
  const { parameter } = props;
  const Control = controls[parameter.type];
  if (Control === undefined) return null;
  const problem = problems.value[parameter.name];
  const note = problem ?? roomLeft(parameter, shownText(parameter));
  return (
    <div class={`field ${parameter.type}`} data-parameter={parameter.name}>
      {parameter.type === "button" ? <span /> : <label for={idOf(parameter)}>{labelOf(parameter)}</label>}
      <div>
        <Control {...props} />
        <p id={noteOf(parameter)} class={problem === undefined ? "room" : "problem"} aria-live="polite">
          {note}
        </p>
        <Contest {...props} />
      </div>
    </div>
  );
}
