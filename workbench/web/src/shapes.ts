// The shapes of what /api/v1 answers and tells.

export type State = "failed" | "late" | "empty" | "stale" | "loading" | "waiting" | "loaded";

export interface Instance {
  name: string;
  id: number; // another that comes under this name has another one
  revision: number; // of its settings
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
  isDraft?: boolean; // has settings that are not live yet
}

export interface About {
  program: string;
  version: string;
  started: string; // when: another server has another one
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
  id: number;
  revision: number;
  values: Values;
  shown: string[];
  isDraft?: boolean;
}

/** What a save would change in one instance of the file. */
export interface SceneChange {
  instance: string;
  kind: "new" | "changed" | "gone" | "renamed";
  was: string;
  parameters: { name: string; before: string; after: string }[];
}

export interface Scene {
  file: string;
  revision: number;
  isSaved: boolean;
  onDisk: "same" | "changed" | "missing" | "none";
  changes: SceneChange[];
  stamp: string; // names the file's content on disk now
  locked: boolean;
  notes: string[]; // what was met in the file
}

/** Files of one kind at and below the folder of the workbench. */
export interface FileList {
  files: string[];
  leftOut: number;
  endedEarly: boolean; // there was too much to look at
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
  type: "value" | "heading" | "table" | "view" | "sheet" | "column";
  key?: string; // what names records by this column; empty where it cannot
  rows?: number; // of a table of a page, with that of the titles
  columns?: number;
  where?: { set: Record<string, string>; records: number }; // all entries that have this value
  hidden?: boolean; // a sheet that its author does not show
  selectors?: string[]; // all that lead to a table of a page, besides the one in `set`
}

/** The first rows of a table, as they stand in the source. */
export interface Preview {
  columns: string[];
  rows: string[][];
  leftOut: number | null; // null where nobody has counted
}

export interface Outline {
  source: string;
  kind: string;
  queryMode: string;
  connStr?: string; // of a database
  bytes: number | null;
  leftOut: number;
  notKept: number; // names for which there was no room while the source was read
  entries: Entry[];
  total: number | null; // entries beside each other, of which these are some
  preview?: Preview;
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

/** A load as it is kept, with what it brought and took away. */
export interface KeptLoad extends Load {
  id: number;
  new: number | null;
  gone: number | null;
  ladder: boolean; // whether it was explained when it came
}

export interface Report {
  instances: { name: string; loads: number; bad: number; first: string; last: string }[];
  count: number;
  loads: Load[]; // oldest first
  unreadable: number; // lines that are no report
  endedEarly: boolean; // the file goes on, and is too long for that to be read
}

/** A column of the store's records. */
export interface Column {
  name: string;
  numbers: number;
  texts: number; // that are numbers
  others: number;
}

export interface ColumnValues {
  keys: string[];
  values: (number | null)[];
  written: string[];
  leftOut: number;
}

/** A field whose numbers were kept with each load. */
export interface Series {
  field: string;
  points: number;
  texts: boolean;
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
  | { seq: number; type: "gone"; names: string[] }
  | { seq: number; type: "ladder"; name: string; id: number }
  | { seq: number; type: "scene"; revision: number }
  | { seq: number; type: "resync" };
