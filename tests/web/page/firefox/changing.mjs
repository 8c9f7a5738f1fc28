// What changes many foundations at once.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { beforeEach, describe, test } from "node:test";

import { choose, edit, fill, makeFolder, model, openDialog, page, read, saveBytes, select, submit, tick, undo, write } from "./support.mjs";

const original = fs.readFileSync(model);

function isPrimaryEnabled() {
  return page.$eval("dialog .primary", (button) => !button.disabled);
}

describe("merging", () => {
  let other;

  beforeEach(async () => {
    other = write("other.xml", [
      ['FZAREA="15000"', 'FZAREA="16500"'],
      ["Ground anchor beam", "Anchor"],
      ['NUMBER="12"', 'NUMBER="22" NAME="More"'],
    ]);
    await choose(other, model);
    await openDialog("Merge");
  });

  test("clashes must be decided", async () => {
    assert.match(await read(".preview"), /clash/);
    assert.equal(await isPrimaryEnabled(), false);
  });

  test("what would change is shown and then done", async () => {
    await select("Where numbers or names clash", "put the other one in its place");
    assert.match(await read(".preview"), /1 added, 2 changed/);
    await submit();
    const merged = edit(model, "merge", other, "model.xml", "--on-clash", "replace");
    assert.deepEqual(await saveBytes(), merged);
    await undo();
    assert.deepEqual(await saveBytes(), original);
  });
});

describe("pruning", () => {
  beforeEach(async () => {
    await choose(model);
    await openDialog("Prune");
  });

  test("generated foundations go", async () => {
    assert.match(await read(".preview"), /3 removed, 9 kept/);
    await submit();
    assert.deepEqual(await saveBytes(), edit(model, "prune", "model.xml", "--generated"));
    await undo();
    assert.deepEqual(await saveBytes(), original);
  });

  test("all but those of a list go", async () => {
    const list = path.join(makeFolder(), "list");
    fs.writeFileSync(list, "3\nGround anchor beam\n");
    await tick("all but those of a list");
    await fill("Numbers or names that stay", "3\nGround anchor beam");
    assert.match(await read(".preview"), /10 removed, 2 kept/);
    await submit();
    assert.deepEqual(await saveBytes(), edit(model, "prune", "model.xml", "--used-by", list));
  });

  test("a list that fits nothing is told", async () => {
    await tick("all but those of a list");
    await fill("Numbers or names that stay", "99");
    assert.match((await read("dialog .problem")).toLowerCase(), /names none of the foundations/);
  });
});
