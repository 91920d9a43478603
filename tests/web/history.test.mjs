// The last loads of an instance, and reports of earlier runs.

import assert from "node:assert/strict";
import { truncate } from "node:fs/promises";
import { join } from "node:path";
import { test } from "node:test";
import { useBrowser, waitFor } from "./browser.mjs";
import { instance, rows } from "./served.mjs";

const here = useBrowser();
const lines = (page) =>
  page.locator('.load-list .window [role="row"]').evaluateAll((all) =>
    all.map((line) => [...line.children].map((cell) => cell.innerText.trim())),
  );

async function openHistory(name, instances, files) {
  const page = await here.openWall(instances, files);
  await page.click(`a[aria-label="History of ${name}"]`);
  return page;
}

/** Presses Load, and waits for what comes of it. */
async function load(name) {
  const before = await here.served.lastLoad(name);
  await here.served.ask("POST", `/instances/${name}/load`, {});
  await waitFor(() => here.served.lastLoad(name), (id) => id > before);
}

test("each load is told with its outcome, newest first, and what it brought and took away", async () => {
  const page = await openHistory("list", [instance("list", "list.json")]);
  for (const count of [3, 5, 1]) {
    await here.served.write("list.json", rows(count));
    await load("list");
  }
  await waitFor(() => lines(page), (all) => all.length === 3);
  const told = (await lines(page)).map(([, outcome, records, fresh, gone]) => [outcome, records, fresh, gone].join());
  assert.deepEqual(told.slice(0, 2), ["● loaded,1,0,4", "● loaded,5,2,0"]);
  assert.match(told[2], /^● loaded,3,/);
});

test("a bad load opens what was found out when it came, also when the source is well again", async () => {
  const page = await openHistory("list", [instance("list", "list.json")]);
  await load("list");
  const why = page.locator('.load-list button:text-is("Why?")');
  await why.waitFor();
  await here.served.write("list.json", rows(3));
  await load("list");
  await waitFor(() => lines(page), (all) => all.length === 2);
  assert.deepEqual((await lines(page)).map(([, outcome]) => outcome), ["● loaded", "✕ failed"]);
  await why.click();
  await page.waitForSelector(".why li.failed");
  assert.match(await page.innerText(".why h2"), /^Why list\? as of /);
  assert.match(await page.innerText(".why"), /The source is not there/);
});

test("of many loads few rows are in the document, and all can be reached", async () => {
  const page = await openHistory(
    "list",
    [instance("list", "list.json", { autoLoad: 1, autoLoadInterval: 0.02 })],
    { "list.json": rows(1) },
  );
  const count = async () => Number(await page.locator(".load-list").getAttribute("aria-rowcount")) - 1;
  await waitFor(count, (all) => all > 100);
  assert.ok((await page.locator('.load-list [role="row"]').count()) <= 61);
  await page.evaluate(() => (document.querySelector(".load-list").scrollTop = 1e6));
  const lastShown = () =>
    page.locator(".load-list [aria-rowindex]").evaluateAll((all) => Math.max(...all.map((row) => row.ariaRowIndex)));
  await waitFor(lastShown, (last) => last > 100);
});

test("a report of last night is looked at in the same way", async () => {
  const line = (i) =>
    JSON.stringify({
      time: `2026-11-21T23:${String(i).padStart(2, "0")}:00Z`,
      instance: i % 2 === 0 ? "league" : "weather",
      outcome: i === 3 ? "failed" : "loaded",
      records: i,
      recordsBefore: i,
      leftOver: 0,
      leftOverAgeMs: 0,
      bytes: 10,
      durationMs: 100,
      error: i === 3 ? "Could not load" : "",
    });
  const report = `${Array.from({ length: 8 }, (_, i) => line(i)).join("\n")}\nnonsense\n`;
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(1), "night.jsonl": report });
  await page.click('nav a:text-is("Reports")');
  await page.click('button:text-is("night.jsonl")');
  await waitFor(() => lines(page), (all) => all.length === 8);
  await page.waitForSelector("text=1 line of it cannot be read.");
  await page.click('.summary button:has-text("weather")');
  await waitFor(() => lines(page), (all) => all.length === 4);
  const outcomes = (await lines(page)).map(([, outcome]) => outcome);
  assert.deepEqual(outcomes, ["● loaded", "✕ failed", "● loaded", "● loaded"]);
});

test("why a load was bad can be asked as soon as it is known, without a further load", async () => {
  const page = await openHistory("list", [instance("list", "list.json")]);
  await page.waitForSelector("text=Nothing has been loaded yet.");
  await here.served.ask("POST", "/instances/list/load", {});
  await page.locator('.load-list button:text-is("Why?")').click();
  await page.waitForSelector(".why li.failed");
  assert.equal((await lines(page)).length, 1);
});

test("a report that is too long to be read whole says so", async () => {
  const line = JSON.stringify({ time: "2026-11-21T23:00:00Z", instance: "league", outcome: "loaded", durationMs: 1 });
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(1), "long.jsonl": `${line}\n` });
  await truncate(join(here.served.folder, "long.jsonl"), 257 * 1024 * 1024);
  await page.click('nav a:text-is("Reports")');
  await page.click('button:text-is("long.jsonl")');
  await waitFor(() => lines(page), (all) => all.length === 1);
  await page.waitForSelector("text=It is too long to be read whole");
});

test("a long report is listed further, and one that has gone meanwhile is told", async () => {
  const line = JSON.stringify({ time: "2026-11-21T23:00:00Z", instance: "league", outcome: "loaded", durationMs: 1 });
  const files = { "list.json": rows(1), "long.jsonl": `${line}\n`.repeat(250), "short.jsonl": `${line}\n` };
  const page = await here.openWall([instance("list", "list.json")], files);
  await page.click('nav a:text-is("Reports")');
  await page.click('button:text-is("long.jsonl")');
  await page.waitForSelector("text=The first 100 of 250 are listed.");
  await page.click('button:text-is("Next 100")');
  await page.waitForSelector("text=The first 200 of 250 are listed.");
  await here.served.remove("long.jsonl");
  await page.click('button:text-is("Next 100")');
  await page.waitForSelector('.reports .bad:has-text("There is no such report.")');
  await page.waitForSelector("text=The first 200 of 250 are listed.");
  await page.click('button:text-is("short.jsonl")');
  await waitFor(() => lines(page), (all) => all.length === 1);
  assert.equal(await page.locator(".reports .bad").count(), 0);
});
