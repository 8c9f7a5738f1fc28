// @ts-check
/** The table of foundations, with the keys of a spreadsheet. */

import { CellEditor } from "./cell_editor.js";
import { readCells, writeCells } from "./clipboard.js";
import { count, make, makeId } from "./dom.js";
import { capitalise, say, tell } from "./notices.js";
import { Scroller } from "./scroller.js";

/** @typedef {import("./types.js").Column} Column */
/** @typedef {import("./types.js").Row} Row */
/** @typedef {import("./engine.js").Doc} Doc */

/** In rem, by the kind of a column. */
const widths = { integer: 4, text: 14, flag: 6, stiffness: 5.75, failure: 7, factor: 4.5 };
const tickWidth = 2.25;
const roomy = 8; // characters that any column has room for
const rowHeight = 2.125;

export class Grid {
  /** The rows that are shown, in their order. @type {Int32Array} */
  #order = new Int32Array();
  /** Of the columns, and of the order; the row -1 is that of the headings. */
  #active = { row: -1, column: 0 };
  /** Places of rows in the document. @type {Set<number>} */
  #selected = new Set();
  #sorted = { key: "", isDescending: false };
  /** How many findings are about a row. @type {Map<number, number>} */
  #findings = new Map();
  #anchor = 0;
  /** What is being written: its row may no longer be the active one when it is taken. */
  #edited = { index: -1, key: "" };

