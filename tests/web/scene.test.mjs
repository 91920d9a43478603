// The scene as a file: its instances, what a save would change, and other scenes.

import assert from "node:assert/strict";
import { readFile, truncate } from "node:fs/promises";
import { join } from "node:path";
import { test } from "node:test";
import { button, field, holdAnswer, holdBack, interceptEvents, seriousFaults, useBrowser, waitFor, waitForRow } from "./browser.mjs";
import { instance, rows } from "./served.mjs";

const here = useBrowser();
const other = JSON.stringify({ instances: [instance("elsewhere", "list.json")] });
const files = { "list.json": rows(3), "other.scene.json": other };

const rowOf = (page, name) => page.locator(`section[aria-label="Instances"] li:has(.file:text-is("${name}"))`);
const names = (page) => page.locator('section[aria-label="Instances"] .file').allInnerTexts();
const stored = async (file = "show.scene.json") => JSON.parse(await readFile(join(here.served.folder, file), "utf8"));
const differences = (page) =>
  page.locator(".difference tbody tr").evaluateAll((lines) =>
    lines.map((line) => [...line.children].map((cell) => cell.innerText.trim())),
  );
const said = (page) => page.locator(".saves .said").innerText();

async function openScene(instances = [instance("list", "list.json")], more = files) {
  const page = await here.openWall(instances, more);
  await page.click('nav a:text-is("Scene")');
  await page.waitForSelector('section[aria-label="Instances"] li');
  return page;
}

test("instances are made, copied, renamed and deleted, and other tabs follow", async () => {
  const page = await openScene();
  const tab = await here.window();
  await tab.goto(`${here.served.origin}/#scene`);
  await page.click('button:text-is("New instance")');
  await page.fill('[aria-label="Name"]', "fresh");
  await page.keyboard.press("Enter");
  await waitFor(() => names(page), (all) => all.join() === "list,fresh");
  await rowOf(page, "list").locator('button:text-is("Duplicate")').click();
  await page.press('[aria-label="Name"]', "Enter");
  await waitFor(() => names(page), (all) => all.includes("list 2"));
  assert.equal((await here.served.get("/instances/list%202")).values.filename, "list.json");
  await rowOf(page, "fresh").locator('button:text-is("Rename")').click();
  await page.fill('[aria-label="Name"]', "renamed");
  await page.keyboard.press("Enter");
  await waitFor(() => names(page), (all) => all.includes("renamed") && !all.includes("fresh"));
  await rowOf(page, "list").locator('button:text-is("Delete")').click();
  assert.ok((await names(page)).includes("list"));
  await page.click('button:text-is("Delete list")');
  await waitFor(() => names(page), (all) => !all.includes("list"));
  await waitFor(() => names(tab), (all) => [...all].sort().join() === "list 2,renamed");
});

test("an instance is neither renamed nor deleted before a change of another tab was seen", async () => {
  const page = await openScene();
  const events = await interceptEvents(page);
  const refusal = page.locator('section[aria-label="Instances"] [role="status"]');
  const rename = async () => {
    await rowOf(page, "list").locator('button:text-is("Rename")').click();
    await page.fill('[aria-label="Name"]', "renamed");
    await page.keyboard.press("Enter");
  };
  const remove = async () => {
    await page.click('section[aria-label="Instances"] button:text-is("Delete")');
    await page.click(`button:text-is("Delete ${(await names(page))[0]}")`);
  };
  const revision = async (name) => (await here.served.get(`/instances/${name}`)).revision;
  for (const [act, before, isDone] of [
    [rename, "list", (all) => all.join() === "renamed"],
    [remove, "renamed", (all) => all.length === 0],
  ]) {
    events.isSilent = true;
    await here.served.set(before, { numRows: String(await revision(before)) });
    await act();
    await waitFor(() => refusal.innerText(), (text) => text === "The instance has been changed meanwhile.");
    assert.deepEqual(await names(page), [before]);
    events.isSilent = false;
    await act();
    await waitFor(() => names(page), isDone);
    await waitFor(() => refusal.innerText(), (text) => text === "");
  }
});

