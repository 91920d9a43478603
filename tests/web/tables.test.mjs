// Pages, workbooks and databases: sources that consist of tables.

import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { join } from "node:path";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { promisify } from "node:util";
import { button, field, treeRow, useBrowser, waitFor } from "./browser.mjs";
import { workbook as bookOf } from "./workbook.mjs";

const here = useBrowser();
const html = 4;
const excel = 0;
const sql = 1;
const dataTable = 0;
const workbook = fileURLToPath(new URL("../../samples/fixture-list.xlsx", import.meta.url));
const page = `<h1>Harbour swim</h1><h2>Heats</h2>
  <table id="heats"><tr><th>Lane</th><th>Swimmer</th></tr><tr><td>4</td><td>Jonas</td></tr></table>
  <h2>Final</h2>
  <table class="results"><tr><th>Rank</th><th>Swimmer</th></tr><tr><td>1</td><td>Ruben</td></tr><tr><td>2</td><td>Jonas</td></tr></table>`;

const all = (shown) => shown.locator("#all-of-these");
const title = (shown, name) => shown.locator(`.table [role="columnheader"]:text-is("${name}")`);
const previewed = (shown) =>
  shown.locator('.table .window [role="row"]').evaluateAll((rows) =>
    rows.map((row) => [...row.children].map((cell) => cell.innerText)),
  );
const records = (shown, text) => shown.waitForSelector(`.results .grid [role="gridcell"]:text-is("${text}")`);
const valuesOf = async (name) => (await here.served.get(`/instances/${name}`)).values;

/** Counts the clicks that it takes. */
function clicker() {
  const count = async (place) => {
    ++count.clicks;
    await place.click();
  };
  count.clicks = 0;
  return count;
}

async function makeBase(name) {
  const statements = "CREATE TABLE boat (sail TEXT, name TEXT); INSERT INTO boat VALUES ('KB 7', 'Kittiwake'), ('SF 31', 'Salt Road'); CREATE VIEW fast AS SELECT name FROM boat";
  await promisify(execFile)("sqlite3", [join(here.served.folder, name), statements]);
}

test("a page is told by its headings and the tables below them", async () => {
  const shown = await here.openEdit("page", [{ name: "page", parameters: { queryMode: html, filename: "page.html" } }], { "page.html": page });
  await treeRow(shown, "Final").waitFor();
  const rows = await shown.locator(".tree .row").evaluateAll((each) =>
    each.map((row) => [row.querySelector(".text").innerText, row.querySelector(".kind").innerText, row.getAttribute("aria-level")]),
  );
  assert.deepEqual(rows.filter(([, kind]) => kind === "heading" || kind.startsWith("table")), [
    ["Harbour swim", "heading", "1"],
    ["Heats", "heading", "2"],
    ["ID heats", "table, 2 × 2", "3"],
    ["Final", "heading", "2"],
    ["CLASS results", "table, 3 × 2", "3"],
  ]);
});

test("a source is asked only for the table at which a held key stops", async () => {
  const many = Array.from({ length: 9 }, (_, i) => `<table id="t${i}"><tr><td>cell ${i}</td></tr></table>`).join("");
  const shown = await here.openEdit("many", [{ name: "many", parameters: { queryMode: html, filename: "many.html" } }], { "many.html": many });
  await treeRow(shown, "ID t8").waitFor();
  const asked = [];
  shown.on("request", (each) => each.url().includes("/explore") && asked.push(each.url()));
  await treeRow(shown, "ID t0").click();
  await shown.evaluate(() => {
    for (let i = 0; i < 8; ++i)
      document.activeElement.dispatchEvent(new KeyboardEvent("keydown", { key: "ArrowDown", bubbles: true }));
  });
  await waitFor(() => previewed(shown), (rows) => rows.flat().includes("cell 8"));
  assert.equal(asked.length, 1);
});

test("from a page to records with a key in five clicks", async () => {
  const shown = await here.openWall([{ name: "page", parameters: { queryMode: html } }], { "page.html": page });
  const click = clicker();
  await click(button(shown, "page", "Edit"));
  await click(field(shown, "filename"));
  await shown.keyboard.insertText("page.html");
  await shown.keyboard.press("Enter");
  await click(treeRow(shown, "CLASS results"));
  await waitFor(() => previewed(shown), (rows) => JSON.stringify(rows) === '[["1","Ruben"],["2","Jonas"]]');
  await click(title(shown, "Swimmer"));
  await records(shown, "Ruben");
  assert.equal(click.clicks, 4);
  const { sheet, fromRow, key, mode } = await valuesOf("page");
  assert.deepEqual([sheet, fromRow, key, mode], ["CLASS results", "1", "Swimmer", dataTable]);
  await shown.waitForSelector('.table .marked:text("Swimmer")');
});

test("from a workbook to its records in four clicks, and its columns are chosen by their titles", async () => {
  const shown = await here.openWall([{ name: "book", parameters: { queryMode: excel } }]);
  const click = clicker();
  await click(button(shown, "book", "Edit"));
  await click(field(shown, "filename"));
  await shown.keyboard.insertText(workbook);
  await shown.keyboard.press("Enter");
  await click(treeRow(shown, "Round 28"));
  await waitFor(() => previewed(shown), (rows) => rows[0]?.[0] === "m281");
  await click(all(shown));
  await records(shown, "Holm");
  assert.equal(click.clicks, 4);
  const values = await valuesOf("book");
  assert.equal(values.sheet, "Round 28");
  await title(shown, "Home").click();
  await shown.click('button:text-is("Only this field")');
  await waitFor(() => valuesOf("book"), ({ range }) => range === "Home");
  await shown.locator(".table .grid").focus();
  await shown.keyboard.press("End");
  await title(shown, "Home odds").waitFor(); // a column out of sight comes into the document
  await shown.keyboard.press("Enter");
  await shown.click('button:text-is("This field, too")');
  await waitFor(() => valuesOf("book"), ({ range }) => range === "Home, [Home odds]");
  await shown.locator(".table .grid").focus();
  await shown.keyboard.press("Home");
  await title(shown, "Match").click();
  await shown.click('button:text-is("As key")');
  await waitFor(() => valuesOf("book"), ({ key, range, mode }) => key === "Match" && range === "Home, [Home odds], Match" && mode === dataTable);
  await records(shown, "m281");
});

