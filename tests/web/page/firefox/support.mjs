// Works the page for browsers in Firefox by what can be seen of it. See ../firefox.mjs.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import { createRequire } from "node:module";
import os from "node:os";
import path from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const puppeteer = createRequire(import.meta.url)("puppeteer-core");

export const project = fileURLToPath(new URL("../../../../", import.meta.url));
export const examples = path.join(project, "examples");
export const model = path.join(examples, "model.xml");
export const view = "main > section:not([hidden])";

const patience = 30_000; // ms
const address = pathToFileURL(process.env.KVFOUND_PAGE).href;
const root = fs.mkdtempSync(path.join(os.tmpdir(), "kvfound für Firefox "));
const downloads = path.join(root, "downloads");

let browser;
/** The page that is worked on. */
export let page;
/** What the console tells of. */
export let errors = [];
/** Where the browser does what a page may not, see runAsBrowser(). */
let privileged;
/** Takes what the browser asks. */
let answer = (dialog) => dialog.accept();

// --- The browser

export async function start() {
  fs.mkdirSync(downloads);
  browser = await puppeteer.launch({
    browser: "firefox",
    executablePath: process.env.KVFOUND_FIREFOX ?? "/usr/bin/firefox-esr",
    args: ["--remote-allow-system-access"], // see runAsBrowser()
    extraPrefsFirefox: {
      "browser.download.alwaysOpenPanel": false, // it would take the keys
      "browser.download.dir": downloads,
      "browser.download.folderList": 2,
      "browser.helperApps.neverAsk.saveToDisk": "application/octet-stream",
      "dom.disable_beforeunload": false,
      "print.always_print_silent": true, // see printTo()
      "print_printer": "Mozilla Save to PDF",
      "print.printer_Mozilla_Save_to_PDF.print_to_file": true,
    },
  });
  // What Firefox tells there is read, or else it waits once there is too much of it.
  const { stdout, stderr } = browser.process();
  for (const stream of [stdout, stderr]) stream?.resume();
  const created = await browser.connection.send("browsingContext.create", { type: "window", background: true });
  privileged = created.result.context;
  const place = { context: privileged, url: "about:memory", wait: "complete" };
  await browser.connection.send("browsingContext.navigate", place);
}

export async function stop() {
  await browser?.close();
  fs.rmSync(root, { recursive: true });
}

/** Opens the page anew, in a tab of its own: some versions of Firefox load nothing more in one that was printed. */
export async function load() {
  await page?.close(); // what was changed in it is not asked about
  page = await browser.newPage();
  page.on("pageerror", (error) => errors.push(error.message));
  page.on("console", (message) => message.type() === "error" && errors.push(message.text()));
  page.on("dialog", (dialog) => answer(dialog));
  await page.setViewport({ width: 1280, height: 800 });
  answer = (dialog) => dialog.accept();
  for (const name of fs.readdirSync(downloads)) fs.rmSync(path.join(downloads, name));
  errors = [];
  await page.goto(address);
  await waitFor("body.ready");
  if (!(await page.evaluate(() => document.hasFocus()))) await focusPage();
}

/** Gives the page the focus that the browser's own controls have. */
export async function focusPage() {
  await runAsBrowser('Services.wm.getEnumerator("navigator:browser").getNext().gBrowser.selectedBrowser.focus()');
  await wait(() => page.evaluate(() => document.hasFocus()));
}

/** Has what the browser asks answered by a function. */
export function answerWith(given) {
  answer = given;
}

/** Gives what an expression gives in a page of the browser's own, which may do what others may not. */
export async function runAsBrowser(expression) {
  const target = { context: privileged };
  const { result } = await browser.connection.send("script.evaluate", { expression, target, awaitPromise: true });
  assert.equal(result.type, "success", JSON.stringify(result));
  return result.result.value;
}

// --- Files and the program

/** A new empty folder. */
export function makeFolder() {
  return fs.mkdtempSync(path.join(root, "test-"));
}

/** A document like another one but for some texts, by pairs. */
export function write(name, replacements = [], source = model) {
  let text = fs.readFileSync(source, "utf8");
  for (const [old, other] of replacements) {
    assert.ok(text.includes(old), old);
    text = text.replaceAll(old, other);
  }
  const file = path.join(makeFolder(), name);
  fs.writeFileSync(file, text);
  return file;
}

