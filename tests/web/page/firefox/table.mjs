// The table, with mouse and keys, and what is changed there.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { beforeEach, describe, test } from "node:test";

import { choose, click, copyText, edit, fail, fill, goToCell, hold, isSeen, model, openDialog, page, press, read, readCell, readRows, redo, saveBytes, setCell, settle, submit, tick, undo, view, waitFor } from "./support.mjs";

const original = fs.readFileSync(model);

function cell(row, key) {
  return `${view} .grid [data-row="${row}"] .${key}`;
}

/** Clicks while a key is held. */
async function clickWith(held, selector) {
  await page.keyboard.down(held);
  await page.click(selector);
  await page.keyboard.up(held);
  await settle();
}

describe("the table", () => {
  beforeEach(() => choose(model));

  test("a value is set with the keyboard alone, undone, done again, and saved as the program does", async () => {
    await setCell(2, "areaX", "4711");
    const edited = edit(model, "set", "3", "areaX=4711");
    assert.deepEqual(await saveBytes(), edited);
    await undo();
    assert.equal(await readCell(2, "areaX"), "1500");
    assert.deepEqual(await saveBytes(), original);
    await redo();
    assert.deepEqual(await saveBytes(), edited);
  });

  test("a value is set with the mouse", async () => {
    await page.click(cell(4, "name"), { count: 2 });
    await hold(["Control"], "a");
    await page.keyboard.type("Straße & <b>");
    await page.click(cell(1, "areaX"));
    await settle();
    assert.deepEqual(await saveBytes(), edit(model, "set", "5", "name=Straße & <b>"));
  });

  test("tab goes to the right and enter down", async () => {
    await goToCell(2, "areaX");
    await press("1", "Tab", "2", "Enter", "3", "Enter");
    await settle();
    const cells = [await readCell(2, "areaX"), await readCell(2, "areaY"), await readCell(3, "areaY")];
    assert.deepEqual(cells, ["1", "2", "3"]);
  });

  test("escape leaves the old value", async () => {
    await goToCell(2, "areaZ");
    await press("7", "7", "Escape");
    assert.equal(await readCell(2, "areaZ"), "15000");
    assert.deepEqual(await saveBytes(), original);
  });

  test("a choice is set by its first letter", async () => {
    await goToCell(0, "areaFailureZ");
    await press("c", "Enter");
    await settle();
    assert.deepEqual(await saveBytes(), edit(model, "set", "1", "areaFailureZ=compression"));
  });

  test("a value that is none is refused and stays to be mended", async () => {
    await goToCell(2, "areaZ");
    await page.keyboard.type("12abc");
    await press("Enter");
    await waitFor(".bubble");
    const told = fail(path.dirname(model), "set", "model.xml", "3", "areaZ=12abc");
    assert.ok(told.includes(await read(".bubble")), told);
    assert.equal(await page.$eval(".editor", (field) => field.value), "12abc");
    await press("Escape");
    assert.deepEqual(await saveBytes(), original);
  });

  test("a value is copied and pasted with the keys for that", async () => {
    await goToCell(2, "areaZ");
    await hold(["Control"], "c");
    await goToCell(3, "areaX");
    await hold(["Control"], "v");
    await settle();
    assert.equal(await readCell(3, "areaX"), "15000");
    assert.deepEqual(await saveBytes(), edit(model, "set", "4", "areaX=15000"));
  });

  test("a block of cells is pasted as one step", async () => {
    await copyText("1\t2\n1\t2\n");
    await goToCell(2, "areaX");
    await hold(["Control"], "v");
    await settle();
    assert.match(await read("#notices"), /4 values of 2 foundations/);
    assert.deepEqual(await saveBytes(), edit(model, "set", "3-4", "areaX=1", "areaY=2"));
    await undo();
    assert.deepEqual(await saveBytes(), original);
  });

  test("rows that are selected are copied", async () => {
    await page.click(cell(4, "tick"));
    await hold(["Control"], "c");
    await click("Paste");
    await page.focus("dialog textarea");
    await hold(["Control"], "v");
    const [text] = await page.$$eval("dialog textarea", (areas) => areas.map((area) => area.value));
    assert.deepEqual(text.split("\t").slice(0, 4), ["5", "Pile cap P1 <4 piles>", "no", "2500"]);
  });

  test("a value is given to all rows that are selected", async () => {
    await page.click(cell(2, "tick"));
    await clickWith("Shift", cell(3, "areaX"));
    await goToCell(2, "areaFactor");
    await page.keyboard.type("0.3");
    await hold(["Control"], "Enter");
    await settle();
    assert.deepEqual(await saveBytes(), edit(model, "set", "3-4", "areaFactor=0.3"));
  });

  test("rows that are selected are removed", async () => {
    await page.click(cell(0, "tick"));
    await clickWith("Control", cell(1, "name"));
    await click("Remove 2", `${view} .tools`);
    assert.deepEqual(await saveBytes(), edit(model, "remove", "1-2"));
    await click("Undo", `${view} .tools`);
    assert.deepEqual(await saveBytes(), original);
  });

  test("a foundation is added", async () => {
    await openDialog("Add");
    await fill("Name", "Neu & <b>");
    await submit();
    assert.deepEqual(await saveBytes(), edit(model, "add", "Neu & <b>"));
  });

  test("what is not shown is narrowed down", async () => {
    const readNumbers = async () => (await readRows()).map(([number]) => number);
    await fill("Number or name", "STRIP", view);
    assert.deepEqual(await readNumbers(), ["1", "2"]);
    await click("Clear", view);
    await fill("Numbers", "3,5-6", view);
    assert.deepEqual(await readNumbers(), ["3", "5", "6"]);
    await click("Clear", view);
    await tick("generated", `${view} .filter`);
    assert.deepEqual(await readNumbers(), ["10", "11", "12"]);
    await click("Select shown", view);
    await click("Remove 3", `${view} .tools`);
    assert.deepEqual(await saveBytes(), edit(model, "remove", "10-12"));
  });

  test("headings sort", async () => {
    for (let i = 0; i < 2; ++i) await page.click(`${view} .heads .areaZ`);
    await settle();
    assert.deepEqual((await readRows())[0], ["5", "Pile cap P1 <4 piles>"]);
  });

  test("what was written in a row that went is dropped", async () => {
    await goToCell(2, "areaZ");
    await page.keyboard.type("12abc");
    await press("Enter");
    await tick("generated", `${view} .filter`);
    assert.equal(await isSeen(".bubble, .editor"), false);
  });
});
