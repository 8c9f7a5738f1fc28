// @ts-check
/** The table of foundations, and what narrows it down. */

import { showAdding } from "./adding.js";
import { count, make, makeButton, makeChoice, makeLabel, makeTick } from "./dom.js";
import { EngineError } from "./engine.js";
import { Grid } from "./grid.js";
import { capitalise, tell } from "./notices.js";

const parts = /** @type {Array<[string, string]>} */ ([
  ["", "any"],
  ["area", "area"],
  ["line", "line"],
]);

const patternHint =
  "With * for any characters or ? for one it is a pattern for whole names, in which case matters.";

export class TablePane {
  label = "Table";
  #isOld = true;

  /** @param {import("./document_view.js").DocumentView} view */
  constructor(view) {
    this.view = view;
    this.doc = view.doc;
    this.grid = new Grid(this.doc, {
      set: (indexes, key, text) => this.#change(() => this.doc.set(indexes, key, text)),
      fill: (indexes, keys, texts) => this.#fill(indexes, keys, texts),
      remove: () => view.remove(),
      undo: () => view.undo(),
      redo: () => view.redo(),
      changed: () => view.showSelection(),
      sorted: () => this.#filter(),
    });
    const again = { input: () => this.#filter() };
    this.text = make("input", {
      type: "search",
      placeholder: "raft or Pad *",
      title: "Part of it; or a pattern for the whole name, with * for any characters and ? for one",
      autocomplete: "off",
      spellcheck: "false",
      ...again,
    });
    this.numbers = make("input", {
      type: "text",
      size: 9,
      placeholder: "1-9,12",
      autocomplete: "off",
      spellcheck: "false",
      ...again,
    });
    this.part = makeChoice(parts, { change: () => this.#filter() });
    this.generated = make("input", { type: "checkbox", change: () => this.#filter() });
    this.shown = make("output", { "aria-live": "polite" });
    const form = make(
      "form",
      {
        class: "filter",
        role: "search",
        submit: (/** @type {Event} */ event) => event.preventDefault(),
      },
      makeLabel("Number or name", this.text),
      makeLabel("Numbers", this.numbers),
      makeLabel("Part", this.part),
      makeTick("generated", this.generated),
      makeButton("Clear", () => this.clear()),
      makeButton("Select shown", () => this.#selectShown()),
      this.shown,
    );
    this.none = make("div", { class: "empty", hidden: true });
    this.element = make("div", { class: "pane table" }, form, this.grid.element, this.none);
    /** @type {Int32Array} of the rows that are shown */
    this.order = new Int32Array();
  }

  show() {
    if (!this.#isOld) return;
    this.#filter();
    this.#isOld = false; // or else looking again tries again
  }

  outdate() {
    this.#isOld = true;
  }

  /** @param {number[]} indexes of rows that a change was about */
  lookAt(indexes) {
    if (indexes.length === 0 || this.view.current !== this) return;
    if (!this.grid.goTo(indexes[0], false) && indexes[0] < this.doc.count)
      tell("What was changed is not shown: the fields above hide it.");
  }

  /** @param {number} index */
  goTo(index) {
    if (this.grid.goTo(index)) return;
    this.clear();
    this.grid.goTo(index);
  }

  /** @param {import("./types.js").Finding[]} findings */
  setFindings(findings) {
    const counts = new Map();
    for (const { index } of findings)
      if (index >= 0) counts.set(index, (counts.get(index) ?? 0) + 1);
    this.grid.setFindings(counts);
  }

  /** Shows all rows. */
  clear() {
    this.text.value = "";
    this.numbers.value = "";
    this.part.value = "";
    this.generated.checked = false;
    this.#filter();
  }

  #filter() {
    const { key, isDescending } = this.grid.sorted;
    let order = this.doc.sort(key, isDescending);
    this.numbers.removeAttribute("aria-invalid");
    try {
      for (const fitting of this.#listConditions()) {
        const set = new Set(fitting);
        order = order.filter((index) => set.has(index));
      }
    } catch (error) {
      if (!(error instanceof EngineError) || error.isFatal) throw error;
      this.numbers.setAttribute("aria-invalid", "true");
      this.shown.value = capitalise(error.message);
      return;
    }
    this.#showOrder(order);
  }

  /** The rows that fit each condition. */
  #listConditions() {
    const text = this.text.value.trim();
    const numbers = this.numbers.value.trim();
    const part = /** @type {"" | "area" | "line"} */ (this.part.value);
    const generated = this.generated.checked;
    const lists = [];
    const name = this.#isPattern ? text : "";
    if (text !== name) lists.push(this.doc.find(text));
    if (name !== "" || numbers !== "" || part !== "" || generated)
      lists.push(this.doc.select({ name, numbers, part, generated }));
    return lists;
  }

  /** Whether what is looked for is a pattern, as the program takes them. */
  get #isPattern() {
    return /[*?]/.test(this.text.value);
  }

  /** @param {Int32Array} order */
  #showOrder(order) {
    this.order = order;
    this.grid.show(order);
    const total = this.doc.count;
    this.shown.value =
      order.length === total
        ? count(total, "foundation")
        : `${order.length} of ${count(total, "foundation")}`;
    this.none.hidden = order.length > 0;
    if (order.length === 0) this.none.replaceChildren(...this.#describeNone());
  }

  #describeNone() {
    if (this.doc.count === 0)
      return [
        make("p", {}, "The document has no foundations."),
        makeButton("Add one …", () => showAdding(this.view)),
      ];
    const hints = [make("p", {}, "No foundation fits.")];
    if (this.#isPattern) hints.push(make("p", { class: "hint" }, patternHint));
    return [...hints, makeButton("Show all", () => this.clear())];
  }

  #selectShown() {
    this.grid.select(this.order);
    tell(`${count(this.order.length, "foundation")} selected`);
  }

  /**
   * @param {number[]} indexes
   * @param {string[]} keys
   * @param {string[][]} texts
   */
  #fill(indexes, keys, texts) {
    return this.#change(() => {
      const change = this.doc.fill(indexes, keys, texts);
      tell(change.label === "" ? "These are the values already." : `Pasted: ${change.label}`);
      return change;
    });
  }

  /**
   * @param {() => import("./types.js").Change} act
   * @returns {string} why it cannot be done
   */
  #change(act) {
    try {
      this.view.took(act());
      return "";
    } catch (error) {
      if (!(error instanceof EngineError)) throw error;
      return [error.message, ...error.details].join("\n");
    }
  }
}
