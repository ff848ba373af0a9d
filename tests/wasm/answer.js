// Answers positional requests with the library as a module of WebAssembly, as a program in JavaScript does:
//   node answer.js MODULE DATA LIST
// LIST is a text file in the folder of the requests with the name of one on each line; the results lie beside them.
const fs = require("fs");
const path = require("path");

const [library, data, list] = process.argv.slice(2);
const requests = fs.readFileSync(list, "utf8").split(/\r?\n/).filter(Boolean);

require(path.resolve(library))().then((frigana) => {
  // Under their own paths, so that messages name them alike.
  const installation = path.resolve(data), folder = path.resolve(path.dirname(list));
  for (const place of [installation, folder]) {
    frigana.FS.mkdirTree(place);
    frigana.FS.mount(frigana.NODEFS, { root: place }, place);
  }
  frigana.FS.chdir(folder);
  const address = installation + "/frigana";
  const begun = process.hrtime.bigint();
  for (const request of requests)
    frigana.ccall("Frigana", null, ["string", "string", "number", "number"],
      [request, address, request.length, address.length]);
  const seconds = Number(process.hrtime.bigint() - begun) / 1e9;
  const answered = requests.filter((request) => fs.existsSync(path.join(folder, request.replace(/fi1$/, "fo1"))));
  console.log(`${requests.length} calls: ${answered.length} with a result, ${(1e3 * seconds / requests.length).toFixed(1)} ms each`);
});
