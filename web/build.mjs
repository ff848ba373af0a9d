// Builds the page into dist/, which is committed: the program embeds it, so that its own build needs no npm.
//   node build.mjs          writes dist/
//   node build.mjs --check  writes nothing; ends with 1 where dist/ is not what the sources give
import { build } from "esbuild";
import { mkdir, readFile, readdir, rm, writeFile } from "node:fs/promises";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const dist = join(here, "dist");

// What stands in the script of others; their licences go with it.
async function licences(inputs) {
  const packages = new Set();
  for (const input of Object.keys(inputs)) {
    const found = /node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(input);
    if (found) packages.add(found[1]);
  }
  const texts = [];
  for (const name of [...packages].sort()) {
    const folder = join(here, "node_modules", name);
    const { version, license } = JSON.parse(await readFile(join(folder, "package.json"), "utf8"));
    const file = (await readdir(folder)).find((one) => /^licen[cs]e/i.test(one));
    const text = file ? await readFile(join(folder, file), "utf8") : "";
    texts.push(`${name} ${version} (${license})\n\n${text.trim()}\n`);
  }
  return `The page contains parts of these packages.\n\n${texts.join("\n----\n\n")}`;
}

async function built() {
  const common = { bundle: true, minify: true, write: false, legalComments: "none", charset: "utf8", absWorkingDir: here };
  const script = await build({
    ...common, entryPoints: ["src/main.ts"], format: "esm", target: "es2022", metafile: true,
  });
  const style = await build({ ...common, entryPoints: ["src/page.css"] });
  return new Map([
    ["index.html", await readFile(join(here, "src/index.html"), "utf8")],
    ["icon.svg", await readFile(join(here, "src/icon.svg"), "utf8")],
    ["page.css", style.outputFiles[0].text],
    ["page.js", script.outputFiles[0].text],
    ["licences.txt", await licences(script.metafile.inputs)],
  ]);
}

const files = await built();
if (process.argv.includes("--check")) {
  const there = (await readdir(dist)).sort().join();
  let same = there === [...files.keys()].sort().join();
  for (const [name, text] of files)
    same &&= (await readFile(join(dist, name), "utf8").catch(() => "")) === text;
  if (!same) {
    console.error("web/dist is not what web/src gives: run npm run build in web/");
    process.exit(1);
  }
} else {
  await rm(dist, { recursive: true, force: true });
  await mkdir(dist);
  for (const [name, text] of files) await writeFile(join(dist, name), text);
  const size = [...files.values()].reduce((sum, text) => sum + Buffer.byteLength(text), 0);
  console.log(`web/dist: ${(size / 1024).toFixed(1)} KiB`);
}
