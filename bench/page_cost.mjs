#!/usr/bin/env node
// page_cost.mjs [SECONDS [ROUNDS]]: what 50 instances that load ten times a second take of the
// processor, with a page open and without one, in turns.

import { readFile, readdir } from "node:fs/promises";
import { fileURLToPath } from "node:url";
import { setTimeout as sleep } from "node:timers/promises";

const seconds = Number(process.argv[2] ?? 10);
const rounds = Number(process.argv[3] ?? 5);
process.env.WORKBENCH ??= fileURLToPath(
  new URL("../build/bench/workbench/intake-workbench", import.meta.url),
);
const { Served, instance, rows } = await import("../tests/web/served.mjs");
const { openBrowser } = await import("../tests/web/browser.mjs");

const ticksPerSecond = 100; // what /proc counts in, on every Linux

/** The fields of a stat file behind the name, which may have blanks and brackets in it. */
async function statOf(path) {
  const text = await readFile(path, "utf8");
  const [, parent, ...rest] = text.slice(text.lastIndexOf(")") + 2).split(" ");
  return { parent: Number(parent), used: (Number(rest[9]) + Number(rest[10])) / ticksPerSecond };
}

/** The processes that the page runs in: those of the browsers that this process has started. */
async function renderers() {
  const parents = new Map();
  for (const name of (await readdir("/proc")).filter((each) => /^\d+$/.test(each))) {
    const stat = await statOf(`/proc/${name}/stat`).catch(() => undefined);
    if (stat !== undefined) parents.set(Number(name), stat.parent);
  }
  const isOurs = (id) => id === process.pid || (parents.has(id) && isOurs(parents.get(id)));
  const commands = await Promise.all(
    [...parents.keys()].filter(isOurs).map(async (id) => ({
      id,
      line: await readFile(`/proc/${id}/cmdline`, "utf8").catch(() => ""),
    })),
  );
  return commands.filter(({ line }) => line.includes("--type=renderer")).map(({ id }) => id);
}

/** Processor seconds so far. The workbench's first thread runs the frames. */
async function usage(workbench) {
  const all = (await statOf(`/proc/${workbench}/stat`)).used;
  const frames = (await statOf(`/proc/${workbench}/task/${workbench}/stat`)).used;
  const pages = await Promise.all((await renderers()).map((id) => statOf(`/proc/${id}/stat`)));
  return { frames, others: all - frames, page: pages.reduce((sum, { used }) => sum + used, 0) };
}

/** In percent of a core, over the time that is measured. */
async function measure(workbench) {
  await sleep(2000); // what begins is not counted
  const start = performance.now();
  const before = await usage(workbench);
  await sleep(1000 * seconds);
  const after = await usage(workbench);
  const scale = 1e5 / (performance.now() - start);
  return Object.fromEntries(
    Object.keys(after).map((name) => [name, scale * (after[name] - before[name])]),
  );
}

function median(values) {
  return [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
}

function show(label, measured) {
  const cells = ["frames", "others", "page"].map((name) =>
    median(measured.map((each) => each[name])).toFixed(1).padStart(12),
  );
  console.log(label.padEnd(16) + cells.join(""));
}

const names = Array.from({ length: 50 }, (_, i) => `list${i}`);
const served = await Served.start(
  names.map((name) => instance(name, `${name}.json`, { autoLoad: 1, autoLoadInterval: 0.1 })),
  Object.fromEntries(names.map((name) => [`${name}.json`, rows(20)])),
);
const browser = await openBrowser();
const without = [];
const withPage = [];
try {
  const context = await browser.newContext({ viewport: { width: 1280, height: 720 } });
  const open = async (address) => {
    const page = await context.newPage();
    await page.goto(address);
    await page.waitForSelector("tbody tr");
  };
  await open(served.address); // for the cookie
  for (let round = 0; round < rounds; ++round) {
    await Promise.all(context.pages().map((page) => page.close()));
    without.push(await measure(served.process.pid));
    await open(served.origin);
    withPage.push(await measure(served.process.pid));
  }
} finally {
  await browser.close();
  await served.close();
}
console.log("% of a core         frames      others        page");
show("without a page", without);
show("with a page", withPage);
const rises = without.map(({ frames }, i) => withPage[i].frames - frames);
console.log(`the frames take ${median(rises).toFixed(1)} % of a core more with a page`);
