// @ts-check
import { make } from "./dom.js";

/**
 * Part of a line, with what is meant marked in it.
 * @param {import("./types.js").Excerpt} excerpt
 * @param {number} line
 */
export function makeExcerpt(excerpt, line) {
  const { before, marked, after, isCutBefore, isCutAfter } = excerpt;
  return make(
    "pre",
    { class: "excerpt", tabindex: 0, role: "group", "aria-label": `Line ${line}` },
    make("span", { class: "number", "aria-hidden": "true" }, String(line)),
    make(
      "code",
      {},
      isCutBefore ? "… " : "",
      before,
      make("mark", {}, marked === "" ? "\u00A0" : marked),
      after,
      isCutAfter ? " …" : "",
    ),
  );
}

/** @param {{line: number, column: number}} place which may be all of its line */
export function namePlace({ line, column }) {
  return column > 0 ? `Line ${line}, column ${column}` : `Line ${line}`;
}
