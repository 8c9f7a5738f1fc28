// @ts-check
/** What is shown in place of a document that cannot be read. */

import { make, makeButton, makeChoice, makeLabel } from "./dom.js";
import { makeExcerpt } from "./excerpt.js";
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
  if (error.excerpt) card.append(makeExcerpt(error.excerpt, error.line));
  return make(
    "section",
    { class: "unread", "aria-label": name },
    card,
    makeAgain(readAgain),
    make("p", {}, makeButton("Close", close)),
  );
}

/**
 * What is shown in place of a document that the engine cannot go on with.
 * @param {string} name
 * @param {import("./engine.js").EngineError} error
 * @param {boolean} wasChanged whether something was not saved
 * @param {() => void} openAgain
 * @param {() => void} close
 */
export function makeFailure(name, error, wasChanged, openAgain, close) {
  const told = wasChanged
    ? "It can be opened again as it was read. What was changed since it was saved is lost."
    : "It can be opened again as it was read.";
  return make(
    "section",
    { class: "unread", "aria-label": name },
    make(
      "div",
      { class: "card problem", role: "alert" },
      make("h1", {}, make("bdi", {}, name), " cannot be used any more"),
      ...describe(error),
      make("p", {}, told),
    ),
    make(
      "p",
      { class: "ways-on" },
      makeButton("Open again", openAgain, { class: "primary" }),
      makeButton("Close", close),
    ),
  );
}

/** @param {import("./engine.js").EngineError} error which may be about all of its line */
function namePlace({ line, column }) {
  return column > 0 ? `Line ${line}, column ${column}` : `Line ${line}`;
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
