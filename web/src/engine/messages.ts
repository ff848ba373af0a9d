// What a pool and its workers say to each other.

// Where the data of the module lies: a folder beside it, from which a file is read when it is first asked for, or all
// of them one behind the other.
export type Data =
  | { files: [name: string, bytes: number][]; folder: string }
  | { files: [name: string, bytes: number][]; archive: Uint8Array };

export interface Start { start: { module: WebAssembly.Module; data: Data } }

// One task or several: each is a word, a line end, and what it is about; each answer is a status of HTTP, a line end,
// and JSON (web/module/Module.cpp).
export interface TaskQuestion { id: number; tasks: string[] }

// States of a fluid from two of its properties, as frigana_states of frigana_api.h.
export interface StatesQuestion {
  id: number;
  fluid: string;
  given: [first: string, second: string];
  values: [Float64Array, Float64Array];
  properties: Int32Array;
}
export interface FactsQuestion { id: number; facts: string }

export type Question = TaskQuestion | StatesQuestion | FactsQuestion;
export type Asked = Question extends infer One ? One extends Question ? Omit<One, "id"> : never : never;

export interface States { results: Float64Array; codes: Int32Array; texts: string[] }
export type Answer =
  | { id: number; texts: string[] }
  | ({ id: number } & States)
  | { id: number; facts: string }
  | { id: number; refused: string };

// A worker that says this is of no more use: files that cannot be read, or an end of the module.
export interface Failed { failed: string; unreachable: boolean }
export type Said = { ready: true } | Answer | Failed;