test("an instance that is gone does not come back with an answer that is older", async () => {
  const page = await openScene([instance("list", "list.json"), instance("more", "list.json")]);
  const events = await interceptEvents(page);
  await waitFor(() => names(page), (all) => all.length === 2);
  events.isSilent = true;
  await here.served.set("list", { numRows: "1" });
  const answer = await holdAnswer(page, /\/api\/v1\/instances$/);
  await rowOf(page, "list").locator('button:text-is("Delete")').click();
  await page.click('button:text-is("Delete list")');
  await answer.isHeld;
  events.isSilent = false;
  await here.served.removeInstance("more");
  await waitFor(() => names(page), (all) => all.join() === "list");
  answer.letGo();
  const refusal = page.locator('section[aria-label="Instances"] [role="status"]');
  await waitFor(() => refusal.innerText(), (text) => text === "The instance has been changed meanwhile.");
  assert.deepEqual(await names(page), ["list"]);
});

test("a name that is taken is refused in words", async () => {
  const page = await openScene([instance("list", "list.json"), instance("more", "list.json")]);
  await rowOf(page, "more").locator('button:text-is("Rename")').click();
  await page.fill('[aria-label="Name"]', "list");
  await page.keyboard.press("Enter");
  await waitFor(() => page.innerText('section[aria-label="Instances"] [role="status"]'), (text) => text !== "");
  assert.deepEqual(await names(page), ["list", "more"]);
});

test("a save shows the difference first, and then there is none", async () => {
  const page = await openScene();
  await page.waitForSelector("text=A save would change nothing in the file.");
  await here.served.set("list", { numRows: "2" });
  await waitFor(() => differences(page), (lines) => lines.length === 1);
  assert.deepEqual(await differences(page), [["list", "changed", "numRows", "", "2"]]);
  await page.waitForSelector(".unsaved");
  await page.click('button:text-is("Save")');
  await page.waitForSelector("text=A save would change nothing in the file.");
  await page.waitForSelector(".unsaved", { state: "hidden" });
  assert.equal((await stored()).instances[0].parameters.numRows, "2");
});

test("a change on disk is told, and not overwritten before it was seen", async () => {
  const page = await openScene();
  await here.served.set("list", { numRows: "2" });
  await page.waitForSelector(".difference");
  const release = page.waitForSelector(".on-disk.told");
  await here.served.write("show.scene.json", JSON.stringify({ instances: [instance("list", "else.json")] }));
  await release;
  await waitFor(() => differences(page), (lines) => lines.some(([, , name]) => name === "filename"));
  const lines = await differences(page);
  assert.ok(lines.some(([, , name, before, after]) => name === "filename" && before === "else.json" && after === "list.json"));
  await page.click('button:text-is("Save")');
  await waitFor(() => said(page), (text) => text === "Saved.");
  assert.equal((await stored()).instances[0].parameters.filename, "list.json");
});

test("a scene is saved under another name without its secrets", async () => {
  const page = await openScene([instance("list", "list.json", { password: "tide7" })]);
  await page.fill('[name="file"]', "copy.scene.json");
  await page.keyboard.press("Tab");
  await page.check('section[aria-label="Save"] [type="checkbox"]');
  await page.click('button:text-is("Save")');
  await waitFor(() => said(page), (text) => text === "Saved.");
  assert.ok(!JSON.stringify(await stored("copy.scene.json")).includes("tide7"));
});

test("a name without an ending gets that of scenes, and can be saved to as soon as it is typed", async () => {
  const page = await openScene();
  const file = page.locator('[name="file"]');
  await file.pressSequentially("cop");
  await page.waitForSelector("text=cop.scene.json is not there yet.");
  await file.pressSequentially("y");
  await page.waitForSelector("text=copy.scene.json is not there yet.");
  assert.equal(await file.inputValue(), "copy");
  await page.click('button:text-is("Save")');
  await waitFor(() => said(page), (text) => text === "Saved.");
  assert.equal((await stored("copy.scene.json")).instances.length, 1);
});

test("another scene is opened, and asks when something is not saved", async () => {
  const page = await openScene();
  await here.served.set("list", { numRows: "2" });
  await page.waitForSelector(".unsaved");
  const row = page.locator('section[aria-label="Open"] li:has-text("other.scene.json")');
  await row.locator("button").click();
  await page.waitForSelector("text=Changes are not saved.");
  assert.deepEqual(await names(page), ["list"]);
  await page.click('button:text-is("Open all the same")');
  await waitFor(() => names(page), (all) => all.join() === "elsewhere");
  assert.match(await page.innerText(".top .scene"), /^other\.scene\.json/);
});

