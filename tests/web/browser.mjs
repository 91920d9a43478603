// The page of a scene in a real browser, and ways to find things on it.

import { readFile } from "node:fs/promises";
import { createRequire } from "node:module";
import { after, afterEach, before } from "node:test";
import { chromium } from "playwright-core";
import { beginCounting, endCounting, prepareCounting } from "./coverage.mjs";
import { Served } from "./served.mjs";

const patience = 20_000; // milliseconds; a busy machine is slow

/** As root the browser runs without a sandbox only. */
export function openBrowser() {
  const args = process.getuid() === 0 ? ["--no-sandbox"] : [];
  return chromium.launch({ executablePath: "/usr/bin/chromium", args });
}

/** One browser for all tests of a file; each test has a server and a window of its own. */
export function useBrowser() {
  const here = { browser: undefined, served: undefined, context: undefined };
  before(async () => {
    here.browser = await openBrowser();
  });
  after(() => here.browser.close());
  afterEach(async () => {
    await endCounting(here.context?.pages() ?? []);
    await here.context?.close();
    await here.served?.close();
    here.context = here.served = undefined;
  });
  here.serve = async (instances, files) => (here.served = await Served.start(instances, files));
  here.window = async () => {
    if (here.context === undefined) {
      here.context = await here.browser.newContext({ viewport: { width: 1280, height: 720 } });
      await prepareCounting(here.context);
    }
    const page = await here.context.newPage();
    await beginCounting(page);
    page.setDefaultTimeout(patience);
    return page;
  };
  here.openWall = async (instances, files) => {
    await here.serve(instances, files);
    const page = await here.window();
    await page.goto(here.served.address);
    await page.waitForSelector("tbody tr");
    return page;
  };
  here.openEdit = async (name, instances, files) => {
    const page = await here.openWall(instances, files);
    await button(page, name, "Edit").click();
    await page.waitForSelector(".field");
    return page;
  };
  return here;
}

export const button = (page, name, text) =>
  page.locator(`tr:has(.name:text-is("${name}")) button:text-is("${text}")`);

/** What the row of an instance says. */
export async function rowOf(page, name) {
  const texts = await page
    .locator(`tr:has(.name:text-is("${name}"))`)
    .evaluate((row) => [...row.querySelectorAll(".state, .words, .number")].map((cell) => cell.innerText.trim()));
  const [state, words, records, leftOver, age, next, took] = texts;
  return { state, words, records, leftOver, age, next, took };
}

/** Waits until what is looked at is as wanted, and gives it. */
export async function waitFor(look, isWanted) {
  const end = Date.now() + patience;
  for (;;) {
    const seen = await look();
    if (isWanted(seen)) return seen;
    if (Date.now() > end) throw new Error(`It stays ${JSON.stringify(seen)}`);
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
}

export const waitForRow = (page, name, isWanted) => waitFor(() => rowOf(page, name), isWanted);

export const field = (page, name) => page.locator(`#field-${name}`);

export const fieldNames = (page) =>
  page.locator(".field").evaluateAll((fields) => fields.map((each) => each.dataset.parameter));

export const treeRow = (page, name) => page.locator(`.tree .row:has(.text:text-is("${name}"))`);

export const tab = (page, name) => page.locator(`[role="tab"]:text-is("${name}")`);

/** Holds requests of the page back; gives what lets them go. */
export async function holdBack(page, address, method = "GET") {
  let held = [];
  await page.route(address, (route) => {
    if (held === null || route.request().method() !== method) return route.continue();
    held.push(route);
  });
  return async () => {
    const waiting = held;
    held = null;
    await Promise.all(waiting.map((route) => route.continue()));
  };
}

/** Holds an answer back that the server has given already; gives what waits for it and lets it go. */
export async function holdAnswer(page, address) {
  let letGo;
  const isLetGo = new Promise((resolve) => (letGo = resolve));
  let hold;
  const isHeld = new Promise((resolve) => (hold = resolve));
  await page.route(address, async (route) => {
    const response = await route.fetch();
    hold();
    await isLetGo;
    await route.fulfill({ response });
  });
  return { isHeld, letGo };
}

/** What the server tells the page from here on can be kept from it or added, and the connection broken. */
export async function interceptEvents(page) {
  const events = { isSilent: false, break: undefined, tell: undefined };
  await page.routeWebSocket(/\/events/, (socket) => {
    const server = socket.connectToServer();
    server.onMessage((text) => events.isSilent || socket.send(text));
    events.break = () => socket.close();
    events.tell = (event) => socket.send(JSON.stringify(event));
  });
  await page.reload();
  await waitFor(() => events.break, (known) => known !== undefined);
  return events;
}

/** Goes to another instance without a way over the wall. */
export const goTo = (page, name) =>
  page.evaluate((hash) => (location.hash = hash), `#edit/${encodeURIComponent(name)}`);

/** What is serious for those who need help to read. The page runs no script of others, so that the
    check is brought in by the browser itself. */
export async function seriousFaults(page) {
  const axe = createRequire(import.meta.url).resolve("axe-core/axe.min.js");
  const session = await page.context().newCDPSession(page);
  const evaluate = async (expression) =>
    (await session.send("Runtime.evaluate", { expression, awaitPromise: true, returnByValue: true }))
      .result.value;
  await evaluate(await readFile(axe, "utf8"));
  return evaluate(
    `axe.run().then(({ violations }) => violations
       .filter(({ impact }) => impact === "serious" || impact === "critical")
       .map(({ id, nodes }) => id + ": " + nodes.map(({ html }) => html).join(" ")))`,
  );
}
