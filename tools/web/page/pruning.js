// @ts-check
import { make, makeLabel, makeTick } from "./dom.js";
import { Dialog } from "./dialog.js";
import { capitalise, listLines, tell } from "./notices.js";

/**
 * Removes what nothing needs, once one has seen what goes.
 * @param {import("./document_view.js").DocumentView} view
 */
export async function showPruning(view) {
  const all = make("input", { type: "radio", name: "what", checked: true });
  const listed = make("input", { type: "radio", name: "what" });
  const list = make("textarea", {
    rows: 5,
    spellcheck: "false",
    placeholder: "3\nRaft on stiff clay",
  });
  const generated = make("input", { type: "checkbox" });
  const missing = make("input", { type: "checkbox" });
  const numbers = make("input", { type: "checkbox" });
  const onlyListed = make(
    "fieldset",
    { class: "indented" },
    makeLabel("Numbers or names that stay, one a line", list),
    makeTick("of generated foundations only", generated),
    makeTick("go on where a line fits nothing", missing),
  );
  const preview = make("div", { class: "preview", "aria-live": "polite" });
  const read = () => {
    const options = { generated: all.checked || generated.checked, keepNumbers: numbers.checked };
    return all.checked
      ? options
      : { ...options, usedBy: list.value, ignoreMissing: missing.checked };
  };
  const dialog = new Dialog(`Prune ${view.name}`, "Prune", async () => {
    const change = await view.doc.prune(read());
    view.took(change);
    tell(`Done: ${change.label}. Undo takes it back.`);
  });
  const show = async () => {
    onlyListed.disabled = all.checked;
    dialog.action.disabled = true;
    dialog.problem.replaceChildren();
    preview.replaceChildren();
    if (listed.checked && list.value.trim() === "") return;
    try {
      const pruning = await view.doc.previewPrune(read());
      preview.replaceChildren(...describePruning(pruning));
      dialog.action.disabled = pruning.removed.length === 0 && pruning.renumbered.length === 0;
    } catch (error) {
      dialog.tell(error);
    }
  };
  for (const field of [all, listed, list, generated, missing, numbers])
    field.addEventListener("input", show);
  dialog.body.append(
    make(
      "fieldset",
      {},
      make("legend", {}, "What goes"),
      makeTick("all generated foundations", all),
      makeTick("all but those of a list", listed),
    ),
    onlyListed,
    makeTick("keep the numbers of what is left", numbers),
    preview,
  );
  await show();
  return dialog.show();
}

/** @param {import("./types.js").Pruning} pruning */
function describePruning({ summary, removed, renumbered, warnings }) {
  const isNothing = removed.length + renumbered.length === 0;
  const sentence = isNothing ? "Nothing would change." : `This would change: ${summary}.`;
  const parts = [make("p", { class: "lead" }, sentence)];
  if (warnings.length > 0)
    parts.push(
      make(
        "div",
        { class: "told warning" },
        make("h3", {}, "To be looked at"),
        listLines(warnings.map(capitalise)),
      ),
    );
  if (removed.length > 0)
    parts.push(make("div", { class: "told" }, make("h3", {}, "Removed"), listLines(removed)));
  if (renumbered.length > 0)
    parts.push(
      make("div", { class: "told" }, make("h3", {}, "New numbers"), listLines(renumbered)),
    );
  return parts;
}
