// @ts-check
/** An open document: what it is, what can be done with it, and the ways to look at it. */

import { count, make, makeButton, makeId, paint } from "./dom.js";
import { during, say, tell, tellProblem } from "./notices.js";
import { ComparisonPane } from "./comparison_pane.js";
import { FindingsPane } from "./findings_pane.js";
import { LinesPane } from "./lines_pane.js";
import { ReportPane } from "./report_pane.js";
import { TablePane } from "./table_pane.js";
import { showAdding } from "./adding.js";
import { showMerging } from "./merging.js";
import { showPruning } from "./pruning.js";
import { showSaving } from "./saving.js";

/** @typedef {import("./types.js").Change} Change */
/**
 * @typedef {object} Pane
 * @property {HTMLElement} element
 * @property {string} label
 * @property {() => void | Promise<void>} show  brings it up to date, when it is seen
 * @property {() => void} outdate               the document has changed
 */

const mostCheckedAtOnce = 5000; // foundations; the check of more takes noticeably long
const delay = 400; // ms from the last change to the next check

export class DocumentView {
  /** @type {Pane[]} */
  #panes;
  #timer = 0;
  #isChecked = false;
  #isClosed = false;
  #count = 0;

  /**
   * @param {import("./engine.js").Doc} doc
   * @param {import("./workspace.js").Workspace} workspace
   * @param {string} fileName
   */
  constructor(doc, workspace, fileName) {
    this.doc = doc;
    this.fileName = fileName;
    this.workspace = workspace;
    this.info = doc.info();
    this.name = this.info.name; // which tells it from others of the same file name
    this.#count = doc.count;
    /** @type {import("./types.js").Finding[]} */
    this.findings = [];
    this.table = new TablePane(this);
    this.checked = new FindingsPane(this);
    this.lines = new LinesPane(this);
    this.report = new ReportPane(this);
    this.#panes = [
      this.table,
      this.checked,
      this.lines,
      this.report,
      new ComparisonPane(this),
    ];
    this.current = this.#panes[0];
    this.facts = make("p", { class: "facts" });
    this.tabs = this.#makeTabs();
    this.element = make(
      "section",
      { class: "document", "aria-label": this.name },
      this.#makeTop(),
      this.#makeNotes(),
      this.tabs,
      ...this.#makePanels(),
    );
    this.#showState();
  }

  /** Whether something is not saved, such as a value that is still being written. */
  get isChanged() {
    return this.doc.isChanged || this.table.grid.editor.isChanged;
  }

  /** Whether the findings are those of the document as it stands. */
  get isChecked() {
    return this.#isChecked;
  }

  /** Another document is looked at. */
  leave() {
    this.table.grid.editor.pause();
  }

  /** Shows the view, which stands in the page now. */
  async show() {
    await this.current.show();
    if (this.#isChecked) return;
    // The rows are seen before the check, which takes longer.
    await paint();
    await this.requireCheck();
  }

  /** Shows anew what could not be shown. */
  async lookAgain() {
    for (const pane of this.#panes) pane.outdate();
    await this.show();
  }

  /** @param {string} label of the pane */
  async open(label) {
    const pane = this.#panes.find((other) => other.label === label);
    if (!pane) return;
    if (pane !== this.current) this.leave();
    this.current = pane;
    this.#showTabs();
    await pane.show();
  }

  // --- Changes

  /**
   * Does something to the document and shows what it did.
   * @param {() => Change | Promise<Change>} act
   * @returns {Promise<boolean>} whether it went well
   */
  async change(act) {
    try {
      this.took(await act());
      return true;
    } catch (error) {
      tellProblem(error);
      return false;
    }
  }

  /** @param {Change} change that was done */
  took(change) {
    const focused = document.activeElement;
    if (change.label !== "") say(`Done: ${change.label}`);
    this.#keepSelection();
    this.#isChecked = false;
    this.#showState();
    for (const pane of this.#panes) pane.outdate();
    this.current.show();
    this.#keepFocus(focused);
    this.table.lookAt(change.indexes);
    this.workspace.refresh();
    this.#checkSoon();
  }

  /**
   * A button that can no longer be used loses the focus, in some browsers at once.
   *
   * @param {Element | null} focused what had it before
   */
  #keepFocus(focused) {
    if (focused instanceof HTMLButtonElement && focused.disabled) this.focus();
  }

  focus() {
    const tab = this.tabs.querySelector("[aria-selected=true]");
    if (tab instanceof HTMLElement) tab.focus();
  }

  /** Rows that are selected are known by their places, which change with how many there are. */
  #keepSelection() {
    if (this.doc.count !== this.#count) this.table.grid.clearSelection();
    this.#count = this.doc.count;
  }

  undo() {
    this.#step("Undone", this.doc.undoLabel, () => this.doc.undo());
  }

  redo() {
    this.#step("Done again", this.doc.redoLabel, () => this.doc.redo());
  }

  /** @param {string} word @param {string} label @param {() => Change} act */
  async #step(word, label, act) {
    if (label === "") say("Nothing to do");
    else if (await this.change(act)) tell(`${word}: ${label}`);
  }

  remove() {
    const indexes = this.table.grid.selected;
    if (indexes.length === 0) return;
    this.table.grid.clearSelection();
    this.change(() => this.doc.remove(indexes)).then((isDone) => {
      if (isDone) tell(`${count(indexes.length, "foundation")} removed. Undo brings them back.`);
    });
  }

  /**
   * A name for a file of this form, without what was put into that of the document.
   * @param {import("./types.js").Form | "report" | ""} form
   */
  suggestName(form) {
    const { name, fileName } = this;
    let place = 0;
    while (place < fileName.length && name[place] === fileName[place]) ++place;
    const suggested = this.doc.suggestName(form);
    return suggested.slice(0, place) + suggested.slice(place + name.length - fileName.length);
  }

  async save() {
    await showSaving(this);
    this.#showState();
    this.workspace.refresh();
  }

  // --- The check

  /** Looks for findings in the document as it stands. */
  async check() {
    if (this.#isClosed) return;
    this.#isChecked = true;
    try {
      this.findings = await this.doc.check();
    } catch (error) {
      this.#isChecked = false;
      this.findings = [];
      tellProblem(error);
    }
    this.table.setFindings(this.findings);
    this.lines.setFindings(this.findings);
    this.#showTabs();
    this.checked.outdate();
    if (this.current === this.checked) this.checked.draw();
  }

  /** Makes the findings those of the document as it stands. */
  async requireCheck() {
    if (this.#isChecked || this.#isClosed) return;
    clearTimeout(this.#timer);
    if (this.doc.count > mostCheckedAtOnce) await during("Checking …", () => this.check());
    else await this.check();
  }

  #checkSoon() {
    clearTimeout(this.#timer);
    const isFindings = this.current === this.checked;
    if (this.doc.count > mostCheckedAtOnce && !isFindings) return;
    this.#timer = window.setTimeout(() => this.check(), delay);
  }

  // --- What is drawn

  #makeTop() {
    this.undoButton = makeButton("Undo", () => this.undo(), { "aria-keyshortcuts": "Control+Z" });
    this.redoButton = makeButton("Redo", () => this.redo(), { "aria-keyshortcuts": "Control+Y" });
    this.removeButton = makeButton("Remove", () => this.remove());
    const tools = make(
      "div",
      { class: "tools", role: "group", "aria-label": "What to do with the document" },
      make("span", { class: "together" }, this.undoButton, this.redoButton),
      make(
        "span",
        { class: "together" },
        makeButton("Add …", () => showAdding(this)),
        this.removeButton,
      ),
      make(
        "span",
        { class: "together" },
        makeButton("Prune …", () => showPruning(this)),
        makeButton("Merge …", () => showMerging(this)),
      ),
      make(
        "span",
        { class: "together" },
        makeButton("Print", () => this.print()),
        makeButton("Save …", () => this.save(), {
          class: "primary",
          "aria-keyshortcuts": "Control+S",
        }),
      ),
    );
    this.heading = make("h1", { title: this.name }, make("bdi", {}, this.name));
    this.state = make("span", { class: "chip warn", hidden: true }, "not saved");
    return make(
      "div",
      { class: "top" },
      make("div", { class: "title" }, make("div", {}, this.heading, this.state), this.facts),
      tools,
    );
  }

  #makeNotes() {
    const { notes, isReadWhole } = this.info;
    if (notes.length === 0) return isReadWhole ? "" : this.#makeHint();
    const items = notes.slice(0, 100).map((note) => this.#makeNote(note));
    if (notes.length > 100) items.push(make("li", {}, `and ${notes.length - 100} more`));
    const sentence = isReadWhole ? "While reading:" : "Not everything could be read:";
    return make(
      "details",
      { class: isReadWhole ? "notes" : "notes warning" },
      make("summary", {}, `${sentence} ${count(notes.length, "note")}`),
      make("ul", {}, ...items),
    );
  }

  /** Reading told nothing of what it skipped. The check does. */
  #makeHint() {
    const link = makeButton("Findings", () => this.open("Findings"), { class: "link" });
    return make("p", { class: "notes warning" }, "Not everything could be read. The ", link, " tell why.");
  }

  /** @param {import("./types.js").Note} note */
  #makeNote(note) {
    const link = makeButton(`Line ${note.line}`, () => this.goToLine(note.line), { class: "link" });
    return make("li", {}, ...(note.line > 0 ? [link, ": "] : []), note.sentence);
  }

  #makeTabs() {
    const tabs = this.#panes.map((pane, i) =>
      make("button", {
        type: "button",
        role: "tab",
        id: makeId(),
        click: () => this.open(pane.label),
        keydown: (/** @type {KeyboardEvent} */ event) => this.#pressTab(event, i),
      }),
    );
    return make(
      "div",
      { class: "tabs", role: "tablist", "aria-label": "Ways to look at the document" },
      ...tabs,
    );
  }

  #makePanels() {
    const panels = this.#panes.map((pane, i) => {
      const tab = this.tabs.children[i];
      const panel = make(
        "div",
        { class: "panel", role: "tabpanel", id: makeId(), "aria-labelledby": tab.id },
        pane.element,
      );
      tab.setAttribute("aria-controls", panel.id);
      return panel;
    });
    this.panels = panels;
    this.#showTabs();
    return panels;
  }

  #showTabs() {
    this.#panes.forEach((pane, i) => {
      const isCurrent = pane === this.current;
      const tab = this.tabs.children[i];
      tab.replaceChildren(pane.label, ...(i === 1 ? this.#makeCount() : []));
      tab.setAttribute("aria-selected", String(isCurrent));
      tab.setAttribute("tabindex", isCurrent ? "0" : "-1");
      if (this.panels) this.panels[i].hidden = !isCurrent;
      if (isCurrent && tab instanceof HTMLElement) reveal(tab);
    });
  }

  #makeCount() {
    if (!this.#isChecked) return [];
    const { length } = this.findings;
    return [" ", make("span", { class: length > 0 ? "chip warn" : "chip" }, String(length))];
  }

  /** @param {KeyboardEvent} event @param {number} place */
  #pressTab(event, place) {
    const last = this.#panes.length - 1;
    const next = { ArrowRight: place + 1, ArrowLeft: place - 1, Home: 0, End: last }[event.key];
    if (next === undefined) return;
    event.preventDefault();
    const to = (next + last + 1) % (last + 1);
    this.open(this.#panes[to].label);
    const tab = this.tabs.children[to];
    if (tab instanceof HTMLElement) tab.focus();
  }

  #showState() {
    const { doc, info } = this;
    const units = info.units ? [`${info.units.force} and ${info.units.length}`] : [];
    const facts = [
      info.formLabel,
      count(doc.count, "foundation"),
      ...units,
      info.encoding,
      showSize(info.size),
    ];
    this.facts.replaceChildren(...facts.map((fact) => make("span", {}, fact)));
    if (!this.undoButton || !this.redoButton || !this.state) return;
    this.state.hidden = !doc.isChanged;
    showStep(this.undoButton, "Undo", doc.undoLabel);
    showStep(this.redoButton, "Redo", doc.redoLabel);
    this.showSelection();
  }

  /** Shows what can be done with the rows that are selected. */
  showSelection() {
    if (!this.removeButton) return;
    const { length } = this.table.grid.selected;
    this.removeButton.textContent = length === 0 ? "Remove" : `Remove ${length}`;
    this.removeButton.disabled = length === 0;
  }

  // --- Going to places

  /** @param {number} line */
  async goToLine(line) {
    await this.open(this.lines.label);
    await this.lines.goTo(line);
  }

  /** @param {number} index of a row */
  async goToRow(index) {
    await this.open(this.table.label);
    this.table.goTo(index);
  }

  print() {
    window.print();
  }

  close() {
    clearTimeout(this.#timer);
    this.#isClosed = true;
    this.element.remove();
    this.doc.close();
  }
}

/** @param {HTMLElement} tab in a list that may be wider than the page */
function reveal(tab) {
  const list = tab.parentElement;
  if (!list) return;
  list.scrollLeft = Math.min(list.scrollLeft, tab.offsetLeft);
  const end = tab.offsetLeft + tab.offsetWidth - list.clientWidth;
  list.scrollLeft = Math.max(list.scrollLeft, end);
}

/** @param {HTMLButtonElement} button @param {string} word @param {string} label */
function showStep(button, word, label) {
  button.disabled = label === "";
  button.title = label === "" ? "" : `${word}: ${label}`;
}

/** @param {number} bytes */
function showSize(bytes) {
  if (bytes < 1000) return count(bytes, "byte");
  return bytes < 1e6 ? `${(bytes / 1000).toFixed(1)} kB` : `${(bytes / 1e6).toFixed(1)} MB`;
}