test("a hidden sheet is told as hidden, and taken like the others", async () => {
  const book = bookOf([
    { name: "Shown", rows: [["id"], [1]] },
    { name: "Notes", rows: [["word"], ["ebb"], ["flow"]], hidden: true },
  ]);
  const shown = await here.openEdit("book", [{ name: "book", parameters: { queryMode: excel, filename: "book.xlsx", sheet: "Shown" } }], { "book.xlsx": book });
  await treeRow(shown, "Notes").waitFor();
  assert.equal(await treeRow(shown, "Shown").locator(".kind").innerText(), "sheet");
  assert.equal(await treeRow(shown, "Notes").locator(".kind").innerText(), "sheet, hidden");
  await treeRow(shown, "Notes").click();
  await waitFor(() => previewed(shown), (lines) => JSON.stringify(lines) === '[["ebb"],["flow"]]');
  await all(shown).click();
  await waitFor(() => valuesOf("book"), ({ sheet }) => sheet === "Notes");
});

test("a column that can name no record is not offered as key", async () => {
  const shown = await here.openEdit("book", [{ name: "book", parameters: { queryMode: excel, filename: workbook, sheet: "Round 28" } }]);
  await treeRow(shown, "Round 28").click();
  await title(shown, "Kick-off").click();
  await shown.waitForSelector('button:text-is("Only this field")');
  assert.equal(await shown.locator('button:text-is("As key")').count(), 0);
});

test("from a database to its records in five clicks, and rows are counted when asked", async () => {
  const shown = await here.openWall([{ name: "base", parameters: { queryMode: sql, connStr: "" } }]);
  await makeBase("base.db");
  const click = clicker();
  await click(button(shown, "base", "Edit"));
  await click(field(shown, "connStr"));
  await shown.keyboard.insertText("Driver=SQLite3;Database=base.db");
  await shown.keyboard.press("Enter");
  await click(treeRow(shown, "boat"));
  await waitFor(() => previewed(shown), (rows) => JSON.stringify(rows) === '[["KB 7","Kittiwake"],["SF 31","Salt Road"]]');
  await click(all(shown));
  await records(shown, "Salt Road");
  assert.equal(click.clicks, 4);
  assert.equal((await valuesOf("base")).query, "SELECT * FROM boat");
  await shown.click('button:text-is("Count rows")');
  await waitFor(() => shown.innerText(".table .title"), (text) => /2 records/.test(text));
  await title(shown, "sail").click();
  await waitFor(() => valuesOf("base"), ({ key, mode }) => key === "sail" && mode === dataTable);
  assert.equal(await treeRow(shown, "fast").locator(".kind").innerText(), "view");
});

test("a database that is named as a file gets its connection string", async () => {
  const shown = await here.openEdit("base", [{ name: "base", parameters: {} }]);
  await makeBase("base.db");
  await field(shown, "filename").fill("base.db");
  await field(shown, "filename").press("Enter");
  await treeRow(shown, "boat").click();
  await all(shown).click();
  await records(shown, "Salt Road");
  const { connStr, query, queryMode } = await valuesOf("base");
  assert.deepEqual([connStr, query, queryMode], ["Provider=SQLite;Data Source=base.db", "SELECT * FROM boat", sql]);
});

test("titles are pressed by keys, too", async () => {
  const shown = await here.openEdit("page", [{ name: "page", parameters: { queryMode: html, filename: "page.html" } }], { "page.html": page });
  await treeRow(shown, "CLASS results").click();
  await title(shown, "Rank").waitFor();
  await shown.locator(".table .grid").focus();
  await shown.keyboard.press("ArrowRight");
  await shown.keyboard.press("Enter");
  await waitFor(() => valuesOf("page"), ({ key }) => key === "Swimmer");
});

test("of many tables those that are not listed come by a press", async () => {
  const shown = await here.openEdit("base", [{ name: "base", parameters: { queryMode: sql, connStr: "" } }]);
  const many = Array.from({ length: 1200 }, (_, i) => `CREATE TABLE t${i} (a)`).join(";");
  await promisify(execFile)("sqlite3", [join(here.served.folder, "many.db"), `BEGIN;${many};COMMIT`]);
  await field(shown, "connStr").fill("Driver=SQLite3;Database=many.db");
  await field(shown, "connStr").press("Enter");
  const readOn = async (name, isListed) => {
    await shown.focus(".tree");
    await shown.keyboard.press("End");
    await shown.locator(".tree .row").filter({ hasText: name }).last().click();
    const last = async () => {
      await shown.focus(".tree");
      await shown.keyboard.press("End");
      return Number(await shown.locator(".tree .row").last().getAttribute("aria-posinset"));
    };
    await waitFor(last, isListed);
  };
  await treeRow(shown, "t0").waitFor();
  await readOn("more", (position) => position > 700);
  await readOn("more", (position) => position === 1200);
});
