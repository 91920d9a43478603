// What a source has, and how it becomes settings.

import assert from "node:assert/strict";
import { once } from "node:events";
import http from "node:http";
import { test } from "node:test";
import { button, field, goTo, holdBack, tab, treeRow, useBrowser, waitFor } from "./browser.mjs";
import { instance, rows } from "./served.mjs";

const here = useBrowser();

/** As a new instance is: of no query type that anybody has chosen. */
const fresh = { name: "fresh", parameters: {} };
const league = JSON.stringify({
  season: "2026",
  league: { table: Array.from({ length: 20 }, (_, i) => ({ pos: i + 1, club: `Club ${i + 1}` })) },
});

const all = (page) => page.locator("#all-of-these");
const promised = (page) => page.innerText(".offer .kept");

async function serveText(text, type = "application/json") {
  const server = http.createServer((_, answer) => answer.setHeader("Content-Type", type).end(text));
  server.listen(0, "127.0.0.1");
  await once(server, "listening");
  return { server, address: `http://127.0.0.1:${server.address().port}/league` };
}

test("from a pasted address to the table of its array in four clicks", async () => {
  const { server, address } = await serveText(league);
  try {
    const page = await here.openWall([fresh]);
    let clicks = 0;
    const click = async (place) => {
      ++clicks;
      await place.click();
    };
    await click(button(page, "fresh", "Edit"));
    await click(field(page, "filename"));
    await page.keyboard.insertText(address);
    await page.keyboard.press("Enter");
    await treeRow(page, "table").waitFor();
    await click(treeRow(page, "table"));
    await click(all(page));
    await page.waitForSelector('.grid [role="gridcell"]:text-is("Club 20")');
    assert.equal(clicks, 4);
    assert.equal(await promised(page), "20 promised, 20 by the dry run");
    const { values } = await here.served.get("/instances/fresh");
    assert.deepEqual([values.queryMode, values.xpath, values.mode], [3, "league/table", 1]);
  } finally {
    server.close();
  }
});

test("the same way by keyboard alone", async () => {
  const { server, address } = await serveText(league);
  try {
    const page = await here.openWall([fresh]);
    const press = (key) => page.keyboard.press(key);
    const tabTo = async (isThere) => {
      for (let i = 0; i < 40 && !(await page.evaluate(isThere)); ++i) await press("Tab");
      assert.ok(await page.evaluate(isThere));
    };
    await tabTo(() => document.activeElement.textContent === "Edit");
    await press("Enter");
    await page.waitForSelector(".field");
    await tabTo(() => document.activeElement.id === "field-filename");
    await page.keyboard.insertText(address);
    await press("Enter");
    await treeRow(page, "table").waitFor();
    await tabTo(() => document.activeElement.role === "tree");
    await press("Home");
    for (let i = 0; i < 2; ++i) await press("ArrowDown");
    await waitFor(() => page.innerText(".tree .row.active .text"), (name) => name === "table");
    await press("Enter");
    await press("Enter");
    await page.waitForSelector('.grid [role="gridcell"]:text-is("Club 20")');
    assert.equal(await promised(page), "20 promised, 20 by the dry run");
  } finally {
    server.close();
  }
});

test("a row below the selection becomes the key", async () => {
  const page = await here.openEdit("fresh", [{ name: "fresh", parameters: { filename: "league.json" } }], {
    "league.json": league,
  });
  await treeRow(page, "table").click();
  await all(page).click();
  await page.waitForSelector(".offer .kept");
  await treeRow(page, "club").click();
  await page.click('button:text-is("As key")');
  await waitFor(() => field(page, "key").inputValue(), (key) => key === "club");
  await page.waitForSelector('.grid [role="gridcell"]:text-is("Club 20")');
  const { values } = await here.served.get("/instances/fresh");
  assert.deepEqual([values.xpath, values.key, values.mode], ["league/table", "club", 0]);
});

test("the key of XML is the rest of its XPath", async () => {
  const xml = '<shop><book id="b7"><title>Tides</title></book><book id="b8"><title>Knots</title></book></shop>';
  const page = await here.openEdit("shop", [instance("shop", "shop.xml", { queryMode: 2, xpath: "/shop/book" })], {
    "shop.xml": xml,
  });
  await treeRow(page, "@id").click();
  await page.click('button:text-is("As key")');
  await waitFor(() => field(page, "key").inputValue(), (key) => key === "@id");
  await page.waitForSelector('.grid [role="gridcell"]:text-is("b8")');
});

