// What documents are, what is found in them, and where they cannot be read.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { catchError, documents, encode, engine, makeFolder, openBoth, project, run } from "./support.mjs";

test("each document tells what it is", async () => {
  const told = [];
  for (const [name, bytes] of documents) {
    const { form, encoding, units } = (await engine.open(name, bytes)).info();
    told.push([name, form, encoding, units && `${units.force},${units.length}`]);
  }
  assert.deepEqual(told, [
    ["model.xml", "legacy", "utf-8", "kN,m"],
    ["beddings.xml", "exchange", "utf-8", null],
    ["beddings-1.0.xml", "exchange-1.0", "utf-8", null],
    ["soil.csv", "csv", "utf-8", null],
    ["data.json", "json", "utf-8", null],
    ["german.csv", "csv", "utf-8", null],
    ["code_page.xml", "legacy", "ISO-8859-1", null],
  ]);
});

/** A value as people read it. */
function show(value) {
  if (typeof value === "boolean") return value ? "yes" : "no";
  return value === null ? "-" : `${value}`;
}

test("cells are those of the program's table, and can be set again", async () => {
  for (const [name, bytes] of documents) {
    const { folder } = await openBoth(name);
    const doc = await engine.open(name, bytes);
    const { foundations } = JSON.parse(run(folder, "show", name, "--format", "json"));
    const keys = doc.columns().map((column) => column.key);
    const rows = doc.rows(doc.sort());
    assert.equal(rows.length, foundations.length);
    rows.forEach((row, index) => {
      keys.forEach((key, column) => {
        const value = foundations[index][key];
        if (key === "name") assert.equal(doc.cell(index, key), value);
        else assert.equal(row.cells[column], show(value), `${name} ${key}`);
        if (doc.columns()[column].isStored) doc.set(index, key, doc.cell(index, key));
      });
    });
    assert.equal(doc.isChanged, false, name);
  }
});

test("findings are those of the program, with the line of the document", async () => {
  let count = 0;
  for (const name of fs.readdirSync(path.join(project, "fuzz/seeds/check"))) {
    const bytes = fs.readFileSync(path.join(project, "fuzz/seeds/check", name));
    const folder = makeFolder();
    fs.writeFileSync(path.join(folder, name), bytes);
    const doc = await engine.open(name, bytes).catch(() => null);
    if (doc === null) continue;
    const findings = await doc.check();
    const lines = run(folder, "check", name).toString().split("\n").slice(0, -1);
    assert.equal(findings.length, lines.length, name);
    const { findings: told } = JSON.parse(run(folder, "check", name, "--format", "json"));
    findings.forEach(({ line, sentence, rule, excerpt, index }, i) => {
      assert.deepEqual([line, sentence, rule], [told[i].line, told[i].sentence, told[i].rule]);
      assert.notEqual(excerpt.marked, "", `${name}: ${sentence}`);
      if (told[i].foundation !== undefined) assert.equal(doc.rows([index])[0].title, told[i].foundation);
    });
    count += findings.length;
  }
  assert.ok(count > 20, `${count} findings`);
});

test("findings are of the document as it stands", async () => {
  const { doc } = await openBoth("model.xml");
  assert.deepEqual(await doc.check(), []);
  doc.set(4, "areaZ", "-5");
  const [{ line, rule, index, excerpt }] = await doc.check();
  assert.equal(rule, "negative-value");
  assert.equal(index, 4);
  assert.equal(excerpt.marked, 'FZAREA="-5"');
  const { lines } = await doc.lines(line, 1);
  assert.ok(lines[0].text.includes('FZAREA="-5"'));
  doc.undo();
  assert.deepEqual(await doc.check(), []);
});

test("an error tells line, column and what stands there", async () => {
  const rows = [
    ["a.xml", "<SMOD>\n<A>\n \u00e4<B x='1' x='2'/></A></SMOD>", 3, 12, "x='2'"],
    ["a.xml", "<SMOD>\r\n<A></SMOD>\r\n", 2, 6, "SMOD"],
    ["a.json", '{"foundations": [\n{"number": "x"}]}', 2, 2, '"number"'],
    ["a.csv", "number,name\n1,A\nx,B\n", 3, 0, "x,B"],
  ];
  for (const [name, text, line, column, marked] of rows) {
    const error = await catchError(() => engine.open(name, encode(text)));
    assert.deepEqual([error.line, error.column, error.excerpt?.marked], [line, column, marked], error.message);
    assert.ok(!error.message.startsWith(name), error.message);
  }
});

