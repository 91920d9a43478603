// A scene that is served, and requests to it as the page sends them.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { mkdtemp, rename, rm, writeFile } from "node:fs/promises";
import http from "node:http";
import { tmpdir } from "node:os";
import { join } from "node:path";

export const program = process.env.WORKBENCH;
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

/** Asks, and gives status, headers and text. */
export function request(address, method, headers = {}, body = undefined) {
  return new Promise((resolve, reject) => {
    const length = body === undefined ? {} : { "Content-Length": Buffer.byteLength(body) }; // not by itself with DELETE
    const asked = http.request(address, { method, headers: { ...headers, ...length } }, async (answer) => {
      let text = "";
      for await (const part of answer) text += part;
      resolve({ status: answer.statusCode, headers: answer.headers, text });
    });
    asked.on("error", reject);
    asked.on("upgrade", (answer, socket) => {
      socket.destroy();
      resolve({ status: answer.statusCode, headers: answer.headers, text: "" });
    });
    asked.end(body);
  });
}

/** A folder with a scene of these instances, and a server of it. Ends with close(). */
export class Served {
  #cookie = "";

  static async start(instances, files = {}) {
    const served = new Served();
    served.folder = await mkdtemp(join(tmpdir(), "intake-page-"));
    for (const [name, content] of Object.entries(files)) await served.write(name, content);
    await served.write("show.scene.json", JSON.stringify({ instances }));
    await served.launch([]);
    return served;
  }

  async launch(options) {
    this.process = spawn(program, ["serve", "show.scene.json", ...options], {
      cwd: this.folder,
      env: { ...process.env, XDG_RUNTIME_DIR: this.folder }, // where a session is kept
      stdio: ["ignore", "pipe", "ignore"],
    });
    const [line] = await once(this.process.stdout, "data");
    this.address = line.toString().trim();
    this.origin = new URL(this.address).origin;
    this.port = Number(new URL(this.address).port);
    this.#cookie = "";
  }

  /** What the program says when it is run in the folder of the scene. */
  async run(...words) {
    const child = spawn(program, words, { cwd: this.folder, stdio: ["ignore", "pipe", "ignore"] });
    let text = "";
    for await (const part of child.stdout) text += part;
    return text;
  }

  async logIn() {
    if (this.#cookie !== "") return this.#cookie;
    const token = new URL(this.address).hash.replace("#t=", "");
    const answer = await request(`${this.origin}/api/v1/session`, "POST", this.headers(), JSON.stringify({ token }));
    this.#cookie = answer.headers["set-cookie"][0].split(";")[0];
    return this.#cookie;
  }

  headers(more = {}) {
    return { "Content-Type": "application/json", Origin: this.origin, ...more };
  }

  /** Asks as the page does. */
  async ask(method, path, body = undefined) {
    const headers = this.headers({ Cookie: await this.logIn() });
    const text = body === undefined ? undefined : JSON.stringify(body);
    const answer = await request(`${this.origin}/api/v1${path}`, method, headers, text);
    const json = answer.text === "" ? undefined : JSON.parse(answer.text);
    return { status: answer.status, body: json };
  }

  async get(path) {
    const { status, body } = await this.ask("GET", path);
    if (status !== 200) throw new Error(`${path}: ${status} ${JSON.stringify(body)}`);
    return body;
  }

  /** Sets parameters, whatever the revision is just now. */
  async set(name, values) {
    const path = `/instances/${encodeURIComponent(name)}`;
    const { revision } = await this.get(path);
    return this.ask("PATCH", path, { revision, set: values });
  }

  /** Whatever the revision is just now. */
  async renameInstance(name, other) {
    const path = `/instances/${encodeURIComponent(name)}`;
    const { revision } = await this.get(path);
    return this.ask("POST", `${path}/rename`, { name: other, revision });
  }

  async removeInstance(name) {
    const path = `/instances/${encodeURIComponent(name)}`;
    const { revision } = await this.get(path);
    return this.ask("DELETE", path, { revision });
  }

  /** The number of the last load of an instance; 0 as long as there is none. */
  async lastLoad(name) {
    const { loads } = await this.get(`/instances/${encodeURIComponent(name)}/history?from=0&count=1`);
    return loads[0]?.id ?? 0;
  }

  /** Opens another scene, whatever has become of this one. */
  async openScene(file) {
    const { revision } = await this.get("/scene");
    return this.ask("POST", "/scene/open", { file, revision });
  }

  /** At once, so that nothing half written is loaded. */
  async write(name, content) {
    const fresh = join(this.folder, `${name}.new`);
    await writeFile(fresh, content);
    await rename(fresh, join(this.folder, name));
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
