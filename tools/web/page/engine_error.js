// @ts-check
/** Errors of the engine. */

/** @typedef {import("./types.js").Excerpt} Excerpt */

/** Why something cannot be done, in words for the user. */
export class EngineError extends Error {
  /**
   * @param {string} message a sentence, safe to show
   * @param {{line?: number, column?: number, excerpt?: Excerpt, details?: string[], isFatal?: boolean}}
   *   [place]
   */
  constructor(message, place = {}) {
    super(message);
    this.name = "EngineError";
    /** In the document that cannot be read; 0 where it is about all of it. */
    this.line = place.line ?? 0;
    this.column = place.column ?? 0;
    /** The line, where there is one. */
    this.excerpt = place.excerpt ?? null;
    /** A line each, where there is more to tell, such as all losses or clashes. */
    this.details = place.details ?? [];
    /**
     * Whether the engine failed so that the document cannot be used for now. It is kept with all
     * changes, and each further call tries again. Always true once it is closed.
     */
    this.isFatal = place.isFatal ?? false;
  }
}
