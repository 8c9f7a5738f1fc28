// Random edits, done in the engine and saved once, against the same edits by runs of the program on a
// file. KVFOUND_SEQUENCES says how many for each document, KVFOUND_SEED where they start; with KVFOUND_EACH they
// are compared after each edit, which tells the one that differs.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { catchError, documents, encode, engine, makeFolder } from "./support.mjs";

const sequences = Number(process.env.KVFOUND_SEQUENCES ?? 4);
const firstSeed = Number(process.env.KVFOUND_SEED ?? 1);
const length = 7;

/** Numbers from 0 to 1 that are the same for the same seed. */
function makeRandom(seed) {
  let state = seed;
  return () => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return ((state ^ (state >>> 15)) >>> 0) / 2 ** 32;
  };
}

/** Choices by a seed. */
class Dice {
  constructor(seed) {
    this.random = makeRandom(seed);
    for (let i = 0; i < 3; ++i) this.random();
  }

  upTo(most) {
    return Math.floor(this.random() * (most + 1));
  }

  pick(list) {
    return list[this.upTo(list.length - 1)];
  }

  /** One to three of them, in their order. */
  pickSome(list) {
    const wanted = new Set(Array.from({ length: 1 + this.upTo(2) }, () => this.pick(list)));
    return list.filter((item) => wanted.has(item));
  }
}

const texts = {
  integer: ["1", "2", "7", "40", "41"],
  text: ["Neu", "New", "a&b", "<b>", '"quoted"', "Strip footing, axis A", "Found0010", " x "],
  stiffness: ["", "", "0", "1", "12.5", "3e5", "-1"],
  factor: ["0", "0.5", "1"],
};

function pickText(dice, { kind, choices }) {
  return dice.pick(choices.length > 0 ? choices : texts[kind]);
}

/** Each of these does the same to a document in the engine and, by arguments, with the program. */
const edits = {
  set(dice, doc) {
    const numbers = dice.pickSome([...doc.values("number")]);
    const column = dice.pick(doc.columns());
    const text = pickText(dice, column);
    return {
      arguments: ["set", "FILE", numbers.join(","), `${column.key}=${text}`],
      act: async () => doc.set(numbers.map((number) => doc.values("number").indexOf(number)), column.key, text),
    };
  },
  add(dice, doc) {
    const values = { name: dice.pick(texts.text) };
    const fields = doc.columns().filter(({ key }) => key !== "name" && key !== "generated");
    for (let i = dice.upTo(3); i > 0; --i) {
      const column = dice.pick(fields);
      values[column.key] = pickText(dice, column);
    }
    const { name, ...others } = values;
    const assignments = Object.entries(others).map(([key, text]) => `${key}=${text}`);
    return { arguments: ["add", "FILE", name, ...assignments], act: async () => doc.add(values) };
  },
  remove(dice, doc) {
    const numbers = dice.pickSome([...doc.values("number")]);
    return {
      arguments: ["remove", "FILE", numbers.join(",")],
      act: async () => doc.remove(numbers.map((number) => doc.values("number").indexOf(number))),
    };
  },
  prune(dice, doc) {
    const gone = new Set(dice.pickSome([...doc.values("number")]));
    const usedBy = [...doc.values("number")].filter((number) => !gone.has(number)).map((number) => `${number}\n`).join("");
    const keepNumbers = dice.pick([true, false]);
    const generated = dice.pick([true, false]);
    const words = [...(keepNumbers ? ["--keep-numbers"] : []), ...(generated ? ["--generated"] : [])];
    return {
      files: { list: usedBy },
      arguments: ["prune", "FILE", "FILE", "--used-by", "list", ...words],
      act: () => doc.prune({ usedBy, keepNumbers, generated }),
    };
  },
  merge(dice) {
    const row = () => `${dice.pick(texts.integer)},${JSON.stringify(dice.pick(["New", "Other", "Strip footing, axis D"]))},${dice.pick(["1", "2.5", ""])},,7\n`;
    const text = `number,name,areaX,areaY,areaZ\n${row()}`;
    const onClash = dice.pick(["refuse", "rename", "renumber", "skip", "replace"]);
    const rule = onClash === "refuse" ? [] : ["--on-clash", onClash];
    return {
      files: { "other.csv": text },
      arguments: ["merge", "other.csv", "FILE", ...rule],
      act: async (doc) => doc.merge(await engine.open("other.csv", encode(text)), { onClash }),
    };
  },
};
const kinds = ["set", "set", "set", "add", "add", "remove", "prune", "merge", "undo", "redo"];

