// Connection strings, put together of what is typed.

export interface Kind {
  name: string;
  asks: Part[];
  string: (typed: Typed) => string;
}

export type Part = "file" | "server" | "port" | "database" | "user" | "password";
export type Typed = Record<Part, string>;

export const nothingTyped: Typed = { file: "", server: "", port: "", database: "", user: "", password: "" };

/** A value with anything but letters and digits stands in braces. */
const braced = (value: string): string =>
  /^[\w./-]*$/.test(value) ? value : `{${value.replaceAll("}", "}}")}}`;

const quoted = (value: string): string =>
  /[;"']|^\s|\s$/.test(value) ? `"${value.replaceAll('"', '""')}"` : value;

/** What is not typed is left to the driver. */
const listed = (parts: [string, string][]): string =>
  parts.filter(([, value]) => value !== "").map(([key, value]) => `${key}=${braced(value)};`).join("");

const byServer = (driver: string, typed: Typed): string =>
  `Driver={${driver}};` +
  listed([
    ["Server", typed.server],
    ["Port", typed.port],
    ["Database", typed.database],
    ["UID", typed.user],
    ["PWD", typed.password],
  ]);

const login: Part[] = ["server", "port", "database", "user", "password"];

export const kinds: Kind[] = [
  { name: "SQLite file", asks: ["file"], string: ({ file }) => `Driver=SQLite3;Database=${quoted(file)};` },
  { name: "PostgreSQL", asks: login, string: (typed) => byServer("PostgreSQL Unicode", typed) },
  { name: "MariaDB, MySQL", asks: login, string: (typed) => byServer("MariaDB Unicode", typed) },
  {
    name: "Workbook file",
    asks: ["file"],
    string: ({ file }) =>
      `Provider=Microsoft.ACE.OLEDB.12.0;Data Source=${quoted(file)};Extended Properties="Excel 12.0 Xml;HDR=YES";`,
  },
];
