// The wall: one row for each instance of a scene that runs.

import assert from "node:assert/strict";
import http from "node:http";
import { once } from "node:events";
import { test } from "node:test";
import { button, holdAnswer, interceptEvents, rowOf, useBrowser, waitFor, waitForRow } from "./browser.mjs";
import { instance, live, rows } from "./served.mjs";

const here = useBrowser();

test("the printed address shows the wall, and keeps no token", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(3) });
  assert.equal(page.url(), `${here.served.origin}/`);
  const row = await waitForRow(page, "list", (each) => each.records === "3");
  assert.match(row.state, /LOADED/i);
});

test("without the token the page says what to do", async () => {
  await here.serve([instance("list", "list.json")]);
  const page = await here.window();
  await page.goto(here.served.origin);
  await page.waitForSelector("text=Open the address that was printed");
});

const isOrder = (...wanted) => (seen) => seen.join() === wanted.join();

/** A wall of three, the worst first. */
async function openThree() {
  const page = await here.openWall(
    [
      instance("good", "list.json", live),
      instance("empty", "empty.json", live),
      instance("failed", "absent.json", live),
    ],
    { "list.json": rows(3), "empty.json": rows(0) },
  );
  const names = () => page.locator("tbody .name").allInnerTexts();
  await waitFor(names, isOrder("failed", "empty", "good"));
  return { page, names };
}

test("those in trouble come first, and do not move below the pointer", async () => {
  const { page, names } = await openThree();
  await page.hover("tbody tr:last-child");
  await here.served.remove("list.json");
  await waitForRow(page, "good", (row) => /FAILED/i.test(row.state));
  assert.deepEqual(await names(), ["failed", "empty", "good"]);
  await page.mouse.move(1, 719);
  await waitFor(names, (seen) => seen[2] === "empty");
});

test("rows move again after another screen was opened from below the pointer", async () => {
  const { page, names } = await openThree();
  await button(page, "good", "Edit").click();
  await page.waitForSelector(".field");
  await page.mouse.move(1, 719);
  await page.goBack();
  await here.served.remove("list.json");
  await waitFor(names, (seen) => seen[2] === "empty");
});

test("rows do not move below the focus of the keyboard", async () => {
  const { page, names } = await openThree();
  await button(page, "good", "Edit").focus();
  await page.keyboard.press("Tab");
  await here.served.remove("list.json");
  await waitForRow(page, "good", (row) => /FAILED/i.test(row.state));
  assert.deepEqual(await names(), ["failed", "empty", "good"]);
  assert.equal(await page.evaluate(() => document.activeElement.innerText), "Why?");
  await page.evaluate(() => document.activeElement.blur());
  await waitFor(names, (seen) => seen[2] === "empty");
});

test("a live file is followed: fewer records, none, gone, back", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(20) });
  await waitForRow(page, "list", (row) => row.records === "20");
  await here.served.write("list.json", rows(1));
  const fewer = await waitForRow(page, "list", (row) => row.records === "20 → 1");
  assert.equal(fewer.leftOver, "19");
  await here.served.write("list.json", rows(0));
  await waitForRow(page, "list", (row) => /EMPTY/i.test(row.state));
  await here.served.remove("list.json");
  await waitForRow(page, "list", (row) => /FAILED/i.test(row.state) && row.words !== "");
  await here.served.write("list.json", rows(20));
  await waitForRow(page, "list", (row) => /LOADED/i.test(row.state));
});

test("where its records go and how much was written stands below a name", async () => {
  const page = await here.openWall([instance("list", "list.json", { table: "Top" })], { "list.json": rows(3) });
  assert.match((await rowOf(page, "list")).words, /^loads at the press/);
  await button(page, "list", "Load").click();
  await waitForRow(page, "list", (row) => row.words === "Top, DataArray, 77\u00a0bytes");
});

test("the log tells what has happened, newest first", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(20) });
  await waitForRow(page, "list", (row) => row.records === "20");
  await here.served.write("list.json", rows(1));
  const lines = () => page.locator("[role=log] li").allInnerTexts();
  const seen = await waitFor(lines, (each) => /20 → 1/.test(each[0] ?? ""));
  assert.match(seen[0], /^\d\d:\d\d:\d\d\s+list\s+records 20 → 1/);
  await page.reload();
  const again = await waitFor(lines, (each) => each.length > 0);
  assert.match(again[0], /20 → 1/);
  await here.served.remove("list.json");
  await waitFor(lines, (each) => /Could not load "list\.json" \([2-9] times\)/.test(each[0]));
});

test("each load of the last hundred is drawn, by how it came out", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(3) });
  const words = () => page.locator("svg.spark").getAttribute("aria-label");
  await waitFor(words, (each) => /^The last \d+ loads?: \d+ loaded\./.test(each ?? ""));
  await here.served.remove("list.json");
  await waitFor(words, (each) => /\d+ loaded, [2-9] failed\./.test(each ?? ""));
  const drawn = await page.locator("svg.spark path.failed").getAttribute("d");
  assert.match(drawn, /^(M[\d.]+ 28V0){2,}$/);
});

test("a post update action that fails is drawn and told as its own kind of failure", async () => {
  const page = await here.openWall([instance("list", "list.json", { ...live, postAction: "X=1/0" })], {
    "list.json": rows(3),
  });
  await waitForRow(page, "list", (row) => /FAILED/i.test(row.state) && row.records === "3");
  const words = () => page.locator("svg.spark").getAttribute("aria-label");
  await waitFor(words, (each) => /^The last \d+ loads?: \d+ action failed\./.test(each ?? ""));
});

