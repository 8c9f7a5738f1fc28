// @ts-check
/**
 * The one door to the engine, which is the workbench in WebAssembly: it knows all of the formats, the
 * page nothing. Each document has an instance of its own, so that its memory goes back when it is
 * closed, and no document can harm another one. Where an instance fails, another one goes on with the
 * document as it stood.
 *
 * What tells of rows is quick and returns at once. What makes the whole document anew takes a while
 * for large ones: it returns a promise, but works on this thread. All of it throws EngineError, or
 * rejects with one; a call that fails changes nothing.
 */

import { Instance, decode, makeText, prepare } from "./instance.js";
import { KeptDocument } from "./kept_document.js";

export { EngineError } from "./engine_error.js";

/** @typedef {import("./types.js").Form} Form */

/** The version of the program. "" until ready(). */
export let version = "";

/** @type {import("./types.js").FormInfo[]} */
let knownForms = [];

/**
 * Starts the engine, which the page holds. Once is enough; later calls do nothing.
 * @param {BufferSource} [code] the WebAssembly, where it does not stand in the page
 */
export async function ready(code) {
  if (version !== "") return;
  await prepare(code);
  const instance = await Instance.create();
  const about = instance.ask("about");
  version = about.version;
  knownForms = about.forms;
}

/** All forms that documents are written in, in the order in which to offer them. */
export function forms() {
  return knownForms;
}

/** A sample model: its name and bytes, to be opened like any other document. */
export async function example() {
  const instance = await Instance.create();
  return { name: "model.xml", bytes: instance.send(makeText("example")) };
}

/**
 * @param {string} name of the file
 * @param {Uint8Array} bytes which must stay as they are while the document is open
 * @param {import("./types.js").OpenOptions} [options]
 * @returns {Promise<Doc>}
 */
export async function open(name, bytes, options = {}) {
  const kept = await KeptDocument.open({ name, ...options }, bytes);
  await Instance.prepareSpare();
  return new Doc(kept);
}

/** An open document: what was read, and what has changed since. */
export class Doc {
  /** @type {KeptDocument} */
  #kept;

  /** @param {KeptDocument} kept */
  constructor(kept) {
    this.#kept = kept;
  }

  /** How many rows there are. */
  get count() {
    return this.#kept.state.count;
  }

  /** Whether something is not saved. */
  get isChanged() {
    return this.#kept.state.isChanged;
  }

  /** What undo() would undo, such as: areaZ of number 3 "Raft"; "" for nothing. */
  get undoLabel() {
    return this.#kept.state.undoLabel;
  }

  /** The same for redo(). */
  get redoLabel() {
    return this.#kept.state.redoLabel;
  }

  /** @returns {import("./types.js").Info} */
  info() {
    return this.#kept.ask("info");
  }

  // --- The table

  /** @returns {import("./types.js").Column[]} */
  columns() {
    return this.#kept.ask("columns");
  }

  /**
   * @param {ArrayLike<number>} indexes of the rows that are visible
   * @returns {import("./types.js").Row[]}
   */
  rows(indexes) {
    return this.#kept.ask("rows", { indexes: Array.from(indexes) });
  }

  /**
   * The text of a cell as set() takes it, which is not always the one that is shown.
   * @param {number} index
   * @param {string} key
   * @returns {string}
   */
  cell(index, key) {
    return this.#kept.ask("cell", { index, key });
  }

  /**
   * The same of all cells of rows, in the order of columns().
   * @param {ArrayLike<number>} indexes
   * @returns {string[][]}
   */
  texts(indexes) {
    return this.#kept.ask("texts", { indexes: Array.from(indexes) });
  }

