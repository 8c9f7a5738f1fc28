#include "report_assets.h"

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
h1 { margin: 0; font-size: 2rem; line-height: 1.2; font-weight: 650; overflow-wrap: anywhere; }
h2 { margin: 3rem 0 .25rem; font-size: 1.25rem; line-height: 1.3; font-weight: 650; }
p { margin: 0; }
a { color: var(--bar); }
.over, .lead, .facts, footer, .hint { color: var(--soft); }
.over, .facts, .legend, .hint, footer { font-size: .875rem; }
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
.facts strong, .facts small { display: block; overflow-wrap: anywhere; }
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
   window of the drawing is where the bars are; names and headings stand in its margins.
     h, hu      heading of a direction, its unit
     a, e, s    end of a scale, text at the right, superscript
     r          row: c of the current foundation, l of one that lacks the part, o of all together
     no, n, m   number, name and marks
     g          line of a decade
     f, k       failure, its arrows
     w          value without a place on the scale
     z, x, t    lines for zero, for such a value, and for one value of many */
.picture {
  --row: 2.25rem;
  --head: 2.5rem;
  --names: 17rem;
  --base: 1rem;
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
.picture .r { transform: translateY(calc(var(--i) * var(--row) + var(--base))); }
.picture .h { transform: translateY(-1.5rem); font-weight: 650; }
.picture .hu { transform: translateY(-1.5rem); }
.picture .a { transform: translateY(-.375rem); }
.picture .a, .picture .hu { fill: var(--soft); font-size: .75rem; }
.picture .e { text-anchor: end; }
.picture .r tspan { fill: var(--soft); font-size: .75rem; }
.picture .s { font-size: .5625rem; }
.picture .no { transform: translateX(calc(2rem - var(--names))); text-anchor: end; fill: var(--soft); }
.picture .n { transform: translateX(calc(2.75rem - var(--names))); }
.picture .m { transform: translate(calc(2.75rem - var(--names)), .9375rem); fill: var(--soft); font-size: .75rem; }
.picture .c .n, .picture .c .m { font-weight: 700; fill: var(--ink); }
.picture .l, .picture .l .no { fill: var(--soft); }
.picture .l text:last-child { font-style: italic; }
.picture .r .f, .picture .r .k { fill: var(--fail); font-size: inherit; font-weight: 650; }
.picture .w { fill: var(--warn); font-weight: 650; }
.picture line { stroke: var(--bar); stroke-width: .4375rem; transform: translateY(.5625rem); }
.picture .g { stroke: var(--grid); stroke-width: 1px; transform: none; }
.picture .z { stroke-linecap: round; transform: translate(.21875rem, .5625rem); }
.picture .x { stroke: var(--warn); stroke-width: .125rem; stroke-dasharray: .375rem .25rem; }
.picture .t { stroke-width: 1.5px; transform: translateY(.25rem); }
details { border-top: 1px solid var(--rule); }
summary { padding: .375rem 0; cursor: pointer; }
summary span { float: right; color: var(--soft); }

.scroll { margin-top: 1rem; max-height: 90vh; overflow: auto; border: solid var(--rule); border-width: 1px 0; }
table { width: 100%; border-collapse: separate; border-spacing: 0; font-size: .8125rem; line-height: 1.35; }
thead { position: sticky; top: 0; z-index: 1; }
th, td { padding: .375rem .5rem; border-bottom: 1px solid var(--rule); text-align: left; vertical-align: top; }
thead th { background: var(--panel); font-weight: 600; vertical-align: bottom; white-space: nowrap; }
thead small { font-size: .75rem; font-weight: 400; color: var(--soft); }
tbody th { min-width: 9rem; max-width: 20rem; font-weight: 400; overflow-wrap: anywhere; }
td, thead .num { text-align: right; white-space: nowrap; }
td:nth-child(3), td:nth-child(7), td:nth-child(13) { text-align: left; }
td:nth-child(7), td:nth-child(13), .num + .text { padding-left: 1rem; }
td:nth-child(4), td:nth-child(9), .part { border-left: 1px solid var(--rule); }
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
th button::after { content: " \2195"; color: var(--soft); }
th[aria-sort=ascending] button::after { content: " \2191"; color: inherit; }
th[aria-sort=descending] button::after { content: " \2193"; color: inherit; }
:focus-visible { outline: 3px solid var(--bar); outline-offset: -3px; }
a:focus-visible, summary:focus-visible { outline-offset: 2px; }

.findings { margin: 1rem 0 0; padding: 0; list-style: none; }
.findings li { padding: .375rem 0; border-bottom: 1px solid var(--rule); overflow-wrap: anywhere; }
.place { display: inline-block; min-width: 10rem; margin-right: 1rem; color: var(--soft); }
footer { margin-top: 3rem; }

/* Narrow windows, also by magnification: names above the bars, a unit only in the heading. */
@media screen and (max-width: 56rem) {
  body { padding: 1.25rem 1rem 3rem; }
  h1 { font-size: 1.5rem; }
  summary span { float: none; display: block; }
  .picture { --row: 3.5rem; --base: 2.25rem; --head: 3.5rem; padding-left: 0; font-size: .75rem; }
  .picture .r tspan:not(.f), .picture .o text:not(.n) { display: none; }
  .picture .h { transform: translateY(-2.5rem); }
  .picture .no { transform: translate(0, -1.25rem); text-anchor: start; }
  .picture .n { transform: translate(2.5rem, -1.25rem); }
  .picture .m { transform: translate(100%, -1.25rem); text-anchor: end; }
  .picture .l text:last-child { transform: translateX(2.5rem); }
  .place { display: block; }
  .scroll { max-height: none; }
  thead { position: static; }
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
  h2 { margin-top: 2rem; break-after: avoid; }
  .lead { break-after: avoid; }
  .facts, .legend, .picture, .findings li, tr { break-inside: avoid; }
  .picture { --names: 15rem; }
  .scroll { max-height: none; overflow: visible; }
  thead { position: static; display: table-header-group; }
  table { font-size: .6875rem; }
  th, td { padding: .25rem .25rem; }
  tbody th { min-width: 7rem; }
  td { white-space: normal; overflow-wrap: anywhere; }
  .f { white-space: nowrap; }
  th button::after { content: none; }
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
    if (text === "\u2013" || text === "nan") return null;
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

const char* const ReportAssets::scriptSha256 = "a/noJgIOjK/3nubNjZjGEfoIihxG52BK2b/9i0beefo=";
