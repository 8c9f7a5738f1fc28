// @ts-check
import { make, makeButton, makeId } from "./dom.js";
import { describe } from "./notices.js";

/** @type {Dialog | null} the one that is open, on top where there are several */
let open = null;

export function getOpenDialog() {
  return open;
}

/** A dialog with what is asked in its body. It leaves the page when it is answered. */
export class Dialog {
  /** @type {(answer: boolean) => void} */
  #answer = () => {};
  /** @type {Dialog | null} below this one */
  #below = null;

  /**
   * @param {string} title
   * @param {string} action what the button says that does it
   * @param {() => Promise<boolean | void> | boolean | void} act does it; false keeps the dialog open
   */
  constructor(title, action, act) {
    const id = makeId();
    this.body = make("div", { class: "body" });
    this.problem = make("div", { class: "problem", role: "alert" });
    this.action = make("button", { type: "submit", class: "primary" }, action);
    this.foot = make(
      "div",
      { class: "foot" },
      makeButton("Cancel", () => this.close(false)),
      this.action,
    );
    const form = make(
      "form",
      { submit: (/** @type {Event} */ event) => this.#submit(event, act) },
      make("h2", { id }, title),
      this.body,
      this.problem,
      this.foot,
    );
    this.element = make("dialog", { "aria-labelledby": id }, form);
    this.element.addEventListener("close", () => this.#leave());
  }

  /** @returns {Promise<boolean>} whether it was done */
  show() {
    const before = document.activeElement;
    this.#below = open;
    open = this;
    document.body.append(this.element);
    this.element.showModal();
    return new Promise((resolve) => {
      this.#answer = (isDone) => {
        // The browser gave it back at once; since then a quick user may have gone elsewhere.
        const isLost = document.activeElement === document.body;
        if (isLost && before instanceof HTMLElement && before.isConnected) before.focus();
        resolve(isDone);
      };
    });
  }

  /** @param {boolean} isDone */
  close(isDone) {
    this.element.returnValue = isDone ? "done" : "";
    this.element.close();
  }

  /** @param {unknown} error */
  tell(error) {
    this.problem.replaceChildren(...describe(error));
  }

  #leave() {
    this.element.remove();
    open = this.#below;
    this.#answer(this.element.returnValue === "done");
  }

  /**
   * @param {Event} event
   * @param {() => Promise<boolean | void> | boolean | void} act
   */
  async #submit(event, act) {
    event.preventDefault();
    this.problem.replaceChildren();
    try {
      if ((await act()) !== false) this.close(true);
    } catch (error) {
      this.tell(error);
    }
  }
}

/**
 * Asks between some ways to go on.
 * @param {string} title
 * @param {string} sentence
 * @param {string[]} answers the last one is what most will want
 * @returns {Promise<string>} "" for none of them
 */
export async function choose(title, sentence, answers) {
  let chosen = "";
  const last = answers[answers.length - 1];
  const dialog = new Dialog(title, last, () => {
    chosen = last;
  });
  dialog.body.append(make("p", {}, sentence));
  for (const answer of answers.slice(0, -1)) {
    const take = () => {
      chosen = answer;
      dialog.close(true);
    };
    dialog.action.before(makeButton(answer, take));
  }
  await dialog.show();
  return chosen;
}