test("a source that is slower than its period is loading, and all else goes on", async () => {
  const silent = http.createServer(() => {});
  silent.listen(0, "127.0.0.1");
  await once(silent, "listening");
  try {
    const slow = { ...live, queryMode: 2, xpath: "/a", autoLoadInterval: 5 };
    const address = `http://127.0.0.1:${silent.address().port}/slow`;
    const page = await here.openWall([instance("slow", address, slow)]);
    await waitForRow(page, "slow", (row) => /LOADING/i.test(row.state) && /^for [2-9]/.test(row.words));
    const asked = Date.now();
    await here.served.get("/instances");
    assert.ok(Date.now() - asked < 2000);
  } finally {
    silent.closeAllConnections();
    silent.close();
  }
});

test("a press of the button loads, twice in a row but once", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  let loads = 0;
  page.on("request", (request) => (loads += request.url().endsWith("/load") ? 1 : 0));
  await button(page, "list", "Load").dblclick();
  await waitForRow(page, "list", (row) => row.records === "3");
  assert.equal(loads, 1);
  assert.equal((await here.served.get("/loads")).loads.length, 1);
});

test("two tabs show the same", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  const other = await here.window();
  await other.goto(here.served.origin);
  await other.waitForSelector("tbody tr");
  await button(page, "list", "Load").click();
  await waitForRow(other, "list", (row) => row.records === "3");
});

test("a change of state is announced", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(3) });
  await waitForRow(page, "list", (row) => row.records === "3");
  await here.served.remove("list.json");
  await page.waitForFunction(
    () => document.querySelector("p[aria-live]")?.textContent === "list: failed",
  );
});

test("the end of the server is told, and buttons are off", async () => {
  const page = await here.openWall([instance("list", "list.json")]);
  await here.served.end();
  await page.waitForSelector("text=/No connection since \\d\\d:\\d\\d:\\d\\d/");
  for (const name of ["Edit", "Why?", "Load"]) {
    assert.ok(await button(page, "list", name).isDisabled(), name);
  }
});

test("a server that was started again on its port is taken up without a reload", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  const { port } = here.served;
  const startAgain = () => here.served.launch(["--port", String(port)]);
  await here.served.end();
  await startAgain();
  await page.goto(here.served.address);
  await page.reload();
  await button(page, "list", "Load").waitFor();
  await page.evaluate(() => (globalThis.isStill = true));
  await here.served.end();
  await page.waitForSelector("text=No connection since");
  await startAgain();
  await page.waitForSelector("text=No connection since", { state: "detached" });
  await button(page, "list", "Load").click();
  await waitForRow(page, "list", (row) => row.records === "3");
  assert.ok(await page.evaluate(() => globalThis.isStill));
});

test("all of it can be done by keyboard", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  await button(page, "list", "Edit").focus();
  await page.keyboard.press("Tab");
  await page.keyboard.press("Enter"); // Why?
  await page.waitForSelector(".why li");
  await page.keyboard.press("Tab");
  await page.keyboard.press("Enter"); // Load
  await waitForRow(page, "list", (row) => row.records === "3");
});

test("a value that changes moves nothing beside it", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(3) });
  const places = () =>
    page.locator("tbody td, tbody th").evaluateAll((cells) => cells.map((cell) => cell.offsetLeft));
  await waitForRow(page, "list", (row) => row.records === "3");
  const before = await places();
  await here.served.write("list.json", rows(20_000));
  await waitForRow(page, "list", (row) => row.records === "3 → 20000");
  assert.deepEqual(await places(), before);
  assert.equal((await rowOf(page, "list")).leftOver, "");
});

test("the page tells the version of the program that serves it", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(1) });
  await waitFor(() => page.innerText(".version"), (text) => /\d/.test(text));
  assert.equal(await page.innerText(".version"), (await here.served.run("--version")).trim());
});

const sceneIsRead = (page) => page.waitForResponse(/\/api\/v1\/scene$/);

/** A page that reads all anew, and the states before anything else happens; gives what lets them arrive. */
async function readAnew(page) {
  const events = await interceptEvents(page);
  await page.waitForSelector("tbody tr");
  const answer = await holdAnswer(page, /\/api\/v1\/instances$/);
  events.tell({ seq: 0, type: "resync" });
  await answer.isHeld;
  return async () => {
    const isReadOut = sceneIsRead(page); // it is read last
    answer.letGo();
    await isReadOut;
  };
}

test("what an event told stays when all that was read before arrives", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  await button(page, "list", "Load").click();
  const target = () => page.innerText("tbody .target");
  await waitFor(target, (text) => text.includes("list"));
  const arrive = await readAnew(page);
  const isEditTold = sceneIsRead(page);
  await here.served.set("list", { table: "Other" });
  await isEditTold;
  await waitFor(target, (text) => text.includes("Other"));
  await arrive();
  assert.match(await target(), /Other/);
});

test("a load stays when all that was read before arrives", async () => {
  const page = await here.openWall([instance("list", "list.json")], { "list.json": rows(3) });
  const arrive = await readAnew(page);
  await button(page, "list", "Load").click();
  await waitForRow(page, "list", (row) => row.records === "3");
  await arrive();
  assert.equal((await rowOf(page, "list")).records, "3");
});

test("what is deleted and what is made stays so when all that was read before arrives", async () => {
  const page = await here.openWall([instance("list", "list.json"), instance("more", "list.json")]);
  const names = () => page.locator("tbody .name").allInnerTexts();
  const arrive = await readAnew(page);
  await waitFor(names, isOrder("list", "more"));
  const isDeletionTold = sceneIsRead(page);
  await here.served.removeInstance("list");
  await isDeletionTold;
  const isAdditionTold = sceneIsRead(page);
  await here.served.ask("POST", "/instances", { name: "new" });
  await isAdditionTold;
  await waitFor(names, isOrder("more", "new"));
  await arrive();
  assert.deepEqual(await names(), ["more", "new"]);
});