const element = /<(?:FOUND|\w*Bedding) (?:[^>"']|"[^"]*"|'[^']*')*>/g;
const number = / N(?:umber|UMBER)="(\d+)"/;

/**
 * The text of a document, with a mark instead of the elements of each of these rows. Where elements
 * have no numbers, they stand in the order of the rows.
 */
function markRows(bytes, rows) {
  let place = 0;
  const text = bytes.toString("latin1").replace(element, (found) => {
    const row = rows[place++];
    const own = number.exec(found)?.[1] ?? row.number;
    return rows.some((other) => other.isMarked && other.number === own) ? `<row ${own}>` : found;
  });
  return text.replace(/(<row \d+>)\s*\1/g, "$1");
}

/** A document in the engine and the file that the program changes, whose versions are kept here. */
class Pair {
  constructor(name, doc) {
    this.name = name;
    this.doc = doc;
    this.folder = makeFolder();
    this.rows = this.readRows().map((row) => ({ ...row, changes: 0 }));
    this.done = [{ bytes: documents.get(name), rows: this.rows }];
    this.undone = [];
    this.told = [];
  }

  readRows() {
    return this.doc.rows(this.doc.sort()).map(({ cells: [number, ...others] }) => ({ number, others }));
  }

  /**
   * Counts how often each row has changed, a new one once when it came. One whose place changes may be
   * written, too: names that its form leaves out tell the place.
   */
  countChanges(before) {
    const after = this.readRows();
    const places = new Map(before.map((row) => [row.others[0], row]));
    return after.map((row, place) => {
      const old = after.length < before.length ? places.get(row.others[0]) : before[place];
      if (!old) return { ...row, changes: 1 };
      const stays = before.indexOf(old) === place && old.number === row.number;
      const isSame = stays && `${old.others}` === `${row.others}`;
      return { ...row, changes: old.changes + (isSame ? 0 : 1) };
    });
  }

  step(kind) {
    const [from, to] = kind === "undo" ? [this.done, this.undone] : [this.undone, this.done];
    if (from.length === (kind === "undo" ? 1 : 0)) return;
    this.told.push(kind);
    this.doc[kind]();
    to.push(from.pop());
  }

  async edit({ files = {}, arguments: given, act }) {
    this.told.push(`${given.join(" ")} ${JSON.stringify(files)}`);
    const { bytes, rows } = this.done.at(-1);
    const { status, stderr } = this.run(bytes, files, given);
    const change = await act(this.doc).catch((error) => error);
    if (change instanceof engine.EngineError) {
      assert.equal(status, 2, `${this}\n${change.message}`);
    } else if (status === 2) {
      await this.requireLoss(stderr);
    } else if (change.label !== "") {
      const edited = fs.readFileSync(path.join(this.folder, this.name));
      this.done.push({ bytes: edited, rows: this.countChanges(rows) });
      this.undone = [];
    }
  }

  run(bytes, files, given) {
    for (const [name, text] of Object.entries(files)) fs.writeFileSync(path.join(this.folder, name), text);
    fs.writeFileSync(path.join(this.folder, this.name), bytes);
    const options = given.map((argument) => (argument === "FILE" ? this.name : argument));
    const { status, stderr } = spawnSync(process.env.KVFOUND_PROGRAM, options, { cwd: this.folder });
    return { status, stderr: `${stderr}` };
  }

  /**
   * The engine takes what cannot be saved before something else comes, such as a foundation without
   * the stiffness that its form needs, and then tells what the program tells: the first loss, and
   * besides how many more there are.
   */
  async requireLoss(stderr) {
    const error = await catchError(() => this.doc.save());
    const message = error.message.replace(/, and \d+ more$/, "");
    assert.ok(stderr.endsWith(` was not written, since ${message}\n`), `${this}\n${stderr}${message}`);
    this.doc.undo();
    this.undone = [];
  }

  /**
   * One save writes what a foundation is in the end, and a new one as the program adds it with all
   * that it is then. Values that come and go again leave traces where each is written by itself:
   * attributes that tell nothing, in another order. So elements of what changed twice are compared as
   * they are read, all others byte by byte.
   */
  async check() {
    const bytes = Buffer.from(await this.doc.save());
    const { bytes: expected, rows } = this.done.at(-1);
    if (bytes.equals(expected)) return;
    const marked = rows.map((row) => ({ ...row, isMarked: row.changes > 1 }));
    assert.equal(markRows(bytes, marked), markRows(expected, marked), `${this}`);
    const read = await engine.open(this.name, expected);
    const cells = (doc) => doc.rows(doc.sort()).map((row) => row.cells.map((cell) => (cell === "-" ? "0" : cell)));
    assert.deepEqual(cells(await engine.open(this.name, bytes)), cells(read), `${this}`);
    assert.deepEqual(cells(this.doc), cells(read), `${this}`);
  }

  toString() {
    return [this.name, ...this.told].join("\n  ");
  }
}

for (const name of documents.keys())
  test(`${name}: many edits and one save give what runs of the program give`, async () => {
    for (let seed = firstSeed; seed < firstSeed + sequences; ++seed) {
      const dice = new Dice(seed);
      const pair = new Pair(name, await engine.open(name, documents.get(name)));
      for (let i = 0; i < length && pair.doc.count > 0; ++i) {
        const kind = dice.pick(kinds);
        if (edits[kind]) await pair.edit(edits[kind](dice, pair.doc));
        else pair.step(kind);
        if (process.env.KVFOUND_EACH) await pair.check();
      }
      await pair.check();
      pair.doc.close();
    }
  });
