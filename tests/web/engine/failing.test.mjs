// Where the engine stops in the middle of its work, the document goes on as it stood before.
import assert from "node:assert/strict";
import { test } from "node:test";

import { catchError, documents, encode, engine, measureMemory } from "./support.mjs";

const other = "number,name,areaX\n1,Other,5\n98,New,1\n";
const fresh = "number,name,areaX\n500,Fresh,5\n";
const { instantiate } = WebAssembly;

/** Whether a request fails before it is done, after it, or is done and told to have failed. */
let plan = () => "";

/** Plans these failures, of a request each; nothing else fails. */
function failAt(...failures) {
  plan = (request) => (failures[0]?.[0] === request ? failures.shift()[1] : "");
}

WebAssembly.instantiate = async (...given) => {
  const { exports } = await instantiate(...given);
  let values;
  const makeRoomForValues = (size) => {
    values = [exports.makeRoomForValues(size), size];
    return values[0];
  };
  const ask = () => {
    const text = new TextDecoder().decode(new Uint8Array(exports.memory.buffer, ...values));
    const how = plan(JSON.parse(text).request);
    if (how === "before") throw new WebAssembly.RuntimeError("unreachable");
    const isDone = exports.ask();
    if (how === "after") throw new WebAssembly.RuntimeError("unreachable");
    return how === "told" ? 0 : isDone;
  };
  return { exports: { ...exports, makeRoomForValues, ask } };
};

/** Once all that follows a failure is over, such as making ready for the next one. */
function settle() {
  return new Promise((resolve) => setTimeout(resolve, 20));
}

function openModel() {
  return engine.open("model.xml", documents.get("model.xml"));
}

/** All changes there are, of which the last two are undone. */
async function changeAll(doc) {
  const source = await engine.open("other.csv", encode(other));
  doc.set(0, "areaZ", "5");
  doc.set([1, 2], "areaX", "");
  doc.add({ name: "Neu", areaX: "1" });
  doc.set(doc.count - 1, "areaZ", "2");
  doc.remove([1, 4]);
  await doc.merge(source, { onClash: "renumber" });
  doc.undo();
  doc.redo();
  await doc.prune({ generated: true });
  doc.set(1, "name", "Last but one");
  doc.set(1, "name", "Last");
  doc.undo();
  doc.undo();
}

/** All that can be seen of a document. */
async function look(doc) {
  const { count, isChanged, undoLabel, redoLabel } = doc;
  const bytes = Buffer.from(await doc.save()).toString("latin1");
  return { count, isChanged, undoLabel, redoLabel, rows: doc.rows(doc.sort()), bytes };
}

/** The same after each step back and forth. */
async function lookAtHistory(doc) {
  const seen = [await look(doc)];
  for (; doc.undoLabel !== ""; seen.push(await look(doc))) doc.undo();
  for (; doc.redoLabel !== ""; seen.push(await look(doc))) doc.redo();
  return seen;
}

const failure = /^the engine failed at [a-z ]+ \(RuntimeError: unreachable\) and was started anew: the document stands as it did before$/;

const calls = {
  info: (doc) => doc.info(),
  columns: (doc) => doc.columns(),
  rows: (doc) => doc.rows([0]),
  cell: (doc) => doc.cell(0, "areaZ"),
  values: (doc) => doc.values("areaZ"),
  find: (doc) => doc.find("a"),
  select: (doc) => doc.select({ name: "*" }),
  sort: (doc) => doc.sort("areaZ"),
  set: (doc) => doc.set(0, "areaY", "77"),
  add: (doc) => doc.add({ name: "One more" }),
  remove: (doc) => doc.remove([0]),
  previewPrune: (doc) => doc.previewPrune({ usedBy: "1" }),
  prune: (doc) => doc.prune({ usedBy: "1" }),
  undo: (doc) => doc.undo(),
  redo: (doc) => doc.redo(),
  check: (doc) => doc.check(),
  lines: (doc) => doc.lines(1, 10),
  report: (doc) => doc.report(),
  describe: (doc, source) => source.compare(doc),
  export: (doc, source) => source.compare(doc),
  compare: (doc, source) => doc.compare(source),
  comparePage: (doc, source) => doc.comparePage(source),
  previewMerge: (doc, source) => doc.previewMerge(source),
  merge: (doc, source) => doc.merge(source),
  losses: (doc) => doc.losses("csv"),
  save: (doc) => doc.save("json"),
  suggestName: (doc) => doc.suggestName("csv"),
  markSaved: (doc) => doc.markSaved(),
  state: (doc) => doc.set(0, "areaY", "77"),
};