test("a path that is typed marks the row that it selects", async () => {
  const page = await here.openEdit("league", [instance("league", "league.json", { xpath: "season" })], {
    "league.json": league,
  });
  await page.waitForSelector('.tree .used .text:text-is("season")');
  await field(page, "xpath").fill("league/table/club");
  await field(page, "xpath").press("Enter");
  await page.waitForSelector('.tree .used .text:text-is("club")');
  await page.waitForSelector('.tree [aria-current="true"][aria-level="3"][aria-posinset="2"][aria-setsize="2"]');
  await field(page, "xpath").fill("nowhere");
  await field(page, "xpath").press("Enter");
  await page.waitForSelector(".tree .used", { state: "detached" });
});

test("a name that the path language cannot write is explained, and never written", async () => {
  const content = JSON.stringify({ "we/ird": [{ a: 1 }], "sp ": 2, good: 3 });
  const page = await here.openEdit("odd", [instance("odd", "odd.json", { xpath: "good" })], {
    "odd.json": content,
  });
  for (const name of ["we/ird", "a", "sp "]) {
    await page.locator(".tree .row").filter({ has: page.locator(`[title="${name}"]`) }).first().click();
    assert.match(await page.innerText(".offer"), /The path language cannot write the name/, name);
    assert.equal(await all(page).count(), 0, name);
  }
  await treeRow(page, "good").click();
  await all(page).waitFor();
  assert.equal((await here.served.get("/instances/odd")).revision, 1);
});

test("it looks again by itself when the source is another one, and says why it cannot", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], {
    "list.json": rows(3),
    "other.xml": "<a><b/></a>",
  });
  const said = () => page.innerText(".said");
  await waitFor(said, (text) => /^JSON, 37 bytes/.test(text));
  for (const [name, wanted] of [["other.xml", /^XML, 11 bytes/], ["absent.json", /absent\.json/], ["list.json", /^JSON/]]) {
    await field(page, "filename").fill(name);
    await field(page, "filename").press("Enter");
    await waitFor(said, (text) => wanted.test(text));
  }
  await here.served.write("list.json", rows(30));
  await page.click('button:text-is("Look again")');
  await waitFor(() => page.innerText(".tree .row .number"), (records) => records === "30");
});

test("what was found in one source is not offered for another", async () => {
  const page = await here.openEdit("one", [instance("one", "one.json"), instance("two", "two.json")], {
    "one.json": '{"first": [1]}',
    "two.json": '{"second": [2]}',
    "three.json": '{"third": [3]}',
  });
  await treeRow(page, "first").waitFor();
  const showTwo = await holdBack(page, /two\/explore/);
  await goTo(page, "two");
  await page.waitForSelector('h1:text-is("two")');
  await waitFor(() => page.locator(".tree, .offer").count(), (count) => count === 0);
  await showTwo();
  await treeRow(page, "second").waitFor();
  const showThree = await holdBack(page, /two\/explore/);
  await field(page, "filename").fill("three.json");
  await field(page, "filename").press("Enter");
  await waitFor(() => page.locator(".tree, .offer").count(), (count) => count === 0);
  await showThree();
  await treeRow(page, "third").waitFor();
});

test("what was found stays while it is searched, and when it is taken as what it was found to be", async () => {
  const page = await here.openEdit("fresh", [{ name: "fresh", parameters: { filename: "league.json" } }], {
    "league.json": league,
  });
  await treeRow(page, "table").click();
  const show = await holdBack(page, /fresh\/explore/);
  await all(page).click();
  await page.waitForSelector(".offer .kept");
  assert.equal((await here.served.get("/instances/fresh")).values.queryMode, 3);
  await page.fill('[type="search"]', "club");
  await page.waitForTimeout(600); // longer than it waits for the next letter
  assert.equal(await treeRow(page, "table").count(), 1);
  await show();
  await treeRow(page, "table").waitFor({ state: "detached" });
});

