#include "report/assets.h"

const char* const ReportAssets::styleSheet = R"(
:root {
  color-scheme: light dark;
  --paper: #ffffff;
  --panel: #f5f7f9;
  --ink: #1a2129;
  --soft: #56616e;
  --rule: #d5dbe2;
  --grid: #e3e8ed;
  --bar: #2c6491;
  --fail: #9b3a12;
  --warn: #a11e2b;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #12171c;
    --panel: #1b2229;
    --ink: #e8ecf0;
    --soft: #a4b0bc;
    --rule: #3a4550;
    --grid: #29323b;
    --bar: #74acd8;
    --fail: #f0a274;
    --warn: #ff8f8f;
  }
}
@media (forced-colors: active) {
  :root {
    --paper: Canvas;
    --panel: Canvas;
    --ink: CanvasText;
    --soft: CanvasText;
    --rule: CanvasText;
    --grid: GrayText;
    --bar: CanvasText;
    --fail: CanvasText;
    --warn: CanvasText;
  }
}
*, ::before { box-sizing: border-box; }
body {
  margin: 0 auto;
  max-width: 76rem;
  padding: 2.5rem 2rem 4rem;
  background: var(--paper);
  color: var(--ink);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", "Liberation Sans", Arial, sans-serif;
  font-variant-numeric: tabular-nums;
  overflow-wrap: break-word;
}
h1 { margin: 0; overflow: hidden; font-size: 2rem; line-height: 1.2; font-weight: 650; overflow-wrap: anywhere; }
h2 { margin: 3rem 0 .25rem; font-size: 1.25rem; line-height: 1.3; font-weight: 650; }
p { margin: 0; }
a { color: var(--bar); }
.over, .lead, .facts, footer, .hint { color: var(--soft); }
.over, .facts, .legend, .hint, .lead, .closed, footer { font-size: .875rem; }
.warn { color: var(--warn); font-weight: 650; }

.facts {
  display: grid;
  grid-template-columns: repeat(auto-fill, minmax(min(13rem, 100%), 1fr));
  gap: 1rem 2rem;
  margin: 1.5rem 0 1rem;
  padding: 1rem 0;
  list-style: none;
  border: solid var(--rule);
  border-width: 1px 0;
}
.facts strong, .facts small { display: block; overflow: hidden; overflow-wrap: anywhere; }
.facts strong { color: var(--ink); font-size: 1rem; font-weight: 600; }
.facts small { font-size: .8125rem; }

nav { display: flex; flex-wrap: wrap; gap: .25rem 1.5rem; }

.legend {
  display: grid;
  grid-template-columns: repeat(auto-fill, minmax(min(17rem, 100%), 1fr));
  gap: .25rem 2rem;
  margin: 2rem 0 0;
  padding: .875rem 1rem;
  list-style: none;
  background: var(--panel);
}
.legend li { position: relative; padding-left: 5.75rem; }
.legend b, .legend li::before { position: absolute; left: 0; font-weight: 600; }
.legend .bar::before, .legend .zero::before, .legend .beyond::before { content: ""; top: .4375rem; width: 5rem; }
.legend .bar::before { border-top: .5rem solid var(--bar); }
.legend .zero::before { width: .5rem; border: .25rem solid var(--bar); border-radius: 50%; }
.legend .beyond::before { top: .5625rem; border-top: .125rem dashed var(--warn); }

/* Pictures: rows like those of a table, their names left of the bars where there is room. The
   window of the drawing is where the bars are; names and headings stand in its margins. Directions
   stand beside one another: --at tells how many are left of one, --level how many above it, and
   --fraction the width of each. In a picture are
     d      an axis: heading, unit (u), ends of the scale (a, e), lines of decades; in the overview
            also all values (g)
     g      a row: number, name and marks (g), and for each direction a bar and a value; c of the
            current foundation, l of one that lacks the part
     z, x   bars of zero and of a value without a place on the scale (w) */
