// @ts-check
/** Cells as spreadsheets put them on the clipboard: between tabs, a row a line. */

// Where a cell holds a tab or the end of a line, it stands in quotation marks, as does one that starts
// with such a mark.
const cell = /(?:"((?:[^"]|"")*)"|([^\t\r\n]*))(\t|\r?\n|\r|$)/y;

/**
 * @param {string} text
 * @returns {string[][]} the cells of each row
 */
export function readCells(text) {
  const rows = [/** @type {string[]} */ ([])];
  cell.lastIndex = 0;
  for (;;) {
    const found = cell.exec(text);
    if (!found) break;
    const [, quoted, plain, end] = found;
    rows[rows.length - 1].push(quoted === undefined ? plain : quoted.replaceAll('""', '"'));
    if (end === "" || (end !== "\t" && cell.lastIndex === text.length)) break;
    if (end !== "\t") rows.push([]);
  }
  return rows;
}

/** @param {string[][]} rows */
export function writeCells(rows) {
  return rows.map((cells) => `${cells.map(quote).join("\t")}\n`).join("");
}

/** @param {string} text */
function quote(text) {
  return /^"|[\t\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}
