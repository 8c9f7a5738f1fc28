// @ts-check
import { make, makeButton, makeChoice, makeLabel } from "./dom.js";
import { Dialog } from "./dialog.js";
import { makeDifferences } from "./differences.js";
import { listLines, tell } from "./notices.js";

/** @typedef {import("./types.js").Merging} Merging */
/** @typedef {import("./types.js").Refusal} Refusal */

const rules = /** @type {Array<[string, string]>} */ ([
  ["refuse", "stop"],
  ["rename", "give the other one a free name"],
  ["renumber", "give the other one a free number"],
  ["skip", "leave the other one out"],
  ["replace", "put the other one in its place"],
]);

/**
 * Takes foundations of another document over, once one has seen what that changes.
 * @param {import("./document_view.js").DocumentView} view
 */
export async function showMerging(view) {
  const { workspace } = view;
  const other = makeChoice([]);
  const rule = makeChoice(rules);
  const preview = make("div", { class: "preview", "aria-live": "polite" });
  const dialog = new Dialog(`Merge into ${view.name}`, "Merge", async () => {
    const source = workspace.find(other.value)?.view;
    if (!source) return false;
    const change = await view.doc.merge(source.doc, getOptions());
    view.took(change);
    tell(`Done: ${change.label}. Undo takes it back.`);
    return true;
  });
  const getOptions = () => ({ onClash: /** @type {import("./types.js").OnClash} */ (rule.value) });

  const otherField = makeLabel("Foundations of", other);
  const ruleField = makeLabel("Where numbers or names clash", rule);
  const fields = make(
    "div",
    { class: "fields" },
    otherField,
    ruleField,
    makeButton("Open another …", () => open()),
  );
  const offer = () => {
    const others = workspace.documents.filter((entry) => entry.view !== view);
    other.replaceChildren(...others.map(({ id, name }) => make("option", { value: id }, name)));
    fields.hidden = others.length === 0;
  };
  const show = async () => {
    dialog.action.disabled = true;
    dialog.problem.replaceChildren();
    const source = workspace.find(other.value)?.view;
    if (!source) {
      preview.replaceChildren(
        make("p", {}, "Open the document whose foundations are to come."),
        make("p", {}, makeButton("Open another …", open, { class: "primary" })),
      );
      return;
    }
    try {
      const merging = await view.doc.previewMerge(source.doc, getOptions());
      preview.replaceChildren(...describeMerging(merging, rule.value));
      dialog.action.disabled = !merging.isPossible || merging.differences.length === 0;
    } catch (error) {
      preview.replaceChildren();
      dialog.tell(error);
    }
  };
  const open = async () => {
    const opened = await workspace.choose(false);
    offer();
    if (opened?.view) other.value = opened.id;
    await show();
    if (opened && !opened.view) dialog.tell(`${opened.name} cannot be read: its tab tells why.`);
  };
  other.addEventListener("change", show);
  rule.addEventListener("change", show);
  dialog.element.classList.add("broad");
  dialog.body.append(fields, preview);
  offer();
  await show();
  return dialog.show();
}

/** @param {Merging} merging @param {string} rule what was said to do with clashes */
function describeMerging(merging, rule) {
  const { differences, clashes, leftOut, losses, unitNotes, isPossible } = merging;
  const parts = [
    make(
      "p",
      { class: "lead" },
      isPossible ? tellChange(merging) : tellClash(rule),
    ),
  ];
  parts.push(...makePart("Clashes", clashes.map(tellRefusal), true));
  parts.push(...makePart("Left out", leftOut.map(tellRefusal), true));
  parts.push(...makePart("Lost, since the document has no place for it", losses, true));
  parts.push(...makePart("Units", unitNotes, false));
  if (isPossible && differences.length > 0) parts.push(makeDifferences(differences));
  return parts;
}

/** @param {Merging} merging */
function tellChange({ summary, differences }) {
  return differences.length === 0 ? "Nothing would change." : `This would change: ${summary}.`;
}

/** @param {string} rule */
function tellClash(rule) {
  return rule === "refuse"
    ? "Numbers or names clash: say what to do with them."
    : "Numbers or names still clash that way: choose another way.";
}

/** @param {Refusal} refusal */
function tellRefusal({ file, line, foundation, sentence }) {
  const place = line > 0 ? `${file}, line ${line}` : file;
  return `${place}: ${foundation} ${sentence}`;
}

/** @param {string} title @param {string[]} lines @param {boolean} isWarning */
function makePart(title, lines, isWarning) {
  if (lines.length === 0) return [];
  const heading = make("h3", {}, isWarning ? `${title} (${lines.length})` : title);
  return [make("div", { class: isWarning ? "told warning" : "told" }, heading, listLines(lines))];
}