.picture {
  --row: 2.25rem;
  --base: 1rem;
  --name: 1rem;
  --second: .9375rem;
  --bar-at: .5625rem;
  --names: 17rem;
  --heading: 2.5rem;
  --head: var(--heading);
  --next: 0rem;
  --step: 34.333%;
  --fraction: .31333;
  display: block;
  width: 100%;
  height: calc(var(--head) + var(--rows) * var(--row) + 1px);
  margin: 1rem 0 1.5rem;
  padding-left: var(--names);
  border: 0 solid transparent;
  border-top-width: var(--head);
  background: linear-gradient(var(--rule) 1px, transparent 1px) 0 0 / 100% var(--row) padding-box;
  overflow: visible;
  font-size: .8125rem;
  fill: var(--ink);
}
.picture.line { --heading: 3.5rem; --step: 25.75%; --fraction: .2275; }
.picture:not(:has(.d .u)) { --heading: 2.5rem; }
.d:nth-of-type(2), .picture > g > line:nth-of-type(2), .picture > g:not(.d) > text:nth-of-type(3) { --at: 1; }
.d:nth-of-type(3), .picture > g > line:nth-of-type(3), .picture > g:not(.d) > text:nth-of-type(4) { --at: 2; }
.d:nth-of-type(4), .picture > g > line:nth-of-type(4), .picture > g:not(.d) > text:nth-of-type(5) { --at: 3; }
.picture :is(text, line, rect) { --x: calc(var(--at, 0) * var(--step)); --y: calc(var(--level, 0) * var(--next)); }

.picture > g { transform: translateY(calc(var(--i) * var(--row) + var(--base))); }
.picture text { transform: translate(var(--x), var(--y)); }
.picture tspan { fill: var(--fail); font-weight: 650; }
.picture line { stroke: var(--bar); stroke-width: .4375rem; transform: translate(var(--x), calc(var(--y) + var(--bar-at))) scaleX(var(--fraction)); }
.picture .x { stroke: var(--warn); stroke-width: .125rem; stroke-dasharray: calc(.375rem / var(--fraction)) calc(.25rem / var(--fraction)); }
.picture .z { stroke-linecap: round; transform: translate(calc(var(--x) + .21875rem), calc(var(--y) + var(--bar-at))); }
.picture g > text:first-child { transform: translate(calc(2.125rem - var(--names)), calc(var(--name) - var(--base))); text-anchor: end; fill: var(--soft); }
.picture g g { transform: translate(calc(2.75rem - var(--names)), calc(var(--name) - var(--base))); clip-path: inset(-2rem calc(100% - var(--names) + 3.25rem) -2rem 0) view-box; }
.picture g g text:first-child { transform: none; text-anchor: start; fill: inherit; }
.picture g g text + text { transform: translateY(var(--second)); fill: var(--soft); font-size: .75rem; }
.picture .c g text { font-weight: 700; fill: var(--ink); }
.picture .l, .picture .l > text:first-child { fill: var(--soft); }
.picture .l > text:last-child { font-style: italic; }

.picture .d { --lift: calc((1 - var(--level, 0)) * (var(--head) - var(--heading))); transform: none; }
.picture .d text { transform: translate(var(--x), calc(-1 * var(--lift) - .375rem)); fill: var(--soft); font-size: .75rem; }
.picture .d text:first-child { transform: translate(var(--x), calc(1rem - var(--lift) - var(--heading))); text-anchor: start; fill: var(--ink); font-size: inherit; font-weight: 650; }
.picture .d .u { transform: translate(calc(var(--x) + 1rem), calc(1rem - var(--lift) - var(--heading))); }
.line .d .u { transform: translate(var(--x), calc(-1 * var(--lift) - 1.5rem)); }
.picture .d .e { transform: translate(calc(var(--x) + 100% * var(--fraction)), calc(-1 * var(--lift) - .375rem)); text-anchor: end; }
.d tspan { font-size: .625rem; }
.picture .u, .picture .d tspan { fill: var(--soft); font-weight: 400; }
.picture g .u { font-size: .75rem; }
.picture .w { fill: var(--warn); font-weight: 650; }
.picture rect { width: calc(1px / var(--fraction)); height: 100%; fill: var(--grid); transform: translateX(var(--x)) scaleX(var(--fraction)); }
.picture .d g { transform: translateY(calc(var(--base) - var(--name))); clip-path: none; --bar-at: 1rem; }
.picture .d .x { --bar-at: 1.625rem; }
.d g rect { width: calc(1.5px / var(--fraction)); height: .5rem; fill: var(--bar); transform: translate(var(--x), calc(var(--y) + .75rem)) scaleX(var(--fraction)); }

