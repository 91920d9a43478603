// Connection strings that are put together on the page.

import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { join } from "node:path";
import { test } from "node:test";
import { promisify } from "node:util";
import { field, treeRow, useBrowser, waitFor } from "./browser.mjs";

const here = useBrowser();
const base = { name: "base", parameters: { queryMode: 1, connStr: "", mode: 1 } };
const connStr = async () => (await here.served.get("/instances/base")).values.connStr;

async function putTogether(page, kind, typed) {
  await page.click(".connection summary");
  await page.selectOption(".connection select", kind);
  for (const [name, text] of Object.entries(typed)) await page.fill(`.connection [name="${name}"]`, text);
  await page.click('.connection button:text-is("Use this")');
}

test("a SQLite file is named by its path alone, and its tables are shown", async () => {
  const page = await here.openEdit("base", [base]);
  const file = join(here.served.folder, "club; results.db");
  await promisify(execFile)("sqlite3", [file, "CREATE TABLE boat (name TEXT); INSERT INTO boat VALUES ('Kittiwake')"]);
  await putTogether(page, "SQLite file", { file });
  await waitFor(() => field(page, "connStr").inputValue(), (text) => text !== "");
  assert.equal(await connStr(), `Driver=SQLite3;Database="${file}";`);
  await treeRow(page, "boat").click();
  await page.locator("#all-of-these").click();
  await page.waitForSelector('.grid [role="gridcell"]:text-is("Kittiwake")');
});

/** What the page sends, since the server hides parts of it afterwards. */
async function sent(page, kind, typed) {
  const request = page.waitForRequest((each) => each.method() === "PATCH");
  await putTogether(page, kind, typed);
  return JSON.parse((await request).postData()).set.connStr;
}

test("a server is named by its parts, and the password is hidden", async () => {
  const page = await here.openEdit("base", [base]);
  const typed = { server: "db.example", port: "5432", database: "league", user: "desk", password: "tide7" };
  const begin = "Driver={PostgreSQL Unicode};Server=db.example;Port=5432;Database=league;UID=desk;";
  assert.equal(await sent(page, "PostgreSQL", typed), `${begin}PWD=tide7;`);
  await waitFor(() => field(page, "connStr").inputValue(), (text) => text === `${begin}PWD=••••;`);
});

test("a password of any characters stands in braces", async () => {
  const page = await here.openEdit("base", [base]);
  const typed = { server: "db.example", password: "a;b}c" };
  assert.equal(await sent(page, "MariaDB, MySQL", typed), "Driver={MariaDB Unicode};Server=db.example;PWD={a;b}}c};");
});

test("a workbook is a database, too", async () => {
  const page = await here.openEdit("base", [base]);
  assert.equal(
    await sent(page, "Workbook file", { file: "book.xlsx" }),
    'Provider=Microsoft.ACE.OLEDB.12.0;Data Source=book.xlsx;Extended Properties="Excel 12.0 Xml;HDR=YES";',
  );
});

test("a string that is too long is refused beside its field, in bytes", async () => {
  const page = await here.openEdit("base", [base]);
  await putTogether(page, "SQLite file", { file: "ä".repeat(300) });
  assert.match(await page.innerText('[data-parameter="connStr"] .problem'), /^\d+ bytes; at most 511 fit\.$/);
  assert.equal(await connStr(), "");
});
