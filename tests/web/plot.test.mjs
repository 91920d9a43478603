// Numbers of the store, drawn and as a table.

import assert from "node:assert/strict";
import { test } from "node:test";
import { tab, useBrowser, waitFor } from "./browser.mjs";
import { instance, live } from "./served.mjs";

const here = useBrowser();
const list = JSON.stringify({
  rows: [{ club: "Holm", points: 6, rank: "1" }, { club: "Eskby", points: 4.5, rank: "2" }, { club: "Norvik", points: 9, rank: "3" }],
});

const options = (page) => page.locator(".chooser option").allInnerTexts();
const rowsOf = (page) =>
  page.locator('.plotted .window [role="row"]').evaluateAll((all) =>
    all.map((line) => [...line.children].map((cell) => cell.innerText)),
  );

async function openPlot() {
  const page = await here.openEdit("list", [instance("list", "list.json", live)], { "list.json": list });
  await waitFor(() => here.served.get("/series?instance=list"), ({ series }) => series.some(({ points }) => points > 3));
  await tab(page, "PLOT").click();
  await page.waitForSelector(".chooser select");
  return page;
}

const choose = async (page, part) => {
  const all = await options(page);
  await page.selectOption(".chooser select", { label: all.find((each) => each.includes(part)) });
};

test("a column is drawn by record, with the same numbers beside it", async () => {
  const page = await openPlot();
  await choose(page, "list: points");
  await waitFor(() => rowsOf(page), (all) => JSON.stringify(all) === '[["0","6"],["1","4.5"],["2","9"]]');
  assert.equal(await page.getAttribute(".chart", "aria-label"), "list: points: 3 numbers between 4.5 and 9");
  assert.ok((await page.locator(".chart canvas").count()) === 1);
});

test("a field is drawn over time", async () => {
  const page = await openPlot();
  await choose(page, "READER_NUM_RECORDS over time");
  await waitFor(() => rowsOf(page), (all) => all.length > 3 && all.every(([time, value]) => /^\d\d:\d\d:\d\d$/.test(time) && value === "3"));
});

test("a column without numbers is not offered", async () => {
  const page = await openPlot();
  assert.ok(!(await options(page)).some((each) => each.includes("club")));
});

test("something is drawn in dark and light", async () => {
  const page = await openPlot();
  await choose(page, "list: points");
  const inked = () =>
    page.evaluate(() => {
      const canvas = document.querySelector(".chart canvas");
      const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
      return data.filter((value, i) => i % 4 === 3 && value > 0).length;
    });
  await page.waitForSelector(".chart canvas");
  await waitFor(inked, (count) => count > 500);
  await page.click('button:text-is("Light")');
  await waitFor(inked, (count) => count > 500);
});
