// @ts-check
/** A sheet of all foundations, which stands in the page only while it is printed. */

import { count, get, make } from "./dom.js";

const mostRows = 5000; // what browsers print in reasonable time
const step = 500;

/** @param {import("./workspace.js").Workspace} workspace */
export function startPrinting(workspace) {
  const sheet = get("sheet", HTMLElement);
  addEventListener("beforeprint", () => {
    const view = workspace.current?.view;
    sheet.replaceChildren(...(view ? makeSheet(view) : []));
  });
  addEventListener("afterprint", () => sheet.replaceChildren());
}

/** @param {import("./document_view.js").DocumentView} view */
function makeSheet(view) {
  const { doc, name, findings } = view;
  const order = view.table.order.length > 0 ? view.table.order : doc.sort();
  const shown = order.slice(0, mostRows);
  const parts = /** @type {HTMLElement[]} */ ([
    make("h1", {}, name),
    make("p", {}, view.facts.innerText.replaceAll("\n", " · ")),
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
  parts.push(makeTable(doc, shown));
  if (findings.length > 0) {
    parts.push(make("h2", {}, "Findings"));
    const items = findings
      .slice(0, step)
      .map(({ line, sentence, foundation }) =>
        make(
          "li",
          {},
          [line > 0 ? `Line ${line}` : "", foundation, sentence].filter(Boolean).join(": "),
        ),
      );
    parts.push(make("ol", {}, ...items));
  }
  return parts;
}

/** @param {import("./engine.js").Doc} doc @param {Int32Array} order */
function makeTable(doc, order) {
  const columns = doc.columns();
  const heads = columns.map((column) =>
    make(
      "th",
      { class: column.isNumeric ? "number" : "" },
      [column.group, column.label].join(" ").trim(),
      make("small", {}, column.unit),
    ),
  );
  const body = make("tbody");
  for (let i = 0; i < order.length; i += step)
    for (const row of doc.rows(order.slice(i, i + step)))
      body.append(
        make(
          "tr",
          {},
          ...row.cells.map((text, at) =>
            make("td", { class: columns[at].isNumeric ? "number" : "" }, text),
          ),
        ),
      );
  return make("table", {}, make("thead", {}, make("tr", {}, ...heads)), body);
}
