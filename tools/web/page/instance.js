// @ts-check
/** An instance of the engine, and how requests and answers come through its memory. */

/**
 * @param {BufferSource | undefined} code
 * @param {typeof import("./engine.js").EngineError} error
 * @returns {Promise<void>}
 */
export async function prepare(code, error) {
  throw new error(`not built yet: ${code}`);
}

export class Instance {
  /** @returns {Promise<Instance>} */
  static async create() {
    throw new Error("not built yet");
  }

  /**
   * @param {string} name
   * @param {object} [request]
   * @param {Uint8Array} [bytes]
   * @returns {any}
   */
  ask(name, request, bytes) {
    throw new Error(`not built yet: ${name} ${request} ${bytes}`);
  }

  /**
   * @param {string} name
   * @param {object} [request]
   * @param {Uint8Array} [bytes]
   * @returns {Uint8Array}
   */
  take(name, request, bytes) {
    throw new Error(`not built yet: ${name} ${request} ${bytes}`);
  }

  close() {}
}
