// The screen to edit an instance.

import assert from "node:assert/strict";
import { test } from "node:test";
import { button, field, fieldNames, goTo, holdBack, interceptEvents, useBrowser, waitFor } from "./browser.mjs";
import { instance, rows } from "./served.mjs";

const here = useBrowser();
const queryTypes = ["EXCEL", "SQL", "XML", "JSON", "HTML"];
const kinds = { bool: "checkbox", radio: "select-one", string: "text", text: "textarea", button: "button", int: "text", float: "text" };

const shownBy = async (name = "list") => (await here.served.get(`/instances/${name}`)).shown;

const isSame = (wanted) => (seen) => seen.join() === wanted.join();

/** Everything that depends on a switch is on. */
const all = { useAuth: 1, autoLoad: 1, autoLoadInterval: 6000, enableProxy: 1, proxyMode: 2, useCustomHeaders: 1 };

test("labels, kinds and entries are those that the plugin registers", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", { ...all, mode: 4 })], {
    "list.json": rows(3),
  });
  const registered = JSON.parse(await here.served.run("params", "--out", "json"));
  const seen = new Set();
  for (const [mode, type] of queryTypes.entries()) {
    await here.served.set("list", { queryMode: mode, mode: mode % 2 === 0 ? 4 : 0 });
    await waitFor(() => fieldNames(page), isSame(await shownBy()));
    for (const each of registered.filter(({ name }) => name !== "")) {
      if ((await field(page, each.name).count()) === 0) continue;
      seen.add(each.name);
      const found = await field(page, each.name).evaluate((control) => ({
        label: control.labels?.[0]?.textContent ?? control.textContent,
        type: control.type,
        entries: [...(control.options ?? [])].map(({ text }) => text),
      }));
      const label = each.label.trim().replace(/:$/, "") || "Custom Headers";
      assert.equal(found.label, label, each.name);
      const secret = each.name === "password" || each.name === "proxyPwd";
      assert.equal(found.type, secret ? "password" : kinds[each.type], each.name);
      const more = each.name === "queryMode" ? ["HTML"] : [];
      const entries = (each.entries ?? []).map((entry) => entry.trim());
      assert.deepEqual(found.entries, each.type === "radio" ? [...entries, ...more] : [], each.name);
    }
    assert.equal(await field(page, "queryMode").evaluate((list) => list.selectedOptions[0].text), type);
  }
  const wanted = registered.filter(({ hidden, name }) => !hidden && name !== "").map(({ name }) => name);
  assert.deepEqual([...seen].sort(), wanted.sort());
});

test("limits are those that the plugin registers", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", { ...all, mode: 4 })]);
  const registered = JSON.parse(await here.served.run("params", "--out", "json"));
  for (const each of registered.filter(({ maximumBytes, hidden }) => maximumBytes !== undefined && !hidden)) {
    const mode = ["sheet", "range"].includes(each.name) ? 0 : ["connStr", "query"].includes(each.name) ? 1 : 2;
    const isProxy = each.name.startsWith("proxy");
    await here.served.set("list", { queryMode: isProxy ? 3 : mode, mode: each.name === "key" || each.name === "table" ? 0 : 4 });
    await field(page, each.name).waitFor();
    const note = page.locator(`#note-${each.name}`);
    await field(page, each.name).fill("x".repeat(each.maximumBytes));
    assert.equal(await note.innerText(), "0 bytes left", each.name);
    await field(page, each.name).fill("x".repeat(each.maximumBytes + 1));
    assert.equal(await note.innerText(), `${each.maximumBytes + 1} bytes; at most ${each.maximumBytes} fit.`);
    await field(page, each.name).fill("");
  }
});

test("in each query type and mode those fields are there that the plugin shows", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  const sets = new Set();
  for (const queryMode of queryTypes.keys()) {
    for (let mode = 0; mode < 5; ++mode) {
      await here.served.set("list", { queryMode, mode });
      const shown = await shownBy();
      await waitFor(() => fieldNames(page), isSame(shown));
      sets.add(shown.join());
    }
  }
  assert.ok(sets.size >= 8, `only ${sets.size} differ`);
});