for (const [request, call] of Object.entries(calls))
  test(`${request} fails, twice, and then does what it would have done`, async () => {
    const [doc, twin] = [await openModel(), await openModel()];
    for (const each of [doc, twin]) await changeAll(each);
    const source = await engine.open("fresh.csv", encode(fresh));
    const before = await look(doc);
    for (const when of ["before", "after"]) {
      failAt([request, when]);
      const error = await catchError(() => call(doc, source));
      assert.match(error.message, failure);
      assert.equal(error.isFatal, false);
      assert.deepEqual(await look(doc), before);
      await settle();
    }
    assert.deepEqual(await call(doc, source), await call(twin, source));
    assert.deepEqual(await lookAtHistory(doc), await lookAtHistory(twin));
  });

test("a change that is done but told to have failed is taken back", async () => {
  const [doc, twin] = [await openModel(), await openModel()];
  for (const each of [doc, twin]) await changeAll(each);
  failAt(["add", "told"]);
  await catchError(() => doc.add({ name: "One more" }));
  assert.deepEqual(await lookAtHistory(doc), await lookAtHistory(twin));
});

const savings = {
  "nothing was saved": () => {},
  "what is saved stands": (doc) => doc.markSaved(),
  "what is saved is undone": (doc) => {
    doc.markSaved();
    doc.undo();
    doc.undo();
  },
  "what is saved was undone and something else done": (doc) => {
    doc.markSaved();
    doc.undo();
    doc.undo();
    doc.set(0, "areaZ", "6");
    doc.undo();
  },
  "what was read stands": (doc) => {
    while (doc.undoLabel !== "") doc.undo();
  },
  "nothing is left of what was saved": (doc) => {
    while (doc.undoLabel !== "") doc.undo();
    doc.set(0, "areaZ", "6");
    doc.markSaved();
    doc.undo();
    doc.set(0, "areaZ", "7");
    doc.undo();
  },
};

for (const [name, save] of Object.entries(savings))
  test(`where ${name}, that is still known after a failure`, async () => {
    const [doc, twin] = [await openModel(), await openModel()];
    for (const each of [doc, twin]) {
      await changeAll(each);
      save(each);
    }
    failAt(["check", "before"]);
    await catchError(() => doc.check());
    assert.deepEqual(await lookAtHistory(doc), await lookAtHistory(twin));
  });

for (const request of ["open", "set", "merge", "undo", "state"])
  test(`${request} fails again when the engine starts anew, and the next call tries again`, async () => {
    const [doc, twin] = [await openModel(), await openModel()];
    for (const each of [doc, twin]) await changeAll(each);
    const source = await engine.open("other.csv", encode(other));
    failAt(["compare", "before"], [request, "before"], ["open", "before"]);
    const error = await catchError(() => doc.compare(source));
    assert.equal(error.isFatal, true);
    assert.match(error.message, /^the engine failed at comparing \(.+\), and again when it was started anew \(.+\): the document and its unsaved changes are kept, but cannot be shown or saved for now\. /);
    assert.equal(doc.isChanged, true);
    await settle();
    const second = await catchError(() => doc.rows([0]));
    assert.equal(second.isFatal, true);
    await settle();
    doc.rows([0]);
    assert.deepEqual(await lookAtHistory(doc), await lookAtHistory(twin));
  });

test("a document that cannot be opened is no document", async () => {
  failAt(["open", "before"]);
  const error = await catchError(openModel);
  assert.equal(error.message, "the engine failed at reading the document (RuntimeError: unreachable)");
  assert.equal((await openModel()).count, 12);
});

test("nothing can be asked of a document that is closed", async () => {
  const doc = await openModel();
  doc.close();
  for (const call of [() => doc.rows([0]), () => doc.set(0, "areaZ", "1"), () => doc.markSaved()])
    assert.equal((await catchError(call)).message, "the document is closed");
});

test("failures leave no memory behind", async () => {
  const rows = Array.from({ length: 20_000 }, (_, i) => `${i + 1},Pad ${i + 1},${i}`);
  const bytes = encode(`number,name,areaZ\n${rows.join("\n")}\n`);
  const use = async (failures) => {
    const doc = await engine.open("soil.csv", bytes);
    doc.set(0, "areaZ", "0.5");
    for (let i = 0; i < failures; ++i) {
      failAt(["check", "before"]);
      await catchError(() => doc.check());
      await settle();
    }
    assert.equal(doc.cell(0, "areaZ"), "0.5");
    doc.close();
  };
  await use(1);
  const before = await measureMemory();
  await use(8);
  const after = await measureMemory();
  assert.ok(after < before + 8e6, `${after - before} bytes are left`);
});