  /**
   * @param {Doc} doc
   * @param {{set: (indexes: number[], key: string, text: string) => string,
   *   fill: (indexes: number[], keys: string[], texts: string[][]) => string, remove: () => void,
   *   undo: () => void, redo: () => void, changed: () => void, sorted: () => void}} owner
   *   where set and fill return why it cannot be done
   */
  constructor(doc, owner) {
    this.doc = doc;
    this.owner = owner;
    this.columns = doc.columns();
    this.id = makeId();
    this.head = make("div", { class: "head", role: "rowgroup" });
    this.layer = make("div", { class: "layer", role: "rowgroup" });
    this.element = make(
      "div",
      {
        class: "grid",
        role: "grid",
        tabindex: 0,
        "aria-label": "Foundations",
        "aria-multiselectable": "true",
        keydown: (/** @type {KeyboardEvent} */ event) => this.#press(event),
        focus: () => (this.editor.isOpen ? this.editor.resume() : this.#showActive()),
        blur: () => this.editor.forget(),
      },
      this.head,
      this.layer,
    );
    this.empty = make("p", { class: "none", hidden: true });
    this.#setWidths();
    this.editor = new CellEditor(this);
    this.scroller = new Scroller(this.element, this.layer, rowHeight, (list) =>
      this.#makeRows(list),
    );
    this.layer.addEventListener("mousedown", (event) => this.#point(event));
    this.layer.addEventListener("dblclick", (event) => this.#doublePoint(event));
    this.head.addEventListener("click", (event) => this.#pointHead(event));
    this.#drawHead();
  }

  /** @param {Int32Array} order of the rows to show */
  show(order) {
    this.editor.drop();
    this.#order = order;
    this.#keepSelected(order);
    const last = order.length - 1;
    if (this.#active.row > last) this.#active.row = last;
    if (this.#active.row < 0 && last >= 0) this.#active.row = 0;
    this.element.classList.toggle("bare", order.length === 0);
    this.element.setAttribute("aria-rowcount", String(order.length + 2));
    this.element.setAttribute("aria-colcount", String(this.columns.length + 1));
    this.scroller.setCount(order.length);
    this.#showActive();
  }

  /** Shows what has changed in the rows. */
  refresh() {
    this.scroller.redraw();
    this.#showActive();
  }

  /** @param {Map<number, number>} findings how many are about each row */
  setFindings(findings) {
    this.#findings = findings;
    if (this.element.clientHeight > 0) this.#drawTicks();
    else if (!this.editor.isOpen) this.refresh();
  }

  /** Rows that are selected, in the order of the document. */
  get selected() {
    return [...this.#selected].sort((a, b) => a - b);
  }

  get sorted() {
    return this.#sorted;
  }

  /** The place in the document of the row that is active; -1 where there is none. */
  get activeIndex() {
    return this.#order[this.#active.row] ?? -1;
  }

  /**
   * Nothing happens to rows that are not seen.
   * @param {Int32Array} order
   */
  #keepSelected(order) {
    if (this.#selected.size === 0) return;
    this.#selected = new Set(order.filter((index) => this.#selected.has(index)));
    this.owner.changed();
  }

  clearSelection() {
    this.#selected.clear();
    this.owner.changed();
  }

  /** @param {Iterable<number>} indexes */
  select(indexes) {
    this.#selected = new Set(indexes);
    this.refresh();
    this.owner.changed();
  }

  /**
   * Makes a row the active one, if it is shown.
   * @param {number} index in the document
   * @param {boolean} [takesFocus]
   */
  goTo(index, takesFocus = true) {
    const row = this.#order.indexOf(index);
    if (row < 0) return false;
    this.#activate(row, this.#active.column || 2, takesFocus);
    return true;
  }

  // --- What is drawn

  #setWidths() {
    const list = this.columns.map((column) =>
      column.key === "name"
        ? "var(--name)"
        : `minmax(${widths[column.kind]}rem, ${widths[column.kind]}fr)`,
    );
    const sum = this.columns.reduce(
      (total, column) => total + (column.key === "name" ? 0 : widths[column.kind]),
      tickWidth,
    );
    this.element.style.setProperty("--columns", `${tickWidth}rem ${list.join(" ")}`);
    this.element.style.setProperty("--others", `${sum}rem`);
  }

  #drawHead() {
    const groups = [make("div", { role: "gridcell", class: "group" })];
    for (let i = 0; i < this.columns.length; ) {
      const { group } = this.columns[i];
      const next = this.columns.findIndex((column, at) => at > i && column.group !== group);
      const span = (next < 0 ? this.columns.length : next) - i;
      const cell = make(
        "div",
        {
          role: group === "" ? "gridcell" : "columnheader",
          class: "group",
          "aria-colspan": span,
          "aria-colindex": i + 2,
        },
        group,
      );
      cell.style.gridColumn = `span ${span}`;
      groups.push(cell);
      i += span;
    }
    const heads = this.columns.map((column, i) => this.#makeHead(column, i + 1));
    const all = make(
      "div",
      {
        role: "columnheader",
        id: `${this.id}-h-0`,
        class: "tick",
        "data-column": 0,
        "aria-colindex": 1,
      },
      make("span", { class: "said" }, "Selected"),
    );
    this.head.replaceChildren(
      make("div", { role: "row", class: "row groups", "aria-rowindex": 1 }, ...groups),
      make("div", { role: "row", class: "row heads", "aria-rowindex": 2 }, all, ...heads),
    );
  }

  /** @param {Column} column @param {number} place */
  #makeHead(column, place) {
    const isSorted = this.#sorted.key === column.key;
    const direction = this.#sorted.isDescending ? "descending" : "ascending";
    const cell = make(
      "div",
      {
        role: "columnheader",
        id: `${this.id}-h-${place}`,
        class: `${column.isNumeric ? "number" : ""} ${starts(this.columns, place - 1) ? "starts" : ""} ${column.key}`,
        "aria-sort": isSorted ? direction : "none",
        "aria-colindex": place + 1,
        "data-column": place,
        title: `Sort by ${[column.group, column.label].join(" ").trim()}`,
      },
      make("span", { class: "label" }, column.label),
    );
    if (column.unit !== "") cell.append(make("small", {}, column.unit));
    return cell;
  }

  /** @param {number[]} positions */
  #makeRows(positions) {
    const rows = this.doc.rows(positions.map((position) => this.#order[position]));
    return rows.map((row, i) => this.#makeRow(row, positions[i]));
  }

  /** @param {Row} row @param {number} position */
  #makeRow(row, position) {
    const isSelected = this.#selected.has(row.index);
    const classes = ["row"];
    if (row.isCurrent) classes.push("current");
    if (row.isNew) classes.push("new");
    const element = make("div", {
      role: "row",
      class: classes.join(" "),
      "aria-rowindex": position + 3,
      "aria-selected": isSelected,
      "data-row": position,
    });
    const changed = new Set(row.changed);
    element.append(this.#makeTick(row, position));
    this.columns.forEach((column, i) =>
      element.append(this.#makeCell(row, column, position, i + 1, changed.has(column.key))),
    );
    this.#mark(element, position);
    return element;
  }

  /** Leaves the rest of the rows alone, where one may just be clicking or writing. */
  #drawTicks() {
    const elements = /** @type {HTMLElement[]} */ ([...this.layer.children]);
    const positions = elements.map((element) => Number(element.dataset.row));
    const rows = this.doc.rows(positions.map((position) => this.#order[position]));
    rows.forEach((row, i) =>
      elements[i].firstElementChild?.replaceWith(this.#makeTick(row, positions[i])),
    );
    this.#showActive();
  }

  /** @param {Row} row @param {number} position */
  #makeTick(row, position) {
    const findings = this.#findings.get(row.index) ?? 0;
    const words = findings === 0 ? "" : `${findings} ${findings === 1 ? "finding" : "findings"}`;
    const cell = make("div", {
      role: "gridcell",
      id: `${this.id}-${position}-0`,
      class: "tick",
      "data-column": 0,
      "aria-colindex": 1,
    });
    cell.append(make("span", { class: "box", "aria-hidden": "true" }));
    if (findings > 0)
      cell.append(
        make("span", { class: "flag", title: words }, make("span", { class: "said" }, words)),
      );
    cell.append(make("span", { class: "said" }, `select ${row.title}`));
    return cell;
  }

  /**
   * @param {Row} row
   * @param {Column} column
   * @param {number} position
   * @param {number} place
   * @param {boolean} isChanged
   */
  #makeCell(row, column, position, place, isChanged) {
    const classes = [column.key];
    if (column.isNumeric) classes.push("number");
    if (column.kind === "failure" && row.cells[place - 1] !== column.choices[0])
      classes.push("fails");
    if (starts(this.columns, place - 1)) classes.push("starts");
    if (isChanged) classes.push("changed");
    if (!column.isStored) classes.push("assumed");
    const text = row.cells[place - 1];
    const cell = make("div", {
      role: column.key === "name" ? "rowheader" : "gridcell",
      id: `${this.id}-${position}-${place}`,
      class: classes.join(" "),
      "data-column": place,
      "aria-colindex": place + 1,
    });
    cell.append(make("span", { class: "text" }, text));
    if (column.key === "name" || text.length > roomy) cell.title = text;
    if (column.key === "name" && row.isCurrent)
      cell.append(make("span", { class: "chip" }, "current"));
    if (column.key === "name" && row.isNew) cell.append(make("span", { class: "chip" }, "new"));
    if (isChanged) cell.append(make("span", { class: "said" }, " changed"));
    if (!column.isStored) cell.setAttribute("aria-readonly", "true");
    return cell;
  }

  /** @param {HTMLElement} row @param {number} position */
  #mark(row, position) {
    if (position !== this.#active.row) return;
    row.children[this.#active.column]?.classList.add("active");
  }

  #showActive() {
    for (const cell of this.element.querySelectorAll(".active")) cell.classList.remove("active");
    const { row, column } = this.#active;
    const cell =
      row < 0
        ? this.head.lastElementChild?.children[column]
        : this.scroller.find(row)?.children[column];
    if (cell) {
      cell.classList.add("active");
      this.element.setAttribute("aria-activedescendant", cell.id);
    } else this.element.removeAttribute("aria-activedescendant");
  }

  // --- Where one is

  /** @param {number} row @param {number} column @param {boolean} [takesFocus] */
  #activate(row, column, takesFocus = true) {
    const last = this.#order.length - 1;
    this.#active = {
      row: Math.min(Math.max(row, -1), last),
      column: Math.min(Math.max(column, 0), this.columns.length),
    };
    if (this.#active.row >= 0) this.scroller.reveal(this.#active.row);
    this.#showActive();
    this.element.querySelector(".active")?.scrollIntoView({ block: "nearest", inline: "nearest" });
    if (takesFocus) this.element.focus({ preventScroll: true });
  }

  /** @param {Event} event */
  #place(event) {
    const target = event.target instanceof Element ? event.target : null;
    const cell = target?.closest("[data-column]");
    const row = target?.closest("[data-row]");
    if (!(cell instanceof HTMLElement)) return null;
    return {
      row: row instanceof HTMLElement ? Number(row.dataset.row) : -1,
      column: Number(cell.dataset.column),
    };
  }

  /** @param {MouseEvent} event */
  #point(event) {
    const place = this.#place(event);
    if (!place || this.editor.contains(event.target)) return;
    event.preventDefault();
    this.editor.forget();
    if (this.editor.isOpen && !this.editor.commit()) return;
    this.#activate(place.row, place.column);
    if (event.shiftKey) this.#selectTo(place.row);
    else if (event.ctrlKey || event.metaKey || place.column === 0) this.#toggle(place.row);
    else this.#anchor = place.row;
  }

  /** @param {MouseEvent} event */
  #doublePoint(event) {
    const place = this.#place(event);
    if (place && place.column > 0 && !this.editor.isOpen) this.edit();
  }

  /** @param {MouseEvent} event */
  #pointHead(event) {
    const place = this.#place(event);
    if (!place) return;
    if (this.editor.isOpen && !this.editor.commit()) return;
    this.#activate(-1, place.column);
    this.#useHead();
  }

  // --- Rows that are selected

  /** @param {number} row */
  #toggle(row) {
    const index = this.#order[row];
    if (!this.#selected.delete(index)) this.#selected.add(index);
    this.#anchor = row;
    this.#tellSelection();
  }

  /** @param {number} row */
  #selectTo(row) {
    const [first, last] = [Math.min(row, this.#anchor), Math.max(row, this.#anchor)];
    for (let i = first; i <= last; ++i) this.#selected.add(this.#order[i]);
    this.#tellSelection();
  }

  #toggleAll() {
    const isAll = this.#order.length > 0 && this.#order.every((index) => this.#selected.has(index));
    this.#selected = new Set(isAll ? [] : this.#order);
    this.#tellSelection();
  }

  #tellSelection() {
    for (const row of this.layer.children)
      if (row instanceof HTMLElement)
        row.setAttribute(
          "aria-selected",
          String(this.#selected.has(this.#order[Number(row.dataset.row)])),
        );
    say(`${this.#selected.size} selected`);
    this.owner.changed();
  }

  // --- Keys

  /** @param {KeyboardEvent} event */
  #press(event) {
    if (this.editor.isOpen || event.defaultPrevented) return;
    this.editor.forget();
    const isCommand = (event.ctrlKey || event.metaKey) && !writesSign(event);
    const isDone = isCommand ? this.#pressWithControl(event) : this.#pressAlone(event);
    if (isDone) event.preventDefault();
  }

  /** @param {KeyboardEvent} event */
  #pressWithControl(event) {
    const { row, column } = this.#active;
    switch (event.key.toLowerCase()) {
      case "home":
        return this.#move(0, 1);
      case "end":
        return this.#move(this.#order.length - 1, this.columns.length);
      case "arrowup":
        return this.#move(0, column);
      case "arrowdown":
        return this.#move(this.#order.length - 1, column);
      case "arrowleft":
        return this.#move(row, 0);
      case "arrowright":
        return this.#move(row, this.columns.length);
      case "a":
        this.#toggleAll();
        return true;
      default:
        return false;
    }
  }

  /** @param {KeyboardEvent} event */
  #pressAlone(event) {
    const { row, column } = this.#active;
    if (event.altKey && !writesSign(event)) return false;
    if (event.shiftKey && (event.key === "ArrowUp" || event.key === "ArrowDown"))
      return this.#extend(event.key === "ArrowUp" ? row - 1 : row + 1);
    switch (event.key) {
      case "ArrowUp":
        return this.#move(row - 1, column);
      case "ArrowDown":
        return this.#move(row + 1, column);
      case "ArrowLeft":
        return this.#move(row, column - 1);
      case "ArrowRight":
        return this.#move(row, column + 1);
      case "PageUp":
        return this.#move(Math.max(0, row - this.scroller.page), column);
      case "PageDown":
        return this.#move(row + this.scroller.page, column);
      case "Home":
        return this.#move(row, 1);
      case "End":
        return this.#move(row, this.columns.length);
      case "Escape":
        if (this.#selected.size > 0) this.select([]);
        return true;
      case "Delete":
        if (this.#selected.size === 0) return false;
        this.owner.remove();
        return true;
      case "Enter":
      case "F2":
        return this.#use();
      case " ":
        if (row >= 0 && (column === 0 || event.shiftKey)) {
          this.#toggle(row);
          return true;
        }
        return this.#use();
      default:
        return this.#type(event.key);
    }
  }

  /** @param {number} row @param {number} column */
  #move(row, column) {
    this.#activate(row, column);
    this.#anchor = this.#active.row;
    return true;
  }

  /** @param {number} row */
  #extend(row) {
    if (row < 0 || row >= this.#order.length) return true;
    this.#activate(row, this.#active.column);
    this.#selectTo(row);
    return true;
  }

  #use() {
    if (this.#active.row < 0) this.#useHead();
    else if (this.#active.column === 0) this.#toggle(this.#active.row);
    else this.edit();
    return true;
  }

  #useHead() {
    if (this.#active.column === 0) {
      this.#toggleAll();
      return;
    }
    const { key } = this.columns[this.#active.column - 1];
    if (this.#sorted.key !== key) this.#sorted = { key, isDescending: false };
    else if (!this.#sorted.isDescending) this.#sorted = { key, isDescending: true };
    else this.#sorted = { key: "", isDescending: false };
    this.#drawHead();
    this.owner.sorted();
    this.#active.row = -1;
    this.#showActive();
    this.#saySorted();
  }

  #saySorted() {
    if (this.#sorted.key === "") say("In the order of the document");
    else say(this.#sorted.isDescending ? "Sorted, largest first" : "Sorted, smallest first");
  }

  // --- Values

  /** @param {string} key that was pressed: it starts a new value */
  #type(key) {
    if ([...key].length !== 1 || this.#active.row < 0 || this.#active.column === 0) return false;
    this.edit(key);
    return true;
  }

  /** @param {string} [start] what replaces the value */
  edit(start) {
    const { row, column } = this.#active;
    if (row < 0 || column === 0) return;
    this.scroller.reveal(row);
    const cell = this.scroller.find(row)?.children[column];
    if (!(cell instanceof HTMLElement)) return;
    const field = this.columns[column - 1];
    if (!field.isStored)
      return this.#refuse("This document cannot hold a value here: it shows what readers assume.");
    this.#edited = { index: this.#order[row], key: field.key };
    this.editor.open(cell, field, this.doc.cell(this.#order[row], field.key), start);
  }

  /** @param {string} sentence why the active cell takes no value */
  #refuse(sentence) {
    const { row, column } = this.#active;
    const cell = this.scroller.find(row)?.children[column];
    if (cell instanceof HTMLElement) this.editor.refuse(cell, sentence);
  }

  /**
   * Takes what the editor has.
   * @param {string} text
   * @param {boolean} forAll whether all rows that are selected get it
   * @returns {string} why it cannot
   */
  take(text, forAll) {
    const { index, key } = this.#edited;
    const indexes = forAll && this.#selected.size > 0 ? this.selected : [index];
    return this.owner.set(indexes, key, text);
  }

  /** @param {number} rows @param {number} columns */
  step(rows, columns) {
    const { row, column } = this.#active;
    const isWithin = row + rows >= 0 && row + rows < this.#order.length;
    this.#move(isWithin ? row + rows : row, Math.max(1, column + columns));
  }

  /** @param {ClipboardEvent} event */
  copy(event) {
    const { row, column } = this.#active;
    if (this.editor.isOpen) return;
    const rows = this.#order.filter((index) => this.#selected.has(index));
    if (rows.length === 0 && (row < 0 || column === 0)) return;
    const text =
      rows.length > 0
        ? writeCells(this.doc.texts(rows))
        : this.doc.cell(this.#order[row], this.columns[column - 1].key);
    event.clipboardData?.setData("text/plain", text);
    event.preventDefault();
    if (rows.length > 0) tell(`${count(rows.length, "foundation")} copied`);
    else say("Copied");
  }

  /** @param {ClipboardEvent} event */
  paste(event) {
    const { row, column } = this.#active;
    if (this.editor.isOpen || row < 0 || column === 0) return;
    event.preventDefault();
    const rows = readCells(event.clipboardData?.getData("text/plain") ?? "");
    if (rows.length > 1 || rows[0].length > 1) return this.#pasteBlock(rows);
    this.edit(rows[0][0]);
    if (this.editor.isOpen) this.editor.commit();
  }

  /**
   * From the active cell on.
   * @param {string[][]} rows
   */
  #pasteBlock(rows) {
    const { row, column } = this.#active;
    const width = rows[0].length;
    const indexes = [...this.#order.subarray(row, row + rows.length)];
    const keys = this.columns.slice(column - 1, column - 1 + width).map(({ key }) => key);
    if (rows.some((cells) => cells.length !== width))
      return this.#refuse("The rows of what is pasted differ in length; nothing was pasted.");
    if (indexes.length < rows.length || keys.length < width)
      return this.#refuse(
        `${count(rows.length, "row")} and ${count(width, "column")} do not fit from here on; nothing was pasted.`,
      );
    const problem = this.owner.fill(indexes, keys, rows);
    if (problem !== "") this.#refuse(capitalise(problem));
  }
}

/** @param {KeyboardEvent} event whether AltGr, which some systems tell as Ctrl and Alt, is held */
function writesSign(event) {
  return event.getModifierState("AltGraph");
}

/** @param {Column[]} columns @param {number} place whether a group of columns starts there */
function starts(columns, place) {
  return place > 0 && columns[place].group !== columns[place - 1].group;
}
