// Texts of the page in the language of its reader.
import { english, type Word } from "./words/en";

const languages: Record<string, Partial<Record<Word, string>>> = { en: english };

function chosen(): Partial<Record<Word, string>> {
  for (const language of globalThis.navigator?.languages ?? []) {
    const table = languages[language.slice(0, 2)];
    if (table) return table;
  }
  return english;
}

const table = chosen();

// The text under a key, with the values put in for the names in braces.
export function say(word: Word, values: Record<string, string | number> = {}): string {
  return (table[word] ?? english[word]).replace(/\{(\w+)\}/g, (_, name: string) => String(values[name] ?? ""));
}
