// What the engine saves is what the program writes for the same edit, byte for byte.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { assertSame, catchError, documents, encode, engine, fail, findNumber, openBoth, read, run } from "./support.mjs";

for (const name of documents.keys()) {
  test(`${name}: is saved as it was read where nothing changed`, async () => {
    const { doc } = await openBoth(name);
    assertSame(await doc.save(), documents.get(name));
  });

  test(`${name}: a value`, async () => {
    const { folder, doc } = await openBoth(name);
    const number = doc.values("number").at(-1);
    run(folder, "set", name, `${number}`, "areaZ=16000.5");
    doc.set(findNumber(doc, number), "areaZ", "16000.5");
    assert.notDeepEqual(read(folder, name), documents.get(name));
    assertSame(await doc.save(), read(folder, name));
  });

  test(`${name}: a name that is markup`, async () => {
    const { folder, doc } = await openBoth(name);
    const text = '<b onclick="x">&amp; \u00e4 \u20ac</b>';
    run(folder, "set", name, `${doc.values("number")[0]}`, `name=${text}`);
    doc.set(0, "name", text);
    assertSame(await doc.save(), read(folder, name));
  });

  test(`${name}: all rows, and nothing`, async () => {
    const { folder, doc } = await openBoth(name);
    run(folder, "set", name, "--name", "*", "areaX=");
    doc.set(doc.select({ name: "*" }), "areaX", "");
    assertSame(await doc.save(), read(folder, name));
  });

  test(`${name}: one more`, async () => {
    const { folder, doc } = await openBoth(name);
    run(folder, "add", name, "Neu", "areaX=1", "areaY=2", "areaZ=3e5");
    const { indexes } = doc.add({ name: "Neu", areaX: "1", areaY: "2", areaZ: "3e5" });
    assert.deepEqual(indexes, [doc.count - 1]);
    assertSame(await doc.save(), read(folder, name));
  });

  test(`${name}: one fewer`, async () => {
    const { folder, doc } = await openBoth(name);
    run(folder, "remove", name, `${doc.values("number")[0]}`);
    doc.remove(0);
    assertSame(await doc.save(), read(folder, name));
  });

  test(`${name}: pruned`, async () => {
    const { folder, doc } = await openBoth(name);
    const usedBy = `${doc.values("number").at(-1)}\n`;
    fs.writeFileSync(path.join(folder, "list"), usedBy);
    run(folder, "prune", name, name, "--used-by", "list");
    const preview = await doc.previewPrune({ usedBy });
    assert.equal(preview.removed.length, doc.count - 1);
    await doc.prune({ usedBy });
    assert.equal(doc.count, 1);
    assertSame(await doc.save(), read(folder, name));
  });

  for (const form of engine.forms()) {
    test(`${name}: as ${form.form}`, async () => {
      const { folder, doc } = await openBoth(name);
      const target = `target${form.ending}`;
      run(folder, "convert", name, target, "--to", form.form);
      const isOwn = form.form === doc.info().form;
      // In its own form a document stays as it is; a new one is another matter.
      assertSame(await doc.save(form.form), isOwn ? documents.get(name) : read(folder, target));
    });
  }

  for (const [language, separator, decimal] of [
    ["German", ";", ","],
    ["English", ",", "."],
  ]) {
    test(`${name}: as a table for ${language} spreadsheets`, async () => {
      const { folder, doc } = await openBoth(name);
      const words = { ";": "semicolon", ",": "comma", ".": "point" };
      // The dialect is of what is read, too, where that is a table.
      if (!name.endsWith(".csv"))
        run(folder, "convert", name, "table.csv", "--to", "csv", "--separator", words[separator], "--decimal", words[decimal]);
      else {
        run(folder, "convert", name, "middle.json", "--to", "json");
        run(folder, "convert", "middle.json", "table.csv", "--to", "csv", "--separator", words[separator], "--decimal", words[decimal]);
      }
      assertSame(await doc.save("csv", { separator, decimal }), read(folder, "table.csv"));
    });
  }
}

