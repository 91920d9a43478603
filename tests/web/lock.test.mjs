// The lock of a scene, drafts, and buttons that must be held.

import assert from "node:assert/strict";
import { test } from "node:test";
import { button, field, interceptEvents, useBrowser, waitFor } from "./browser.mjs";
import { instance, live, rows } from "./served.mjs";

const here = useBrowser();
const files = { "list.json": rows(3) };
const load = (page) => page.locator('.results button:text-is("Load to store")');
const lock = async (page) => {
  await page.click("button.lock");
  await page.waitForSelector("button.lock.closed");
};
const countLoads = async () => (await here.served.get("/loads")).loads.length;
const countWritten = async () => {
  const { fields } = await here.served.get("/store");
  return fields.find(({ name }) => name === "list")?.size ?? 0;
};

const hasWritten = async (wanted) => (await here.served.get("/store")).fields.some(({ name }) => name === wanted);

/** Until something has come of it. */
async function hold(page, place, hasCome) {
  await place.hover();
  await page.mouse.down();
  await waitFor(hasCome, Boolean);
  await page.mouse.up();
}

/** A key that is held is told again and again. */
async function repeat(page, key) {
  await page.keyboard.down(key);
  await page.waitForTimeout(100);
}

test("the lock is told by a word and a shape, with what it stops and what it does not", async () => {
  const page = await here.openWall([instance("list", "list.json")], files);
  assert.equal(await page.innerText("button.lock"), "Unlocked");
  await lock(page);
  assert.equal(await page.innerText("button.lock"), "Locked");
  assert.equal(
    await page.innerText(".locked"),
    "Locked. Automatic loads go on. Edits stay drafts. Load to store and Save need a hold of one second. " +
      "Instances cannot be added, renamed or deleted.",
  );
  await page.click("button.lock");
  await page.waitForSelector(".locked", { state: "detached" });
});

test("under the lock a click loads nothing and says so, and a hold of a second loads", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await load(page).click();
  await page.waitForSelector("text=The scene is locked: hold the button for a second.");
  assert.equal(await countLoads(), 0);
  await hold(page, load(page), async () => (await countLoads()) === 1);
});

test("a key can be held as the pointer can", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await load(page).focus();
  await page.keyboard.press("Enter");
  await page.waitForSelector("text=The scene is locked: hold the button for a second.");
  assert.equal(await countLoads(), 0);
  await page.keyboard.down("Enter");
  await waitFor(countLoads, (count) => count === 1);
  await page.keyboard.up("Enter");
});

test("a key that stays down loads once, and another mouse button not at all", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await load(page).hover();
  await page.mouse.down({ button: "right" });
  await page.waitForTimeout(1300);
  await page.mouse.up({ button: "right" });
  assert.equal(await countLoads(), 0);
  await load(page).focus();
  await waitFor(async () => (await repeat(page, " "), countLoads()), (count) => count > 0);
  for (let i = 0; i < 24; ++i) await repeat(page, " "); // longer than two holds
  await page.keyboard.up(" ");
  assert.equal(await countLoads(), 1);
});

test("a press that is neither pointer nor key says what to do", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await load(page).evaluate((element) => element.click());
  await page.waitForSelector("text=The scene is locked: hold the button for a second.");
  const hint = await load(page).getAttribute("aria-describedby");
  assert.equal(
    (await page.locator(`[id="${hint}"]`).textContent()).trim(),
    "Needs to be held for a second while the scene is locked.",
  );
  assert.equal(await countLoads(), 0);
});

test("under the lock a query that may write is not run, and that is said", async () => {
  const writes = { name: "base", parameters: { queryMode: 1, connStr: "Driver=SQLite3;Database=base.db", query: "DELETE FROM boat" } };
  const page = await here.openEdit("base", [writes], files);
  await lock(page);
  await page.click('.results button:text-is("Dry run")');
  await page.click('button:text-is("Run it once all the same")');
  const { status, body } = await here.served.ask("POST", "/instances/base/dryrun", { allowWrites: true });
  assert.equal(status, 423);
  await waitFor(() => page.innerText('.results > header > [role="status"]'), (text) => text === body.error);
});

test("without the lock a click loads", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await load(page).click();
  await waitFor(countLoads, (count) => count === 1);
});

test("under the lock automatic loads go on with the live settings, and edits stay a draft", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", live)], files);
  await waitFor(countWritten, (count) => count === 3);
  await lock(page);
  await field(page, "table").fill("other");
  await field(page, "table").press("Enter");
  await page.waitForSelector(".draft-words");
  const before = await here.served.lastLoad("list");
  await waitFor(() => here.served.lastLoad("list"), (id) => id > before + 2);
  assert.ok(!(await hasWritten("other")));
  await hold(page, load(page), () => hasWritten("other"));
  await page.waitForSelector(".draft-words", { state: "detached" });
});

