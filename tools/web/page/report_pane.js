// @ts-check
/** The report with its pictures, which is a page of its own. */

import { make, makeButton } from "./dom.js";
import { download } from "./download.js";
import { during, makeFailed, tell } from "./notices.js";

export class ReportPane {
  label = "Report";
  #isOld = true;
  #page = "";

  /** @param {import("./document_view.js").DocumentView} view */
  constructor(view) {
    this.view = view;
    this.doc = view.doc;
    this.place = make("div", { class: "frame" });
    const bar = make(
      "div",
      { class: "filter" },
      make("span", { class: "soft" }, "A page of its own: save it to keep it, send it or print it."),
      makeButton("Save the report", () => this.#save()),
    );
    this.element = make("div", { class: "pane table" }, bar, this.place);
  }

  async show() {
    if (!this.#isOld) return;
    this.#isOld = false;
    const page = await during("Drawing the report …", () => this.doc.report());
    if (page === undefined) this.#isOld = true; // looking again tries again
    this.#page = page ?? "";
    this.place.replaceChildren(
      page === undefined
        ? makeFailed("The report could not be made.", () => this.show())
        : makeFrame("Report", page),
    );
  }

  outdate() {
    this.#isOld = true;
  }

  async #save() {
    await this.show();
    if (this.#page === "") return;
    const name = this.view.suggestName("report");
    download(name, new TextEncoder().encode(this.#page));
    tell(`Handed to the browser as ${name}`);
  }
}

/**
 * A page of the program, apart from this one: it can reach nothing here.
 * @param {string} title
 * @param {string} page
 */
export function makeFrame(title, page) {
  const frame = make("iframe", { title, sandbox: "allow-scripts" });
  frame.srcdoc = page;
  return frame;
}