test("of a long list few rows are in the document, and all can be reached by keys", async () => {
  const members = Object.fromEntries(Array.from({ length: 1200 }, (_, i) => [`member${i}`, i]));
  const page = await here.openEdit("long", [instance("long", "long.json")], {
    "long.json": JSON.stringify(members),
  });
  await treeRow(page, "member0").waitFor();
  const count = () => page.locator(".tree .row").count();
  assert.ok((await count()) <= 60);
  const listed = Number(await treeRow(page, "member0").getAttribute("aria-setsize"));
  assert.ok(listed > 500 && listed < 1200, `${listed}`);
  await page.focus(".tree");
  await page.keyboard.press("End");
  const last = treeRow(page, `member${listed - 1}`);
  await last.waitFor();
  assert.ok((await count()) <= 60);
  assert.equal(await last.getAttribute("aria-posinset"), `${listed}`);
  assert.ok((await page.innerText(".said")).includes(`${1200 - listed} names had no room: find them.`));
  await page.fill('[type="search"]', "member117");
  await waitFor(count, (shown) => shown === 11);
  await treeRow(page, "member1177").waitFor();
});

test("one entry is selected by its position, and all that have one of its values by the value", async () => {
  const page = await here.openEdit("league", [instance("league", "league.json", { xpath: "season" })], {
    "league.json": league,
  });
  await treeRow(page, "table").click();
  await page.fill(".one-of input", "3");
  await page.keyboard.press("Enter");
  await treeRow(page, "league/table[2]").waitFor();
  await all(page).click();
  await page.waitForSelector(".offer .kept");
  assert.equal((await here.served.get("/instances/league")).values.xpath, "league/table[2]");
  assert.equal(await promised(page), "1 promised, 1 by the dry run");
  await page.waitForSelector('.grid [role="gridcell"]:text-is("Club 3")');
  await treeRow(page, "club").first().click();
  await page.click('button:has-text("All with this value")');
  await waitFor(async () => (await here.served.get("/instances/league")).values.xpath, (path) => path === "league/table[club=Club 3]");
  await page.waitForSelector(".offer .kept");
  assert.equal(await promised(page), "1 promised, 1 by the dry run");
});

test("rows are opened by the right key, and closed by the left one", async () => {
  const page = await here.openEdit("league", [instance("league", "league.json", { xpath: "season" })], {
    "league.json": league,
  });
  await treeRow(page, "league").click();
  await page.keyboard.press("ArrowLeft");
  await treeRow(page, "table").waitFor({ state: "detached" });
  assert.equal(await treeRow(page, "league").getAttribute("aria-expanded"), "false");
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("ArrowRight");
  await waitFor(() => page.innerText(".tree .row.active .text"), (name) => name === "table");
});

/** More than one look lists. */
function openDeep() {
  const wide = Object.fromEntries(Array.from({ length: 300 }, (_, i) => [`m${i}`, { x: { y: i } }]));
  const content = JSON.stringify({ deep: Object.fromEntries(Array.from({ length: 10 }, (_, i) => [`d${i}`, wide])) });
  return here.openEdit("deep", [instance("deep", "deep.json", { xpath: "x" })], { "deep.json": content });
}

test("a look in whose place another is wished for is ended, and the last one counts", async () => {
  const page = await openDeep();
  const asked = [];
  await treeRow(page, "d0").waitFor();
  const ended = [];
  const findIn = (each) => new URL(each.url()).searchParams.get("find");
  page.on("request", (each) => each.url().includes("/explore") && asked.push(findIn(each)));
  page.on("requestfailed", (each) => ended.push(findIn(each)));
  const arrive = await holdBack(page, /deep\/explore/);
  await page.click('button:text-is("Look again")');
  await waitFor(() => asked.length, (length) => length === 1);
  for (const [i, text] of ["m11", "m117"].entries()) {
    await page.fill('[type="search"]', text);
    await waitFor(() => asked.length, (length) => length === i + 2);
    await waitFor(() => ended.length, (length) => length === i + 1);
  }
  await arrive();
  await waitFor(() => page.locator(".tree .text").allInnerTexts(), (found) => found.length > 0 && found.every((text) => text === "m117"));
  assert.deepEqual(asked, [null, "m11", "m117"]);
  assert.deepEqual(ended, [null, "m11"]);
});

