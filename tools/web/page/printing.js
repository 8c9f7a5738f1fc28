// @ts-check
/** A sheet of all foundations, which stands in the page only while it is printed. */

import { count, get, make } from "./dom.js";

/** @typedef {import("./types.js").Column} Column */
/** @typedef {import("./types.js").Row} Row */

const mostRows = 5000; // what browsers print in reasonable time
const step = 500;

/** @param {import("./workspace.js").Workspace} workspace */
export function startPrinting(workspace) {
  const sheet = get("sheet", HTMLElement);
  addEventListener("beforeprint", () => {
    const view = workspace.current?.view;
    sheet.replaceChildren(...(view ? makeSheet(view) : []));
    const foot = view ? `${view.name}     ${nameTime()}` : "KvFound";
    document.documentElement.style.setProperty("--printed", quote(foot)); // at the foot of each page
  });
  addEventListener("afterprint", () => sheet.replaceChildren());
}

/** Now, as reports tell it. */
function nameTime() {
  const now = new Date();
  const pad = (/** @type {number} */ number) => String(number).padStart(2, "0");
  const day = [now.getFullYear(), pad(now.getMonth() + 1), pad(now.getDate())].join("-");
  return `${day} ${pad(now.getHours())}:${pad(now.getMinutes())}`;
}

/** @param {string} text as style sheets write it */
function quote(text) {
  return `"${text.replace(/["\\]/g, "\\$&").replace(/\s/g, "\u00A0")}"`;
}

/** @param {import("./document_view.js").DocumentView} view */
function makeSheet(view) {
  const { doc, name } = view;
  const order = view.table.order.length > 0 ? view.table.order : doc.sort();
  const shown = order.slice(0, mostRows);
  const facts = [...view.facts.children].map((fact) => fact.textContent);
  const state = doc.isChanged ? ["changed, and not saved"] : [];
  const parts = /** @type {HTMLElement[]} */ ([
    make("h1", {}, name),
    make("p", {}, [...facts, ...state, `printed ${nameTime()}`].join(" \u00B7 ")),
  ]);
  if (order.length < doc.count)
    parts.push(
      make(
        "p",
        {},
        `${order.length} of ${count(doc.count, "foundation")}: others are not shown in the table.`,
      ),
    );
  if (shown.length < order.length)
    parts.push(make("p", {}, `The first ${mostRows}; save the report to print all.`));
  parts.push(makeTable(doc, shown), ...describeFindings(view));
  return parts;
}

/** @param {import("./document_view.js").DocumentView} view */
function describeFindings({ findings, isChecked }) {
  if (!isChecked) return [make("p", {}, "Not checked since it was changed.")];
  if (findings.length === 0) return [make("p", {}, "The check finds nothing.")];
  const items = findings
    .slice(0, step)
    .map(({ line, sentence, foundation }) =>
      make(
        "li",
        {},
        [line > 0 ? `Line ${line}` : "", foundation, sentence].filter(Boolean).join(": "),
      ),
    );
  const left = findings.length - items.length;
  const rest = left > 0 ? [make("p", {}, `and ${left} more`)] : [];
  return [make("h2", {}, `Findings (${findings.length})`), make("ol", {}, ...items), ...rest];
}

/** @param {import("./engine.js").Doc} doc @param {Int32Array} order */
function makeTable(doc, order) {
  const columns = doc.columns();
  const body = make("tbody");
  for (let i = 0; i < order.length; i += step)
    for (const row of doc.rows(order.slice(i, i + step))) body.append(makeRow(row, columns));
  return make("table", {}, makeHead(columns), body);
}

/** @param {Column[]} columns */
function makeHead(columns) {
  const groups = [...new Set(columns.map(({ group }) => group))].map((group, i) => {
    const span = columns.filter((column) => column.group === group).length;
    return make("th", { colspan: span, class: i > 0 ? "starts" : "" }, group);
  });
  const heads = columns.map((column, at) =>
    make(
      "th",
      { class: classify(columns, at) },
      column.label,
      column.unit === "" ? "" : make("small", {}, column.unit),
    ),
  );
  return make("thead", {}, make("tr", {}, ...groups), make("tr", {}, ...heads));
}

/** @param {Row} row @param {Column[]} columns */
function makeRow({ cells, isCurrent, changed }, columns) {
  const parts = cells.map((text, at) => {
    const { key, isStored } = columns[at];
    const state = `${changed.includes(key) ? "changed" : ""} ${isStored ? "" : "assumed"}`;
    return make("td", { class: `${classify(columns, at)} ${state}` }, text);
  });
  return make("tr", { class: isCurrent ? "current" : "" }, ...parts);
}

/** @param {Column[]} columns @param {number} at */
function classify(columns, at) {
  const starts = at > 0 && columns[at].group !== columns[at - 1].group ? "starts" : "";
  return `${columns[at].isNumeric ? "number" : ""} ${starts}`.trim();
}