test("a draft is marked on the wall, outlives the lock, and can be discarded", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await field(page, "table").fill("other");
  await field(page, "table").press("Enter");
  await page.waitForSelector(".draft-words");
  await page.click('a:has-text("All instances")');
  await page.waitForSelector("tbody tr .draft");
  await page.click("button.lock");
  await button(page, "list", "Edit").click();
  await page.click('button:text-is("Discard the draft")');
  await waitFor(() => field(page, "table").inputValue(), (text) => text === "list");
  await page.waitForSelector(".draft-words", { state: "detached" });
});

test("a draft that another tab has changed is neither loaded nor discarded before it is seen", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await field(page, "table").fill("mine");
  await field(page, "table").press("Enter");
  await page.waitForSelector(".draft-words");
  await page.click("button.lock");
  let others = 0;
  await page.route(/list\/(load|discard)$/, async (route) => {
    await here.served.set("list", { numRows: String(++others) });
    await route.continue();
  });
  await load(page).click();
  await page.waitForSelector(".broken >> text=The instance has been changed meanwhile.");
  await waitFor(() => field(page, "numRows").inputValue(), (text) => text === "1");
  await page.click('button:text-is("Discard the draft")');
  await page.waitForSelector(".notice >> text=The instance has been changed meanwhile.");
  await waitFor(() => field(page, "numRows").inputValue(), (text) => text === "2");
  assert.ok((await here.served.get("/instances/list")).isDraft);
  assert.equal(await countLoads(), 0);
});

/** A draft that another tab changes, of which the events do not tell. */
async function changeUnseen(page) {
  const events = await interceptEvents(page);
  await lock(page);
  await here.served.set("list", { table: "other" });
  await page.waitForSelector(".draft");
  await page.click("button.lock");
  await page.waitForSelector("button.lock:not(.closed)");
  events.isSilent = true;
  await here.served.set("list", { numRows: "1" });
}

test("a load that was refused shows what is there now, so that the next press loads", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await changeUnseen(page);
  await load(page).click();
  await page.waitForSelector(".broken >> text=The instance has been changed meanwhile.");
  await waitFor(() => field(page, "numRows").inputValue(), (text) => text === "1");
  await waitFor(async () => (await load(page).click(), hasWritten("other")), Boolean);
});

test("a load that was refused on the wall is not refused again", async () => {
  const page = await here.openWall([instance("list", "list.json")], files);
  await changeUnseen(page);
  await button(page, "list", "Load").click();
  await page.waitForSelector(".broken >> text=The instance has been changed meanwhile.");
  await waitFor(async () => (await button(page, "list", "Load").click(), hasWritten("other")), Boolean);
});

test("what is typed goes into the draft before the press that loads it", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await field(page, "table").fill("first");
  await field(page, "table").press("Enter");
  await page.waitForSelector(".draft-words");
  await page.click("button.lock");
  await page.waitForSelector("button.lock:not(.closed)");
  await field(page, "table").fill("second");
  await load(page).click();
  await waitFor(() => hasWritten("second"), Boolean);
  await page.waitForSelector(".draft-words", { state: "detached" });
});

test("what is typed goes over the draft that was loaded here meanwhile", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await lock(page);
  await field(page, "table").fill("other");
  await field(page, "table").press("Enter");
  await page.waitForSelector(".draft-words");
  await page.click("button.lock");
  await page.waitForSelector("button.lock:not(.closed)");
  await field(page, "key").fill("x".repeat(80)); // too long to be sent
  await load(page).click();
  await page.waitForSelector(".draft-words", { state: "detached" });
  await field(page, "key").fill("id");
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.key, (key) => key === "id");
});

test("a draft is loaded from the wall as it was told there", async () => {
  const page = await here.openWall([instance("list", "list.json")], files);
  await lock(page);
  await here.served.set("list", { table: "other" });
  await page.waitForSelector("tbody tr .draft");
  await page.click("button.lock");
  await page.waitForSelector("button.lock:not(.closed)");
  await button(page, "list", "Load").click();
  await waitFor(() => hasWritten("other"), Boolean);
});

test("two tabs have the same lock", async () => {
  const page = await here.openWall([instance("list", "list.json")], files);
  const other = await here.window();
  await other.goto(`${here.served.origin}/`);
  await other.waitForSelector("tbody tr");
  await lock(page);
  await other.waitForSelector("button.lock.closed");
});