test("a change that is taken back leaves no trace, and can be done again", async () => {
  const { folder, doc } = await openBoth("model.xml");
  const before = documents.get("model.xml");
  doc.set(0, "areaZ", "5");
  doc.remove([1, 2]);
  doc.add({ name: "Neu" });
  assert.equal(doc.undoLabel, 'adding number 13 "Neu"');
  const all = await doc.save();
  for (let i = 0; i < 3; ++i) doc.undo();
  assert.equal(doc.undoLabel, "");
  assert.equal(doc.isChanged, false);
  assertSame(await doc.save(), before);
  for (let i = 0; i < 3; ++i) doc.redo();
  assertSame(await doc.save(), Buffer.from(all));
  assert.equal(doc.isChanged, true);
  doc.markSaved();
  assert.equal(doc.isChanged, false);
  doc.undo();
  assert.equal(doc.isChanged, true);
  run(folder, "set", "model.xml", "1", "areaZ=5");
  run(folder, "remove", "model.xml", "2-3");
  assertSame(await doc.save(), read(folder, "model.xml"));
});

test("what was saved and then taken back counts as changed", async () => {
  const { doc } = await openBoth("model.xml");
  doc.set(0, "areaZ", "5");
  doc.markSaved();
  doc.undo();
  doc.set(0, "areaZ", "6");
  doc.undo();
  assert.equal(doc.isChanged, true);
});

test("a block of values is one change", async () => {
  const { folder, doc } = await openBoth("model.xml");
  const texts = doc.texts([4, 5]);
  assert.deepEqual(texts[1].slice(0, 4), ["6", "Sheet-pile wall, embedded", "no", "0"]);
  assert.equal(texts[1][doc.columns().findIndex(({ key }) => key === "lineRotationX")], "");
  const { label } = doc.fill([1, 0], ["areaX", "areaY"], [["5", "0"], ["1", "2"]]);
  assert.equal(label, "3 values of 2 foundations");
  run(folder, "set", "model.xml", "2", "areaX=5");
  run(folder, "set", "model.xml", "1", "areaX=1", "areaY=2");
  assertSame(await doc.save(), read(folder, "model.xml"));
  doc.undo();
  assertSame(await doc.save(), documents.get("model.xml"));
});

test("a block may give foundations the numbers of each other", async () => {
  const { doc } = await openBoth("model.xml");
  doc.fill([0, 1], ["number"], [["2"], ["1"]]);
  assert.deepEqual([...doc.values("number").slice(0, 3)], [2, 1, 3]);
});

test("a block with a value that cannot be changes nothing", async () => {
  const { doc } = await openBoth("model.xml");
  const error = await catchError(() => doc.fill([0, 1], ["areaX"], [["5"], ["x"]]));
  assert.match(error.message, /^number 2 "Strip footing, axis D": areaX cannot be "x"/);
  assert.equal(doc.undoLabel, "");
  assert.equal(doc.fill([0], ["areaX"], [["0"]]).label, "");
  assert.equal(doc.undoLabel, "");
});

test("a value that stays is no change", async () => {
  const { doc } = await openBoth("model.xml");
  doc.set(0, "name", doc.cell(0, "name"));
  assert.equal(doc.undoLabel, "");
});

test("the page refuses what the program refuses, in the same words", async () => {
  const { folder, doc } = await openBoth("model.xml");
  for (const [key, text] of [
    ["areaZ", "12,5"],
    ["areaFailureZ", "up"],
    ["generated", "perhaps"],
    ["number", "0"],
    ["name", ""],
    ["number", "2"],
    ["name", "Strip footing, axis D"],
  ]) {
    const error = await catchError(() => doc.set(0, key, text));
    const told = fail(folder, "set", "model.xml", "1", `${key}=${text}`);
    assert.equal(`kvfound: ${error.message}\n`, told.replace("nothing was written", "nothing was changed"));
  }
  assert.equal(doc.isChanged, false);
});

test("a table takes only what it has columns for", async () => {
  const doc = await engine.open("a.csv", encode("number,name,areaZ\n1,A,5\n"));
  const stored = doc.columns().filter((column) => column.isStored);
  assert.deepEqual(stored.map((column) => column.key), ["number", "name", "areaZ"]);
  const error = await catchError(() => doc.set(0, "areaX", "1"));
  assert.equal(error.message, "this document cannot hold areaX; nothing was changed");
});

test("beddings without numbers are counted anew", async () => {
  const { doc } = await openBoth("beddings-1.0.xml");
  doc.remove([0]);
  assert.deepEqual([...doc.values("number")], [...Array(doc.count).keys()].map((i) => i + 1));
});