test("another query type shows and hides at once, and the focus stays", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], { "list.json": rows(3) });
  await field(page, "xpath").waitFor();
  await field(page, "queryMode").focus();
  let longest = 0;
  for (const [i, type] of [...queryTypes.entries(), ...queryTypes.entries()]) {
    const before = await fieldNames(page);
    const began = Date.now();
    await field(page, "queryMode").selectOption(type);
    await waitFor(() => fieldNames(page), (names) => !isSame(before)(names));
    longest = Math.max(longest, Date.now() - began);
    assert.equal(await page.evaluate(() => document.activeElement?.id), "field-queryMode");
    assert.equal((await here.served.get("/instances/list")).values.queryMode, i);
  }
  console.log(`# at most ${longest} ms`);
  assert.ok(longest < 2000, `${longest} ms`);
});

test("a text over its limit is refused beside its field, in bytes, and not sent", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  await field(page, "key").fill("ä".repeat(40));
  await field(page, "key").press("Enter");
  assert.equal(await page.innerText("#note-key"), "80 bytes; at most 79 fit.");
  assert.equal(await field(page, "key").getAttribute("aria-invalid"), "true");
  await field(page, "key").fill("ä".repeat(39));
  assert.equal(await page.innerText("#note-key"), "1 byte left");
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.key, (key) => key === "ä".repeat(39));
  assert.equal((await here.served.get("/instances/list")).revision, 2);
});

test("Enter in a field changes the setting, and loads nothing", async () => {
  const sql = { name: "base", parameters: { queryMode: 1, connStr: "Driver=SQLite3;Database=base.db" } };
  const page = await here.openEdit("list", [instance("list", "list.json"), sql]);
  const asked = [];
  page.on("request", (request) => request.method() === "GET" || asked.push(new URL(request.url()).pathname));
  await field(page, "key").fill("id");
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.key, (key) => key === "id");
  await goTo(page, "base");
  await field(page, "query").waitFor();
  await page.click(".connection summary");
  await page.fill('.connection [name="file"]', "other.db");
  await field(page, "key").fill("id");
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/base")).values.key, (key) => key === "id");
  assert.deepEqual(asked, ["/api/v1/instances/list", "/api/v1/instances/base"]);
});

test("a number that is none, or out of range, is refused and not sent", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", { autoLoad: 1 })]);
  for (const [typed, said] of [["soon", "This is no number."], ["6001", "Between 0 and 6000."], ["-1", "Between 0 and 6000."], ["", "This is no number."]]) {
    await field(page, "autoLoadInterval").fill(typed);
    await field(page, "autoLoadInterval").press("Enter");
    assert.equal(await page.innerText("#note-autoLoadInterval"), said, typed);
  }
  assert.equal((await here.served.get("/instances/list")).revision, 1);
  await field(page, "autoLoadInterval").fill("7.5");
  await field(page, "autoLoadInterval").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.autoLoadInterval, (value) => value === 7.5);
});

test("an edit of somebody else is not overwritten, and what was typed is kept", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  await field(page, "key").fill("typed");
  let isFirst = true;
  await page.route("**/api/v1/instances/list", async (route) => {
    if (isFirst && route.request().method() === "PATCH") {
      isFirst = false;
      await here.served.set("list", { table: "Other" });
    }
    await route.continue();
  });
  await field(page, "key").press("Enter");
  await page.waitForSelector("text=This instance has been changed meanwhile.");
  assert.equal(await field(page, "key").inputValue(), "typed");
  assert.equal(await field(page, "table").inputValue(), "Other");
  assert.equal((await here.served.get("/instances/list")).values.key, "");
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.key, (key) => key === "typed");
  await waitFor(() => page.innerText(".notice"), (notice) => notice === "");
});

