// The shapes of what /api/v1 answers and tells.

export type State = "failed" | "late" | "empty" | "stale" | "loading" | "waiting" | "loaded";

export interface Instance {
  name: string;
  state: State;
  records: number | null;
  before: number | null;
  leftOver: number;
  age: number | null; // seconds, at the time of the event
  duration: number | null;
  next: number | null;
  bytes: number | null; // that the last load wrote
  target: string; // where the records go
  words: string;
}

export interface About {
  program: string;
  scene: string;
  seq: number;
}

export interface Parameter {
  name: string;
  label: string;
  type: string;
  default?: string | number;
  minimum?: number;
  maximum?: number;
  maximumBytes?: number;
  entries?: string[];
  hidden: boolean;
}

export type Values = Record<string, string | number>;

export interface Details {
  name: string;
  revision: number;
  values: Values;
  shown: string[];
}

export type StageState = "ok" | "warning" | "failed" | "skipped";

export interface Stage {
  stage: string;
  state: StageState;
  seen: string;
  place: string;
  cause: string;
  next: string;
  set: Record<string, string>;
  records?: number;
}

export interface Explanation {
  ok: boolean;
  records: number;
  request: string; // the head, as it was sent; empty for what was not asked for over HTTP
  answer: string;
  stages: Stage[];
}

export interface Entry {
  name: string;
  depth: number;
  kind: string;
  records: number | null;
  value: string;
  place: string; // empty where nothing is below
  set: Record<string, string>; // empty where nothing selects it
}

export interface Outline {
  source: string;
  kind: string;
  queryMode: string;
  bytes: number | null;
  leftOut: number;
  notKept: number; // names for which there was no room while the source was read
  entries: Entry[];
}

export type Outcome = "loaded" | "empty" | "failed" | "notExecuted" | "actionFailed" | "late";

export interface Load {
  instance: string;
  outcome: Outcome;
  records: number;
  before: number;
  bytes: number;
  duration: number; // seconds
  error: string;
  time: string;
  line: string;
}

export interface Change {
  field: string;
  key: string;
  kind: "new" | "changed" | "gone" | "left";
  before: string;
  after: string;
  age: number | null;
}

export interface DryRun {
  outcome: Exclude<Outcome, "actionFailed"> | "mayWrite"; // the action has an error of its own
  error: string;
  records: number;
  bytes: number;
  duration: number;
  script: string;
  isScriptCut: boolean;
  table: { columns: string[]; rows: string[][]; leftOut: number };
  changes: Change[];
  changesLeftOut: number;
  same: number;
  action: string;
  actionError: string;
  commands: string[]; // that a load would send to the host
}

export interface Written {
  age: number | null;
  writer: string;
  leftOver: boolean;
}

export interface Field extends Written {
  name: string;
  kind: string;
  size: number;
  value: string;
}

export interface FieldEntry extends Written {
  key: string;
  value: string;
}

export interface FieldPage {
  name: string;
  kind: string;
  size: number;
  entries: FieldEntry[];
}

export type Event =
  | { seq: number; type: "instances"; instances: Instance[] }
  | { seq: number; type: "loads"; loads: Load[] }
  | { seq: number; type: "edited"; name: string; revision: number }
  | { seq: number; type: "resync" };
