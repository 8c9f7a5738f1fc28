// @ts-check
/** How another document differs from this one. */

import { count, make, makeButton, makeChoice, makeLabel } from "./dom.js";
import { makeDifferences } from "./differences.js";
import { capitalise, during, makeFailed, say, tell } from "./notices.js";
import { makeFrame } from "./report_pane.js";

/** @typedef {import("./types.js").Comparison} Comparison */

const pairings = /** @type {Array<[string, string]>} */ ([
  ["", "number and name"],
  ["number", "number"],
  ["name", "name"],
]);

export class ComparisonPane {
  label = "Compare";

  /** @param {import("./document_view.js").DocumentView} view */
  constructor(view) {
    this.view = view;
    const again = { change: () => this.#compare() };
    this.other = makeChoice([], again);
    this.by = makeChoice(pairings, again);
    this.share = make("input", {
      type: "number",
      min: 0,
      max: 100,
      step: "any",
      value: 0,
      size: 5,
      ...again,
    });
    this.way = makeChoice(
      [
        ["table", "table"],
        ["page", "page with pictures"],
      ],
      again,
    );
    const form = make(
      "form",
      { class: "filter", submit: (/** @type {Event} */ event) => event.preventDefault() },
      makeLabel("With", this.other),
      makeLabel("Pair by", this.by),
      makeLabel("Values may differ by %", this.share),
      makeLabel("Show", this.way),
      makeButton("Open another …", () => this.#open()),
    );
    this.form = form;
    this.result = make("div", { class: "result" });
    this.element = make("div", { class: "pane table" }, form, this.result);
  }

  async show() {
    this.#offer();
    await this.#compare();
  }

  outdate() {}

  #offer() {
    const chosen = this.other.value;
    const others = this.view.workspace.documents.filter(({ view }) => view !== this.view);
    this.other.replaceChildren(
      ...others.map(({ id, name }) => make("option", { value: id }, name)),
    );
    if (others.some(({ id }) => id === chosen)) this.other.value = chosen;
  }

  async #open() {
    const opened = await this.view.workspace.choose(false);
    this.#offer();
    if (opened?.view) this.other.value = opened.id;
    await this.#compare();
    if (opened && !opened.view) tell(`${opened.name} cannot be read: its tab tells why.`);
  }

  async #compare() {
    const other = this.view.workspace.find(this.other.value)?.view;
    this.form.hidden = !other;
    if (!other) {
      const open = makeButton("Open another …", () => this.#open(), { class: "primary" });
      this.result.classList.remove("frame");
      this.result.replaceChildren(
        make(
          "div",
          { class: "empty" },
          make("p", {}, "Open a second document to compare this one with."),
          open,
        ),
      );
      return;
    }
    const isShare = this.share.checkValidity();
    this.share.setAttribute("aria-invalid", String(!isShare));
    if (!isShare) return this.#refuseShare();
    const by = /** @type {"" | "number" | "name"} */ (this.by.value);
    const options = { by, relative: (Number(this.share.value) || 0) / 100 };
    const parts = await during("Comparing …", async () =>
      this.way.value === "page"
        ? [makeFrame("Comparison", await this.view.doc.comparePage(other.doc, options))]
        : this.#describe(await this.view.doc.compare(other.doc, options), other.name),
    );
    const failed = makeFailed("The documents could not be compared.", () => this.#compare());
    this.result.classList.toggle("frame", this.way.value === "page");
    this.result.replaceChildren(...(parts ?? [failed]));
  }

  #refuseShare() {
    const sentence = "Values may differ by 0 to 100 %.";
    this.result.classList.remove("frame");
    this.result.replaceChildren(make("p", { class: "warning", role: "alert" }, sentence));
  }

  /** @param {Comparison} comparison @param {string} other the name of the other document */
  #describe(comparison, other) {
    const { differences, current, unitNote, isUnitWarning, isComplete } = comparison;
    const parts = [];
    const sentence = comparison.isSame
      ? "The foundations of both are the same."
      : summarise(comparison);
    parts.push(make("p", { class: comparison.isSame ? "lead good" : "lead" }, sentence));
    say(sentence);
    if (!isComplete)
      parts.push(
        make(
          "p",
          { class: "warning" },
          "Not everything could be read, so there may be more differences.",
        ),
      );
    if (unitNote !== "")
      parts.push(make("p", { class: isUnitWarning ? "warning" : "soft" }, unitNote));
    if (current !== "") parts.push(make("p", {}, capitalise(current)));
    if (differences.length > 0) {
      const names = [this.view.name, other].map((name) => make("bdi", {}, name));
      parts.push(make("p", { class: "soft" }, "Before: ", names[0], ", after: ", names[1]));
      parts.push(makeDifferences(differences, ({ first }) => this.view.goToRow(first)));
    }
    return parts;
  }
}

/** @param {Comparison} comparison */
function summarise({ differences }) {
  const kinds = ["changed", "added", "removed"];
  const counts = kinds.map((kind) => [
    differences.filter((difference) => difference.kind === kind).length,
    kind,
  ]);
  const told = counts.filter(([times]) => times !== 0).map(([times, kind]) => `${times} ${kind}`);
  return told.length === 0
    ? "No foundation differs."
    : `${count(differences.length, "foundation differs", "foundations differ")}: ${told.join(", ")}.`;
}