test("a text that is typed goes over what another tab has set meanwhile only when that is meant", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  const key = async () => (await here.served.get("/instances/list")).values.key;
  const contest = page.locator('[data-parameter="key"] .contest');
  const typeMeanwhile = async (typed, theirs) => {
    await field(page, "key").fill(typed);
    await here.served.set("list", { key: theirs, table: theirs });
    await waitFor(() => field(page, "table").inputValue(), (table) => table === theirs); // so the page knows it
    await field(page, "table").focus();
    await contest.waitFor();
    assert.equal(await contest.locator("span").innerText(), `It says ${theirs} now.`);
    assert.equal(await field(page, "key").inputValue(), typed);
    assert.equal(await key(), theirs);
  };
  await typeMeanwhile("mine", "theirs");
  await page.waitForSelector("text=This instance has been changed meanwhile.");
  await field(page, "key").focus();
  await field(page, "table").focus();
  await contest.locator('button:text-is("Drop it")').click();
  await waitFor(() => field(page, "key").inputValue(), (text) => text === "theirs");
  await waitFor(() => page.innerText(".notice"), (notice) => notice === "");
  assert.equal(await contest.count(), 0);
  await typeMeanwhile("mine again", "theirs again");
  await contest.locator('button:text-is("Send what you typed")').click();
  await waitFor(key, (text) => text === "mine again");
  await contest.waitFor({ state: "detached" });
  await waitFor(() => page.innerText(".notice"), (notice) => notice === "");
});

test("texts that are typed one after the other go, though each makes another revision", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  const arrive = await holdBack(page, /instances\/list$/, "PATCH");
  await field(page, "key").fill("first");
  await field(page, "table").fill("second");
  await field(page, "xpath").fill("third");
  await field(page, "key").focus();
  await arrive();
  const values = async () => (await here.served.get("/instances/list")).values;
  await waitFor(values, ({ key, table, xpath }) => [key, table, xpath].join() === "first,second,third");
  assert.equal(await page.locator(".contest").count(), 0);
});

test("what is typed for an instance, or was found out of it, is not for another that comes under its name", async () => {
  const page = await here.openEdit("list", [instance("list", "absent.json")], {
    "other.json": JSON.stringify({ instances: [instance("list", "absent.json", { table: "Other" })] }),
    "third.json": JSON.stringify({ instances: [instance("list", "absent.json", { table: "Third" })] }),
  });
  await page.click('.head button:text-is("Why?")');
  await page.waitForSelector(".why li");
  await field(page, "key").fill("mine");
  await here.served.openScene("other.json");
  await waitFor(() => field(page, "table").inputValue(), (table) => table === "Other");
  await field(page, "table").focus();
  await waitFor(() => field(page, "key").inputValue(), (text) => text === "");
  assert.equal(await page.locator(".why").count(), 0);
  const { values, revision } = await here.served.get("/instances/list");
  assert.equal(values.key, "");
  await page.click('a:has-text("All instances")');
  await button(page, "list", "Why?").click();
  await page.waitForSelector(".why li");
  await here.served.openScene("third.json");
  await page.waitForSelector(".why", { state: "detached" });
  assert.ok((await here.served.get("/instances/list")).revision > revision);
});

const two = [instance("one", "list.json"), instance("two", "list.json")];
const files = { "list.json": rows(3) };

/** Whatever comes late has come. */
async function settle(page) {
  await page.waitForLoadState("networkidle");
  await page.waitForTimeout(300);
}

test("settings that arrive when another instance was opened are not shown", async () => {
  const page = await here.openWall(two, files);
  const arrive = await holdBack(page, /instances\/one$/);
  await goTo(page, "one");
  await page.waitForSelector('h1:text-is("one")');
  await goTo(page, "two");
  await waitFor(() => field(page, "table").inputValue(), (table) => table === "two");
  await arrive();
  await settle(page);
  assert.equal(await field(page, "table").inputValue(), "two");
});

test("a change that is answered when another instance was opened is not shown there", async () => {
  const page = await here.openEdit("one", two, files);
  const arrive = await holdBack(page, /instances\/one$/, "PATCH");
  await field(page, "table").fill("Late");
  await field(page, "table").press("Enter");
  await goTo(page, "two");
  await waitFor(() => field(page, "table").inputValue(), (table) => table === "two");
  await arrive();
  await waitFor(async () => (await here.served.get("/instances/one")).values.table, (table) => table === "Late");
  await settle(page);
  assert.equal(await field(page, "table").inputValue(), "two");
});

