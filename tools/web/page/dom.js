// @ts-check
/** Elements, made without markup: whatever a document says ends up as text. */

/**
 * @typedef {Record<string, string | number | boolean | ((event: any) => void)>} Attributes
 * where a function is called on the event of that name, true stands for "", and false for "not there";
 * those of ARIA want the words instead
 */

/**
 * @template {keyof HTMLElementTagNameMap} K
 * @param {K} tag
 * @param {Attributes} [attributes]
 * @param {...(Node | string)} children
 * @returns {HTMLElementTagNameMap[K]}
 */
export function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (typeof value === "function") element.addEventListener(name, value);
    else if (name.startsWith("aria-")) element.setAttribute(name, String(value));
    else if (value !== false) element.setAttribute(name, value === true ? "" : String(value));
  }
  element.append(...children);
  return element;
}

/**
 * @param {string} label
 * @param {() => void} act
 * @param {Attributes} [attributes]
 */
export function makeButton(label, act, attributes = {}) {
  return make("button", { type: "button", click: act, ...attributes }, label);
}

/**
 * A field with its label around it.
 * @param {string} label
 * @param {HTMLElement} field
 * @param {string} [hint]
 */
export function makeLabel(label, field, hint = "") {
  const parts = hint === "" ? [] : [make("small", {}, hint)];
  return make("label", { class: "field" }, make("span", {}, label), field, ...parts);
}

/**
 * @param {string} label
 * @param {HTMLInputElement} field a box to tick, or one of several
 */
export function makeTick(label, field) {
  return make("label", { class: "tick" }, field, make("span", {}, label));
}

/**
 * @param {Array<[string, string]>} choices value and text
 * @param {Attributes} [attributes]
 */
export function makeChoice(choices, attributes = {}) {
  const options = choices.map(([value, text]) => make("option", { value }, text));
  return make("select", attributes, ...options);
}

/**
 * The element of the page with this id, which is of this kind.
 * @template {HTMLElement} T
 * @param {string} id
 * @param {{new(): T}} kind
 * @returns {T}
 */
export function get(id, kind) {
  const element = document.getElementById(id);
  if (element instanceof kind) return element;
  throw new Error(`the page lacks ${id}`);
}

/**
 * @param {number} times
 * @param {string} one
 * @param {string} [several]
 */
export function count(times, one, several = `${one}s`) {
  return `${times.toLocaleString("en").replaceAll(",", "\u202F")} ${times === 1 ? one : several}`;
}

let lastId = 0;

/** For what refers to other elements. */
export function makeId() {
  return `made-${++lastId}`;
}

/** Lets the browser show what has changed before something takes long. */
export function paint() {
  return new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve)));
}
