// @ts-check
import { make, makeLabel } from "./dom.js";
import { Dialog } from "./dialog.js";

const name = "pasted";

/**
 * Opens a text as a document that comes from no file.
 * @param {import("./workspace.js").Workspace} workspace
 * @param {string} text
 */
export function openText(workspace, text) {
  return workspace.openBytes(name, new TextEncoder().encode(text), { isPasted: true });
}

/** @param {import("./workspace.js").Workspace} workspace */
export function showPasting(workspace) {
  const text = make("textarea", { rows: 12, spellcheck: "false", required: true });
  const dialog = new Dialog("Paste a document", "Open", () => {
    setTimeout(() => openText(workspace, text.value)); // behind the dialog
  });
  dialog.element.classList.add("broad");
  dialog.body.append(
    makeLabel("A whole document, or cells of a spreadsheet with their headings", text),
  );
  return dialog.show();
}
