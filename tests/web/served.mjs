// A scene that is served, and a browser that looks at it.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { mkdtemp, rm, writeFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { chromium } from "playwright-core";

const program = process.env.WORKBENCH;
if (program === undefined) throw new Error("WORKBENCH names the program to test");

/** The parameters of an instance that reads JSON. */
export function instance(name, filename, more = {}) {
  return {
    name,
    parameters: { queryMode: 3, filename, xpath: "rows", mode: 1, table: name, ...more },
  };
}

export const live = { autoLoad: 1, autoLoadInterval: 0.2 };

/** So many records. */
export function rows(count) {
  return JSON.stringify({ rows: Array.from({ length: count }, (_, i) => ({ id: i })) });
}

/** A folder with a scene of these instances, and a server of it. Ends with close(). */
export class Served {
  static async start(instances, files = {}) {
    const served = new Served();
    served.folder = await mkdtemp(join(tmpdir(), "intake-page-"));
    for (const [name, content] of Object.entries(files)) await served.write(name, content);
    await served.write("show.scene.json", JSON.stringify({ instances }));
    await served.#launch();
    return served;
  }

  async #launch() {
    this.process = spawn(program, ["serve", "show.scene.json"], {
      cwd: this.folder,
      stdio: ["ignore", "pipe", "ignore"],
    });
    const [line] = await once(this.process.stdout, "data");
    this.address = line.toString().trim();
    this.origin = new URL(this.address).origin;
  }

  write(name, content) {
    return writeFile(join(this.folder, name), content);
  }

  remove(name) {
    return rm(join(this.folder, name));
  }

  async end() {
    if (this.process.exitCode !== null) return;
    this.process.kill();
    await once(this.process, "exit");
  }

  async close() {
    await this.end();
    await rm(this.folder, { recursive: true });
  }
}

/** One browser for all tests. As root it runs without a sandbox only. */
export function openBrowser() {
  const args = process.getuid() === 0 ? ["--no-sandbox"] : [];
  return chromium.launch({ executablePath: "/usr/bin/chromium", args });
}

/** The cells of an instance's row, by the words of the table's head. */
export async function rowOf(page, name) {
  const cells = await page.locator(`tr:has(th:text-is("${name}")) > *`).allInnerTexts();
  const [state, , records, leftOver, age, took, next, words] = cells.map((text) => text.trim());
  return { state, records, leftOver, age, took, next, words };
}

/** Waits until the row of an instance is as wanted. */
export async function waitForRow(page, name, isWanted) {
  const end = Date.now() + 20_000;
  for (;;) {
    const row = await rowOf(page, name);
    if (isWanted(row)) return row;
    if (Date.now() > end) throw new Error(`"${name}" stays ${JSON.stringify(row)}`);
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
}
