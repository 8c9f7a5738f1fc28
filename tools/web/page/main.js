// @ts-check
/** The page: what comes in, and the keys that work everywhere. */

import { getOpenDialog } from "./dialog.js";
import { get, make } from "./dom.js";
import * as engine from "./engine.js";
import { during, setTryAgain, tellProblem } from "./notices.js";
import { openText, showPasting } from "./pasting.js";
import { startPrinting } from "./printing.js";
import { showKeys } from "./keys.js";
import { Workspace } from "./workspace.js";

const workspace = new Workspace();

async function openExample() {
  const example = await during("Opening the sample …", () => engine.example());
  if (example) await workspace.openBytes(example.name, example.bytes);
}

function connectButtons() {
  for (const id of ["choose", "choose-more"])
    get(id, HTMLElement).addEventListener("click", () => workspace.choose());
  for (const id of ["paste", "paste-more"])
    get(id, HTMLElement).addEventListener("click", () => showPasting(workspace));
  get("example", HTMLElement).addEventListener("click", openExample);
  get("keys", HTMLElement).addEventListener("click", () => showKeys());
  get("home", HTMLElement).addEventListener("click", () => workspace.show(null));
}

// --- What is dropped or pasted

function connectDropping() {
  let depth = 0; // of the elements that the pointer is over
  const show = (/** @type {number} */ change) => {
    depth = Math.max(0, depth + change);
    document.body.classList.toggle("dropping", depth > 0 && !getOpenDialog());
  };
  addEventListener("dragenter", (event) => {
    event.preventDefault();
    show(1);
  });
  addEventListener("dragleave", () => show(-1));
  addEventListener("dragover", (event) => {
    if (bringsFiles(event)) event.preventDefault();
  });
  addEventListener("drop", (event) => {
    show(-depth);
    if (!bringsFiles(event)) return;
    event.preventDefault();
    const dialog = getOpenDialog();
    if (dialog) dialog.tell("Nothing was opened: close this dialog first, then drop again.");
    else take(event.dataTransfer);
  });
}

/**
 * Texts go where they are dropped.
 * @param {DragEvent} event
 */
function bringsFiles({ dataTransfer }) {
  return !getOpenDialog() || dataTransfer?.types.includes("Files") === true;
}

/** @param {DataTransfer | null} data */
function take(data) {
  const files = [...(data?.files ?? [])];
  const text = data?.getData("text/plain") ?? "";
  if (files.length > 0) workspace.openFiles(files);
  else if (text.trim() !== "") openText(workspace, text);
}

/** Firefox tells the body, not the table that has the focus, of what is copied or pasted. */
function findGrid() {
  const grid = workspace.current?.view?.table.grid;
  return grid?.element === document.activeElement ? grid : undefined;
}

/** @param {ClipboardEvent} event */
function paste(event) {
  const grid = findGrid();
  if (grid) grid.paste(event);
  else if (!isWritten(event.target) && !isWritten(document.activeElement))
    take(event.clipboardData);
}

/** @param {EventTarget | null} target */
function isWritten(target) {
  return (
    target instanceof Element &&
    target.closest("input, textarea, select, dialog, [role=grid]") !== null
  );
}

// --- Keys

/** @param {KeyboardEvent} event */
function press(event) {
  if (!(event.ctrlKey || event.metaKey) || event.altKey) return;
  if (getOpenDialog()) return;
  const view = workspace.current?.view;
  const isField = event.target instanceof Element && event.target.matches("input, textarea");
  const key = event.key.toLowerCase();
  if (key === "o") workspace.choose();
  else if (key === "s" && view) view.save();
  else if (key === "z" && view && !isField) event.shiftKey ? view.redo() : view.undo();
  else if (key === "y" && view && !isField) view.redo();
  else return;
  event.preventDefault();
}

/**
 * The engine may fail anywhere, such as where memory runs out.
 * @param {unknown} error
 */
function tellEngineError(error) {
  if (error instanceof engine.EngineError) tellProblem(error);
}

async function start() {
  connectButtons();
  connectDropping();
  startPrinting(workspace);
  addEventListener("keydown", press);
  document.addEventListener("copy", (event) => findGrid()?.copy(event));
  document.addEventListener("paste", paste);
  addEventListener("beforeunload", (event) => {
    if (!workspace.isChanged) return;
    event.preventDefault();
    event.returnValue = true; // which older browsers ask for
  });
  setTryAgain(() => workspace.current?.view?.lookAgain());
  addEventListener("error", ({ error }) => tellEngineError(error));
  addEventListener("unhandledrejection", ({ reason }) => tellEngineError(reason));
  try {
    await engine.ready();
    get("version", HTMLElement).textContent = engine.version;
    document.body.classList.add("ready");
    for (const button of document.querySelectorAll("button[disabled]"))
      button.removeAttribute("disabled");
  } catch (error) {
    tellProblem(error);
    get("lead", HTMLElement).after(
      make(
        "p",
        { class: "warning" },
        "This browser cannot run the page. Current Chromium, Edge and Firefox can.",
      ),
    );
  }
}

start();
