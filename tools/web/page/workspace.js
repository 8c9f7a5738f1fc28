// @ts-check
/** The documents that are open, of which one is looked at. */

import { get, make, makeButton, makeId, count } from "./dom.js";
import { DocumentView } from "./document_view.js";
import { EngineError, open } from "./engine.js";
import { choose as ask } from "./dialog.js";
import { during, say } from "./notices.js";
import { makeProblem } from "./problem.js";

/** @typedef {import("./types.js").OpenOptions} OpenOptions */
/**
 * @typedef {object} Entry a document, or what could not be read
 * @property {string} id
 * @property {string} name
 * @property {DocumentView | null} view
 * @property {HTMLElement} element
 */

export class Workspace {
  /** @type {Entry[]} */
  entries = [];
  /** @type {Entry | null} */
  current = null;
  /** @type {(last: Entry | undefined) => void} what waits for files */
  #chosen = () => {};
  #isChosenShown = true;

  constructor() {
    this.main = get("main", HTMLElement);
    this.list = get("documents", HTMLElement);
    this.start = get("start", HTMLElement);
    this.files = get("files", HTMLInputElement);
    for (const event of ["change", "cancel"])
      this.files.addEventListener(event, () => this.#takeFiles());
    new ResizeObserver(() => this.#revealCurrent()).observe(this.list);
  }

  /** Those that could be read. */
  get documents() {
    return this.entries.filter((entry) => entry.view !== null);
  }

  get isChanged() {
    return this.entries.some(({ view }) => view?.isChanged);
  }

  /** @param {string} id */
  find(id) {
    return this.entries.find((entry) => entry.id === id);
  }

  // --- Opening

  /**
   * Asks for files and opens them.
   * @param {boolean} [isShown] whether the last one is looked at then
   * @returns {Promise<Entry | undefined>} the last one
   */
  choose(isShown = true) {
    return new Promise((resolve) => {
      this.#chosen = resolve;
      this.#isChosenShown = isShown;
      this.files.click();
    });
  }

  async #takeFiles() {
    const [files, isShown, chosen] = [
      [...(this.files.files ?? [])],
      this.#isChosenShown,
      this.#chosen,
    ];
    this.files.value = "";
    this.#chosen = () => {};
    this.#isChosenShown = true;
    chosen(await this.openFiles(files, isShown));
  }

  /**
   * @param {File[]} files
   * @param {boolean} [isShown]
   */
  async openFiles(files, isShown = true) {
    let last;
    for (const file of files) {
      const bytes = await during(
        `Reading ${file.name} …`,
        async () => new Uint8Array(await file.arrayBuffer()),
      );
      if (bytes) last = await this.openBytes(file.name, bytes, {}, isShown);
    }
    return last;
  }

  /**
   * @param {string} name
   * @param {Uint8Array} bytes
   * @param {OpenOptions} [options]
   * @param {boolean} [isShown]
   * @returns {Promise<Entry>}
   */
  async openBytes(name, bytes, options = {}, isShown = true) {
    const entry = await during(`Reading ${name} …`, () => this.#read(name, bytes, options));
    if (!entry) throw new Error("unreachable");
    this.entries.push(entry);
    this.main.append(entry.element);
    if (isShown || !this.current) await this.show(entry);
    else this.refresh();
    return entry;
  }

  /**
   * @param {string} name
   * @param {Uint8Array} bytes
   * @param {OpenOptions} options
   * @returns {Promise<Entry>}
   */
  async #read(name, bytes, options) {
    const id = makeId();
    try {
      const [doc, fileName] = await this.#open(name, bytes, options);
      const view = new DocumentView(doc, this, fileName);
      say(`${view.name}: ${count(doc.count, "foundation")}`);
      return { id, name: view.name, view, element: view.element };
    } catch (error) {
      if (!(error instanceof EngineError)) throw error;
      const again = async (/** @type {OpenOptions} */ other) => {
        await this.close(id);
        await this.openBytes(name, bytes, { ...options, ...other });
      };
      const apart = this.#tellApart(name);
      const element = makeProblem(apart, error, again, () => this.close(id));
      return { id, name: apart, view: null, element };
    }
  }

  /**
   * Opens a document by a name of its own: comparisons and merges name it, too.
   * @param {string} name
   * @param {Uint8Array} bytes
   * @param {OpenOptions} options
   * @returns {Promise<[import("./engine.js").Doc, string]>} the document, and the name of its file
   */
  async #open(name, bytes, options) {
    const doc = await open(name, bytes, options);
    const shown = doc.info().name;
    const apart = this.#tellApart(shown);
    if (apart === shown) return [doc, shown];
    doc.close();
    return [await open(apart, bytes, options), shown];
  }

