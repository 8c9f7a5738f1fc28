// @ts-check
/** Makes only those rows of a long list that are visible. */

// Browsers cannot make elements much higher; beyond, a pixel of the bar is more than one of the rows.
const highest = 8e6;
const spare = 8; // rows above and below, so that quick scrolling shows no gap

export class Scroller {
  /** @type {Map<number, HTMLElement>} */
  #made = new Map();
  #count = 0;
  #isAsked = false;

  /**
   * @param {HTMLElement} port what scrolls
   * @param {HTMLElement} layer in it, which holds the rows
   * @param {number} rowHeight in rem
   * @param {(positions: number[]) => HTMLElement[]} makeRows
   */
  constructor(port, layer, rowHeight, makeRows) {
    this.port = port;
    this.layer = layer;
    this.makeRows = makeRows;
    this.rem = rowHeight;
    port.addEventListener("scroll", () => this.#draw(), { passive: true });
    new ResizeObserver(() => this.#place()).observe(port);
  }

  /** @param {number} count how many rows there are; all are made anew */
  setCount(count) {
    this.#count = count;
    this.#clear();
    this.layer.style.height = `${Math.min(this.#height, highest)}px`;
    this.#drawNow(); // or for a moment there would be no rows
  }

  /** Makes all rows anew. */
  redraw() {
    this.#clear();
    this.#drawNow();
  }

  /** @param {number} position @returns {HTMLElement | undefined} the row, if it is there */
  find(position) {
    return this.#made.get(position);
  }

  /** @param {number} position of a row to be scrolled to */
  reveal(position) {
    const top = position * this.rowHeight;
    const start = this.#start;
    const last = start + this.#view - this.rowHeight;
    if (top < start) this.port.scrollTop = top / this.#ratio;
    else if (top > last) this.port.scrollTop = Math.ceil((top - last + start) / this.#ratio);
    this.#drawNow();
  }

  /** How many rows are visible. */
  get page() {
    return Math.max(1, Math.floor(this.#view / this.rowHeight) - 1);
  }

  get rowHeight() {
    return this.rem * parseFloat(getComputedStyle(document.documentElement).fontSize);
  }

  get #height() {
    return this.#count * this.rowHeight;
  }

  /** Of the part of the port that shows rows. */
  get #view() {
    return Math.max(0, this.port.clientHeight - this.layer.offsetTop);
  }

  /** How many pixels of rows a pixel of the bar is. */
  get #ratio() {
    const given = Math.min(this.#height, highest) - this.#view;
    return given > 0 ? Math.max(1, (this.#height - this.#view) / given) : 1;
  }

  /** Where the view starts, in pixels of rows. */
  get #start() {
    return this.port.scrollTop * this.#ratio;
  }

  #place() {
    this.layer.style.height = `${Math.min(this.#height, highest)}px`;
    this.#draw();
  }

  #clear() {
    for (const row of this.#made.values()) row.remove();
    this.#made.clear();
  }

  #draw() {
    if (this.#isAsked) return;
    this.#isAsked = true;
    requestAnimationFrame(() => {
      this.#isAsked = false;
      this.#drawNow();
    });
  }

  #drawNow() {
    if (!this.port.isConnected || this.port.clientHeight === 0) return;
    const height = this.rowHeight;
    const start = this.#start;
    const first = Math.max(0, Math.floor(start / height) - spare);
    const end = Math.min(this.#count, Math.ceil((start + this.#view) / height) + spare);
    for (const [position, row] of this.#made)
      if (position < first || position >= end) this.#drop(position, row);
    this.#add(first, end);
    for (const [position, row] of this.#made)
      row.style.top = `${this.port.scrollTop + position * height - start}px`;
  }

  /** @param {number} position @param {HTMLElement} row */
  #drop(position, row) {
    if (row.contains(document.activeElement)) return; // it is being written in
    row.remove();
    this.#made.delete(position);
  }

  /** @param {number} first @param {number} end */
  #add(first, end) {
    const positions = [];
    for (let i = first; i < end; ++i) if (!this.#made.has(i)) positions.push(i);
    if (positions.length === 0) return;
    const rows = this.makeRows(positions);
    positions.forEach((position, i) => this.#made.set(position, rows[i]));
    this.layer.append(...rows);
  }
}
