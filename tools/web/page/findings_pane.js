// @ts-check
/** What the check finds, each with the line of the document beside it. */

import { count, make, makeButton, makeChoice, makeLabel } from "./dom.js";
import { makeExcerpt, namePlace } from "./excerpt.js";
import { capitalise, makeFailed } from "./notices.js";

/** @typedef {import("./types.js").Finding} Finding */

const step = 100;

export class FindingsPane {
  label = "Findings";
  #isOld = true;
  #limit = step;

  /** @param {import("./document_view.js").DocumentView} view */
  constructor(view) {
    this.view = view;
    this.lead = make("p", { class: "lead" });
    this.rule = makeChoice([], { change: () => this.#drawList() });
    this.filter = make("div", { class: "filter" }, makeLabel("Rule", this.rule));
    this.list = make("ol", { class: "findings" });
    this.rest = make("p", { class: "rest" });
    this.failed = make("div");
    this.element = make(
      "div",
      { class: "pane scrolling", tabindex: 0, role: "region", "aria-label": "Findings" },
      this.failed,
      this.lead,
      this.filter,
      this.list,
      this.rest,
    );
  }

  async show() {
    await this.view.requireCheck();
    if (this.#isOld) this.draw();
  }

  outdate() {
    this.#isOld = true;
  }

  /** Shows what the last check found. */
  draw() {
    const { findings, isChecked } = this.view;
    this.#isOld = !isChecked;
    const failed = makeFailed("The document could not be checked.", () => this.show());
    this.failed.replaceChildren(...(isChecked ? [] : [failed]));
    this.lead.hidden = !isChecked;
    const isGood = findings.length === 0;
    this.lead.textContent = isGood
      ? "✓ The check finds nothing."
      : `The check finds ${count(findings.length, "place")} to look at.`;
    this.lead.className = isGood ? "lead good empty" : "lead";
    this.filter.hidden = findings.length === 0;
    const chosen = this.rule.value;
    const counts = new Map();
    for (const { rule } of findings) counts.set(rule, (counts.get(rule) ?? 0) + 1);
    const choices = [...counts].map(([rule, times]) =>
      make("option", { value: rule }, `${rule} (${times})`),
    );
    this.rule.replaceChildren(make("option", { value: "" }, "all"), ...choices);
    this.rule.value = counts.has(chosen) ? chosen : "";
    this.#drawList();
  }

  #drawList() {
    const fitting = this.view.findings.filter(
      ({ rule }) => this.rule.value === "" || rule === this.rule.value,
    );
    this.list.replaceChildren(
      ...fitting.slice(0, this.#limit).map((finding) => this.#makeItem(finding)),
    );
    const left = fitting.length - this.list.children.length;
    this.rest.hidden = left <= 0;
    const more = makeButton(`Show ${Math.min(step, left)} more`, () => {
      this.#limit += step;
      this.#drawList();
    });
    this.rest.replaceChildren(`${this.list.children.length} of ${fitting.length} `, more);
  }

  /** @param {Finding} finding */
  #makeItem(finding) {
    const { line, index, foundation } = finding;
    const places = make(
      "p",
      { class: "places" },
      make("span", { class: "rule", title: finding.description }, finding.rule),
    );
    if (line > 0)
      places.append(
        makeButton(namePlace(finding), () => this.view.goToLine(line), {
          class: "link",
        }),
      );
    if (index >= 0)
      places.append(makeButton(foundation, () => this.view.goToRow(index), { class: "link" }));
    const said = make(
      "div",
      { class: "said-of" },
      make("p", { class: "sentence" }, capitalise(finding.sentence)),
      places,
    );
    return make("li", {}, said, line > 0 ? makeExcerpt(finding.excerpt, line) : "");
  }
}
