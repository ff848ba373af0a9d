// Where the page is: with the program as a server, or alone with its module; and the program as the command that it is
// compared with.
import { execFileSync, spawn } from "node:child_process";
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import { dirname, extname, join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const tree = join(dirname(fileURLToPath(import.meta.url)), "../..");
export const program = process.env.FRIGANA_PROGRAM ?? join(tree, "build/release/bin/frigana");
export const data = join(tree, "data");
export const examples = join(tree, "examples");
export const folder = mkdtempSync(join(tmpdir(), "frigana-page-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));

export class Served {
  static async start(port = 0, jobs = 2) {
    const child = spawn(program, ["serve", "--port", String(port), "--jobs", String(jobs), "--data", data], { stdio: ["ignore", "pipe", "inherit"] });
    const address = await new Promise((done, failed) => {
      let said = "";
      child.stdout.on("data", (piece) => {
        said += piece;
        const found = /http:\/\/127\.0\.0\.1:(\d+)\//.exec(said);
        if (found) done(found[0]);
      });
      child.on("exit", () => failed(new Error("the server did not start")));
    });
    return new Served(child, address);
  }
  constructor(child, address) {
    this.child = child;
    this.address = address;
    this.port = Number(new URL(address).port);
  }
  async stop(signal = "SIGTERM") {
    if (this.child.exitCode !== null) return;
    const ended = new Promise((done) => this.child.on("exit", done));
    this.child.kill(signal);
    await ended;
  }
  // The processes that calculate: children of the keeper, which is the server's only child.
  workers() {
    const childrenOf = (parent) => readdirSync("/proc").filter((one) => /^\d+$/.test(one)).filter((one) => {
      try {
        return Number(readFileSync(`/proc/${one}/stat`, "utf8").split(") ").pop().split(" ")[1]) === parent;
      } catch { return false; }
    }).map(Number);
    return childrenOf(this.child.pid).flatMap(childrenOf);
  }
}

// The page without a server: its folder behind a plain web server, or one file.
export class Folder {
  static async start(port = 0, name = "page") {
    const types = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css", ".svg": "image/svg+xml", ".json": "application/json", ".wasm": "application/wasm" };
    const root = join(tree, "build/web", name);
    const folder = new Folder();
    folder.asked = [];
    folder.server = createServer((request, answer) => {
      const path = decodeURIComponent(new URL(request.url, "http://any").pathname);
      folder.asked.push(path);
      const file = join(root, path === "/" ? "index.html" : path);
      if (!file.startsWith(root) || !existsSync(file) || !statSync(file).isFile()) return answer.writeHead(404).end();
      answer.writeHead(200, { "Content-Type": types[extname(file)] ?? "application/octet-stream" }).end(readFileSync(file));
    });
    await new Promise((done) => folder.server.listen(port, "127.0.0.1", done));
    folder.port = folder.server.address().port;
    folder.address = `http://127.0.0.1:${folder.port}/`;
    return folder;
  }
  async stop() {
    if (!this.server.listening) return;
    const ended = new Promise((done) => this.server.close(done));
    this.server.closeAllConnections();
    await ended;
  }
}

export class OneFile {
  static async start() {
    const file = new OneFile();
    file.address = pathToFileURL(join(tree, "build/web/frigana.html")).href;
    return file;
  }
  async stop() {}
}

// What the command says of the same request.
let count = 0;
export function runByCommand(request) {
  const file = join(folder, `request-${++count}.json`);
  writeFileSync(file, JSON.stringify(request));
  try {
    return JSON.parse(execFileSync(program, ["run", file, "--json", "-", "--data", data], { encoding: "utf8", maxBuffer: 1 << 26 }));
  } catch (failure) {
    return JSON.parse(failure.stdout);
  }
}

// The request that an address holds, as JSON.
export function requestIn(address) {
  const own = ["view", "page_units", "compare", "vary", "vary2", "results", "map"];
  const words = new URLSearchParams(new URL(address).hash.slice(1));
  const request = { units: words.get("page_units") };
  for (const [key, text] of words) {
    if (own.includes(key)) continue;
    const isText = /(^request|title|fluid|blend_name)$/.test(key);
    const value = text === "true" || text === "false" ? text === "true" : !isText && /^-?[\d.]+$/.test(text) ? Number(text) : text;
    const parts = key.split(".");
    let table = request;
    for (const part of parts.slice(0, -1)) table = table[part] ??= {};
    table[parts.at(-1)] = value;
  }
  return request;
}
