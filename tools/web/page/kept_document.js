// @ts-check
/**
 * A document that outlives the engine. Should that stop in the middle of its work, another instance
 * reads the same bytes, does the same changes and goes on from there.
 */

import { EngineError } from "./engine_error.js";
import { Instance, decode, makeText } from "./instance.js";

/** @typedef {import("./types.js").Change} Change */
/** @typedef {import("./types.js").State} State */
/**
 * @typedef {object} Sent a request, as it was sent
 * @property {string} text
 * @property {Uint8Array} [bytes]
 */

/** What requests do, in words; the others look at the document. */
const deeds = new Map([
  ["open", "reading the document"],
  ["set", "setting a value"],
  ["fill", "pasting values"],
  ["add", "adding a foundation"],
  ["remove", "removing foundations"],
  ["previewPrune", "pruning"],
  ["prune", "pruning"],
  ["undo", "undoing a change"],
  ["redo", "doing a change again"],
  ["check", "checking"],
  ["report", "making the report"],
  ["compare", "comparing"],
  ["comparePage", "comparing"],
  ["previewMerge", "merging"],
  ["merge", "merging"],
  ["save", "saving"],
]);

const never = -1;

export class KeptDocument {
  /** @type {Instance | null} */
  #instance = null;
  #isClosed = false;
  /** @type {Sent} */
  #opening;
  /**
   * What was changed and then what was undone of it, a request each.
   * @type {Sent[]}
   */
  #steps = [];
  /** How many of them are done. */
  #done = 0;
  /** How many were done when the document was saved. */
  #saved = 0;

  /**
   * @param {Sent} opening
   * @param {Instance} instance
   */
  constructor(opening, instance) {
    this.#opening = opening;
    try {
      instance.send(opening.text, opening.bytes);
      /** @type {State} as the page knows it */
      this.state = instance.ask("state");
    } catch (error) {
      if (error instanceof EngineError) throw error;
      throw new EngineError(tellFailure("open", error));
    }
    this.#instance = instance;
  }

  /**
   * @param {object} values
   * @param {Uint8Array} bytes
   */
  static async open(values, bytes) {
    const opening = { text: makeText("open", values), bytes };
    return new KeptDocument(opening, await Instance.create());
  }

  /**
   * Gives what the engine answers to a request that changes nothing.
   * @param {string} name
   * @param {object} [values]
   * @param {Uint8Array} [bytes] of a document
   * @returns {any}
   */
  ask(name, values, bytes) {
    return JSON.parse(decode(this.take(name, values, bytes)));
  }

  /**
   * The same for requests that are answered with bytes.
   * @param {string} name
   * @param {object} [values]
   * @param {Uint8Array} [bytes] of a document
   */
  take(name, values, bytes) {
    return this.#send(name, { text: makeText(name, values), bytes });
  }

  /**
   * Asks for a change, which is kept once it is done.
   * @param {string} name
   * @param {object} [values]
   * @param {Uint8Array} [bytes] of a document
   * @returns {Change}
   */
  change(name, values, bytes) {
    const sent = { text: makeText(name, values), bytes };
    try {
      const change = JSON.parse(decode(this.#send(name, sent)));
      const state = this.ask("state");
      this.#keep(name, sent, change);
      this.state = state;
      return change;
    } catch (error) {
      this.#requireUnchanged(name, error);
      throw error;
    }
  }

  markSaved() {
    this.ask("markSaved");
    this.#saved = this.#done;
    this.state = this.ask("state");
  }

  /** Lets the memory go. */
  close() {
    this.#isClosed = true;
    this.#instance = null;
    this.#opening = { text: "" };
    this.#steps = [];
  }

  /**
   * @param {string} name
   * @param {Sent} sent
   */
  #send(name, sent) {
    if (this.#isClosed) throw new EngineError("the document is closed", { isFatal: true });
    const instance = this.#instance ?? this.#startAnew("the engine failed before");
    try {
      return instance.send(sent.text, sent.bytes);
    } catch (error) {
      throw error instanceof EngineError ? error : this.#goOn(name, error);
    }
  }

  /**
   * @param {string} name
   * @param {Sent} sent
   * @param {Change} change what it did
   */
  #keep(name, sent, change) {
    if (change.label === "") return; // nothing
    if (name === "undo") this.#done -= 1;
    else if (name === "redo") this.#done += 1;
    else {
      if (this.#saved > this.#done) this.#saved = never;
      this.#steps.splice(this.#done, Infinity, sent);
      this.#done += 1;
    }
  }

  /**
   * A change can fail when it is done, where there is no memory to tell about it.
   * @param {string} name
   * @param {unknown} error
   */
  #requireUnchanged(name, error) {
    if (this.#instance === null) return;
    if (this.ask("state").version !== this.state.version) throw this.#goOn(name, error);
  }

  /**
   * Goes on after the engine failed.
   * @param {string} name of the request that failed
   * @param {unknown} error
   */
  #goOn(name, error) {
    const failure = tellFailure(name, error);
    this.#startAnew(failure);
    return new EngineError(
      `${failure} and was started anew: the document stands as it did before`,
    );
  }

  /**
   * Makes another instance, which comes as far as the one that failed.
   * @param {string} failure
   */
  #startAnew(failure) {
    this.#instance = null; // whose memory can go before the other one needs some
    try {
      const instance = Instance.takeSpare();
      this.#replay(instance);
      const state = instance.ask("state");
      if (describe(state) !== describe(this.state))
        throw new Error("the same changes gave another document");
      this.state = state;
      this.#instance = instance;
      return instance;
    } catch (error) {
      const kept = this.state.isChanged
        ? "the document and its unsaved changes are kept, but cannot be shown or saved for now"
        : "the document cannot be shown for now";
      throw new EngineError(
        `${failure}, and again when it was started anew (${tellReason(error)}): ${kept}. ` +
          "Closing other documents gives memory back; whatever is done next tries again",
        { isFatal: true },
      );
    }
  }

  /** @param {Instance} instance */
  #replay(instance) {
    const send = (/** @type {Sent} */ { text, bytes }) => instance.send(text, bytes);
    const markAt = (/** @type {number} */ done) => {
      if (done === this.#saved) instance.ask("markSaved");
    };
    send(this.#opening);
    // What was saved is out of reach when another change takes its place.
    if (this.#saved === never) {
      send(this.#steps[0]);
      instance.ask("markSaved");
      instance.ask("undo");
    }
    this.#steps.forEach((step, done) => {
      markAt(done);
      send(step);
    });
    markAt(this.#steps.length);
    for (let done = this.#steps.length; done > this.#done; --done) instance.ask("undo");
  }
}

/**
 * @param {string} name of the request that failed
 * @param {unknown} error
 */
function tellFailure(name, error) {
  return `the engine failed at ${deeds.get(name) ?? "looking at the document"} (${tellReason(error)})`;
}

/** @param {unknown} error */
function tellReason(error) {
  return error instanceof EngineError ? error.message : String(error);
}

/** @param {State} state */
function describe({ version: _, ...state }) {
  return JSON.stringify(state);
}
