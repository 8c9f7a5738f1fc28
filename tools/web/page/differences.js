// @ts-check
import { make, makeButton } from "./dom.js";

/** @typedef {import("./types.js").Difference} Difference */

const step = 200;
const words = { added: "added", removed: "removed", changed: "changed" };

/**
 * A table of differences, which grows on demand.
 * @param {Difference[]} differences
 * @param {(difference: Difference) => void} [goTo] looks at the row of a difference
 */
export function makeDifferences(differences, goTo) {
  const body = make("tbody");
  const rest = make("p", { class: "rest" });
  let shown = 0;
  const grow = () => {
    body.append(
      ...differences.slice(shown, shown + step).flatMap((difference) => makeRows(difference, goTo)),
    );
    shown = Math.min(shown + step, differences.length);
    rest.hidden = shown === differences.length;
    rest.replaceChildren(
      `${shown} of ${differences.length} `,
      makeButton(`Show ${Math.min(step, differences.length - shown)} more`, grow),
    );
  };
  grow();
  const heads = ["What", "Foundation", "Field", "Before", "After"].map((text) =>
    make("th", { scope: "col" }, text),
  );
  const table = make(
    "table",
    { class: "differences" },
    make("thead", {}, make("tr", {}, ...heads)),
    body,
  );
  return make(
    "div",
    { class: "wide", tabindex: 0, role: "region", "aria-label": "Differences" },
    table,
    rest,
  );
}

/** @param {Difference} difference @param {((difference: Difference) => void) | undefined} goTo */
function makeRows(difference, goTo) {
  const { kind, foundation, fields, first } = difference;
  const lines = Math.max(fields.length, 1);
  const name =
    goTo && first >= 0
      ? makeButton(foundation, () => goTo(difference), { class: "link" })
      : foundation;
  const start = [
    make("td", { rowspan: lines }, make("span", { class: `chip ${kind}` }, words[kind])),
    make("th", { scope: "rowgroup", rowspan: lines }, name),
  ];
  const rows = fields.map((field) => make("tr", {}, ...makeField(field)));
  if (rows.length === 0) rows.push(make("tr", {}, make("td", { colspan: 3 })));
  rows[0].prepend(...start);
  rows[rows.length - 1].classList.add("last");
  return rows;
}

/** @param {import("./types.js").FieldChange} field */
function makeField({ label, before, after, unit }) {
  return [
    make("td", {}, label, unit === "" ? "" : make("small", {}, ` ${unit}`)),
    make("td", { class: "before" }, before),
    make("td", { class: "after" }, after),
  ];
}