  /**
   * The numbers of a column; NaN where there is none.
   * @param {string} key
   * @returns {Float64Array}
   */
  values(key) {
    return new Float64Array(this.#kept.take("values", { key }).buffer);
  }

  /**
   * The rows whose number or name contains the text, whatever the case of its letters.
   * @param {string} text
   */
  find(text) {
    return this.#take("find", { text });
  }

  /**
   * The rows that are selected.
   * @param {import("./types.js").Selection} selection
   */
  select(selection) {
    return this.#take("select", selection);
  }

  /**
   * All rows in the order of a column; without a key as they stand in the document.
   * @param {string} [key]
   * @param {boolean} [isDescending]
   */
  sort(key = "", isDescending = false) {
    return this.#take("sort", { key, isDescending });
  }

  // --- Changes: each is one step to undo

  /**
   * Sets a field of one or several rows.
   * @param {number | ArrayLike<number>} indexes
   * @param {string} key
   * @param {string} text as a user writes it
   */
  set(indexes, key, text) {
    return this.#kept.change("set", { indexes: toArray(indexes), key, text });
  }

  /**
   * Sets fields of rows, each to a text of its own: all of them, or none where one cannot be.
   * @param {ArrayLike<number>} indexes of the rows, each once
   * @param {string[]} keys
   * @param {string[][]} texts of each row, one for each key
   */
  fill(indexes, keys, texts) {
    return this.#kept.change("fill", { indexes: toArray(indexes), keys, texts });
  }

  /**
   * Adds a foundation at the end.
   * @param {Record<string, string>} values by key, as set() takes them; the name must be among them
   */
  add(values) {
    return this.#kept.change("add", { values });
  }

  /** @param {number | ArrayLike<number>} indexes */
  remove(indexes) {
    return this.#kept.change("remove", { indexes: toArray(indexes) });
  }

  /**
   * What pruning would do.
   * @param {import("./types.js").PruneOptions} options
   * @returns {Promise<import("./types.js").Pruning>}
   */
  async previewPrune(options) {
    return this.#kept.ask("previewPrune", options);
  }

  /**
   * Removes what is not used, as the program's command of the name does.
   * @param {import("./types.js").PruneOptions} options
   */
  async prune(options) {
    return this.#kept.change("prune", options);
  }

  /** Takes back the last change that was not taken back yet. */
  undo() {
    return this.#kept.change("undo");
  }

  redo() {
    return this.#kept.change("redo");
  }

  // --- The document as a whole

  /**
   * What the check finds in the document as it stands.
   * @returns {Promise<import("./types.js").Finding[]>}
   */
  async check() {
    return this.#kept.ask("check");
  }

  /**
   * Lines of the document as it stands.
   * @param {number} first from 1
   * @param {number} count at most 1000
   * @returns {Promise<{total: number, lines: import("./types.js").Line[]}>}
   */
  async lines(first, count) {
    return this.#kept.ask("lines", { first, count });
  }

  /** The page of the report, a whole HTML document that needs no network. */
  async report() {
    return decode(this.#kept.take("report"));
  }

  // --- With another document

  /**
   * How `other` differs from this one.
   * @param {Doc} other
   * @param {import("./types.js").CompareOptions} [options]
   * @returns {Promise<import("./types.js").Comparison>}
   */
  async compare(other, options = {}) {
    return this.#kept.ask("compare", { ...options, ...other.#describe() }, other.#export());
  }

  /**
   * The page of the same, a whole HTML document.
   * @param {Doc} other
   * @param {import("./types.js").CompareOptions} [options]
   */
  async comparePage(other, options = {}) {
    const request = { ...options, ...other.#describe() };
    return decode(this.#kept.take("comparePage", request, other.#export()));
  }

  /**
   * What merge() would do. Clashes are told, not thrown.
   * @param {Doc} other
   * @param {{onClash?: import("./types.js").OnClash}} [options]
   * @returns {Promise<import("./types.js").Merging>}
   */
  async previewMerge(other, options = {}) {
    return this.#kept.ask(
      "previewMerge",
      { ...options, ...other.#describe() },
      other.#export(),
    );
  }

  /**
   * Takes the foundations of `other` over, except what previewMerge() tells. Throws where numbers or
   * names clash and `onClash` does not say what to do.
   * @param {Doc} other
   * @param {{onClash?: import("./types.js").OnClash}} [options]
   */
  async merge(other, options = {}) {
    return this.#kept.change("merge", { ...options, ...other.#describe() }, other.#export());
  }

  // --- Saving

  /**
   * What gets lost in a document of this form, a line each.
   * @param {Form} form
   * @returns {Promise<string[]>}
   */
  async losses(form) {
    return this.#kept.ask("losses", { form });
  }

  /**
   * The bytes of the document. Without a form, those that were read with what has changed since and
   * not a byte else; throws where these would lose anything. In another form a new document, which
   * lacks what losses() tells. Saves nothing by itself: see markSaved().
   * @param {Form | ""} [form]
   * @param {import("./types.js").SaveOptions} [options]
   * @returns {Promise<Uint8Array>}
   */
  async save(form = "", options = {}) {
    return this.#kept.take("save", { form, ...options });
  }

  /**
   * A file name for a document of this form.
   * @param {Form | "report" | ""} [form]
   * @returns {string}
   */
  suggestName(form = "") {
    return this.#kept.ask("suggestName", { form });
  }

  /** From here on the document counts as unchanged. */
  markSaved() {
    this.#kept.markSaved();
  }

  /** Frees all that the document takes. No other call may follow. */
  close() {
    this.#kept.close();
  }

  /**
   * @param {string} name
   * @param {object} [request]
   */
  #take(name, request) {
    return new Int32Array(this.#kept.take(name, request).buffer);
  }

  /** How another instance opens what #export() gives. */
  #describe() {
    return { other: this.#kept.ask("describe") };
  }

  /** All of the document as it stands, in its own form or else as data. */
  #export() {
    return this.#kept.take("export");
  }
}

/** @param {number | ArrayLike<number>} indexes */
function toArray(indexes) {
  return typeof indexes === "number" ? [indexes] : Array.from(indexes);
}
