// Works the page for browsers in Firefox, on the roads where browsers may differ:
//   node --test firefox.mjs
// KVFOUND_PAGE names the page, KVFOUND_PROGRAM the program, whose results are the measure, and
// KVFOUND_FIREFOX the browser. puppeteer-core is found through NODE_PATH.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import { createRequire } from "node:module";
import os from "node:os";
import path from "node:path";
import { after, before, beforeEach, test } from "node:test";
import { fileURLToPath, pathToFileURL } from "node:url";

const puppeteer = createRequire(import.meta.url)("puppeteer-core");
const project = fileURLToPath(new URL("../../../", import.meta.url));
const model = path.join(project, "examples/model.xml");
const view = "main > section:not([hidden])";

const folder = fs.mkdtempSync(path.join(os.tmpdir(), "kvfound-firefox-"));
const downloads = path.join(folder, "downloads");
let browser;
let page;
let errors = [];

before(async () => {
  fs.mkdirSync(downloads);
  browser = await puppeteer.launch({
    browser: "firefox",
    executablePath: process.env.KVFOUND_FIREFOX ?? "/usr/bin/firefox-esr",
    extraPrefsFirefox: {
      "browser.download.alwaysOpenPanel": false, // it would take the keys
      "browser.download.dir": downloads,
      "browser.download.folderList": 2,
      "browser.helperApps.neverAsk.saveToDisk": "application/octet-stream",
    },
  });
});

after(async () => {
  await browser?.close();
  fs.rmSync(folder, { recursive: true });
});

beforeEach(async () => {
  await page?.close();
  page = await browser.newPage();
  errors = [];
  page.on("pageerror", (error) => errors.push(error.message));
  page.on("console", (message) => message.type() === "error" && errors.push(message.text()));
  await page.goto(pathToFileURL(process.env.KVFOUND_PAGE).href);
  await page.waitForSelector("body.ready");
});

async function choose(file) {
  const input = await page.$("#files");
  await input.uploadFile(file);
  const name = path.basename(file);
  await page.waitForFunction(
    (wanted) => [...document.querySelectorAll("#documents bdi")].some((e) => e.textContent === wanted),
    {},
    name,
  );
  await settle();
}

async function settle() {
  await page.waitForFunction(() => document.getElementById("working").hidden);
  await page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve, 30))));
}

/** Clicks the visible button or tab whose text starts so. */
async function click(label) {
  const isClicked = await page.evaluate((wanted) => {
    const dialog = document.querySelector("dialog[open]");
    const buttons = (dialog ?? document).querySelectorAll("button, [role=tab]");
    const button = [...buttons].find((e) => e.offsetParent && !e.disabled && e.textContent.trim().startsWith(wanted));
    button?.focus();
    return Boolean(button);
  }, label);
  assert.ok(isClicked, `there is no ${label}`);
  await page.keyboard.press("Enter");
  await settle();
}

function readRows() {
  return page.$$eval(`${view} .grid [data-row] .name .text`, (cells) => cells.map((cell) => cell.textContent));
}

/** What is saved, once it is among the downloads. */
async function takeDownload() {
  for (let i = 0; i < 500; ++i) {
    const names = fs.readdirSync(downloads);
    const file = path.join(downloads, names[0] ?? "");
    if (names.length === 1 && !names[0].endsWith(".part") && fs.statSync(file).size > 0) {
      const bytes = fs.readFileSync(file);
      fs.rmSync(file);
      return bytes;
    }
    await new Promise((resolve) => setTimeout(resolve, 20));
  }
  const state = await page.$eval("dialog[open], #notices", (place) => place.textContent);
  throw new Error(`nothing was saved: ${state} ${fs.readdirSync(downloads)}`);
}

async function save() {
  await click("Save");
  await click("Save ");
  return takeDownload();
}

test("the sample opens without a document, and is saved as it is", async () => {
  await click("Try it");
  assert.equal((await readRows()).length, 12);
  assert.deepEqual(await save(), fs.readFileSync(model));
  assert.deepEqual(errors, []);
});

test("a value is set with the keyboard alone, undone, and saved as the program does", async () => {
  await choose(model);
  await page.focus(`${view} .grid`);
  for (const key of ["ArrowDown", "ArrowDown", "Home", "ArrowRight", "ArrowRight", "ArrowRight"])
    await page.keyboard.press(key);
  await page.keyboard.type("4711");
  await page.keyboard.press("Enter");
  await settle();
  const copy = path.join(folder, "model.xml");
  fs.copyFileSync(model, copy);
  execFileSync(process.env.KVFOUND_PROGRAM, ["set", copy, "3", "areaX=4711"]);
  assert.notDeepEqual(fs.readFileSync(copy), fs.readFileSync(model));
  assert.deepEqual(await save(), fs.readFileSync(copy));
  await page.keyboard.down("Control");
  await page.keyboard.press("z");
  await page.keyboard.up("Control");
  await settle();
  assert.deepEqual(await save(), fs.readFileSync(model));
  assert.deepEqual(errors, []);
});

test("a document that cannot be read shows where", async () => {
  const broken = path.join(folder, "broken.xml");
  fs.writeFileSync(broken, fs.readFileSync(model, "utf8").replace("Ground anchor", "Ground <anchor"));
  await choose(broken);
  assert.match(await page.$eval(`${view} .card`, (card) => card.textContent), /Line 20/);
  assert.match(await page.$eval(`${view} mark`, (mark) => mark.textContent), /<anchor/);
  assert.deepEqual(errors, []);
});

test("every way to look at a document works", async () => {
  await choose(model);
  for (const tab of ["Findings", "Document", "Report", "Compare"]) await click(tab);
  await click("Report");
  const frame = await (await page.$(`${view} iframe`)).contentFrame();
  await frame.waitForSelector("#find");
  await click("Document");
  assert.match(await page.$eval(`${view} .source code`, (line) => line.textContent), /^<\?xml/);
  assert.deepEqual(errors, []);
});

test("only visible rows of many are made", async () => {
  const large = path.join(folder, "large.xml");
  const rows = Array.from({ length: 100_000 }, (_, i) => `<FOUND NUMBER="${i + 1}" NAME="Pad ${i + 1}" FXAREA="1"/>\n`);
  fs.writeFileSync(large, `<?xml version="1.0"?>\n<SMOD VERSION="12">\n<FOUNDATIONS>\n${rows.join("")}</FOUNDATIONS>\n</SMOD>\n`);
  await choose(large);
  await page.focus(`${view} .grid`);
  await page.keyboard.down("Control");
  await page.keyboard.press("End");
  await page.keyboard.up("Control");
  await settle();
  const names = await readRows();
  assert.ok(names.includes("Pad 100000"), names.join());
  assert.ok(names.length < 100);
  assert.deepEqual(errors, []);
});