.ranges { display: flex; flex-wrap: wrap; gap: 0 1.75rem; color: var(--soft); font-size: .875rem; }
.ranges b { color: var(--ink); font-weight: 600; }
.ranges .warn { color: var(--warn); }
p.ranges { margin: -.75rem 0 1.5rem; }
details { border-top: 1px solid var(--rule); }
summary { padding: .5rem 0; cursor: pointer; }
summary .ranges { padding-left: 1.125rem; }
.closed { display: none; }

.scroll { margin-top: 1rem; max-height: 90vh; overflow: auto; border: solid var(--rule); border-width: 1px 0; }
table { width: 100%; border-collapse: separate; border-spacing: 0; font-size: .8125rem; line-height: 1.35; }
thead { position: sticky; top: 0; z-index: 1; }
th, td { padding: .375rem .5rem; border-bottom: 1px solid var(--rule); text-align: left; vertical-align: top; }
thead th { background: var(--panel); font-weight: 600; vertical-align: bottom; white-space: nowrap; }
thead small { white-space: normal; overflow-wrap: anywhere; font-size: .75rem; font-weight: 400; color: var(--soft); }
tbody th { min-width: 9rem; max-width: 20rem; overflow: hidden; font-weight: 400; overflow-wrap: anywhere; unicode-bidi: plaintext; }
td, thead .num { text-align: right; white-space: nowrap; }
td:nth-child(3), .area td:nth-child(7), .area.line td:nth-child(13), .line:not(.area) td:nth-child(8) { text-align: left; }
.area td:nth-child(7), .area.line td:nth-child(13), .line:not(.area) td:nth-child(8), .text { padding-left: 1rem; }
td:nth-child(4), .area.line td:nth-child(9), .part { border-left: 1px solid var(--rule); }
td:nth-child(3) { white-space: normal; }
td a { white-space: nowrap; }
tr { scroll-margin-top: 4rem; }
:target > * { background: var(--panel); }
.c th, .c td { font-weight: 700; }
.f { color: var(--fail); }
th button {
  margin: -.375rem -.5rem;
  padding: .375rem .5rem;
  border: 0;
  background: none;
  color: inherit;
  font: inherit;
  cursor: pointer;
}
th button::after { content: " \2195"; content: " \2195" / ""; color: var(--soft); }
th[aria-sort=ascending] button::after { content: " \2191"; content: " \2191" / ""; color: inherit; }
th[aria-sort=descending] button::after { content: " \2193"; content: " \2193" / ""; color: inherit; }
:focus-visible { outline: 3px solid var(--bar); outline-offset: -3px; }
a:focus-visible, summary:focus-visible { outline-offset: 2px; }

.findings { margin: 1rem 0 0; padding: 0; list-style: none; }
.findings a { margin-right: .5rem; }
.findings li { overflow: hidden; padding: .375rem 0; border-bottom: 1px solid var(--rule); overflow-wrap: anywhere; }
.place { display: inline-block; min-width: 10rem; margin-right: 1rem; color: var(--soft); }
footer { margin-top: 3rem; }

/* Where four directions leave no room for units, these stand only in the headings. */
@media (max-width: 75rem) { .line > g:not(.d) .u { display: none; } }

/* Narrow windows, also by magnification: names above the bars. */
@media screen and (max-width: 60rem) {
  body { padding: 1.25rem 1rem 3rem; }
  h1 { font-size: 1.5rem; }
  .picture { --mark: .9375rem; --base: calc(2.25rem + var(--mark)); --row: calc(3.5rem + var(--mark) + var(--next)); padding-left: 0; font-size: .75rem; }
  .picture:not(:has(g g text + text)) { --mark: 0rem; }
  .picture > g:not(.d) .u { display: none; }
  .picture > g:not(.d) > text:first-child { transform: translateY(calc(var(--name) - var(--base))); text-anchor: start; }
  .picture > g:not(.d) > g { transform: translate(2.75rem, calc(var(--name) - var(--base))); clip-path: inset(-2rem 2.75rem -2rem 0) view-box; }
  .place { display: block; }
  .scroll { max-height: none; }
  thead { position: static; }
}
/* Still narrower ones: two directions below the others. */
@media screen and (max-width: 34rem) {
  .picture, .picture.line { --head: calc(2 * var(--heading) + .25rem); --next: 2.25rem; --step: 51.5%; --fraction: .485; }
  .d:nth-of-type(3), .picture > g > line:nth-of-type(3), .picture > g:not(.d) > text:nth-of-type(4) { --at: 0; --level: 1; }
  .d:nth-of-type(4), .picture > g > line:nth-of-type(4), .picture > g:not(.d) > text:nth-of-type(5) { --at: 1; --level: 1; }
  .d > rect { display: none; }
}

