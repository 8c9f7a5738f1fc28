// @ts-check
/** The document itself, line by line, as it would be saved. */

import { count, make, makeButton, makeLabel } from "./dom.js";
import { capitalise, during, makeFailed, say, tell } from "./notices.js";
import { Scroller } from "./scroller.js";

const rowHeight = 1.5;
const block = 200; // lines that are fetched at once

export class LinesPane {
  label = "Document";
  #isOld = true;
  #total = 0;
  #marked = 0;
  /** @type {Map<number, import("./types.js").Line[]>} by block */
  #known = new Map();
  /** @type {Map<number, string[]>} the sentences about a line */
  #findings = new Map();

  /** @param {import("./document_view.js").DocumentView} view */
  constructor(view) {
    this.view = view;
    this.doc = view.doc;
    this.layer = make("div", { class: "layer" });
    this.port = make(
      "div",
      { class: "source", tabindex: 0, role: "region", "aria-label": "Lines of the document" },
      this.layer,
    );
    this.scroller = new Scroller(this.port, this.layer, rowHeight, (list) => this.#makeRows(list));
    this.line = make("input", { type: "number", min: 1, inputmode: "numeric" });
    this.total = make("span", { class: "soft" });
    const form = make(
      "form",
      { class: "filter", submit: (/** @type {Event} */ event) => this.#go(event) },
      makeLabel("Line", this.line),
      make("button", { type: "submit" }, "Go"),
      makeButton("Next finding", () => this.#goToNext()),
      this.total,
    );
    this.failed = makeFailed("The document could not be shown.", () => this.show());
    this.failed.hidden = true;
    this.element = make("div", { class: "pane table" }, form, this.failed, this.port);
  }

  async show() {
    if (!this.#isOld) return;
    this.#known.clear();
    const isRead = await during("Writing the document …", () => this.#fetch(0).then(() => true));
    this.#isOld = isRead !== true; // looking again tries again
    this.port.hidden = this.#isOld;
    this.failed.hidden = !this.#isOld;
    if (this.#isOld) return;
    this.total.textContent = `${count(this.#total, "line")}, as they would be saved`;
    this.line.max = String(this.#total);
    this.scroller.setCount(this.#total);
  }

  outdate() {
    this.#isOld = true;
  }

  /** @param {import("./types.js").Finding[]} findings */
  setFindings(findings) {
    this.#findings.clear();
    for (const { line, sentence } of findings)
      this.#findings.set(line, [...(this.#findings.get(line) ?? []), sentence]);
    this.scroller.redraw();
  }

  /** @param {number} line */
  async goTo(line) {
    await this.show();
    if (this.#isOld) return;
    this.#marked = line;
    this.line.value = String(line);
    await this.#fetch(Math.floor((line - 1) / block));
    this.scroller.redraw();
    this.scroller.reveal(Math.min(this.#total - 1, line + 3));
    this.scroller.reveal(Math.max(0, line - 1));
    this.port.scrollIntoView({ block: "nearest" }); // where the page scrolls as a whole
    this.port.focus({ preventScroll: true });
    say(`Line ${line}`);
  }

  /** @param {Event} event */
  #go(event) {
    event.preventDefault();
    const line = Number(this.line.value);
    if (line >= 1 && line <= this.#total) this.goTo(line);
  }

  async #goToNext() {
    await this.view.requireCheck();
    if (!this.view.isChecked) return; // which was told
    const lines = [...this.#findings.keys()].filter((line) => line > 0).sort((a, b) => a - b);
    const next = lines.find((line) => line > this.#marked) ?? lines[0];
    if (next) this.goTo(next);
    else tell("There is no finding in any line.");
  }

  /** @param {number} place of a block */
  async #fetch(place) {
    if (this.#known.has(place)) return;
    const { total, lines } = await this.doc.lines(place * block + 1, block);
    this.#total = total;
    this.#known.set(place, lines);
  }

  /** @param {number[]} positions */
  #makeRows(positions) {
    const missing = new Set(
      positions
        .map((position) => Math.floor(position / block))
        .filter((place) => !this.#known.has(place)),
    );
    if (missing.size > 0)
      Promise.all([...missing].map((place) => this.#fetch(place))).then(() =>
        this.scroller.redraw(),
      );
    return positions.map((position) => this.#makeRow(position));
  }

  /** @param {number} position */
  #makeRow(position) {
    const line = this.#known.get(Math.floor(position / block))?.[position % block];
    const sentences = this.#findings.get(position + 1) ?? [];
    const classes = ["line"];
    if (sentences.length > 0) classes.push("found");
    if (position + 1 === this.#marked) classes.push("marked");
    const row = make(
      "div",
      { class: classes.join(" ") },
      make("span", { class: "number" }, String(position + 1)),
    );
    row.append(make("code", {}, line?.text ?? "", line?.isCut ? " …" : ""));
    if (sentences.length > 0)
      row.append(
        make("span", { class: "remark", title: sentences.join("\n") }, sentences.map(capitalise).join(" \u00B7 ")),
      );
    return row;
  }
}
