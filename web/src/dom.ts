// Elements made in one line each.
type Child = Node | string | null | undefined | false;
type Attributes = Record<string, string | number | boolean | null | undefined | ((event: never) => void)>;

function fill(element: Element, attributes: Attributes, children: Child[]): void {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === null || value === undefined || value === false) continue;
    if (typeof value === "function") element.addEventListener(name, value as EventListener);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
  for (const child of children) if (child) element.append(child);
}

export function make<K extends keyof HTMLElementTagNameMap>(
  tag: K, attributes: Attributes = {}, ...children: Child[]
): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  fill(element, attributes, children);
  return element;
}

export function draw<K extends keyof SVGElementTagNameMap>(
  tag: K, attributes: Attributes = {}, ...children: Child[]
): SVGElementTagNameMap[K] {
  const element = document.createElementNS("http://www.w3.org/2000/svg", tag);
  fill(element, attributes, children);
  return element;
}

export function replace(element: Element, ...children: Child[]): void {
  element.replaceChildren(...children.filter((child): child is Node | string => Boolean(child)));
}

let numbers = 0;
export function newId(what: string): string {
  return `${what}-${++numbers}`;
}

// A select with its options; groups where a label stands over several.
export interface Choice { value: string; label: string; group?: string }
export function choices(
  options: Choice[], value: string, attributes: Attributes, chosen: (value: string) => void,
): HTMLSelectElement {
  const select = make("select", { ...attributes, change: () => chosen(select.value) });
  const groups = new Map<string, HTMLOptGroupElement>();
  for (const option of options) {
    const element = make("option", { value: option.value, selected: option.value === value }, option.label);
    if (!option.group) {
      select.append(element);
      continue;
    }
    let group = groups.get(option.group);
    if (!group) {
      group = make("optgroup", { label: option.group });
      groups.set(option.group, group);
      select.append(group);
    }
    group.append(element);
  }
  select.value = value;
  return select;
}
