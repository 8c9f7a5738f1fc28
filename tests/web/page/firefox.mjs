// Works the page for browsers in Firefox, on every road that a user can take:
//   node firefox.mjs
// KVFOUND_PAGE names the page, KVFOUND_PROGRAM the program, whose results are the measure, KVFOUND_AXE the script
// of axe-core, and KVFOUND_FIREFOX the browser, which is one for all tests. puppeteer-core is found through NODE_PATH.
import assert from "node:assert/strict";
import { after, afterEach, before, beforeEach } from "node:test";

import { errors, load, start, stop } from "./firefox/support.mjs";

before(start);
after(stop);
beforeEach(load);
afterEach(() => assert.deepEqual(errors, []));

await import("./firefox/opening.mjs");
await import("./firefox/table.mjs");
await import("./firefox/looking.mjs");
await import("./firefox/changing.mjs");
await import("./firefox/saving.mjs");
await import("./firefox/safety.mjs");
await import("./firefox/access.mjs");
await import("./firefox/large.mjs");
