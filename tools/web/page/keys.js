// @ts-check
import { make } from "./dom.js";
import { Dialog } from "./dialog.js";

const keys = [
  ["Arrows, Page up, Page down, Home, End", "move in the table; with Ctrl to its ends"],
  ["Enter or F2", "change the value; Enter again takes it and goes down, Tab to the right"],
  ["any letter or digit", "write a new value"],
  ["Escape", "leave the value as it was"],
  ["Ctrl + Enter", "give the value to all rows that are selected"],
  ["Space, Shift + arrows, Ctrl + A", "select rows: in the first column, more of them, all"],
  ["Delete", "remove the rows that are selected"],
  ["Enter in a heading", "sort by its column"],
  ["Ctrl + C", "copy the value, or the rows that are selected"],
  ["Ctrl + V", "paste a value or a block of cells; outside the table, open what is pasted"],
  ["Ctrl + Z, Ctrl + Y", "undo and redo"],
  ["Ctrl + S, Ctrl + O", "save, open"],
];

export function showKeys() {
  const dialog = new Dialog("Keys", "Close", () => {});
  dialog.foot.firstElementChild?.remove();
  dialog.element.classList.add("broad");
  const pairs = keys.flatMap(([key, what]) => [make("dt", {}, key), make("dd", {}, what)]);
  dialog.body.append(make("dl", { class: "keys" }, ...pairs));
  return dialog.show();
}
