// @ts-check
/** What is shown in place of a document that cannot be read. */

import { make, makeButton, makeChoice, makeLabel } from "./dom.js";
import { makeExcerpt, namePlace } from "./excerpt.js";
import { describe } from "./notices.js";

/** @typedef {import("./types.js").OpenOptions} OpenOptions */

/**
 * @param {string} name
 * @param {import("./engine.js").EngineError} error
 * @param {(options: OpenOptions) => void} readAgain
 * @param {() => void} close
 */
export function makeProblem(name, error, readAgain, close) {
  const card = make(
    "div",
    { class: "card problem", role: "alert" },
    make("h1", {}, make("bdi", {}, name), " cannot be read"),
    ...describe(error),
  );
  if (error.line > 0)
    card.append(make("p", { class: "soft" }, `${namePlace(error)}:`));
  if (error.excerpt && hasText(error.excerpt)) card.append(makeExcerpt(error.excerpt, error.line));
  return make(
    "section",
    { class: "unread", "aria-label": name },
    card,
    makeAgain(readAgain),
    make("p", {}, makeButton("Close", close)),
  );
}

/** @param {import("./types.js").Excerpt} excerpt of a line, which may be empty */
function hasText({ before, marked, after }) {
  return before + marked + after !== "";
}

/** @param {(options: OpenOptions) => void} readAgain */
function makeAgain(readAgain) {
  const form = makeChoice([
    ["csv", "table (CSV)"],
    ["json", "JSON"],
  ]);
  const separator = makeChoice([
    ["", "find out"],
    [",", "comma"],
    [";", "semicolon"],
    ["\t", "tab"],
  ]);
  const decimal = makeChoice([
    ["", "find out"],
    [".", "point"],
    [",", "comma"],
  ]);
  const submit = (/** @type {Event} */ event) => {
    event.preventDefault();
    const told = { form: form.value, separator: separator.value, decimal: decimal.value };
    readAgain(/** @type {OpenOptions} */ (told));
  };
  return make(
    "details",
    { class: "again" },
    make("summary", {}, "Read it as a table or as JSON instead"),
    make(
      "form",
      { class: "filter", submit },
      makeLabel("Read it as", form),
      makeLabel("Between values", separator),
      makeLabel("Decimal sign", decimal),
      make("button", { type: "submit" }, "Read again"),
    ),
  );
}
