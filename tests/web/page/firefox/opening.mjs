// How documents come into the page.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { choose, click, copyText, examples, fail, hold, makeFolder, model, page, read, readAll, readRows, saveBytes, save, settle, view, wait, write } from "./support.mjs";

test("the sample opens without a document, and is saved as it is", async () => {
  await click("Try it");
  assert.equal((await readRows()).length, 12);
  assert.deepEqual(await save(), { name: "model.xml", bytes: fs.readFileSync(model) });
});

test("several documents of every form open at once", async () => {
  const names = ["beddings.xml", "beddings-1.0.xml", "soil.csv", "model.xml"];
  await choose(...names.map((name) => path.join(examples, name)));
  assert.deepEqual(await readAll("#documents bdi"), names);
  for (const name of names) {
    await click(name, "#documents");
    assert.deepEqual(await save(), { name, bytes: fs.readFileSync(path.join(examples, name)) });
  }
});

test("documents that are dropped open", async () => {
  await page.evaluate((text) => {
    const data = new DataTransfer();
    for (const name of ["one.xml", "two.xml"]) data.items.add(new File([text], name));
    dispatchEvent(new DragEvent("drop", { dataTransfer: data, cancelable: true }));
  }, fs.readFileSync(model, "utf8"));
  await wait(async () => (await readAll("#documents bdi")).length === 2);
  await settle();
  assert.deepEqual(await readAll("#documents bdi"), ["one.xml", "two.xml"]);
  assert.deepEqual(await saveBytes(), fs.readFileSync(model));
});

test("a text that is pasted into the dialog opens", async () => {
  await click("Paste", "#start");
  const text = fs.readFileSync(path.join(examples, "soil.csv"), "utf8");
  await page.$eval("dialog textarea", (area, given) => (area.value = given), text);
  await click("Open", "dialog");
  await wait(async () => (await readRows()).length > 0);
  assert.match(await read(`${view} .facts`), /CSV/);
});

test("a text that is pasted on the page opens", async () => {
  await copyText(fs.readFileSync(model, "utf8"));
  await hold(["Control"], "v");
  await wait(async () => (await readRows()).length === 12);
  assert.deepEqual(await saveBytes(), fs.readFileSync(model));
});

test("an error shows its sentence and marks its place in the line", async () => {
  const file = write("broken.xml", [["Ground anchor beam", "Ground <anchor beam"]]);
  await choose(file);
  const told = fail(path.dirname(file), "show", "broken.xml");
  const [, line, column, sentence] = /^kvfound: broken.xml:(\d+):(\d+): (.*)/.exec(told);
  const shown = await read(`${view} .card`);
  assert.ok(shown.includes(sentence), shown);
  assert.ok(shown.includes(`Line ${line}, column ${column}`), shown);
  assert.match(await read(`${view} mark`), /<anchor/);
});

test("a table whose name tells nothing opens when told how", async () => {
  const file = path.join(makeFolder(), "table.txt");
  fs.copyFileSync(path.join(examples, "soil.csv"), file);
  await choose(file);
  await page.click(`${view} summary`);
  await click("Read again");
  await wait(async () => (await readRows()).length > 0);
});

test("an empty file is an error", async () => {
  const file = path.join(makeFolder(), "empty.xml");
  fs.writeFileSync(file, "");
  await choose(file);
  assert.match(await read(view), /cannot be read/);
});
