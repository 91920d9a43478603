// Whether the page can be read: by all people, in dark and light, and on small screens.

import assert from "node:assert/strict";
import { test } from "node:test";
import { button, seriousFaults, tab, treeRow, useBrowser, waitForRow } from "./browser.mjs";
import { instance, live, rows } from "./served.mjs";

const here = useBrowser();

const instances = [
  instance("good", "list.json", live),
  instance("a list with a rather long name", "absent.json", live),
];

/** Goes to each screen in turn. */
const screens = {
  wall: (page) => waitForRow(page, "good", (row) => /LOADED/i.test(row.state)),
  why: async (page) => {
    await button(page, "a list with a rather long name", "Why?").click();
    await page.waitForSelector(".why li.failed");
  },
  edit: async (page) => {
    await button(page, "good", "Edit").click();
    await treeRow(page, "rows").click();
  },
  records: async (page) => {
    await page.click('button:text-is("Dry run")');
    await page.waitForSelector(".grid");
  },
  script: (page) => tab(page, "SCRIPT").click(),
  changes: (page) => tab(page, "CHANGES").click(),
  store: async (page) => {
    await tab(page, "STORE").click();
    await page.click('button:has-text("good")');
    await page.waitForSelector(".answer tr.entry");
  },
  plot: async (page) => {
    await tab(page, "PLOT").click();
    await page.waitForSelector(".chart canvas");
  },
  "why of edit": async (page) => {
    await page.click('.head button:text-is("Why?")');
    await page.waitForSelector(".why li.ok");
  },
  history: async (page) => {
    await page.click('.head a:text-is("History")');
    await page.waitForSelector(".load.loaded");
  },
  reports: async (page) => {
    await page.click('nav a:text-is("Reports")');
    await page.click('button:text-is("night.jsonl")');
    await page.waitForSelector(".load.failed");
  },
  scene: async (page) => {
    await page.click('nav a:text-is("Scene")');
    await here.served.set("good", { numRows: "12" });
    await page.waitForSelector(".difference");
  },
  "scene that is locked": async (page) => {
    await page.click("button.lock");
    await page.waitForSelector(".locked");
  },
};

const files = {
  "list.json": rows(30),
  "night.jsonl": JSON.stringify({
    time: "2026-11-21T23:00:00Z",
    instance: "good",
    outcome: "failed",
    records: 0,
    recordsBefore: 30,
    leftOver: 30,
    leftOverAgeMs: 2000,
    bytes: 10,
    durationMs: 100,
    error: "Could not load a list with a rather long name, for a reason that takes many words to tell",
  }),
};

for (const theme of ["dark", "light"]) {
  test(`nothing serious stands in the way of those who need help to read: ${theme}`, async () => {
    const page = await here.openWall(instances, files);
    if (theme === "light") await page.click('button:text-is("Light")');
    for (const [name, go] of Object.entries(screens)) {
      await go(page);
      assert.deepEqual(await seriousFaults(page), [], name);
    }
  });
}

for (const width of [1920, 1280, 1201, 1024, 640]) {
  test(`every screen fits ${width} pixels without scrolling sideways`, async () => {
    const page = await here.openWall(instances, files);
    await page.setViewportSize({ width, height: Math.round((width * 9) / 16) });
    for (const [name, go] of Object.entries(screens)) {
      await go(page);
      const overflow = await page.evaluate(
        () => document.documentElement.scrollWidth - document.documentElement.clientWidth,
      );
      assert.equal(overflow, 0, name);
    }
  });
}

for (const width of [1280, 1201, 1024, 640]) {
  test(`${width} pixels leave room for the names of the instances`, async () => {
    const page = await here.openWall(instances, files);
    await page.setViewportSize({ width, height: 720 });
    await screens.wall(page);
    const name = await page.locator(".wall tbody th").first().boundingBox();
    assert.ok(name.width >= 150, `${name.width} pixels`);
  });
}

test("dark or light is kept by the browser", async () => {
  const page = await here.openWall(instances, { "list.json": rows(3) });
  const theme = () => page.evaluate(() => document.documentElement.dataset.theme);
  assert.equal(await theme(), "dark");
  await page.click('button:text-is("Light")');
  assert.equal(await theme(), "light");
  await page.reload();
  assert.equal(await theme(), "light");
  await page.click('button:text-is("Dark")');
  assert.equal(await theme(), "dark");
});
