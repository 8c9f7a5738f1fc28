// Whatever is given to the engine, it answers or tells an error, and goes on.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";

import { catchError, encode, engine, makeFolder, project } from "./support.mjs";

const folder = path.join(project, "fuzz");

/** All files below a folder. */
function* listFiles(below) {
  for (const name of fs.readdirSync(below)) {
    const place = path.join(below, name);
    if (fs.statSync(place).isDirectory()) yield* listFiles(place);
    else yield place;
  }
}

/** Whatever can be done with a document; errors are those that the engine tells. */
async function useAll(doc, other) {
  const calls = [
    () => doc.info(),
    () => doc.rows(doc.sort()),
    () => doc.find("a"),
    () => doc.check(),
    () => doc.report(),
    () => doc.set(0, "areaZ", "12.5"),
    () => doc.set(0, "name", "</script><b>"),
    () => doc.add({ name: "]]>&amp;" }),
    () => doc.check(),
    () => doc.lines(1, 1000),
    () => doc.compare(other),
    () => doc.comparePage(other),
    () => doc.merge(other, { onClash: "replace" }),
    ...engine.forms().map(({ form }) => () => doc.losses(form)),
    ...engine.forms().map(({ form }) => () => doc.save(form)),
    () => doc.prune({ generated: true }),
    () => doc.remove(0),
    () => doc.undo(),
    () => doc.redo(),
    () => doc.save(),
  ];
  for (const call of calls)
    try {
      await call();
    } catch (error) {
      assert.ok(error instanceof engine.EngineError, `${call}: ${error.stack}`);
      assert.equal(error.isFatal, false, `${call}: ${error.message}`);
    }
}

test("every seed and every regression of the fuzz targets", async () => {
  const example = await engine.example();
  const other = await engine.open(example.name, example.bytes);
  let opened = 0;
  for (const file of listFiles(folder)) {
    if (file.endsWith(".cpp") || file.endsWith(".txt")) continue;
    const bytes = fs.readFileSync(file);
    for (const options of [{}, { form: "csv" }, { form: "json" }, { isPasted: true }]) {
      let doc;
      try {
        doc = await engine.open(path.basename(file), bytes, options);
      } catch (error) {
        assert.ok(error instanceof engine.EngineError, `${file}: ${error.stack}`);
        assert.equal(error.isFatal, false, `${file}: ${error.message}`);
        assert.notEqual(error.message, "", file);
        continue;
      }
      opened += 1;
      await useAll(doc, other);
      doc.close();
    }
  }
  assert.ok(opened > 100, `${opened} documents were opened`);
});

/** What the program tells of a file while it does something with it. */
function tell(folder, ...options) {
  const given = [...options, "--messages", "json"];
  const { stdout, stderr } = spawnSync(process.env.KVFOUND_PROGRAM, given, { cwd: folder });
  const messages = stderr.toString().split("\n").filter(Boolean).map((line) => JSON.parse(line));
  return { stdout: stdout.toString(), messages };
}

/** The same words, but for what a page does not have: options, and a program that names the fields. */
function withoutProgram(sentence, fields) {
  return sentence
    .replace(/ or --from\)$/, " or its form told)")
    .replace(/say --decimal point or --decimal comma$/, "say which")
    .replace(/kvfound show --format csv names them$/, `there are ${fields}`);
}

test("every seed gives the errors, notes and findings of the program, in its words", async () => {
  const counts = { errors: 0, notes: 0, findings: 0 };
  const pickNote = ({ line, sentence }) => ({ line, sentence });
  const pickFinding = ({ line, rule, sentence }) => ({ line, rule, sentence });
  const table = tell(path.join(project, "examples"), "show", "soil.csv", "--format", "csv").stdout;
  const fields = table.split(/\r?\n/, 1)[0].replaceAll(",", ", ");
  for (const file of [...listFiles(path.join(folder, "seeds")), ...listFiles(path.join(folder, "regressions"))]) {
    const name = path.basename(file);
    const bytes = fs.readFileSync(file);
    const place = makeFolder();
    fs.writeFileSync(path.join(place, name), bytes);
    for (const form of [undefined, "csv", "json"]) {
      const from = form === undefined ? [] : ["--from", form];
      const about = `${file} ${from.join(" ")}`;
      const { messages } = tell(place, "show", name, ...from);
      const doc = await engine.open(name, bytes, { form }).catch((error) => error);
      if (doc instanceof Error) {
        const { sentence, line = 0 } = messages.at(-1);
        assert.deepEqual([doc.message, doc.line], [withoutProgram(sentence, fields), line], about);
        counts.errors += 1;
        continue;
      }
      const notes = messages.filter(({ line }) => line).map(pickNote);
      assert.deepEqual(doc.info().notes.map(pickNote), notes, about);
      const { findings } = JSON.parse(tell(place, "check", name, ...from, "--format", "json").stdout);
      const found = await doc.check();
      assert.deepEqual(found.map(pickFinding), findings.map(pickFinding), about);
      assert.deepEqual(found.map(({ severity }) => severity), findings.map(({ level }) => level), about);
      counts.notes += notes.length;
      counts.findings += findings.length;
      doc.close();
    }
  }
  assert.ok(counts.errors > 200 && counts.notes > 10 && counts.findings > 50, JSON.stringify(counts));
});

test("names that are markup, or nothing that a text can hold", async () => {
  const { name, bytes } = await engine.example();
  const doc = await engine.open(name, bytes);
  for (const text of ["<img src=x onerror=alert(1)>", "\u202e\u0000", "\ud800", "a\nb", "'\"`${1}"]) {
    try {
      doc.set(0, "name", text);
      assert.doesNotMatch(doc.rows([0])[0].cells[1], /[\u0000-\u001f\u202e]/);
      const again = await engine.open(name, await doc.save());
      assert.equal(again.cell(0, "name"), doc.cell(0, "name"));
    } catch (error) {
      assert.ok(error instanceof engine.EngineError, error.stack);
    }
  }
});

test("requests that make no sense", async () => {
  const { name, bytes } = await engine.example();
  const doc = await engine.open(name, bytes);
  const calls = [
    () => doc.rows([99]),
    () => doc.rows([-1]),
    () => doc.rows([NaN]),
    () => doc.set(99, "areaZ", "1"),
    () => doc.set(0, "nothing", "1"),
    () => doc.set(0, "", "1"),
    () => doc.remove([12]),
    () => doc.add({}),
    () => doc.add({ name: "a", areaQ: "1" }),
    () => doc.undo(),
    () => doc.redo(),
    () => doc.values("areaQ"),
    () => doc.save("docx"),
    () => doc.prune({}),
    () => doc.compare(doc, { relative: 2 }),
  ];
  for (const call of calls) {
    const error = await catchError(call);
    assert.equal(error.isFatal, false, `${call}: ${error.message}`);
  }
  assert.equal(doc.isChanged, false);
  assert.equal(doc.count, 12);
});

test("a document too large for the memory is an error, and another one opens", async () => {
  const bytes = new Uint8Array(1 << 30).fill(0x41);
  bytes.set(encode('<?xml version="1.0"?>\n<SMOD>'));
  const error = await catchError(() => engine.open("large.xml", bytes));
  assert.notEqual(error.message, "");
  const { name, bytes: sample } = await engine.example();
  assert.equal((await engine.open(name, sample)).count, 12);
});