/** Runs the program in a folder; its exit status is 0 or 1, findings. */
export function run(folder, ...args) {
  const { status, stdout, stderr } = spawnSync(process.env.KVFOUND_PROGRAM, args, { cwd: folder, maxBuffer: 1e9 });
  assert.ok(status === 0 || status === 1, String(stderr));
  return stdout;
}

/** What it writes on standard error, where it does what it is told. */
export function tell(folder, ...args) {
  const { status, stderr } = spawnSync(process.env.KVFOUND_PROGRAM, args, { cwd: folder });
  assert.equal(status, 0, String(stderr));
  return String(stderr);
}

/** Runs it on a copy of a document and gives what becomes of that. */
export function edit(source, command, ...args) {
  const folder = makeFolder();
  const name = path.basename(source);
  fs.copyFileSync(source, path.join(folder, name));
  run(folder, command, name, ...args);
  const bytes = fs.readFileSync(path.join(folder, name));
  assert.notDeepEqual(bytes, fs.readFileSync(source));
  return bytes;
}

/** What the program tells of what it cannot do. */
export function fail(folder, ...args) {
  const { status, stderr } = spawnSync(process.env.KVFOUND_PROGRAM, args, { cwd: folder });
  assert.equal(status, 2);
  return String(stderr);
}

// --- Looking

/** Waits for what `condition` gives to be true, and returns it. */
export async function wait(condition) {
  const end = Date.now() + patience;
  for (;;) {
    const found = await condition();
    if (found) return found;
    assert.ok(Date.now() < end, `waited in vain: ${condition}`);
    await new Promise((resolve) => setTimeout(resolve, 20));
  }
}

/**
 * Waits for what a selector finds, and gives it. It asks again and again from here, since what the driver itself would
 * wait with is made of texts, which the page's policy forbids in some versions of Firefox.
 */
export function waitFor(selector) {
  return wait(() => page.$(selector));
}

/** Waits until nothing is being worked on. */
export async function settle() {
  await waitFor("#working[hidden]");
  await page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve, 20))));
}

/** The text of what is seen, as it is seen; "" where it is not. */
export function read(selector) {
  return page.evaluate((wanted) => document.querySelector(wanted)?.innerText ?? "", selector);
}

export function readAll(selector) {
  return page.$$eval(selector, (elements) => elements.map((element) => element.textContent));
}

/** The numbers and names of the rows that are made, in their order. */
export function readRows() {
  return page.$$eval(`${view} .grid [data-row]`, (rows) =>
    rows
      .sort((a, b) => a.dataset.row - b.dataset.row)
      .map((row) => [1, 2].map((i) => row.children[i].querySelector(".text").textContent)),
  );
}

export function readCell(row, key) {
  return page.$eval(`${view} .grid [data-row="${row}"] .${key} .text`, (cell) => cell.textContent);
}

export function isSeen(selector) {
  return page.evaluate((wanted) => {
    const elements = [...document.querySelectorAll(wanted)];
    return elements.some((element) => element.getClientRects().length > 0 && element.checkVisibility());
  }, selector);
}

// --- Working

export async function choose(...files) {
  const input = await page.$("#files");
  await input.uploadFile(...files);
  const name = path.basename(files.at(-1));
  await wait(async () => (await readAll("#documents bdi")).includes(name));
  await settle();
}

export async function press(...keys) {
  for (const key of keys) await page.keyboard.press(key);
}

/** Presses a key while others are held. */
export async function hold(held, key) {
  for (const one of held) await page.keyboard.down(one);
  await page.keyboard.press(key);
  for (const one of held) await page.keyboard.up(one);
}

/** Clicks what is seen of a kind and whose text starts so. */
export async function click(label, within = "body", kinds = ["button", "[role=tab]"]) {
  await wait(async () => {
    const places = kinds.map((kind) => `${within} ${kind}`).join();
    const found = await page.evaluateHandle(
      (wanted, start) =>
        [...document.querySelectorAll(wanted)].find(
          (e) => e.getClientRects().length > 0 && !e.disabled && e.innerText.trim().startsWith(start),
        ),
      places,
      label,
    );
    const element = found.asElement();
    await element?.click();
    return element;
  });
  await settle();
}

