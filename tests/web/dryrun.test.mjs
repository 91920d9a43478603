// What a load would do, and what it then does.

import assert from "node:assert/strict";
import { test } from "node:test";
import { button, field, tab, useBrowser, waitFor, waitForRow } from "./browser.mjs";
import { instance, live, rows } from "./served.mjs";

const here = useBrowser();

const dryRun = async (page) => {
  await page.click('button:text-is("Dry run")');
  await page.waitForSelector(".outcome");
};

/** Everything in the data store, without what changes as time goes by. */
async function stored() {
  const { fields } = await here.served.get("/store");
  const pages = [];
  for (const { name, kind, value } of fields) {
    const page = await here.served.get(`/store/${encodeURIComponent(name)}?from=0&count=200`);
    pages.push({ name, kind, value, entries: page.entries.map(({ key, value }) => ({ key, value })) });
  }
  return pages;
}

const cells = (page, place) =>
  page.locator(place).evaluateAll((lines) =>
    lines.map((line) => [...line.children].map((cell) => cell.innerText.trim())),
  );

test("a dry run changes nothing, and shows the script of a load", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", { postAction: "Done=1;" })], {
    "list.json": rows(3),
  });
  const before = await stored();
  await dryRun(page);
  assert.match(await page.innerText(".outcome"), /^loaded 3 records, /i);
  assert.deepEqual(await cells(page, '.grid [role="row"]'), [["index", "id"], ["0", "0"], ["1", "1"], ["2", "2"]]);
  await tab(page, "SCRIPT").click();
  const scene = ["--scene", "show.scene.json", "--instance", "list"];
  const script = await here.served.run("load", ...scene, "--out", "script");
  assert.equal((await page.innerText(".answer pre")).trim(), script.trim());
  assert.deepEqual(await stored(), before);
});

test("Load to store changes what was listed, and nothing else", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", { postAction: "Done=1;" })], {
    "list.json": rows(2),
  });
  const load = async () => {
    const { length } = (await here.served.get("/loads")).loads;
    await page.click('button:text-is("Load to store")');
    await waitFor(async () => (await here.served.get("/loads")).loads.length, (count) => count > length);
  };
  await load();
  await here.served.write("list.json", JSON.stringify({ rows: [{ id: 7 }] }));
  await waitFor(async () => (await stored()).some(({ name }) => name === "Done"), (isThere) => isThere);
  const before = await stored();
  await dryRun(page);
  await tab(page, "CHANGES").click();
  assert.match(await page.innerText(".answer .action"), /Then the post update action: Done=1;/);
  assert.match(await page.innerText(".answer .commands"), /Commands to the host are not sent in a dry run\./);
  const listed = await cells(page, ".answer tbody tr");
  const what = listed.map(([name, key, kind]) => [name, key, kind.split(",")[0]]);
  assert.deepEqual(what, [
    ["list", "0", "changed"],
    ["list", "1", "stays"],
    ["READER_NUM_RECORDS", "", "changed"],
  ]);
  assert.match(listed[1][2], /^stays, [\d.]+ (s|min) old$/);
  await page.waitForTimeout(600); // a second press within half a second counts as the same
  await load();
  const after = await waitFor(stored, (seen) => JSON.stringify(seen) !== JSON.stringify(before));
  const changed = after.flatMap((each, i) => {
    if (each.entries.length === 0)
      return each.value === before[i].value ? [] : [[each.name, "", each.value]];
    return each.entries
      .filter(({ key, value }) => before[i].entries.find((old) => old.key === key)?.value !== value)
      .map(({ key, value }) => [each.name, key, value]);
  });
  const wanted = listed.filter(([, , kind]) => kind === "changed");
  assert.deepEqual(changed.sort(), wanted.map(([name, key, , , value]) => [name, key, value]).sort());
  const { entries } = await here.served.get("/store/list?from=0&count=200");
  assert.deepEqual(entries.map(({ leftOver }) => leftOver), [false, true]);
  await tab(page, "STORE").click();
  await page.click('button:has-text("list")');
  const left = page.locator(".answer tr.entry.left");
  await left.waitFor();
  assert.match(await left.innerText(), /^1\s.*list\s+[\d.]+ s\s+left over$/s);
});

test("of two hundred records few rows are in the document, and all can be reached", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], { "list.json": rows(500) });
  await dryRun(page);
  const lines = page.locator('.grid .window [role="row"]');
  assert.ok((await lines.count()) <= 60);
  await page.evaluate(() => (document.querySelector(".grid").scrollTop = 1e6));
  await page.waitForSelector('.grid [aria-rowindex="201"]');
  assert.ok((await lines.count()) <= 60);
  await page.waitForSelector("text=300 further records not shown.");
});

test("of two thousand columns few are in the document, and keys reach all of them", async () => {
  const wide = Object.fromEntries(Array.from({ length: 2000 }, (_, i) => [`column ${i}`, i]));
  const page = await here.openEdit("list", [instance("list", "list.json")], {
    "list.json": JSON.stringify({ rows: Array.from({ length: 40 }, () => wide) }),
  });
  await dryRun(page);
  await page.locator(".grid").focus();
  assert.ok((await page.locator(".grid .line > span").count()) < 1500);
  await page.keyboard.press("End");
  await page.waitForSelector('.grid [role="columnheader"].active:text-is("column 1999")');
  await page.keyboard.press("ArrowDown");
  await page.waitForSelector('.grid [role="gridcell"].active:text-is("1999")');
  assert.ok((await page.locator(".grid .line > span").count()) < 1500);
  await page.keyboard.press("Home");
  await page.waitForSelector('.grid [role="gridcell"].active:text-is("0")');
});