test("what follows a change is left out when another instance was opened meanwhile", async () => {
  const page = await here.openEdit("one", [instance("one", "list.json", { xpath: "row" }), two[1]], files);
  const asked = [];
  page.on("request", (each) => asked.push(new URL(each.url()).pathname.replace("/api/v1/instances/", "")));
  for (const [open, follow] of [
    [() => page.locator(".tree .row").first().click(), "#all-of-these"],
    [() => page.click('.head button:text-is("Why?")'), 'button:text-is("Use this")'],
  ]) {
    await here.served.set("one", { xpath: "row" });
    await open();
    const arrive = await holdBack(page, /instances\/one$/, "PATCH");
    await page.click(follow);
    asked.length = 0;
    await goTo(page, "two");
    await waitFor(() => field(page, "table").inputValue(), (table) => table === "two");
    await arrive();
    await waitFor(async () => (await here.served.get("/instances/one")).values.xpath, (path) => path === "rows");
    await settle(page);
    assert.deepEqual(asked.filter((each) => /one\/(dryrun|explain)/.test(each)), []);
    assert.equal(await page.locator(".why").count(), 0);
    await goTo(page, "one");
    await page.locator(".tree .row").first().waitFor();
  }
});

test("what the server refuses stands beside the field", async () => {
  const secrets = { useCustomHeaders: 1, customHeaders: "X-Key: hidden" };
  const page = await here.openEdit("list", [instance("list", "list.json", secrets)]);
  const before = await field(page, "customHeaders").inputValue();
  assert.match(before, /••••/);
  await field(page, "customHeaders").fill("X-Other: ••••\nX-More: ••••");
  await field(page, "table").focus();
  await waitFor(() => page.innerText("#note-customHeaders"), (note) => note !== "");
  assert.equal(await field(page, "customHeaders").inputValue(), "X-Other: ••••\nX-More: ••••");
  assert.equal((await here.served.get("/instances/list")).values.customHeaders, before);
});

test("a reload keeps the screen, and the way back leads to the wall", async () => {
  const page = await here.openEdit("a list/b", [instance("a list/b", "list.json")]);
  assert.equal(new URL(page.url()).hash, "#edit/a%20list%2Fb");
  await page.reload();
  await page.waitForSelector('h1:text-is("a list/b")');
  await page.click("text=All instances");
  await page.waitForSelector("tbody tr");
});

test("on air is told where an instance loads by itself", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  const told = page.locator("text=Changes are on air with the next load.");
  assert.equal(await told.count(), 0);
  await field(page, "autoLoad").check();
  await told.waitFor();
});

test("two tabs show the same settings", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  const other = await here.window();
  await other.goto(page.url());
  await other.waitForSelector(".field");
  await field(page, "table").fill("Both");
  await field(page, "table").press("Enter");
  await waitFor(() => field(other, "table").inputValue(), (value) => value === "Both");
  await field(other, "mode").selectOption("DataTable");
  await waitFor(() => field(page, "mode").inputValue(), (value) => value === "0");
});

/** On the same port. */
async function startAgain() {
  const { port } = here.served;
  await here.served.end();
  await here.served.launch(["--port", String(port)]);
}

/** Opens an instance on a server that a further one can take the place of. */
async function openOnPort(name) {
  await startAgain();
  const page = await here.window();
  await page.goto(here.served.address);
  await button(page, name, "Edit").click();
  await field(page, "table").waitFor();
  return page;
}

/** Breaks the connection, and waits until it stands again. */
async function reconnect(page, end) {
  const arrive = await holdBack(page, /\/about$/);
  await end();
  await page.waitForSelector("text=No connection since");
  await arrive();
  await page.waitForSelector("text=No connection since", { state: "detached" });
  await waitFor(() => field(page, "key").isEnabled(), Boolean);
}

