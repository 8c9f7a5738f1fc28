// @ts-check
/**
 * Instances of the engine, and how requests and answers come through their memory. The page holds
 * the code, packed, in an element of its own.
 */

import { EngineError } from "./engine_error.js";

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

/**
 * Reads the code once, for all instances.
 * @param {BufferSource | undefined} code
 */
export async function prepare(code) {
  module = await WebAssembly.compile(code ?? (await unpack()));
}

/** The code that the page holds. */
async function unpack() {
  const text = document.getElementById("engine")?.textContent ?? "";
  const packed = Uint8Array.from(atob(text.trim()), (character) => character.charCodeAt(0));
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
  return new Response(stream).arrayBuffer();
}

/** @type {Instance | null} */
let spare = null;

export class Instance {
  /** @type {Exports} */
  #exports;

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

  /** Sees to it that there is one to take at once, unless the browser has no memory for it. */
  static async prepareSpare() {
    try {
      spare ??= await Instance.create();
    } catch {
      // The next one who needs it tries again.
    }
  }

  /** Not every browser makes one without a promise, so another one is made for the next time. */
  static takeSpare() {
    const taken = spare;
    spare = null;
    Instance.prepareSpare();
    if (taken === null) throw new Error("there is no other engine yet");
    return taken;
  }

  /**
   * Gives what the engine answers to a request.
   * @param {string} name
   * @param {object} [values]
   * @returns {any}
   */
  ask(name, values) {
    return JSON.parse(decode(this.send(makeText(name, values))));
  }

  /**
   * Gives the bytes of an answer. Throws EngineError where the engine tells an error; after anything
   * else that it throws the instance cannot be used.
   * @param {string} text from makeText()
   * @param {Uint8Array} [bytes] of a document
   * @returns {Uint8Array}
   */
  send(text, bytes) {
    const engine = this.#exports;
    if (bytes !== undefined) write(engine, engine.makeRoomForBytes(bytes.length), bytes);
    const values = new TextEncoder().encode(text);
    write(engine, engine.makeRoomForValues(values.length), values);
    const isDone = engine.ask() !== 0;
    const answer = copy(engine, engine.getAnswer(), engine.getAnswerSize());
    engine.forgetAnswer();
    if (isDone) return answer;
    const { message, ...place } = JSON.parse(decode(answer));
    throw new EngineError(message, place);
  }
}

/**
 * A request as the engine reads it.
 * @param {string} name
 * @param {object} [values]
 */
export function makeText(name, values = {}) {
  return JSON.stringify({ ...values, request: name });
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
export function decode(bytes) {
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