test("the store is shown by pages, and follows loads", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", live)], { "list.json": rows(120) });
  await tab(page, "STORE").click();
  await page.click('button:has-text("list")');
  const keys = () => page.locator(".answer tr.entry .key").allInnerTexts();
  await waitFor(keys, (seen) => seen.length === 50 && seen[0] === "0");
  await page.click('button:text-is("Later")');
  await page.click('button:text-is("Later")');
  await waitFor(keys, (seen) => seen.length === 20 && seen[0] === "100");
  await page.waitForSelector("text=101 to 120 of 120");
  assert.ok(await page.locator('button:text-is("Later")').isDisabled());
  const values = () => page.locator(".answer tr.entry .value").allInnerTexts();
  await here.served.write("list.json", rows(120).replaceAll('"id":119', '"id":777'));
  await waitFor(values, (seen) => /777/.test(seen.at(-1)));
});

test("fields for which there is no room are told", async () => {
  const actionOf = (letter) => Array.from({ length: 260 }, (_, i) => `${letter}${i}=0;`).join("");
  const page = await here.openEdit(
    "a",
    ["a", "b"].map((name) => instance(name, "list.json", { ...live, postAction: actionOf(name) })),
    { "list.json": rows(3) },
  );
  const { leftOut } = await waitFor(() => here.served.get("/store"), (store) => store.leftOut > 0);
  await tab(page, "STORE").click();
  await page.waitForSelector(`text=${leftOut} more fields are not listed.`);
});

test("a field that has become shorter is shown from its last page", async () => {
  const members = (count) => JSON.stringify(Object.fromEntries(Array.from({ length: count }, (_, i) => [`m${i}`, i])));
  const page = await here.openEdit("all", [instance("all", "all.json", { ...live, xpath: "" })], { "all.json": members(120) });
  await tab(page, "STORE").click();
  await page.click('.answer button:has-text("all")');
  await page.click('button:text-is("Later")');
  await page.click('button:text-is("Later")');
  await page.waitForSelector("text=101 to 120 of 120");
  await here.served.write("all.json", members(70));
  await page.waitForSelector("text=51 to 70 of 70");
  const keys = await page.locator(".answer tr.entry .key").allInnerTexts();
  assert.deepEqual([keys.length, keys[0]], [20, "m50"]);
});

test("nothing of a server stays when it was started again", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  const { port } = here.served;
  const startAgain = async () => {
    await here.served.end();
    await here.served.launch(["--port", String(port)]);
  };
  await startAgain();
  await page.goto(here.served.address);
  await button(page, "list", "Edit").click();
  await dryRun(page);
  await page.click('button:text-is("Load to store")');
  await tab(page, "STORE").click();
  await page.click('.answer button:has-text("list")');
  await page.waitForSelector(".answer tr.entry");
  const isAskedAnew = page.waitForRequest(/\/parameters$/);
  await startAgain();
  await page.waitForSelector("text=The data store is empty.");
  assert.equal(await page.locator(".answer tr.entry").count(), 0);
  await isAskedAnew;
  await tab(page, "RECORDS").click();
  await page.waitForSelector("text=A dry run shows here what a load would bring.");
});

test("a field that is not there any more is closed, and the others stay", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", live)], { "list.json": rows(3) });
  await tab(page, "STORE").click();
  await page.click('.answer button:has-text("list")');
  await page.waitForSelector(".answer tr.entry");
  await page.route(/\/store\/list/, (route) => route.continue({ url: route.request().url().replace("/list", "/gone") }));
  await page.waitForSelector(".answer tr.entry", { state: "detached" });
  assert.equal(await page.locator('.answer button:has-text("list")').getAttribute("aria-expanded"), "false");
});

test("a change of settings after a dry run is told", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], { "list.json": rows(3) });
  await dryRun(page);
  await field(page, "numRows").fill("2");
  await field(page, "numRows").press("Enter");
  await page.waitForSelector("text=The settings have changed since this dry run.");
  await dryRun(page);
  await page.waitForSelector("text=The settings have changed since this dry run.", { state: "detached" });
  await waitFor(() => page.innerText(".outcome"), (text) => /2 records/.test(text));
});

test("a query that may write is run only when somebody has said so", async () => {
  const page = await here.openEdit("base", [
    { name: "base", parameters: { queryMode: 1, connStr: "DRIVER=SQLite3;DATABASE=base.db", query: "CREATE TABLE t (a)", mode: 1 } },
  ]);
  await dryRun(page);
  await page.waitForSelector("text=This query may write into its database, so it has not been run.");
  let asked;
  page.on("request", (request) => (asked = request.url().endsWith("/dryrun") ? request.postData() : asked));
  await page.click('button:text-is("Run it once all the same")');
  await waitFor(() => page.innerText(".outcome"), (text) => !/not run/i.test(text));
  assert.equal(asked, '{"allowWrites":true}');
});

test("a load that fails says why in a dry run, too", async () => {
  const page = await here.openEdit("list", [instance("list", "absent.json")]);
  await dryRun(page);
  assert.match(await page.innerText(".outcome"), /failed/i);
  assert.match(await page.innerText(".answer .fault"), /absent\.json/);
});

test("tabs are moved by the arrow keys", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], { "list.json": rows(3) });
  await tab(page, "RECORDS").focus();
  await page.keyboard.press("ArrowLeft");
  assert.equal(await page.innerText('[role="tab"][aria-selected="true"]'), "PLOT");
  assert.equal(await page.evaluate(() => document.activeElement.id), "tab-PLOT");
  await page.keyboard.press("ArrowRight");
  assert.equal(await page.innerText('[role="tab"][aria-selected="true"]'), "RECORDS");
});
