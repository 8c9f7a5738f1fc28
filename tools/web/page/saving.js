// @ts-check
import { make, makeId, makeLabel, makeChoice } from "./dom.js";
import { Dialog } from "./dialog.js";
import { download } from "./download.js";
import { forms } from "./engine.js";
import { capitalise, listLines, tell } from "./notices.js";

/** @typedef {import("./types.js").Form} Form */
/** @typedef {import("./types.js").SaveOptions} SaveOptions */

/** How spreadsheets of a country read tables. */
const tables = /** @type {Array<[string, string, SaveOptions]>} */ ([
  ["en", "English: 1.5 between commas", { separator: ",", decimal: "." }],
  ["de", "German: 1,5 between semicolons", { separator: ";", decimal: "," }],
  ["tab", "1.5 between tabs", { separator: "\t", decimal: "." }],
]);

/**
 * Offers the document in every form, and tells before what gets lost.
 * @param {import("./document_view.js").DocumentView} view
 */
export async function showSaving(view) {
  const { doc, info } = view;
  const kept = {
    form: /** @type {Form | ""} */ (""),
    label: `as it is: ${info.formLabel}`,
    isTable: false,
  };
  // In its own form a document stays as it is, except that a table can get other signs.
  const offered = [kept, ...forms().filter(({ form, isTable }) => isTable || form !== info.form)];
  const group = makeId();
  const radios = offered.map((form, i) =>
    make("input", { type: "radio", name: group, value: form.form, checked: i === 0 }),
  );
  const table = makeChoice(tables.map(([value, text]) => [value, text]));
  const tableField = makeLabel("For a spreadsheet", table);
  const told = make("div", { class: "preview", "aria-live": "polite" });
  const getForm = () => offered[radios.findIndex((radio) => radio.checked)];
  const getOptions = () =>
    getForm().isTable ? tables.find(([value]) => value === table.value)?.[2] : undefined;

  const dialog = new Dialog(`Save ${view.name}`, "Save", async () => {
    const { form } = getForm();
    const bytes = await doc.save(form, getOptions());
    const name = view.suggestName(form);
    download(name, bytes);
    if (form === "") doc.markSaved();
    tell(`Handed to the browser as ${name}`);
  });
  const show = async () => {
    const { form, isTable } = getForm();
    tableField.hidden = !isTable;
    dialog.action.textContent = `Save ${view.suggestName(form)}`;
    dialog.problem.replaceChildren();
    try {
      told.replaceChildren(
        ...(form === "" ? [describeKept(doc.isChanged)] : describeLosses(await doc.losses(form))),
      );
    } catch (error) {
      told.replaceChildren();
      dialog.tell(error);
    }
  };
  for (const field of [...radios, table]) field.addEventListener("input", show);
  const choices = offered.map((form, i) =>
    make(
      "label",
      { class: "tick" },
      radios[i],
      make("span", {}, nameForm(form, info.form)),
    ),
  );
  dialog.body.append(
    make("fieldset", { class: "forms" }, make("legend", {}, "In what form"), ...choices),
    tableField,
    told,
  );
  await show();
  return dialog.show();
}

/** @param {{form: Form | "", label: string}} offered @param {Form} own that the document has */
function nameForm({ form, label }, own) {
  return form === own ? `${label} with other signs` : capitalise(label);
}

/** @param {boolean} isChanged */
function describeKept(isChanged) {
  const sentence = isChanged
    ? "What you changed is changed in place: every other byte stays as it was."
    : "Nothing has changed: these are the bytes that were read.";
  return make("p", { class: "soft" }, sentence);
}

/** @param {string[]} losses */
function describeLosses(losses) {
  if (losses.length === 0) return [make("p", { class: "good" }, "Nothing gets lost.")];
  return [
    make(
      "div",
      { class: "told warning" },
      make("h3", {}, "This gets lost"),
      listLines(losses.map(capitalise)),
    ),
  ];
}
