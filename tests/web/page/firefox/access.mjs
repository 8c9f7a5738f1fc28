// Working without a mouse, and what axe-core says.
import assert from "node:assert/strict";
import fs from "node:fs";
import { test } from "node:test";

import { choose, edit, focusPage, hold, isSeen, load, model, openDialog, openTab, page, press, read, readAll, readRows, runAsBrowser, setCell, settle, takeDownload, view, wait, waitFor, write } from "./support.mjs";

/** Goes to the start of the page, where one comes in from the browser's own controls. */
async function enterPage() {
  await focusPage();
  await page.evaluate(() => getSelection().collapse(document.body, 0));
  await press("Tab");
}

/** Presses Tab until what has the focus says this. */
async function tabTo(words) {
  const said = [];
  for (let i = 0; i < 80; ++i) {
    await press("Tab");
    if (!(await page.evaluate(() => document.hasFocus()))) await enterPage();
    const [name, outline] = await page.evaluate(() => {
      const e = document.activeElement;
      const field = e.closest(".field, .tick")?.textContent.trim();
      return [e.ariaLabel || field || e.textContent.trim() || e.id, getComputedStyle(e).outlineStyle];
    });
    said.push(name.slice(0, 30));
    if (!name.startsWith(words)) continue;
    assert.notEqual(outline, "none", `${words} does not show that it has the focus`);
    return;
  }
  assert.fail(`${words} is not reached: ${said.join(", ")}`);
}

test("a document is opened, looked at, changed, narrowed down and saved by keys alone", async () => {
  await tabTo("Try it");
  await press("Enter");
  await wait(async () => (await readRows()).length === 12);
  await settle();
  await tabTo("Table");
  await press("ArrowRight");
  await settle();
  assert.ok(await isSeen(`${view} .pane .lead`));
  await press("End");
  await press("Home");
  await tabTo("Number or name");
  await page.keyboard.type("Ground anchor");
  await tabTo("Foundations");
  await press("Home", "ArrowRight");
  await page.keyboard.type("Anchor");
  await press("Enter");
  await settle();
  await tabTo("KvFound, to the start"); // round the page
  await tabTo("Save …");
  await press("Enter");
  await waitFor("dialog[open]");
  await press("Enter");
  const { name, bytes } = await takeDownload();
  assert.equal(name, "model.xml");
  assert.deepEqual(bytes, edit(model, "set", "9", "name=Anchor"));
  await wait(async () => !(await isSeen("dialog")));
  assert.equal(await page.evaluate(() => document.activeElement.textContent), "Save …");
  await hold(["Control"], "z");
  await settle();
  assert.match(await read("#notices"), /Undone/);
});

test("every control is reached by Tab", async () => {
  await choose(model);
  await setCell(2, "areaZ", "1");
  await page.evaluate(() => document.activeElement.blur());
  for (const name of ["KvFound, to the start", "Close model.xml", "Open …", "Paste …", "Undo", "Add …", "Prune …", "Merge …", "Print", "Save …", "Table", "Foundations"])
    await tabTo(name);
});

const axe = fs.readFileSync(process.env.KVFOUND_AXE, "utf8");

async function assess(what) {
  await page.evaluate(`${axe}; window.axe = axe; 0`);
  const found = await page.evaluate(async () => {
    // Colours that are still changing are judged when they stand.
    await Promise.allSettled(document.getAnimations().map((animation) => animation.finished));
    const { violations } = await window.axe.run({ iframes: false });
    return violations.map(({ id, nodes }) => [id, ...nodes.map((node) => node.html)]);
  });
  assert.deepEqual(found, [], what);
}

async function assessStates() {
  await assess("start");
  const odd = [['NUMBER="4" NAME="Slab on dense sand" FXAREA="8000"', 'NUMBER="3" NAME="Slab" FXAREA="-8000"']];
  await choose(write("odd.xml", odd));
  await setCell(2, "areaZ", "1");
  for (const tab of ["Table", "Findings", "Document", "Report"]) {
    await openTab(tab);
    await assess(tab);
  }
  await choose(model);
  await openTab("Compare");
  await assess("Compare");
  for (const tool of ["Add", "Prune", "Merge", "Save"]) {
    await openDialog(tool);
    await assess(tool);
    await press("Escape");
    await wait(async () => !(await isSeen("dialog")));
  }
  await choose(write("broken.xml", [["Ground anchor beam", "Ground <anchor"]]));
  await assess("error");
  assert.ok((await page.evaluate(() => document.documentElement.scrollWidth - innerWidth)) <= 0);
  assert.deepEqual(await readAll("#documents bdi"), ["odd.xml", "model.xml", "broken.xml"]);
}

/** Has pages drawn in dark or light colours. */
async function setScheme(scheme) {
  const name = "layout.css.prefers-color-scheme.content-override";
  await runAsBrowser(`Services.prefs.setIntPref("${name}", ${scheme === "dark" ? 0 : 1})`);
  await wait(() => page.evaluate((wanted) => matchMedia(`(prefers-color-scheme: ${wanted})`).matches, scheme));
}

for (const scheme of ["light", "dark"])
  for (const width of [1280, 320])
    test(`axe finds nothing in ${scheme} at ${width} px`, async () => {
      await setScheme(scheme);
      await load();
      await page.setViewport({ width, height: 800 });
      await assessStates();
    });
