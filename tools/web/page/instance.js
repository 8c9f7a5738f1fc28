// @ts-check
/**
 * Instances of the engine, and how requests and answers come through their memory. The page holds
 * the code, packed, in an element of its own.
 */

/**
 * @typedef {object} Exports
 * @property {WebAssembly.Memory} memory
 * @property {() => void} _initialize
 * @property {(size: number) => number} makeRoomForValues
 * @property {(size: number) => number} makeRoomForBytes
 * @property {() => number} ask
 * @property {() => number} getAnswer
 * @property {() => number} getAnswerSize
 * @property {() => void} forgetAnswer
 */

/** @type {WebAssembly.Module} */
let module;
/** @type {typeof import("./engine.js").EngineError} */
let EngineError;

/**
 * Reads the code once, for all instances.
 * @param {BufferSource | undefined} code
 * @param {typeof import("./engine.js").EngineError} error what errors are told with
 */
export async function prepare(code, error) {
  EngineError = error;
  module = await WebAssembly.compile(code ?? (await unpack()));
}

/** The code that the page holds. */
async function unpack() {
  const text = document.getElementById("engine")?.textContent ?? "";
  const packed = Uint8Array.from(atob(text.trim()), (character) => character.charCodeAt(0));
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
  return new Response(stream).arrayBuffer();
}

export class Instance {
  /** @type {Exports | null} */
  #exports;
  /** Why nothing more can be asked. */
  #ending = "the document is closed";

  /** @param {Exports} exports */
  constructor(exports) {
    this.#exports = exports;
    exports._initialize();
  }

  static async create() {
    /** @type {{exports?: Exports}} */
    const made = {};
    const instance = await WebAssembly.instantiate(module, makeImports(made));
    made.exports = /** @type {Exports} */ (/** @type {unknown} */ (instance.exports));
    return new Instance(made.exports);
  }

  /**
   * Gives what the engine answers to a request.
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
   * @returns {Uint8Array}
   */
  take(name, values = {}, bytes = undefined) {
    const engine = this.#exports;
    if (engine === null) throw new EngineError(this.#ending, { isFatal: true });
    try {
      if (bytes !== undefined) write(engine, engine.makeRoomForBytes(bytes.length), bytes);
      const text = new TextEncoder().encode(JSON.stringify({ ...values, request: name }));
      write(engine, engine.makeRoomForValues(text.length), text);
      const isDone = engine.ask() !== 0;
      const answer = copy(engine, engine.getAnswer(), engine.getAnswerSize());
      engine.forgetAnswer();
      if (isDone) return answer;
      const { message, ...place } = JSON.parse(decode(answer));
      throw new EngineError(message, place);
    } catch (error) {
      throw error instanceof EngineError ? error : this.#fail(error);
    }
  }

  /** Lets the memory go. */
  close() {
    this.#exports = null;
  }

  /**
   * The engine stopped in the middle of its work and cannot go on.
   * @param {unknown} error
   */
  #fail(error) {
    this.close();
    this.#ending = `the engine failed at this document, which must be opened again (${error})`;
    return new EngineError(this.#ending, { isFatal: true });
  }
}

/**
 * @param {Exports} engine
 * @param {number} place
 * @param {Uint8Array} bytes
 */
function write(engine, place, bytes) {
  if (place === 0) throw new EngineError("is too large for the memory of this page");
  new Uint8Array(engine.memory.buffer, place, bytes.length).set(bytes);
}

/**
 * @param {Exports} engine
 * @param {number} place
 * @param {number} size
 */
function copy(engine, place, size) {
  return new Uint8Array(engine.memory.buffer, place, size).slice();
}

/** @param {Uint8Array} bytes */
function decode(bytes) {
  return new TextDecoder("utf-8", { ignoreBOM: true }).decode(bytes);
}

/**
 * What the engine needs of a system: the time of the day here. There are no files.
 * @param {{exports?: Exports}} made whose exports come later
 */
function makeImports(made) {
  const memory = () => /** @type {Exports} */ (made.exports).memory.buffer;
  const zone = new TextEncoder().encode(`TZ=${nameZone()}\0`);
  /** @type {Record<string, Function>} */
  const known = {
    /** @type {(clock: number, precision: bigint, place: number) => number} */
    clock_time_get(_clock, _precision, place) {
      new DataView(memory()).setBigUint64(place, BigInt(Date.now()) * 1000000n, true);
      return 0;
    },
    /** @type {(count: number, size: number) => number} */
    environ_sizes_get(count, size) {
      new DataView(memory()).setUint32(count, 1, true);
      new DataView(memory()).setUint32(size, zone.length, true);
      return 0;
    },
    /** @type {(list: number, texts: number) => number} */
    environ_get(list, texts) {
      new DataView(memory()).setUint32(list, texts, true);
      new Uint8Array(memory(), texts, zone.length).set(zone);
      return 0;
    },
  };
  /** @type {WebAssembly.Imports} */
  const imports = {};
  for (const { module: from, name } of WebAssembly.Module.imports(module)) {
    imports[from] ??= {};
    imports[from][name] = known[name] ?? makeStub(name);
  }
  return imports;
}

/** The time zone as POSIX writes it, such as <here>-02:00 east of Greenwich. */
function nameZone() {
  const minutes = new Date().getTimezoneOffset();
  const pad = (/** @type {number} */ number) => String(Math.floor(number)).padStart(2, "0");
  const distance = Math.abs(minutes);
  return `<here>${minutes < 0 ? "-" : ""}${pad(distance / 60)}:${pad(distance % 60)}`;
}

/** @param {string} name */
function makeStub(name) {
  const notFound = -44; // ENOENT, to those who ask for a file
  return () => (name.startsWith("__syscall") ? notFound : 0);
}