test("an error deep within a long line shows what stands around it", async () => {
  const text = `<SMOD>${"<A/>".repeat(50000)}<B x="1" x="2"/></SMOD>`;
  const { excerpt } = await catchError(() => engine.open("a.xml", encode(text)));
  assert.ok(excerpt.isCutBefore);
  assert.ok(excerpt.before.length <= 80 && excerpt.after.length <= 120);
  assert.equal(excerpt.marked, 'x="2"');
});

test("what is no document is refused", async () => {
  for (const bytes of [new Uint8Array(), new Uint8Array(1000), encode("%PDF-1.4\n"), encode("PK\u0003\u0004")]) {
    const error = await catchError(() => engine.open("a.bin", bytes));
    assert.notEqual(error.message, "");
    assert.equal(error.isFatal, false);
  }
});

test("a text that was pasted is a table where it is nothing else", async () => {
  for (const [name, bytes] of documents) {
    const form = (await engine.open(name, bytes)).info().form;
    const pasted = await engine.open("pasted", bytes, { isPasted: true });
    assert.equal(pasted.info().form, form, name);
  }
});

test("nesting of 10 MB is an error and nothing worse", async () => {
  const depth = 1_500_000;
  for (const end of ["", "</A>".repeat(depth)]) {
    const text = `<?xml version="1.0"?>\n${"<A>".repeat(depth)}${end}`;
    const error = await catchError(() => engine.open("a.xml", encode(text)));
    assert.match(error.message, end === "" ? /ends before/ : /more than 1000 levels/);
    assert.equal(error.isFatal, false);
  }
});

test("what was skipped is told with its place", async () => {
  const text = '<Beddings>\n\u00e4 <SurfaceBedding Number="0" Name="A"/>\n<Other/></Beddings>';
  const { notes, isReadWhole } = (await engine.open("a.xml", encode(text))).info();
  assert.equal(isReadWhole, false);
  assert.deepEqual(notes, [
    { line: 2, column: 3, sentence: "the number 0 of a <SurfaceBedding> is below 1; it was skipped" },
    { line: 3, column: 1, sentence: "<Other> is no bedding of this version; it was skipped" },
  ]);
});

test("rows are found, selected and sorted", async () => {
  const doc = await engine.open(
    "a.csv",
    encode("number,name,areaZ,generated\n3,\u00c4rger,5,no\n1,b\u00e4r,,yes\n12,Zebra,-1,no\n"),
  );
  assert.deepEqual([...doc.find("\u00c4R")], [0, 1]);
  assert.deepEqual([...doc.find("1")], [1, 2]);
  assert.deepEqual([...doc.sort("areaZ")], [2, 0, 1]);
  assert.deepEqual([...doc.sort("areaZ", true)], [0, 2, 1]);
  assert.deepEqual([...doc.sort("name")], [1, 2, 0]);
  assert.deepEqual([...doc.sort()], [0, 1, 2]);
  assert.deepEqual([...doc.select({ generated: true })], [1]);
  assert.deepEqual([...doc.select({ numbers: "2-12" })], [0, 2]);
  const error = await catchError(() => doc.select({ numbers: "a" }));
  assert.match(error.message, /^numbers cannot be "a", only /);
});

test("the report is the program's page", async () => {
  const { folder, doc } = await openBoth("model.xml");
  const page = run(folder, "report", "model.xml").toString().split("\n");
  const lines = (await doc.report()).split("\n");
  assert.equal(lines.length, page.length);
  // The program knows when the file was saved.
  const others = lines.filter((line, index) => line !== page[index]);
  assert.equal(others.length, 2);
  assert.match(others[0], /^@page /);
  assert.match(others[1], /^<li>Read <strong>/);
});

test("a report tells the time of the day here", async () => {
  const zone = process.env.TZ;
  try {
    for (const name of ["Asia/Kolkata", "America/New_York", "UTC"]) {
      process.env.TZ = name;
      const { doc } = await openBoth("model.xml");
      const [, shown] = /Read <strong>([^<]*)</.exec(await doc.report());
      const minutes = Math.abs(new Date(shown.replace(" ", "T")) - Date.now()) / 60000;
      assert.ok(minutes < 2, `${name}: ${shown}`);
    }
  } finally {
    if (zone === undefined) delete process.env.TZ;
    else process.env.TZ = zone;
  }
});
