// Puts the page without a server together, from the module that is built in build/wasm and the page in dist/:
//   build/web/page          a folder for any web server
//   build/web/frigana.html  the same in one file
//   build/web/npm           the package frigana for programs in JavaScript
import { build } from "esbuild";
import { createHash } from "node:crypto";
import { cpSync, mkdirSync, readFileSync, readdirSync, rmSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";
import { gzipSync } from "node:zlib";
import { execFileSync } from "node:child_process";

const here = dirname(fileURLToPath(import.meta.url));
const tree = join(here, "..");
const data = join(tree, "data"), dist = join(here, "dist"), module = join(tree, "build/wasm/bin");
const out = join(tree, "build/web"), page = join(out, "page"), npm = join(out, "npm");
const version = /project\(frigana VERSION ([\d.]+)/.exec(readFileSync(join(tree, "CMakeLists.txt"), "utf8"))[1];

const text = (...path) => readFileSync(join(...path), "utf8");
const base64 = (bytes) => Buffer.from(bytes).toString("base64");
const packed = (bytes) => gzipSync(bytes, { level: 9 });
const digest = (bytes, form) => createHash("sha256").update(bytes).digest(form);

const bundle = async (entry, settings = {}) => (await build({
  bundle: true, minify: true, write: false, legalComments: "none", charset: "utf8", absWorkingDir: here, target: "es2022",
  entryPoints: [entry], alias: { "frigana-page.js": join(module, "frigana-page.js") }, ...settings,
})).outputFiles[0].text;

// The files of the installation, with their sizes, in one order.
function filesOfData() {
  const names = ["refrigerants.json"];
  for (const [folder, endings] of [["fluids", /\.(FLD|BNC|SAT)$/], ["mixtures", /\.MIX$/]])
    names.push(...readdirSync(join(data, folder)).filter((one) => endings.test(one)).sort().map((one) => `${folder}/${one}`));
  return names.map((name) => [name, readFileSync(join(data, name)).length]);
}

// Where the page is told which calculation it has, and what it may load.
function document(where, policy, head) {
  return text(dist, "index.html")
    .replace('<html lang="en">', `<html lang="en" data-calculation="${where}">`)
    .replace('<meta charset="utf-8">', `<meta charset="utf-8">\n<meta http-equiv="Content-Security-Policy" content="${policy}">`)
    .replace(/<link rel="icon"[^]*<\/script>\n/, (found) => head ?? found);
}

const closed = "base-uri 'none'; form-action 'none'";

function writePage(files, shared) {
  for (const name of readdirSync(dist)) if (name !== "index.html") cpSync(join(dist, name), join(page, name));
  for (const [name] of files) cpSync(join(data, name), join(page, "data", name));
  for (const [name, bytes] of shared) writeFileSync(join(page, name), bytes);
  writeFileSync(join(page, "index.html"), document("beside",
    `default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; img-src 'self' data: blob:; connect-src 'self'; worker-src 'self'; ${closed}`));
}

async function writeService(files) {
  const own = readdirSync(page, { withFileTypes: true }).filter((one) => one.isFile()).map((one) => one.name).sort();
  const all = [...own, ...files.map(([name]) => `data/${name}`)];
  const hash = createHash("sha256");
  for (const name of all) hash.update(name).update(readFileSync(join(page, name)));
  const script = await bundle("src/service.ts", {
    format: "iife", define: { FILES: JSON.stringify(["./", ...all]), VERSION: JSON.stringify(hash.digest("hex").slice(0, 16)) },
  });
  writeFileSync(join(page, "service.js"), script);
}

function writeOneFile(files, shared) {
  const script = text(dist, "page.js"), style = text(dist, "page.css"), worker = shared.get("worker.js");
  for (const one of [script, worker]) if (/<\/script|<!--/i.test(one)) throw new Error("a script cannot stand in a page");
  const hash = (one) => `'sha256-${digest(one, "base64")}'`;
  const kept = new Map([
    ["frigana.wasm.gz", packed(shared.get("frigana.wasm"))],
    ["data.gz", packed(Buffer.concat(files.map(([name]) => readFileSync(join(data, name)))))],
    ["files.json.gz", packed(shared.get("files.json"))],
    ["requests.json.gz", packed(shared.get("requests.json"))],
    ["fluids.json.gz", packed(shared.get("fluids.json"))],
  ]);
  const head = `<link rel="icon" href="data:image/svg+xml;base64,${base64(readFileSync(join(dist, "icon.svg")))}" type="image/svg+xml">
<style>${style}</style>
${[...kept].map(([name, bytes]) => `<script type="text/plain" id="${name}">${base64(bytes)}</script>`).join("\n")}
<script type="text/plain" id="worker.js">${worker}</script>
<script type="module">${script}</script>
<!--
${text(dist, "licences.txt").replaceAll("--", "- -")}-->
`;
  writeFileSync(join(out, "frigana.html"), document("inside",
    `default-src 'none'; script-src ${hash(script)} 'wasm-unsafe-eval' blob:; style-src ${hash(style)}; img-src data: blob:; worker-src blob:; ${closed}`, head));
}

async function writePackage(files, shared) {
  const node = { format: "esm", platform: "node" };
  writeFileSync(join(npm, "node.js"), await bundle("package/node.ts", node));
  writeFileSync(join(npm, "worker-node.js"), await bundle("package/worker-node.ts", node));
  writeFileSync(join(npm, "browser.js"), await bundle("package/browser.ts", { format: "esm" }));
  for (const [name, bytes] of shared) writeFileSync(join(npm, name), bytes);
  for (const [name] of files) cpSync(join(data, name), join(npm, "data", name));
  cpSync(join(here, "package/README.md"), join(npm, "README.md"));
  execFileSync(join(here, "node_modules/.bin/tsc"), ["-p", "package/tsconfig.json", "--noEmit", "false", "--declaration",
    "--emitDeclarationOnly", "--stripInternal", "--rootDir", ".", "--outDir", join(out, "types")], { cwd: here, stdio: "inherit" });
  const types = (...path) => text(out, "types", ...path).replaceAll('"../src/', '"./').replace(/from "(\.\/\w+)"/g, 'from "$1.js"');
  writeFileSync(join(npm, "frigana.d.ts"), types("package/frigana.d.ts"));
  for (const name of ["calculation", "types"]) writeFileSync(join(npm, `${name}.d.ts`), types(`src/${name}.d.ts`));
  writeFileSync(join(npm, "package.json"), `${JSON.stringify({
    name: "frigana", version, description: "Refrigeration cycles, refrigerants and their properties", type: "module",
    exports: { ".": { types: "./frigana.d.ts", node: "./node.js", default: "./browser.js" } },
    types: "./frigana.d.ts", sideEffects: true, engines: { node: ">=20" },
  }, null, 2)}\n`);
}

rmSync(out, { recursive: true, force: true });
for (const folder of [page, npm]) mkdirSync(folder, { recursive: true });
const files = filesOfData();
const shared = new Map([
  ["worker.js", await bundle("src/engine/worker.ts", { format: "iife" })],
  ["frigana.wasm", readFileSync(join(module, "frigana-page.wasm"))],
  ["files.json", JSON.stringify(files)],
]);
await writePackage(files, shared);
// The lists, which the package itself makes: that of the fluids from all files.
const { listOf, close } = await import(pathToFileURL(join(npm, "node.js")).href);
for (const name of ["requests", "fluids"]) {
  shared.set(`${name}.json`, await listOf(name));
  writeFileSync(join(npm, `${name}.json`), shared.get(`${name}.json`));
}
close();
writePage(files, shared);
await writeService(files);
writeOneFile(files, shared);
rmSync(join(out, "types"), { recursive: true });

const size = (bytes) => `${(bytes / 1024).toFixed(0)} KiB`;
console.log(`frigana.wasm ${size(shared.get("frigana.wasm").length)}, ${size(packed(shared.get("frigana.wasm")).length)} compressed; ` +
  `worker.js ${size(shared.get("worker.js").length)}; data ${size(files.reduce((sum, [, bytes]) => sum + bytes, 0))}; ` +
  `frigana.html ${size(readFileSync(join(out, "frigana.html")).length)}`);
