// One engine: the module of WebAssembly with its files, in whatever runs it.
import type { Answer, Data, FactsQuestion, Question, StatesQuestion, TaskQuestion } from "./messages";

// As far as they are used here: of what emscripten makes.
interface FileNode { contents: Uint8Array; usedBytes: number }
interface Loaded {
  FS: { mkdirTree(path: string): void; create(path: string, mode: number): FileNode };
  HEAPU8: Uint8Array;
  HEAP32: Int32Array;
  HEAPF64: Float64Array;
  UTF8ToString(at: number): string;
  stringToUTF8(text: string, at: number, most: number): void;
  lengthBytesUTF8(text: string): number;
  _malloc(bytes: number): number;
  _free(at: number): void;
  _frigana_answer(task: number): number;
  _frigana_set_data(folder: number): number;
  _frigana_last_error(): number;
  _frigana_free(text: number): void;
  _frigana_fluid_open(description: number, fluid: number): number;
  _frigana_fluid_close(fluid: number): void;
  _frigana_fluid_facts(fluid: number, answer: number): number;
  _frigana_states(fluid: number, first: number, second: number, firstValues: number, secondValues: number, count: number,
    properties: number, propertyCount: number, results: number, codes: number, texts: number): number;
}
export type LoadModule = (settings: object) => Promise<Loaded>;

// A file that the network, or the disk, does not give.
export class Unreachable extends Error {}

const folderOfData = "/frigana/data";
const textBytes = 256;  // FRIGANA_TEXT
const mostOpenFluids = 20;  // as many as the engine has slots

// Puts a file where the module looks for it; it is read when the module first reads from it.
function lend(fs: Loaded["FS"], path: string, size: number, read: () => Uint8Array): void {
  const node = fs.create(path, 0o444);
  let bytes: Uint8Array | null = null;
  Object.defineProperty(node, "contents", { get: () => bytes ??= read() });
  node.usedBytes = size;
}

function readerOf(data: Data, readFile: (address: string) => Uint8Array): (index: number) => Uint8Array {
  if ("folder" in data) return (index) => {
    const [name, size] = data.files[index]!;
    const bytes = readFile(data.folder + name);
    if (bytes.length !== size) throw new Unreachable(`${name} has ${bytes.length} bytes in place of ${size}`);
    return bytes;
  };
  const offsets: number[] = [];
  let offset = 0;
  for (const [, size] of data.files) {
    offsets.push(offset);
    offset += size;
  }
  return (index) => data.archive.subarray(offsets[index]!, offsets[index]! + data.files[index]![1]);
}

export class Engine {
  private fluids = new Map<string, number>();

  // `readFile` gives the bytes at an address at once, or throws Unreachable.
  static async open(load: LoadModule, module: WebAssembly.Module, data: Data, readFile: (address: string) => Uint8Array): Promise<Engine> {
    const loaded = await load({
      instantiateWasm(imports: WebAssembly.Imports, done: (instance: WebAssembly.Instance) => void) {
        void WebAssembly.instantiate(module, imports).then(done);
        return {};
      },
      print: () => {}, printErr: () => {},
    });
    const read = readerOf(data, readFile);
    const folderOf = (path: string) => path.slice(0, path.lastIndexOf("/"));
    const paths = data.files.map(([name]) => `${folderOfData}/${name}`);
    for (const folder of new Set(paths.map(folderOf))) loaded.FS.mkdirTree(folder);
    paths.forEach((path, index) => lend(loaded.FS, path, data.files[index]![1], () => read(index)));
    return new Engine(loaded);
  }

  private constructor(private readonly module: Loaded) {
    this.withText(folderOfData, (folder) => module._frigana_set_data(folder));
  }

  answer(question: Question): Answer {
    try {
      if ("tasks" in question) return this.tasks(question);
      return "facts" in question ? this.facts(question) : this.states(question);
    } catch (failure) {
      if (failure instanceof Refused) return { id: question.id, refused: failure.message };
      throw failure;
    }
  }

  private tasks({ id, tasks }: TaskQuestion): Answer {
    return {
      id,
      texts: tasks.map((task) => this.withText(task, (at) => this.module.UTF8ToString(this.module._frigana_answer(at)))),
    };
  }

  private facts({ id, facts }: FactsQuestion): Answer {
    const { module } = this;
    const fluid = this.fluid(facts);
    return this.withBytes(4, (place) => {
      if (module._frigana_fluid_facts(fluid, place) !== 0) throw this.refusal();
      const text = module.HEAP32[place / 4]!;
      const answer = module.UTF8ToString(text);
      module._frigana_free(text);
      return { id, facts: answer };
    });
  }

  private states({ id, fluid, given, values, properties }: StatesQuestion): Answer {
    const { module } = this;
    const opened = this.fluid(fluid);
    const count = values[0].length, columns = properties.length;
    const numbers = 8 * count;
    const sizes = [numbers, numbers, numbers * columns, 4 * columns, 4 * count, textBytes * count];
    return this.withBytes(sizes.reduce((sum, size) => sum + size, 8), (begin) => {
      const places: number[] = [];
      let place = begin;
      for (const size of sizes) {
        places.push(place);
        place += size;
      }
      const [first, second, results, wanted, codes, texts] = places as [number, number, number, number, number, number];
      module.HEAPF64.set(values[0], first / 8);
      module.HEAPF64.set(values[1], second / 8);
      module.HEAP32.set(properties, wanted / 4);
      const status = module._frigana_states(opened, given[0].charCodeAt(0), given[1].charCodeAt(0), first, second, count,
        wanted, columns, results, codes, texts);
      if (status !== 0) throw this.refusal();
      const codesOf = module.HEAP32.slice(codes / 4, codes / 4 + count);
      return {
        id,
        results: module.HEAPF64.slice(results / 8, results / 8 + count * columns),
        codes: codesOf,
        texts: [...codesOf].map((code, i) => code === 0 ? "" : module.UTF8ToString(texts + i * textBytes)),
      };
    });
  }

  // Opened once and kept, the least used of too many closed.
  private fluid(description: string): number {
    const { module } = this;
    let handle = this.fluids.get(description);
    if (handle === undefined)
      handle = this.withText(description, (text) => this.withBytes(4, (place) => {
        if (module._frigana_fluid_open(text, place) !== 0) throw this.refusal();
        return module.HEAP32[place / 4]!;
      }));
    this.fluids.delete(description);
    this.fluids.set(description, handle);
    for (const [oldest, old] of this.fluids) {
      if (this.fluids.size <= mostOpenFluids) break;
      this.fluids.delete(oldest);
      module._frigana_fluid_close(old);
    }
    return handle;
  }

  private refusal(): Refused { return new Refused(this.module.UTF8ToString(this.module._frigana_last_error())); }

  private withText<T>(text: string, use: (at: number) => T): T {
    const size = this.module.lengthBytesUTF8(text) + 1;
    return this.withBytes(size, (at) => {
      this.module.stringToUTF8(text, at, size);
      return use(at);
    });
  }

  private withBytes<T>(size: number, use: (at: number) => T): T {
    const at = this.module._malloc(size);
    if (at === 0) throw new Error("there is not enough memory");
    const result = use(at);
    // What is thrown ends the worker, or is a refusal that is rare.
    this.module._free(at);
    return result;
  }
}

class Refused extends Error {}