  /**
   * What a document is called here: its name, with a number where another one has that.
   * @param {string} name
   */
  #tellApart(name) {
    const isTaken = (/** @type {string} */ other) =>
      this.entries.some((entry) => entry.name === other);
    const dot = name.lastIndexOf(".");
    const end = dot > 0 ? dot : name.length; // its ending tells the form
    let apart = name;
    for (let i = 2; isTaken(apart); ++i) apart = `${name.slice(0, end)} (${i})${name.slice(end)}`;
    return apart;
  }

  // --- Looking

  /** @param {Entry | null} entry null for what one sees first */
  async show(entry) {
    if (entry !== this.current) {
      this.current?.view?.leave();
      this.main.scrollTop = 0;
    }
    this.current = entry;
    for (const other of this.entries) other.element.hidden = other !== entry;
    this.start.hidden = entry !== null;
    this.refresh();
    document.title = entry ? `${entry.name} – KvFound` : "KvFound";
    if (entry) this.#keepFocus(entry);
    await entry?.view?.show();
  }

  /** Shows which documents are open and which of them are not saved. */
  refresh() {
    const items = this.entries.map((entry) => this.#makeItem(entry));
    const listButtons = () => [...this.list.querySelectorAll("button")];
    const focused = listButtons().findIndex((button) => button === document.activeElement);
    const { scrollLeft } = this.list.firstElementChild ?? { scrollLeft: 0 };
    const list = make("ul", {}, ...items);
    this.list.hidden = items.length === 0;
    this.list.replaceChildren(list);
    list.scrollLeft = scrollLeft;
    this.#revealCurrent();
    listButtons()[focused]?.focus({ preventScroll: true });
  }

  #revealCurrent() {
    const item = this.list.querySelector(".current");
    item?.scrollIntoView({ block: "nearest", inline: "nearest" });
  }

  /** @param {Entry} entry */
  #makeItem(entry) {
    const isCurrent = entry === this.current;
    const button = makeButton("", () => this.show(entry), { class: "open", title: entry.name });
    if (isCurrent) button.setAttribute("aria-current", "true");
    button.append(make("bdi", {}, entry.name));
    if (!entry.view) button.append(make("span", { class: "chip error" }, "error"));
    if (entry.view?.doc.isChanged)
      button.append(
        make(
          "span",
          { class: "dot", title: "not saved" },
          make("span", { class: "said" }, "not saved"),
        ),
      );
    const close = makeButton("×", () => this.close(entry.id), {
      class: "close",
      "aria-label": `Close ${entry.name}`,
      title: "Close",
    });
    return make("li", { class: isCurrent ? "current" : "" }, button, close);
  }

  /**
   * What is no longer seen would take the focus with it.
   * @param {Entry} entry
   */
  #keepFocus(entry) {
    const focused = document.activeElement;
    const isOther = focused?.matches("#documents .open:not([aria-current])"); // of what one leaves
    if (focused && focused !== document.body && focused.checkVisibility() && !isOther) return;
    if (entry.view) entry.view.focus();
    else this.#focus(entry);
  }

  /** @param {Entry} entry */
  #focus(entry) {
    const place = this.entries.indexOf(entry);
    const button = this.list.querySelectorAll("button.open")[place];
    if (button instanceof HTMLElement) button.focus();
  }

  // --- Closing

  /** @param {string} id */
  async close(id) {
    const entry = this.find(id);
    if (!entry || !(await this.#mayClose(entry))) return;
    const place = this.entries.indexOf(entry);
    this.entries.splice(place, 1);
    entry.element.remove();
    entry.view?.close();
    say(`${entry.name} closed`);
    const next = this.entries[Math.min(place, this.entries.length - 1)] ?? null;
    const shown = this.current === entry ? this.show(next) : this.refresh();
    // At once: while the next one is checked, one may go elsewhere.
    if (next) this.#focus(next);
    else get("choose", HTMLElement).focus();
    await shown;
  }

  /** @param {Entry} entry */
  async #mayClose(entry) {
    const { view } = entry;
    if (!view?.isChanged) return true;
    const sentence = `${entry.name} has changes that are not saved.`;
    const answer = await ask("Close without saving?", sentence, [
      "Close without saving",
      "Save first …",
    ]);
    if (answer === "Save first …") await view.save();
    return answer === "Close without saving" || (answer !== "" && !view.isChanged);
  }
}
