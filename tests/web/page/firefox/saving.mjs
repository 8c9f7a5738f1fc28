// Every form that documents are saved in, and leaving without saving.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { beforeEach, describe, test } from "node:test";

import { answerWith, choose, click, isSeen, makeFolder, model, openDialog, page, press, read, readAll, readCell, run, save, setCell, takeDownload, tell, tick, undo, view, wait, waitFor } from "./support.mjs";

const unsaved = `${view} .top .chip.warn`;

/** What the program makes of the model. */
function convert(...args) {
  const target = path.join(makeFolder(), "target");
  run(path.dirname(model), "convert", "model.xml", target, ...args);
  return fs.readFileSync(target);
}

describe("saving", () => {
  beforeEach(() => choose(model));

  for (const [label, form] of [
    ["Exchange document", "exchange"],
    ["Exchange document 1.0", "exchange-1.0"],
    ["Kvml", "kvml"],
    ["Data (JSON)", "json"],
  ])
    test(`${form} is the one of the program`, async () => {
      assert.deepEqual((await save({ form: label })).bytes, convert("--to", form));
    });

  test("tables are for English and for German spreadsheets", async () => {
    const english = await save({ form: "Table", spreadsheet: "English: 1.5 between commas" });
    assert.deepEqual(english.bytes, convert("--to", "csv"));
    const german = await save({ form: "Table", spreadsheet: "German: 1,5 between semicolons" });
    assert.deepEqual(german.bytes, convert("--to", "csv", "--separator", "semicolon", "--decimal", "comma"));
  });

  test("losses are told before, in the words of the program", async () => {
    await openDialog("Save");
    await tick("Exchange document 1.0");
    const shown = await readAll("dialog .preview li");
    const args = ["convert", "--all", "model.xml", path.join(makeFolder(), "target"), "--to", "exchange-1.0"];
    const told = tell(path.dirname(model), ...args).split("\n");
    assert.ok(shown.length > 0);
    for (const sentence of shown)
      assert.ok(told.some((line) => line.toLowerCase().endsWith(sentence.toLowerCase())), `${sentence}: ${told}`);
    assert.equal(told.filter((line) => line !== "").length, shown.length, told.join("\n"));
  });

  test("what is saved in place counts as saved, another form does not", async () => {
    await setCell(2, "areaZ", "1");
    assert.ok(await isSeen(unsaved));
    await save({ form: "Data (JSON)" });
    assert.ok(await isSeen(unsaved));
    await save();
    await wait(async () => !(await isSeen(unsaved)));
  });

  test("keys save what is just being written", async () => {
    await setCell(2, "areaZ", "1");
    await undo();
    await page.keyboard.type("77");
    await page.keyboard.down("Control");
    await press("s");
    await page.keyboard.up("Control");
    await waitFor("dialog[open]");
    await press("Enter");
    await takeDownload();
    assert.equal(await isSeen(unsaved), false);
  });
});

describe("leaving", () => {
  beforeEach(() => choose(model));

  test("closing asks about what is not saved", async () => {
    await setCell(2, "areaZ", "1");
    await page.click("#documents .close");
    assert.match(await read("dialog"), /not saved/);
    await press("Escape");
    assert.equal(await readCell(2, "areaZ"), "1");
    await page.click("#documents .close");
    await click("Close without saving", "dialog");
    assert.ok(await isSeen("#start"));
  });

  test("the browser asks before it leaves", async () => {
    const asked = [];
    answerWith((dialog) => {
      asked.push(dialog.type());
      return dialog.dismiss();
    });
    await setCell(2, "areaZ", "1");
    await assert.rejects(page.goto("about:blank"), /rejected|aborted/i);
    assert.deepEqual(asked, ["beforeunload"]);
    assert.equal(await readCell(2, "areaZ"), "1");
    await undo();
    await page.goto("about:blank");
    assert.equal(asked.length, 1);
  });

  test("a document that is saved closes at once", async () => {
    await page.click("#documents .close");
    await wait(() => isSeen("#start"));
    assert.equal(await isSeen("dialog"), false);
  });
});
