// Why? on the page: what goes wrong most often is told, and what helps is a press away.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { once } from "node:events";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import http from "node:http";
import https from "node:https";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { button, field, useBrowser, waitForRow } from "./browser.mjs";
import { instance, live, rows } from "./served.mjs";
import { workbook } from "./workbook.mjs";

const here = useBrowser();

test("a path that is wrong in one letter is explained, and put right by a press", async () => {
  const page = await here.openWall([instance("list", "list.json", { ...live, xpath: "row" })], {
    "list.json": rows(3),
  });
  await waitForRow(page, "list", (row) => /EMPTY/i.test(row.state));
  await button(page, "list", "Why?").click();
  await page.waitForSelector(".why li.failed");
  const failed = await page.innerText(".why li.failed");
  assert.match(failed, /selection/);
  assert.match(failed, /has no member "row"/);
  assert.match(failed, /Try: xpath = rows \(3 records, checked\)/);
  assert.equal(await page.innerText(".why mark"), "row");
  await page.click('button:text-is("Use this")');
  const right = await waitForRow(page, "list", (row) => /LOADED/i.test(row.state));
  assert.equal(right.records.split(" ").at(-1), "3");
  await page.waitForSelector(".why li.failed", { state: "detached" });
  await page.waitForSelector(".why li.ok");
});

test("the screen to edit explains too, and its fields show what was used", async () => {
  const page = await here.openEdit("list", [instance("list", "list.json", { xpath: "row" })], {
    "list.json": rows(3),
  });
  await page.click('.head button:text-is("Why?")');
  await page.click('button:text-is("Use this")');
  await page.waitForSelector(".why li.ok");
  await page.waitForFunction(() => document.getElementById("field-xpath").value === "rows");
  await page.waitForSelector(".why li.failed", { state: "detached" });
  await page.click('.why button:text-is("Close")');
  await page.waitForSelector('[role="tab"]');
  assert.equal(await field(page, "xpath").inputValue(), "rows");
});

test("a sheet that was renamed is proposed under its new name, and taken by a press", async () => {
  const named = (name) => workbook([{ name, rows: [["id", "club"], [1, "Greywharf"], [2, "Eskerfold"]] }]);
  const book = { name: "book", parameters: { queryMode: 0, filename: "book.xlsx", sheet: "Table", mode: 1, table: "T", ...live } };
  const page = await here.openWall([book], { "book.xlsx": named("Table") });
  await waitForRow(page, "book", ({ records }) => records === "2");
  await here.served.write("book.xlsx", named("Tables 2027"));
  await waitForRow(page, "book", ({ state }) => /FAILED/i.test(state));
  await button(page, "book", "Why?").click();
  await page.waitForSelector(".why li.failed");
  assert.match(await page.innerText(".why li.failed"), /has no sheet "Table"\. It has: Tables 2027\./);
  await page.click('button:text-is("Use this")');
  await waitForRow(page, "book", ({ state }) => /LOADED/i.test(state));
  assert.equal((await here.served.get("/instances/book")).values.sheet, "Tables 2027");
});

test("an array that is rightly empty reads otherwise", async () => {
  const page = await here.openWall([instance("list", "list.json", live)], { "list.json": rows(0) });
  await button(page, "list", "Why?").click();
  await page.waitForSelector(".why li.ok");
  assert.match(await page.innerText(".why"), /the array is there and is empty/);
  assert.equal(await page.locator(".why li.failed").count(), 0);
  assert.equal(await page.locator('button:text-is("Use this")').count(), 0);
});

const login = "<!DOCTYPE html><html><head><title>Sign in</title></head><body><form></form></body></html>";

/** What a server may answer where XML is wanted, and what is said of it. */
const answers = {
  "/500": [500, "text/plain", "broken", /status 500/],
  "/404": [404, "text/plain", "nothing", /status 404/],
  "/401": [401, "text/plain", "who", /status 401|401, /],
  "/login": [200, "text/html", login, /Sign in/],
  "/json": [200, "application/json", '{"a": 1}', /JSON/],
};

test("what a server answers in place of XML is told", async () => {
  const server = http.createServer((asked, answer) => {
    const [status, type, text] = answers[asked.url.split("?")[0]] ?? answers["/404"];
    answer.writeHead(status, { "Content-Type": type }).end(text);
  });
  server.listen(0, "127.0.0.1");
  await once(server, "listening");
  try {
    const xml = { queryMode: 2, xpath: "/a" };
    const origin = `http://127.0.0.1:${server.address().port}`;
    const instances = Object.keys(answers).map((path) => instance(path.slice(1), origin + path, xml));
    const page = await here.openWall(instances);
    for (const [path, [, , , told]] of Object.entries(answers)) {
      await button(page, path.slice(1), "Why?").click();
      await page.waitForSelector(`.why[aria-label="Why ${path.slice(1)}?"] li.failed`);
      assert.match(await page.innerText(".why"), told, path);
      await page.click(".why summary");
      const heads = await page.innerText(".why .exchange");
      assert.match(heads, new RegExp(`GET ${path}\\?q=\\d+ HTTP/1.1\nHost: 127.0.0.1`));
      assert.match(heads, new RegExp(`HTTP/1.1 ${answers[path][0]} `));
    }
  } finally {
    server.close();
  }
});

/** A certificate that ended with the year 2020. */
function expiredCertificate() {
  const folder = mkdtempSync(join(tmpdir(), "intake-certificate-"));
  try {
    const file = (name) => join(folder, name);
    const openssl = (...words) => execFileSync("openssl", words, { cwd: folder, stdio: "ignore" });
    openssl("req", "-newkey", "rsa:2048", "-nodes", "-keyout", "key", "-out", "request", "-subj", "/CN=localhost");
    execFileSync("sh", ["-c", ": > index; echo 01 > serial; mkdir -p made"], { cwd: folder });
    execFileSync("sh", ["-c", "cat > config"], {
      cwd: folder,
      input:
        "[ca]\ndefault_ca = it\n[it]\ndatabase = index\nserial = serial\nnew_certs_dir = made\n" +
        "default_md = sha256\npolicy = any\n[any]\ncommonName = supplied\n",
    });
    openssl("ca", "-batch", "-config", "config", "-selfsign", "-keyfile", "key", "-in", "request",
      "-out", "certificate", "-startdate", "20200101000000Z", "-enddate", "20201231235959Z");
    return { key: readFileSync(file("key")), cert: readFileSync(file("certificate")) };
  } finally {
    rmSync(folder, { recursive: true });
  }
}

test("a certificate that has expired is told with its date", async () => {
  const server = https.createServer(expiredCertificate(), (_, answer) => answer.end("<a/>"));
  server.listen(0, "127.0.0.1");
  await once(server, "listening");
  try {
    const address = `https://localhost:${server.address().port}/`;
    const page = await here.openWall([instance("old", address, { queryMode: 2, xpath: "/a" })]);
    await button(page, "old", "Why?").click();
    await page.waitForSelector(".why li.failed, .why li.warning");
    assert.match(await page.innerText(".why"), /2020-12-31/);
  } finally {
    server.close();
  }
});