test("a change of another tab that was not seen keeps another scene from being opened", async () => {
  const page = await openScene();
  const row = page.locator('section[aria-label="Open"] li:has-text("other.scene.json")');
  await page.waitForSelector("text=A save would change nothing in the file.");
  let isFirst = true;
  await page.route("**/api/v1/scene/open", async (route) => {
    if (isFirst) await here.served.set("list", { numRows: "2" });
    isFirst = false;
    await route.continue();
  });
  await row.locator("button").click();
  await waitFor(() => said(page), (text) => text === "The scene has been changed meanwhile.");
  assert.equal((await here.served.get("/instances/list")).values.numRows, "2");
  await page.waitForSelector(".unsaved:not(.none)");
  await row.locator("button").click();
  await page.click('button:text-is("Open all the same")');
  await waitFor(() => names(page), (all) => all.join() === "elsewhere");
});

test("a save that was refused shows what the file is now, also where an answer was overtaken", async () => {
  const page = await openScene();
  await here.served.set("list", { numRows: "2" });
  await page.waitForSelector(".difference");
  const told = page.waitForRequest(/\/api\/v1\/scene$/);
  const arrive = await holdBack(page, /\/api\/v1\/scene$/);
  await here.served.write("show.scene.json", JSON.stringify({ instances: [instance("list", "else.json")] }));
  await told;
  const refused = page.waitForResponse(/\/scene\/save$/);
  await page.click('button:text-is("Save")');
  assert.equal((await refused).status(), 409);
  await arrive();
  await page.waitForSelector(".on-disk.told");
  await waitFor(() => said(page), (text) => text === "The scene file has been changed on disk meanwhile.");
  await page.click('button:text-is("Save")');
  await waitFor(() => said(page), (text) => text === "Saved.");
});

test("under the lock instances stay, and a save needs a hold", async () => {
  const page = await openScene();
  await here.served.set("list", { numRows: "2" });
  await page.waitForSelector(".difference");
  await page.click("button.lock");
  await page.waitForSelector("button.lock.closed");
  assert.ok(await page.locator('button:text-is("New instance")').isDisabled());
  const save = page.locator('section[aria-label="Save"] button:text-is("Save")');
  await save.click();
  await page.waitForSelector("text=The scene is locked: hold the button for a second.");
  assert.equal((await stored()).instances[0].parameters.numRows, undefined);
  await save.focus();
  await page.keyboard.down("Enter");
  await waitFor(() => said(page), (text) => text === "Saved.");
  await page.keyboard.up("Enter");
  assert.equal((await stored()).instances[0].parameters.numRows, "2");
});

test("an instance that is renamed elsewhere is not edited under its old name", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await here.served.renameInstance("list", "other");
  await page.waitForSelector("text=This instance is not there any more.");
  assert.equal(await field(page, "table").count(), 0);
});

test("an instance that comes back under its name is begun again, without the loads of the other", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json")], files);
  await here.served.ask("POST", "/instances/list/load", {});
  await waitFor(async () => (await here.served.get("/loads")).loads.length, (count) => count === 1);
  await here.served.removeInstance("list");
  await page.waitForSelector("text=This instance is not there any more.");
  await here.served.ask("POST", "/instances", { name: "list" });
  await waitFor(() => field(page, "filename").count(), (count) => count === 1);
  await waitFor(() => field(page, "filename").inputValue(), (text) => text === "");
  await page.click('a:has-text("All instances")');
  await page.waitForSelector('tr:has(.name:text-is("list")) .spark[aria-hidden="true"]');
});

test("a save overwrites only what was shown when it was pressed", async () => {
  const page = await openScene();
  await here.served.set("list", { numRows: "2" });
  await page.waitForSelector(".difference");
  await page.click("button.lock");
  await page.waitForSelector("button.lock.closed");
  const save = page.locator('section[aria-label="Save"] button:text-is("Save")');
  const { stamp } = await here.served.get("/scene");
  const sent = page.waitForRequest((request) => request.url().endsWith("/scene/save"));
  await save.hover();
  await page.mouse.down();
  await here.served.write("show.scene.json", JSON.stringify({ instances: [instance("list", "else.json")] }));
  assert.equal((await sent).postDataJSON().stamp, stamp);
  await page.mouse.up();
  await waitFor(() => said(page), (text) => text !== "" && text !== "Saved.");
  assert.equal((await stored()).instances[0].parameters.filename, "else.json");
});