test("settings can be changed further when the server was started again", async () => {
  await here.serve([instance("list", "list.json")], { "list.json": rows(3) });
  const table = async () => (await here.served.get("/instances/list")).values.table;
  const type = async (text) => {
    await field(page, "table").fill(text);
    await field(page, "table").press("Enter");
    await waitFor(table, (value) => value === text);
  };
  const page = await openOnPort("list");
  await type("First");
  await type("Second");
  await startAgain();
  await waitFor(() => field(page, "table").inputValue(), (value) => value === "list");
  await type("Third");
  await waitFor(() => page.innerText(".notice"), (notice) => notice === "");
});

test("what is typed goes over the same settings, though the connection was broken meanwhile", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  const events = await interceptEvents(page);
  await field(page, "key").fill("typed");
  await reconnect(page, () => events.break());
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.key, (key) => key === "typed");
});

test("what is typed goes over the same settings of a server that was started again", async () => {
  await here.serve([instance("list", "list.json")]);
  const page = await openOnPort("list");
  await here.served.set("list", { xpath: "rows/id" });
  await waitFor(() => field(page, "xpath").inputValue(), (path) => path === "rows/id");
  await here.served.set("list", { xpath: "rows" });
  await waitFor(() => field(page, "xpath").inputValue(), (path) => path === "rows");
  await field(page, "key").fill("typed");
  await reconnect(page, startAgain);
  await field(page, "key").press("Enter");
  await waitFor(async () => (await here.served.get("/instances/list")).values.key, (key) => key === "typed");
});

test("what is typed is kept when a server was started again that has the instance in another place", async () => {
  const scene = (table) => JSON.stringify({ instances: [instance("list", "list.json", { table })] });
  await here.serve([instance("first", "list.json"), instance("list", "list.json")]);
  const page = await openOnPort("list");
  await field(page, "key").fill("typed");
  await here.served.write("show.scene.json", scene("Other"));
  await startAgain();
  await waitFor(() => field(page, "table").inputValue(), (table) => table === "Other");
  assert.equal(await field(page, "key").inputValue(), "typed");
  await waitFor(() => field(page, "key").isEnabled(), (isEnabled) => isEnabled);
  await field(page, "key").press("Enter");
  await page.waitForSelector(".contest >> text=It is empty now.");
  assert.equal((await here.served.get("/instances/list")).values.key, "");
});

test("a switch that is pressed on what has changed meanwhile stays as it is, and no typed text is told of", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")]);
  await page.route("**/api/v1/instances/list", async (route) => {
    if (route.request().method() === "PATCH") await here.served.set("list", { table: "Other" });
    await route.continue();
  });
  await field(page, "autoLoad").click();
  await waitFor(
    () => page.innerText(".notice"),
    (notice) => notice === "This instance has been changed meanwhile, so nothing was set. Look at it, and set it again.",
  );
  assert.equal(await field(page, "autoLoad").isChecked(), false);
  assert.equal(await field(page, "table").inputValue(), "Other");
});

test("nothing is loaded when one of two changes under way is refused, be it the first", async () => {
  const secrets = { useCustomHeaders: 1, customHeaders: "X-Key: hidden" };
  const page = await here.openEdit("list", [instance("list", "list.json", secrets)], { "list.json": rows(3) });
  const arrive = await holdBack(page, /instances\/list$/, "PATCH");
  await field(page, "customHeaders").fill("X-Other: ••••\nX-More: ••••");
  await field(page, "table").fill("Other");
  await page.click('button:text-is("Load to store")');
  await arrive();
  await page.waitForSelector("text=Nothing was loaded, since what was just set was refused.");
  assert.equal((await here.served.get("/instances/list")).values.table, "Other");
  assert.equal((await here.served.get("/loads")).loads.length, 0);
});

test("Load is a parameter as any other, and loads once", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], { "list.json": rows(3) });
  await field(page, "load").dblclick();
  await page.waitForSelector('.head .number:text-is("3 records")');
  assert.equal((await here.served.get("/loads")).loads.length, 1);
});
