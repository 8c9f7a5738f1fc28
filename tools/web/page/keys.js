// @ts-check
import { make } from "./dom.js";
import { Dialog } from "./dialog.js";

const keys = [
  ["Arrows, Page up, Page down, Home, End", "move in the table; with Ctrl to its ends"],
  ["Enter or F2", "change the value"],
  ["any letter, digit or sign", "write a new value"],
  ["Enter, Tab while writing", "take the value and go down, to the right; with Shift up, to the left"],
  ["Ctrl + Enter while writing", "give the value to all rows that are selected"],
  ["Escape", "leave the value as it was; select no rows"],
  ["Space", "select the row, in the first column; with Shift in any"],
  ["Shift + Arrow up or down, Ctrl + A", "select more rows, all of them or none"],
  ["Delete", "remove the rows that are selected"],
  ["Arrow up to a heading, Enter", "sort by its column; select all in the first one"],
  ["Ctrl + C", "copy the value, or the rows that are selected"],
  ["Ctrl + V", "paste a value or a block of cells; outside the table, open what is pasted"],
  ["Ctrl + Z, Ctrl + Y", "undo and redo"],
  ["Ctrl + S, Ctrl + O", "save, open"],
  ["Arrow left or right on a tab", "go to the next tab"],
];

export function showKeys() {
  const dialog = new Dialog("Keys", "Close", () => {});
  dialog.foot.firstElementChild?.remove();
  dialog.element.classList.add("broad");
  const pairs = keys.flatMap(([key, what]) => [make("dt", {}, key), make("dd", {}, what)]);
  dialog.body.append(make("dl", { class: "keys" }, ...pairs));
  return dialog.show();
}