export function openTab(label) {
  return click(label, `${view} .tabs`);
}

export async function openDialog(label) {
  await click(label, `${view} .tools`);
  await waitFor("dialog[open]");
}

/** Does what the open dialog is there for. */
export async function submit() {
  await page.click("dialog .primary");
  await settle();
}

export function tick(label, within = "dialog") {
  return click(label, within, ["label"]);
}

/** The field behind a label. */
async function findField(label, within) {
  const field = await page.evaluateHandle(
    (wanted, start) =>
      [...document.querySelectorAll(`${wanted} .field`)]
        .find((e) => e.getClientRects().length > 0 && e.innerText.trim().startsWith(start))
        ?.querySelector("input, select, textarea"),
    within,
    label,
  );
  assert.ok(field.asElement(), `there is no ${label}`);
  return field.asElement();
}

export async function select(label, text, within = "dialog") {
  const field = await findField(label, within);
  const value = await field.evaluate((e, wanted) => [...e.options].find((o) => o.text === wanted).value, text);
  await field.select(value);
  await settle();
}

export async function fill(label, text, within = "dialog") {
  const field = await findField(label, within);
  await field.focus();
  await hold(["Control"], "a");
  await page.keyboard.type(text);
  await settle();
}

/** Brings a text into the clipboard, as from another program. */
export async function copyText(text) {
  await click("Paste");
  await page.$eval("dialog textarea", (area, given) => (area.value = given), text);
  await page.focus("dialog textarea");
  await hold(["Control"], "a");
  await hold(["Control"], "c");
  await press("Escape");
  await wait(async () => !(await isSeen("dialog")));
}

/** Makes a cell the active one by keys alone. */
export async function goToCell(row, key) {
  await page.focus(`${view} .grid`);
  await hold(["Control"], "Home");
  const keys = await page.$$eval(`${view} .heads > *`, (cells) => cells.map((e) => e.className.trim().split(" ").at(-1)));
  await press(...Array(row).fill("ArrowDown"), ...Array(keys.indexOf(key) - 1).fill("ArrowRight"));
}

/** Writes a value with the keyboard alone, over the one that is there. */
export async function setCell(row, key, text) {
  await goToCell(row, key);
  await press("F2");
  await hold(["Control"], "a");
  await page.keyboard.type(text);
  await press("Enter");
  await settle();
}

export async function undo() {
  await hold(["Control"], "z");
  await settle();
}

export async function redo() {
  await hold(["Control"], "y");
  await settle();
}

/** The name and the bytes of what is saved. */
export async function save({ form = "", spreadsheet = "" } = {}) {
  await openDialog("Save");
  if (form) await tick(form);
  if (spreadsheet) await select("For a spreadsheet", spreadsheet);
  await submit();
  return takeDownload();
}

/** The same of the document as it stands, in its own form. */
export async function saveBytes() {
  return (await save()).bytes;
}

/** What is saved, once it is among the downloads. */
export function takeDownload() {
  return wait(() => {
    const names = fs.readdirSync(downloads);
    const file = path.join(downloads, names[0] ?? "");
    if (names.length !== 1 || names[0].endsWith(".part") || fs.statSync(file).size === 0) return null;
    const bytes = fs.readFileSync(file);
    fs.rmSync(file);
    return { name: names[0], bytes };
  });
}

/** The file that a page goes to which is printed by what is done. */
export async function printTo(act) {
  const file = path.join(makeFolder(), "paper.pdf");
  const name = "print.printer_Mozilla_Save_to_PDF.print_to_filename";
  await runAsBrowser(`Services.prefs.setStringPref("${name}", ${JSON.stringify(file)})`);
  await page.evaluate(() => addEventListener("afterprint", () => (window.isPrinted = true)));
  await act();
  await wait(() => page.evaluate(() => window.isPrinted));
  await wait(() => fs.existsSync(file) && fs.readFileSync(file).subarray(-8).includes("%%EOF"));
  return file;
}

/** What the function gives that is all of a script beside the tests of the page. */
export function runFile(name) {
  const text = fs.readFileSync(new URL(`../${name}`, import.meta.url), "utf8");
  return page.evaluate(`(${text.trimEnd().replace(/;$/, "")}\n)()`);
}
