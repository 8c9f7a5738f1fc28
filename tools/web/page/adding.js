// @ts-check
import { make, makeChoice, makeLabel } from "./dom.js";
import { Dialog } from "./dialog.js";

/** @typedef {import("./types.js").Column} Column */

/**
 * Asks for a new foundation.
 * @param {import("./document_view.js").DocumentView} view
 */
export function showAdding(view) {
  const columns = view.doc.columns().filter((column) => column.isStored);
  const fields = columns.map((column) => ({ column, field: makeField(column) }));
  const dialog = new Dialog(`Add to ${view.name}`, "Add", () => {
    const filled = fields.filter(({ field }) => field.value.trim() !== "");
    view.took(
      view.doc.add(
        Object.fromEntries(filled.map(({ column, field }) => [column.key, field.value])),
      ),
    );
  });
  dialog.element.classList.add("broad");
  for (const group of new Set(columns.map((column) => column.group))) {
    const own = fields.filter(({ column }) => column.group === group);
    const labels = own.map(({ column, field }) =>
      makeLabel([column.label, column.unit].join(" ").trim(), field),
    );
    const legend = group === "" ? "Foundation" : group;
    dialog.body.append(make("fieldset", { class: "cells" }, make("legend", {}, legend), ...labels));
  }
  return dialog.show();
}

/** @param {Column} column */
function makeField(column) {
  if (column.choices.length > 0)
    return makeChoice(column.choices.map((choice) => [choice, choice]));
  return make("input", {
    type: "text",
    spellcheck: "false",
    autocomplete: "off",
    required: column.key === "name",
    autofocus: column.key === "name",
  });
}
