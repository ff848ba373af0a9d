// In a browser: workers are its own, files those beside this module.
import { calculationWith, partsBeside } from "../src/engine/browser";
import { madeBy } from "./frigana";

export * from "./frigana";

madeBy((settings) => calculationWith(
  partsBeside(new URL("./", import.meta.url), () => new Worker(new URL("./worker.js", import.meta.url))), settings));
