// The ways to look at a document.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import path from "node:path";
import { beforeEach, describe, test } from "node:test";

import { choose, click, fill, model, openTab, page, press, printTo, read, readAll, readRows, run, select, setCell, settle, takeDownload, view, wait, waitFor, write } from "./support.mjs";

const odd = [
  ['NUMBER="4" NAME="Slab on dense sand" FXAREA="8000"', 'NUMBER="3" NAME="Slab" FXAREA="-8000"'],
  ['FZAREA="62500"', 'FZAREA="6e99999"'],
];

describe("findings", () => {
  let file;

  beforeEach(async () => {
    file = write("odd.xml", odd);
    await choose(file);
  });

  test("they are those of the program beside their lines", async () => {
    const lines = String(run(path.dirname(file), "check", "odd.xml")).split("\n");
    const told = lines.filter((line) => line.includes(": warning: ")).map((line) => line.split(": warning: ")[1]);
    assert.ok(told.length > 1);
    await openTab("Findings");
    const shown = await readAll(`${view} .findings .sentence`);
    assert.deepEqual(shown.map((text) => text.toLowerCase()), told.map((text) => text.toLowerCase()));
    assert.ok((await readAll(`${view} .findings mark`)).includes('FXAREA="-8000"'));
  });

  test("one leads to its line and to its row", async () => {
    await openTab("Findings");
    await click("Line 15", view);
    assert.match(await read(`${view} .source .marked code`), /-8000/);
    await openTab("Findings");
    await click("number 8", view);
    assert.equal(await page.$eval(`${view} .active`, (cell) => cell.parentElement.dataset.row), "7");
  });

  test("they follow what is changed", async () => {
    const readCount = async () => Number((await readAll(`${view} .tabs .chip`))[0] ?? NaN);
    const before = await wait(readCount);
    await setCell(3, "areaX", "8000");
    await wait(async () => (await readCount()) === before - 1);
  });
});

test("the document shows as it would be saved", async () => {
  await choose(model);
  await setCell(2, "areaZ", "16000.5");
  await openTab("Document");
  const lines = await readAll(`${view} .source code`);
  assert.equal(lines[0], '<?xml version="1.0" encoding="UTF-8"?>');
  assert.match(lines[13], /FZAREA="16000.5"/);
});

/** A report without when the document was saved, which a browser does not tell, or read. */
function stripTime(text) {
  return text
    .replace(/(read )?\d{4}(-|\\2d )\d\d(-|\\2d )\d\d \d\d(:|\\3a )\d\d/g, "")
    .replace(/<li>(Saved|Read) /g, "<li>");
}

test("the report is that of the program, with pictures", async () => {
  await choose(model);
  await openTab("Report");
  const frame = await (await waitFor(`${view} iframe`)).contentFrame();
  await wait(async () => (await frame.$("#find"))?.evaluate((field) => field.checkVisibility())); // which its script shows
  assert.ok((await frame.$$("svg")).length > 0);
  await click("Save the report", view);
  const { name, bytes } = await takeDownload();
  assert.equal(name, "model.html");
  const written = run(path.dirname(model), "report", "model.xml", "-o", "-");
  assert.equal(stripTime(String(bytes)), stripTime(String(written)));
});

test("two documents are compared", async () => {
  const changed = write("changed.xml", [
    ['FZAREA="15000"', 'FZAREA="16500"'],
    ["Ground anchor beam", "Anchor"],
    ['NUMBER="12"', 'NUMBER="22" NAME="More"'],
  ]);
  await choose(changed, model);
  await openTab("Compare");
  const text = await read(`${view} .differences`);
  for (const part of ["15000", "16500", "Ground anchor beam", "Anchor", "added", "removed"])
    assert.ok(text.includes(part), `${part}: ${text}`);
  assert.match(await read(`${view} .result`), /Before: model.xml, after: changed.xml/);
  await select("Pair by", "name", view);
  assert.match(await read(`${view} .differences`), /number 9 "Ground anchor beam"/);
  await fill("Values may differ by %", "20", view);
  await press("Tab");
  await settle();
  assert.doesNotMatch(await read(`${view} .differences`), /16500/);
});

test("what is printed holds all foundations", async () => {
  await choose(model);
  const names = (await readRows()).map(([, name]) => name);
  assert.equal(names.length, 12);
  const paper = await printTo(() => click("Print", `${view} .tools`));
  const text = execFileSync("pdftotext", ["-layout", paper, "-"], { encoding: "utf8" }).normalize("NFKC");
  for (const name of names) assert.ok(text.includes(name), `${name}: ${text}`);
  assert.equal(await page.$("#sheet table"), null); // it goes once it is printed
});