/** Where each control of the screen is. */
const places = (page) =>
  page.locator(".scene-screen :is(button, input)").evaluateAll((all) =>
    all.map((each) => {
      const { x, y, width, height } = each.getBoundingClientRect();
      return [each.innerText || each.name || each.type, x, y, width, height];
    }),
  );

for (const [width, height] of [[1280, 720], [640, 360]])
  test(`what is told of the file moves nothing that can be pressed, in ${width} × ${height}`, async () => {
    const page = await openScene();
    await page.setViewportSize({ width, height });
    await page.waitForSelector("text=The file on disk is as it was opened or saved.");
    await page.waitForSelector('section[aria-label="Open"] li:has-text("other.scene.json")');
    const before = await places(page);
    assert.ok(before.some(([name]) => name === "Save"));
    const long = Array.from({ length: 30 }, (_, i) => instance(`list ${i}`, "else.json"));
    await here.served.write("show.scene.json", JSON.stringify({ instances: long }));
    await page.waitForSelector(".on-disk.told");
    await waitFor(() => differences(page), (lines) => lines.length > 30);
    assert.deepEqual(await places(page), before);
    await here.served.remove("show.scene.json");
    await page.waitForSelector("text=The file is not there any more.");
    assert.deepEqual(await places(page), before);
    assert.deepEqual(await seriousFaults(page), []);
  });

test("an instance of another scene under the same name has none of the former one's loads", async () => {
  const page = await here.openWall([instance("list", "list.json"), instance("more", "list.json")], {
    ...files,
    "list.scene.json": JSON.stringify({ instances: [instance("list", "list.json", { numRows: "2" })] }),
  });
  await button(page, "list", "Load").click();
  await waitForRow(page, "list", ({ records }) => records === "3");
  await page.waitForSelector('tr:has(.name:text-is("list")) .spark:not([aria-hidden])');
  await here.served.openScene("list.scene.json");
  await waitFor(() => page.locator(".wall tbody tr").count(), (count) => count === 1);
  await page.waitForSelector('tr:has(.name:text-is("list")) .spark[aria-hidden="true"]');
  await here.served.ask("POST", "/instances/list/load", {}); // so soon a second press of the button counts as the same
  await waitForRow(page, "list", ({ records }) => records === "2");
  await waitFor(async () => (await here.served.get("/loads")).loads.length, (count) => count === 1);
});

test("a long list of scenes is counted, and scrolled to its end", async () => {
  const many = Object.fromEntries(Array.from({ length: 30 }, (_, i) => [`scene${i + 10}.json`, other]));
  const page = await openScene(undefined, { "list.json": rows(3), ...many });
  await page.waitForSelector('section[aria-label="Open"] >> text=31 scenes');
  const list = page.locator('section[aria-label="Open"] .files');
  const last = list.locator("li").last();
  const isIn = async () => {
    const [outer, inner] = [await list.boundingBox(), await last.boundingBox()];
    return inner.y >= outer.y && inner.y + inner.height <= outer.y + outer.height + 1;
  };
  assert.ok((await list.boundingBox()).y + (await list.boundingBox()).height <= 720);
  assert.equal(await isIn(), false);
  await last.locator("button").focus();
  assert.equal(await isIn(), true);
});

test("a folder that is too large to be looked through is told", async () => {
  const page = await here.openWall([instance("list", "list.json")], files);
  for (let i = 0; i < 20; ++i) {
    await here.served.write(`large${i}.json`, "");
    await truncate(join(here.served.folder, `large${i}.json`), 17 * 1024 * 1024);
  }
  await page.click('nav a:text-is("Scene")');
  await page.waitForSelector("text=The folder is too large to be looked through");
});

test("what a save over another scene takes from it is told beside the difference", async () => {
  const page = await openScene(undefined, { ...files, "noted.json": JSON.stringify({ by: "night", instances: [] }) });
  await page.fill('[name="file"]', "noted.json");
  await page.keyboard.press("Tab");
  await page.waitForSelector('.difference >> text=A save here replaces "by", which only the file knows.');
  await page.waitForSelector("text=noted.json is there already; the difference above is against it.");
});

test("a name that a save would change is told with the one in the file", async () => {
  const page = await openScene();
  await here.served.renameInstance("list", "other");
  await waitFor(() => differences(page), (lines) => lines.length === 1);
  assert.deepEqual(await differences(page), [["other", "renamed", "name", "list", "other"]]);
});
