// What the tests of the engine share. KVFOUND_ENGINE names the WebAssembly, KVFOUND_PROGRAM the program
// kvfound, whose results are the measure.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";

import * as engine from "../../../tools/web/page/engine.js";

export { engine };

export const project = fileURLToPath(new URL("../../../", import.meta.url));

const program = process.env.KVFOUND_PROGRAM;
assert.ok(program, "KVFOUND_PROGRAM names the program");
await engine.ready(fs.readFileSync(process.env.KVFOUND_ENGINE));

const root = fs.mkdtempSync(path.join(os.tmpdir(), "kvfound-web-"));
process.on("exit", () => fs.rmSync(root, { recursive: true }));

/** A new empty folder. */
export function makeFolder() {
  return fs.mkdtempSync(path.join(root, "test-"));
}

/** Runs the program in a folder; its exit status is 0 or 1, findings. */
export function run(folder, ...args) {
  const { status, stdout, stderr } = spawnSync(program, args, { cwd: folder });
  assert.ok(status === 0 || status === 1, `kvfound ${args.join(" ")}: ${stderr}`);
  return stdout;
}

/** The error of the program, which must fail. */
export function fail(folder, ...args) {
  const { status, stderr } = spawnSync(program, args, { cwd: folder });
  assert.equal(status, 2, `kvfound ${args.join(" ")}: ${stderr}`);
  return stderr.toString();
}

/** Documents of every form, by file name. */
export const documents = new Map(
  ["model.xml", "beddings.xml", "beddings-1.0.xml", "soil.csv"].map((name) => [
    name,
    fs.readFileSync(path.join(project, "examples", name)),
  ]),
);
{
  const folder = makeFolder();
  fs.writeFileSync(path.join(folder, "model.xml"), documents.get("model.xml"));
  run(folder, "convert", "model.xml", "data.json", "--to", "json");
  run(folder, "convert", "model.xml", "german.csv", "--to", "csv", "--decimal", "comma");
  documents.set("data.json", fs.readFileSync(path.join(folder, "data.json")));
  documents.set("german.csv", fs.readFileSync(path.join(folder, "german.csv")));
  const seed = path.join(project, "fuzz/seeds/check/code_page.xml");
  documents.set("code_page.xml", fs.readFileSync(seed));
}

/** A folder with one of the documents, and the same open in the engine. */
export async function openBoth(name) {
  const folder = makeFolder();
  fs.writeFileSync(path.join(folder, name), documents.get(name));
  return { folder, doc: await engine.open(name, documents.get(name)) };
}

export function read(folder, name) {
  return fs.readFileSync(path.join(folder, name));
}

/** That two documents have the same bytes. */
export function assertSame(actual, expected) {
  assert.equal(Buffer.from(actual).toString("latin1"), expected.toString("latin1"));
}

export function encode(text) {
  return new TextEncoder().encode(text);
}

/** The error that a call ends with. */
export async function catchError(call) {
  try {
    await call();
  } catch (error) {
    if (error instanceof engine.EngineError) return error;
    throw error;
  }
  throw new Error("nothing failed");
}

/** The place of the foundation with this number. */
export function findNumber(doc, number) {
  return doc.values("number").indexOf(number);
}

/** The bytes that are in use, once all others have gone back. */
export async function measureMemory() {
  assert.ok(globalThis.gc, "node --expose-gc");
  for (let i = 0; i < 3; ++i) {
    globalThis.gc();
    await new Promise((resolve) => setTimeout(resolve, 20));
  }
  const { arrayBuffers, external, heapUsed } = process.memoryUsage();
  return arrayBuffers + external + heapUsed;
}
