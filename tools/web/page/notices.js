// @ts-check
/** What happened, for eyes and for screen readers. */

import { get, make, makeButton, paint } from "./dom.js";
import { EngineError } from "./engine.js";

const seconds = 6;

/** @param {string} sentence to be read aloud only */
export function say(sentence) {
  const place = get("said", HTMLElement);
  // The same sentence twice is read twice.
  place.textContent = place.textContent === sentence ? `${sentence}\u00A0` : sentence;
}

/** @param {string} sentence shown for a while, or until something else is told */
export function tell(sentence) {
  const notice = make("p", { class: "notice" }, sentence);
  const place = get("notices", HTMLElement);
  for (const other of place.querySelectorAll("p.notice")) other.remove(); // or they would pile up
  place.append(notice);
  say(sentence);
  setTimeout(() => notice.remove(), 1000 * seconds);
}

let tryAgain = () => {};

/** @param {() => void} act what looks again at what is shown, where the engine could not go on */
export function setTryAgain(act) {
  tryAgain = act;
}

/**
 * Shows what could not be done until the user has seen it.
 * @param {unknown} error
 */
export function tellProblem(error) {
  const notice = make("div", { class: "notice problem", role: "alert" }, ...describe(error));
  const buttons = make("p", { class: "together" });
  if (error instanceof EngineError && error.isFatal) {
    const again = () => {
      notice.remove();
      tryAgain();
    };
    buttons.append(makeButton("Try again", again));
  }
  buttons.append(makeButton("Close", () => notice.remove(), { class: "plain" }));
  notice.append(buttons);
  const place = get("notices", HTMLElement);
  for (const other of place.querySelectorAll(".problem"))
    if (other.textContent === notice.textContent) other.remove(); // told once is enough
  place.append(notice);
}

/**
 * The sentence of an error, and its details below.
 * @param {unknown} error
 */
export function describe(error) {
  const message = error instanceof Error ? error.message : String(error);
  const parts = [make("p", { class: "sentence" }, capitalise(message))];
  const details = error instanceof EngineError ? error.details : [];
  return details.length === 0 ? parts : [...parts, listLines(details)];
}

/**
 * What stands where something could not be shown.
 * @param {string} sentence
 * @param {() => void} again
 */
export function makeFailed(sentence, again) {
  return make("div", { class: "empty" }, make("p", {}, sentence), makeButton("Try again", again));
}

const mostLines = 200;

/** @param {string[]} lines */
export function listLines(lines) {
  const items = lines.slice(0, mostLines).map((line) => make("li", {}, line));
  const left = lines.length - items.length;
  if (left > 0) items.push(make("li", { class: "soft" }, `and ${left} more`));
  return make("ul", { class: "lines", tabindex: 0 }, ...items);
}

/**
 * A sentence of the program stands behind the name of a file and so starts small. What is quoted of
 * a document stays as it is.
 * @param {string} sentence
 */
export function capitalise(sentence) {
  return sentence.replace(
    /^[a-z]+(?=[ ,])/,
    (word) => word.charAt(0).toUpperCase() + word.slice(1),
  );
}

/**
 * Tells what is being done while it is, and what went wrong.
 * @template T
 * @param {string} sentence
 * @param {() => Promise<T> | T} work
 * @returns {Promise<T | undefined>}
 */
export async function during(sentence, work) {
  const place = get("working", HTMLElement);
  place.textContent = sentence;
  place.hidden = false;
  await paint();
  try {
    return await work();
  } catch (error) {
    tellProblem(error);
    return undefined;
  } finally {
    place.hidden = true;
  }
}
