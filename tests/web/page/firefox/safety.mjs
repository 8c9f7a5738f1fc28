// Documents that mean harm, and the network.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { choose, click, errors, isSeen, makeFolder, model, openDialog, openTab, page, press, project, read, readAll, readRows, runFile, setCell, view, wait, write } from "./support.mjs";

const markup = "<img src=x onerror=document.title='run'>";

test("names that are markup stay text", async () => {
  const replacements = [
    ['NUMBER="4" NAME="Slab on dense sand" FXAREA="8000"', `NUMBER="3" NAME="${markup.replace("<", "&lt;")}" FXAREA="-8000"`],
  ];
  await choose(model, write(`${markup}.xml`, replacements));
  for (const tab of ["Findings", "Document", "Report", "Compare", "Table"]) await openTab(tab);
  await setCell(4, "name", markup);
  assert.ok((await read(".bubble")).includes(markup)); // it is taken
  await press("Escape");
  await setCell(4, "name", `${markup}!`);
  for (const tool of ["Add", "Prune", "Merge", "Save"]) {
    await openDialog(tool);
    await press("Escape");
    await wait(async () => !(await isSeen("dialog")));
  }
  assert.equal(await page.$("img"), null);
  assert.equal(await page.title(), `${markup}.xml – KvFound`);
  assert.equal((await readRows()).filter(([, name]) => name.startsWith(markup)).length, 2);
});

/** All files below a folder. */
function listFiles(folder) {
  const entries = fs.readdirSync(folder, { withFileTypes: true, recursive: true });
  return entries.filter((entry) => entry.isFile()).map((entry) => path.join(entry.parentPath, entry.name));
}

test("seeds of the fuzzers do no harm", async () => {
  const seeds = ["seeds", "regressions"].flatMap((name) => listFiles(path.join(project, "fuzz", name)));
  assert.ok(seeds.length > 80);
  for (let i = 0; i < seeds.length; i += 25) {
    const files = seeds.slice(i, i + 25);
    await choose(...files);
    await wait(async () => (await readAll("#documents bdi")).length === files.length);
    const shown = await runFile("look_at_all.js");
    const names = shown.map(({ name }) => name.replace(/ \(\d+\)(?=\.[^.]*$|$)/, "")); // which tells those of one name apart
    assert.deepEqual(names, files.map((file) => path.basename(file)));
    for (const { name, title, state, harm } of shown) {
      assert.equal(title, `${name} – KvFound`);
      if (state !== `${name} cannot be read`) assert.match(state, /^\d+ foundations?$/);
      assert.deepEqual(harm, [], name);
    }
  }
});

test("ten megabytes of nesting are an error", async () => {
  const file = path.join(makeFolder(), "deep.xml");
  fs.writeFileSync(file, `<?xml version="1.0"?>\n<SMOD>\n${"<a>".repeat(3_400_000)}`);
  await choose(file);
  assert.match(await read(view), /cannot be read/);
  await choose(model);
  assert.equal((await readRows()).length, 12);
});

test("a name of a megabyte hides nothing", async () => {
  await choose(write("long.xml", [["Strip footing, axis A", "x".repeat(1_000_000)]]));
  await click("Select shown", view);
  await click("Remove 12", `${view} .tools`);
  await click("Undo", `${view} .tools`);
  await openDialog("Save");
  await press("Escape");
  assert.ok((await page.evaluate(() => document.documentElement.scrollWidth - innerWidth)) <= 0);
});

test("nothing of the network can be reached", async () => {
  const names = await page.evaluate(async () => {
    const blocked = new Promise((resolve) =>
      addEventListener("securitypolicyviolation", ({ effectiveDirective }) => resolve(effectiveDirective)),
    );
    const error = await fetch("https://example.com").catch(({ name }) => name);
    return [error, await blocked];
  });
  assert.deepEqual(names, ["TypeError", "connect-src"]);
  errors.length = 0; // the console tells of that
});
