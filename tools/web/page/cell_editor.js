// @ts-check
/** Where a value is written. */

import { make, makeChoice, makeId } from "./dom.js";
import { capitalise } from "./notices.js";

export class CellEditor {
  /** @type {HTMLInputElement | HTMLSelectElement | null} */
  #field = null;
  /** @type {HTMLElement | null} */
  #bubble = null;
  #follow = () => {}; // keeps it beside its cell
  #before = "";
  /** Whether the value is being taken, while the row is made anew and the field leaves the page. */
  #isTaking = false;

  /** @param {import("./grid.js").Grid} grid */
  constructor(grid) {
    this.grid = grid;
  }

  get isOpen() {
    return this.#field !== null;
  }

  /** Whether something was written that is not taken yet. */
  get isChanged() {
    return this.#field !== null && this.#field.value !== this.#before;
  }

  /** @param {EventTarget | null} target */
  contains(target) {
    return this.#field !== null && target === this.#field;
  }

  /**
   * @param {HTMLElement} cell
   * @param {import("./types.js").Column} column
   * @param {string} text
   * @param {string} [start] what replaces it at once
   */
  open(cell, column, text, start) {
    this.#closeBubble();
    const label = [column.group, column.label, column.unit].join(" ").trim();
    const field =
      column.choices.length > 0
        ? this.#makeChoice(column, text, start)
        : this.#makeText(text, start);
    field.classList.add("editor");
    field.setAttribute("aria-label", label);
    field.addEventListener("keydown", (event) => this.#press(/** @type {KeyboardEvent} */ (event)));
    field.addEventListener("blur", () => this.#leave());
    this.#before = text;
    this.#field = field;
    cell.append(field);
    field.focus({ preventScroll: true });
    if (field instanceof HTMLInputElement && start === undefined) field.select();
  }

  /**
   * Tells why a cell cannot be written in.
   * @param {HTMLElement} cell
   * @param {string} sentence
   */
  refuse(cell, sentence) {
    this.#showBubble(cell, sentence);
  }

  /** What was told of a cell that is left matters no more. */
  forget() {
    if (!this.isOpen) this.#closeBubble();
  }

  /**
   * @param {boolean} [forAll]
   * @returns {boolean} whether the value was taken; where not, it is told why
   */
  commit(forAll = false) {
    const field = this.#field;
    if (!field) return true;
    if (field.value === this.#before && !forAll) {
      this.cancel();
      return true;
    }
    this.#isTaking = true;
    const problem = this.grid.take(field.value, forAll);
    this.#isTaking = false;
    if (problem === "") {
      this.cancel();
      this.grid.refresh();
      return true;
    }
    this.#refuseValue(field, problem);
    return false;
  }

  /** Leaves the value as it was. */
  cancel() {
    const field = this.#field;
    this.#field = null;
    this.#closeBubble();
    if (field) {
      this.grid.element.focus({ preventScroll: true });
      field.remove();
    }
  }

  /** The rows are made anew, so what is written in one of them goes, unless that is the reason. */
  drop() {
    if (!this.#isTaking) this.cancel();
  }

  /** The table is not seen for a while. What was written waits. */
  pause() {
    this.#closeBubble();
  }

  resume() {
    this.#field?.focus({ preventScroll: true });
  }

  /** @param {import("./types.js").Column} column @param {string} text @param {string} [start] */
  #makeChoice(column, text, start) {
    const fits = column.choices.find((choice) => start && choice.startsWith(start.toLowerCase()));
    const values = column.choices.includes(text) ? column.choices : [text, ...column.choices];
    const choice = makeChoice(values.map((value) => [value, value]));
    choice.value = fits ?? text;
    return choice;
  }

  /** @param {string} text @param {string} [start] */
  #makeText(text, start) {
    const field = make("input", { type: "text", spellcheck: "false", autocomplete: "off" });
    field.value = start ?? text;
    return field;
  }

  /** @param {HTMLElement} field @param {string} problem */
  #refuseValue(field, problem) {
    const cell = field.parentElement;
    if (!cell) return;
    field.setAttribute("aria-invalid", "true");
    const bubble = this.#showBubble(cell, capitalise(problem));
    field.setAttribute("aria-describedby", bubble.id);
    field.focus({ preventScroll: true });
  }

  /** @param {HTMLElement} cell @param {string} sentence */
  #showBubble(cell, sentence) {
    this.#closeBubble();
    const bubble = make("p", { class: "bubble", role: "alert", id: makeId() }, sentence);
    document.body.append(bubble);
    this.#bubble = bubble;
    this.#follow = () => place(bubble, cell.getBoundingClientRect());
    this.#follow();
    document.addEventListener("scroll", this.#follow, { capture: true, passive: true });
    return bubble;
  }

  #closeBubble() {
    this.#bubble?.remove();
    this.#bubble = null;
    document.removeEventListener("scroll", this.#follow, { capture: true });
  }

  /** What was written is taken, or else the field stays open. */
  #leave() {
    const field = this.#field;
    if (!field || this.#isTaking || !document.hasFocus()) return;
    const isSeen = field.getClientRects().length > 0;
    if (isSeen) this.commit();
  }

  /** @param {KeyboardEvent} event */
  #press(event) {
    if (isOfPage(event)) {
      event.preventDefault();
      if (this.commit()) return; // and the page does it
    }
    event.stopPropagation();
    if (event.isComposing) return;
    if (event.key === "Escape") this.cancel();
    else if (event.key === "Enter") this.#commitAndStep(event, event.shiftKey ? -1 : 1, 0);
    else if (event.key === "Tab") this.#commitAndStep(event, 0, event.shiftKey ? -1 : 1);
    else return;
    event.preventDefault();
  }

  /** @param {KeyboardEvent} event @param {number} rows @param {number} columns */
  #commitAndStep(event, rows, columns) {
    const forAll = event.ctrlKey || event.metaKey;
    if (this.commit(forAll) && !forAll) this.grid.step(rows, columns);
  }
}

const gap = 4; // px

/**
 * Puts a bubble below a cell, or above it where there is no room.
 * @param {HTMLElement} bubble
 * @param {DOMRect} cell
 */
function place(bubble, cell) {
  const { offsetHeight: height, offsetWidth: width, style } = bubble;
  const below = cell.bottom + gap;
  const top = below + height <= innerHeight ? below : Math.max(gap, cell.top - gap - height);
  style.top = `${top}px`;
  style.left = `${Math.max(2 * gap, Math.min(cell.left, innerWidth - width - 2 * gap))}px`;
}

/** @param {KeyboardEvent} event whether it saves or opens documents */
function isOfPage(event) {
  return (event.ctrlKey || event.metaKey) && !event.altKey && /^[so]$/i.test(event.key);
}