test("a source that does not answer holds up no other instance, and what was asked of it is ended", async () => {
  const silent = http.createServer(() => {});
  let waiting = 0;
  silent.on("connection", (socket) => {
    ++waiting;
    socket.on("close", () => --waiting);
  });
  silent.listen(0, "127.0.0.1");
  await once(silent, "listening");
  try {
    const address = `http://127.0.0.1:${silent.address().port}/slow`;
    const page = await here.openEdit("slow", [instance("slow", address), instance("list", "list.json")], { "list.json": rows(3) });
    const ended = [];
    page.on("requestfailed", (each) => ended.push(new URL(each.url()).pathname.split("/").at(-1)));
    await waitFor(() => waiting, (count) => count === 1);
    await page.click('button:text-is("Dry run")');
    await waitFor(() => waiting, (count) => count === 2);
    await page.click('.head button:text-is("Why?")');
    await waitFor(() => waiting, (count) => count > 2);
    await goTo(page, "list");
    await treeRow(page, "rows").waitFor();
    await waitFor(() => [...ended].sort().join(), (all) => all === "dryrun,explain,explore");
    await waitFor(() => waiting, (count) => count === 0);
  } finally {
    silent.closeAllConnections();
    silent.close();
  }
});

test("what is too deep to be listed at first is asked for when it is opened", async () => {
  const page = await openDeep();
  for (const name of ["deep", "d0", "m0", "x"]) {
    const row = treeRow(page, name).first();
    await row.waitFor();
    if ((await row.getAttribute("aria-expanded")) === "false") await row.dblclick();
  }
  await treeRow(page, "y").first().click();
  assert.equal(await page.innerText(".offer code"), "deep/d0/m0/x/y");
});

test("each row brings by a click what it has promised", async () => {
  const page = await here.openEdit("fresh", [{ name: "fresh", parameters: { filename: "league.json" } }], {
    "league.json": league,
  });
  for (const [name, count] of [["season", 1], ["league", 1], ["table", 20], ["pos", 20], ["club", 20]]) {
    await treeRow(page, name).click();
    await all(page).click();
    await page.waitForSelector(`.tree .used .text:text-is("${name}")`);
    await waitFor(
      async () => [...(await page.locator(".offer .kept").allInnerTexts()), await page.innerText(".offer code")],
      ([kept, path]) => kept === `${count} promised, ${count} by the dry run` && path.endsWith(name),
    );
  }
});

/** The same numbers in each run. */
function random(seed) {
  let state = seed;
  return (below) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * below);
  };
}

const names = ["id", "name", "Ä", "a b", "n[0]", "*", "x=y", "te/st", "list", "of", "@k", ".."];

function document(pick, depth) {
  const kind = depth === 0 ? pick(4) : pick(6);
  if (kind === 0) return pick(1000);
  if (kind === 1) return `text ${pick(100)}`;
  if (kind === 2) return pick(2) === 0;
  if (kind === 3) return null;
  const count = 1 + pick(4);
  if (kind === 4) return Array.from({ length: count }, () => document(pick, depth - 1));
  return Object.fromEntries(
    Array.from({ length: count }, () => [names[pick(names.length)], document(pick, depth - 1)]),
  );
}

test("of two hundred rows each brings as many records as it says", async () => {
  const served = await here.serve([instance("any", "any.json", { xpath: "" })]);
  const pick = random(20);
  let tried = 0;
  const faults = [];
  while (tried < 200) {
    const content = { top: [document(pick, 4), document(pick, 4)], [names[pick(names.length)]]: document(pick, 4) };
    await served.write("any.json", JSON.stringify(content));
    const { entries } = await served.get("/instances/any/explore?limit=200");
    for (const entry of entries.filter(({ set }) => Object.keys(set).length > 0).slice(0, 8)) {
      ++tried;
      await served.set("any", entry.set);
      const { body } = await served.ask("POST", "/instances/any/dryrun", { allowWrites: false });
      if (body.records !== entry.records)
        faults.push({ set: entry.set, said: entry.records, came: body.records, content: JSON.stringify(content) });
    }
  }
  assert.deepEqual(faults, []);
});

test("a source of another kind than the query type is told, and read as what it is", async () => {
  const page = await here.openEdit("fresh", [{ name: "fresh", parameters: { filename: "league.json" } }], { "league.json": league });
  const said = page.locator(".other-kind");
  await said.waitFor();
  assert.match(await said.innerText(), /^The query type is EXCEL; this is JSON\./);
  await said.getByText("Read it so").click();
  await said.waitFor({ state: "detached" });
  const { values } = await here.served.get("/instances/fresh");
  assert.equal(values.queryMode, 3);
});
