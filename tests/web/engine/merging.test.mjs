// Merging and comparing, measured by the program.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { assertSame, catchError, documents, encode, engine, openBoth, read, run } from "./support.mjs";

const head = "number,name,areaX,areaY,areaZ\n";
/** With numbers that others have, names that others have, and neither. */
const others = {
  rename: `${head}99,"Strip footing, axis A",5,6,7\n98,New,1,1,1\n`,
  renumber: `${head}1,Other,5,6,7\n2,Another,1,2,3\n98,New,1,1,1\n`,
  skip: `${head}1,"Strip footing, axis A",5,6,7\n2,Other,1,2,3\n99,New,1,1,1\n`,
};
others.replace = others.skip;

for (const name of documents.keys())
  for (const [onClash, text] of Object.entries(others))
    test(`${name}: merges by the rule ${onClash}`, async () => {
      const { folder, doc } = await openBoth(name);
      fs.writeFileSync(path.join(folder, "other.csv"), text);
      run(folder, "merge", "other.csv", name, "--on-clash", onClash);
      const source = await engine.open("other.csv", encode(text));
      const preview = await doc.previewMerge(source, { onClash });
      assert.equal(preview.isPossible, true);
      assertSame(await doc.save(), documents.get(name));
      await doc.merge(source, { onClash });
      assertSame(await doc.save(), read(folder, name));
      doc.undo();
      assertSame(await doc.save(), documents.get(name));
    });

test("a clash is told with its place before anything changes", async () => {
  const { doc } = await openBoth("model.xml");
  const source = await engine.open("other.csv", encode(others.skip));
  const preview = await doc.previewMerge(source);
  assert.equal(preview.isPossible, false);
  assert.deepEqual(preview.clashes.map(({ line, column }) => [line, column]), [[3, 1]]);
  const error = await catchError(() => doc.merge(source));
  assert.equal(error.message, "numbers or names clash; nothing was merged");
  assert.equal(error.details.length, 1);
  assert.equal(doc.isChanged, false);
});

test("a document merges with one that has changed", async () => {
  const { doc } = await openBoth("model.xml");
  const { doc: source } = await openBoth("model.xml");
  source.set(2, "areaZ", "123");
  source.add({ name: "Neu", lineX: "4" });
  const preview = await doc.previewMerge(source);
  assert.deepEqual(preview.differences.map(({ kind }) => kind), ["changed", "added"]);
  assert.equal(preview.summary, "1 added, 1 changed");
  await doc.merge(source);
  assert.equal((await doc.compare(source)).isSame, true);
});

test("a comparison tells rows, fields and values", async () => {
  const { doc } = await openBoth("model.xml");
  const { doc: later } = await openBoth("model.xml");
  later.set(0, "lineZ", "1");
  later.remove([3]);
  later.add({ name: "Neu" });
  const { isSame, isComplete, differences } = await doc.compare(later);
  assert.equal(isSame, false);
  assert.equal(isComplete, true);
  assert.deepEqual(
    differences.map(({ kind, first, second }) => [kind, first, second]),
    [
      ["changed", 0, 0],
      ["removed", 3, -1],
      ["added", -1, later.count - 1],
    ],
  );
  const { key, label, before, after, unit } = differences[0].fields[0];
  assert.deepEqual([key, label, before, after, unit], ["lineZ", "Line z", "45000", "1", "kN/m\u00b2"]);
  assert.match(await doc.comparePage(later), /^<!DOCTYPE html>/);
});

test("a comparison agrees with the program", async () => {
  const names = [...documents.keys()];
  for (const first of names)
    for (const second of names) {
      const { folder, doc } = await openBoth(first);
      fs.writeFileSync(path.join(folder, second), documents.get(second));
      const later = await engine.open(second, documents.get(second));
      const { isSame, differences } = await doc.compare(later);
      const told = JSON.parse(run(folder, "diff", first, second, "--format", "json"));
      assert.deepEqual(
        differences.map(({ kind }) => kind),
        told.differences.map(({ change }) => change),
        `${first} ${second}`,
      );
      if (first === second) assert.equal(isSame, true);
    }
});