@page { size: A4; margin: 14mm 12mm; }
@media print {
  :root {
    color-scheme: light;
    --paper: #ffffff;
    --panel: #f5f7f9;
    --ink: #000000;
    --soft: #47505b;
    --rule: #b4bcc6;
    --grid: #dde2e8;
    --bar: #2c6491;
    --fail: #8a2f0a;
    --warn: #961522;
  }
  html { font-size: 12.5px; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  body { max-width: none; padding: 0; }
  nav, .hint { display: none; }
  h2 { margin-top: 1.5rem; break-after: avoid; }
  .over, .facts, .facts small, .legend, .lead, .closed, .ranges, footer, table, thead small { font-size: .8125rem; }
  .facts { gap: .5rem 2rem; margin: 1rem 0; padding: .5rem 0; }
  .legend { margin-top: 1rem; padding: .5rem .75rem; }
  .lead, summary, .picture:has(+ .ranges) { break-after: avoid; }
  .facts, .legend, .lead, .picture, .findings li, tr, p.ranges, summary { break-inside: avoid; }
  .picture { --names: 14.5rem; --row: 1.85rem; --base: .8125rem; --name: .8125rem; --second: .8125rem; --bar-at: .4375rem; margin: .5rem 0 .75rem; }
  .picture .d text, .d tspan, .picture g .u, .picture g g text + text { font-size: .8125rem; }
  .picture line { stroke-width: .375rem; }
  summary { padding: .25rem 0; list-style: none; }
  summary .ranges { padding: 0; }
  /* What is folded is printed, or where it cannot be a sentence tells of it. */
  details::details-content { content-visibility: visible; }
  .scroll { max-height: none; overflow: visible; }
  thead { position: static; display: table-header-group; }
  th, td { padding: .25rem .125rem; }
  thead th { white-space: normal; }
  tbody th { min-width: 6rem; }
  td, .v { white-space: normal; }
  .v { overflow-wrap: anywhere; }
  th button { margin: 0; padding: 0; }
  th button::after { content: none; }
}
@supports not selector(details::details-content) {
  @media print { .closed { display: block; break-after: avoid; } }
}
)";

const char* const ReportAssets::script = R"(
(() => {
  const body = document.querySelector("tbody");
  if (!body) return;
  const rows = [...body.rows];
  const heads = [...document.querySelectorAll("th[data-column]")];
  const collator = new Intl.Collator("en", { numeric: true });

  // What is not there, or not a number, stands last either way.
  const readKey = (cell, isNumber) => {
    const text = cell.textContent;
    if (text === "\u2013" || (isNumber && text === "nan")) return null;
    if (!isNumber) return text;
    return text.endsWith("inf") ? (text[0] === "-" ? -Infinity : Infinity) : Number(text);
  };

  const sort = (head) => {
    const isDown = head.getAttribute("aria-sort") === "ascending";
    const isNumber = head.classList.contains("num");
    for (const other of heads) other.removeAttribute("aria-sort");
    head.setAttribute("aria-sort", isDown ? "descending" : "ascending");
    const keys = new Map(rows.map((row) => [row, readKey(row.cells[head.dataset.column], isNumber)]));
    const compare = isNumber ? (a, b) => (a < b ? -1 : a > b ? 1 : 0) : collator.compare;
    const sorted = [...rows].sort((a, b) => {
      const x = keys.get(a), y = keys.get(b);
      if (x === null || y === null) return (x === null) - (y === null);
      return isDown ? compare(y, x) : compare(x, y);
    });
    body.append(...sorted);
  };

  for (const head of heads) {
    const button = document.createElement("button");
    button.type = "button";
    button.append(...head.childNodes);
    button.addEventListener("click", () => sort(head));
    head.append(button);
  }
  document.querySelector(".hint").hidden = false;
})();
)";

const char* const ReportAssets::scriptSha256 = "ERAEH7jr4KWhLDFzwQA2usBNYV68g8jIufvGvLyCFvM=";
