(() => {
  const step = 100; // rows that are made at once where the page holds them as text
  const mostPrinted = 5000;
  const data = document.getElementById("data");
  const collator = new Intl.Collator("en", { numeric: true });
  const absent = "\u2013";

  // --- Rows, of which each has the texts of its cells; those of large documents are made from text

  let parsed = null;
  const readText = () =>
    (parsed ??= data.textContent.trim().split("\n").slice(1).map((line) => line.split("\t")));

  // A copy of the mark in the heading of a direction.
  const drawMark = (head, place) => {
    const mark = head.querySelector("svg").firstElementChild.cloneNode();
    mark.setAttribute(mark.hasAttribute("cx") ? "cx" : "x", place);
    return mark;
  };

  const drawStrip = (axis, fields, heads) => {
    const svg = document.createElementNS("http://www.w3.org/2000/svg", "svg");
    svg.setAttribute("aria-hidden", "true");
    const { first, last, start, end, zero } = axis.dataset;
    for (const head of heads.filter((other) => other.dataset.field > 2).slice(first, last)) {
      const value = Number(fields[head.dataset.field]);
      const place = (Math.log10(value) - start) / (end - start);
      if (value === 0) svg.append(drawMark(head, zero));
      else if (value > 0 && value < Infinity) svg.append(drawMark(head, `${(100 * place).toFixed(1)}%`));
    }
    return svg;
  };

  const linkFindings = (cell) => {
    const words = /\d+ findings?$/.exec(cell.textContent);
    if (!words) return;
    const link = document.createElement("a");
    link.className = "warn";
    link.href = "#findings";
    link.textContent = words[0];
    cell.textContent = cell.textContent.slice(0, words.index);
    cell.append(link);
  };

  const makeRow = (fields, heads) => {
    const row = document.createElement("tr");
    if (/\bcurrent\b/.test(fields[2])) row.className = "c";
    for (const head of heads) {
      const { field } = head.dataset;
      const cell = document.createElement(field === "1" ? "th" : "td");
      if (field === "1") cell.scope = "row";
      if (head.dataset.first) {
        cell.className = head.dataset.first === "0" ? "plot" : "plot turn";
        cell.append(drawStrip(head, fields, heads));
      } else {
        const text = fields[field];
        const isFails = head.classList.contains("fails");
        cell.textContent = isFails ? text.replaceAll(", ", ",\n") : text;
        if (field === "2") linkFindings(cell);
        if (isFails) cell.className = text === "none" ? "t" : "t f";
        else if (field > 2 && /^(-(?!0$).+|nan|inf)$/.test(text)) cell.className = "w";
      }
      row.append(cell);
    }
    return row;
  };

  const makeTable = (element) => {
    const body = element.tBodies[0];
    const heads = [...element.tHead.rows[0].cells];
    const table = {
      element, body, heads, part: element.dataset.part,
      fieldOf: heads.map((head, column) => (data ? Number(head.dataset.field) : column)),
      fails: heads.findIndex((head) => head.classList.contains("fails")),
      rest: element.parentElement.nextElementSibling, limit: data ? step : Infinity, shown: [],
    };
    let items = data ? null
      : [...body.rows].map((row) => ({ row, fields: [...row.cells].map((cell) => cell.textContent) }));
    const ofPart = heads.filter((head) => head.dataset.field > 2);
    const isOfPart = (fields) =>
      ofPart.length > 0 ? ofPart.some(({ dataset }) => fields[dataset.field] !== absent)
        : fields.slice(3).every((text) => text === absent);
    table.list = () => (items ??= readText().filter(isOfPart).map((fields) => ({ row: null, fields })));
    element.hidden = false;
    return table;
  };
  const tables = [...document.querySelectorAll("table.values")].map(makeTable);

  const show = (table, limit) => {
    const rows = table.shown.slice(0, limit);
    table.body.replaceChildren(...rows.map((item) => (item.row ??= makeRow(item.fields, table.heads))));
    const left = table.shown.length - rows.length;
    const isNone = rows.length === 0;
    table.element.hidden = isNone;
    table.rest.hidden = left === 0 && !isNone;
    table.rest.replaceChildren(isNone ? "No foundation fits." : `${rows.length} of ${table.shown.length} rows. `);
    if (left === 0) return;
    const more = document.createElement("button");
    more.type = "button";
    more.textContent = `Show ${Math.min(step, left)} more`;
    more.addEventListener("click", () => {
      table.limit += step;
      show(table, table.limit);
      table.rest.querySelector("button")?.focus();
    });
    table.rest.append(more);
  };

  const offersNone = tables.some((table) => table.part === "none");
  document.querySelector("main").insertAdjacentHTML("afterbegin", `
    <form id="find" role="search" autocomplete="off">
      <label>Name <input name="q" type="search"></label>
      <label>Number <input name="number" placeholder="1-9, 12" size="9"></label>
      <label>Part <select name="part">
        <option value="">any<option value="area">area<option value="line">line
        ${offersNone ? '<option value="none">none' : ""}
      </select></label>
      <label><input name="generated" type="checkbox" value="1"> generated</label>
      <label><input name="failing" type="checkbox" value="1"> failing</label>
      <label><input name="findings" type="checkbox" value="1"> with findings</label>
      <button type="reset">Clear</button>
      <output aria-live="polite"></output>
    </form>`);
  const form = document.getElementById("find");

  // --- Search: what is asked for stands in the form and in the address, so that a link leads to it

  // The same for names that differ in case, in how marks over letters are written, or in blanks.
  const fold = (name) =>
    name.normalize("NFC").toLowerCase().replaceAll("\u03C2", "\u03C3").replace(/\s+/g, " ").trim();

  // "1-9, 12, 40-" as pairs; null where a text is not of that kind.
  const readRanges = (text) => {
    const parts = text.replace(/[\u2010-\u2015\u2212]/g, "-").replace(/(\d)\s*-\s*/g, "$1-").split(/[\s,;]+/);
    const ranges = parts.filter((part) => part !== "").map((part) => {
      const match = /^(-?\d+)(?:(-)(-?\d+)?)?$/.exec(part);
      if (!match) return null;
      const [, from, dash, to] = match;
      const ends = [Number(from), Number(to ?? (dash ? Infinity : from))];
      return [Math.min(...ends), Math.max(...ends)];
    });
    return ranges.includes(null) ? null : ranges;
  };

  const readForm = () => {
    const { q, number, part, generated, failing, findings } = Object.fromEntries(new FormData(form));
    return { q: q.trim(), number: number.trim(), part, generated, failing, findings, ranges: readRanges(number) };
  };

  const describe = (asked) =>
    [asked.q && `name \u201C${asked.q}\u201D`, asked.number && asked.ranges && `number ${asked.number}`,
      asked.part && `part ${asked.part}`, asked.generated && "generated", asked.failing && "failing",
      asked.findings && "with findings"].filter(Boolean).join(", ");

  const makeTest = (table, asked) => {
    const name = fold(asked.q);
    const ranges = asked.ranges ?? [];
    const isHidden = asked.part !== "" && asked.part !== table.part;
    return (item) => {
      const { fields } = item;
      return !isHidden &&
        (name === "" || (item.name ??= fold(fields[1])).includes(name)) &&
        (ranges.length === 0 || ranges.some(([from, to]) => from <= fields[0] && fields[0] <= to)) &&
        (!asked.generated || /\bgenerated\b/.test(fields[2])) &&
        (!asked.failing || (table.fails >= 0 && fields[table.fieldOf[table.fails]] !== "none")) &&
        (!asked.findings || /\bfinding/.test(fields[2]));
    };
  };

  // What is not there, or not a number, stands last either way.
  const readKey = (text, isNumber) => {
    if (!isNumber) return text;
    if (text === absent || text === "nan") return null;
    return text.endsWith("inf") ? (text[0] === "-" ? -Infinity : Infinity) : Number(text);
  };

  const sortItems = (items, field, { isDown, head }) => {
    const isNumber = head.classList.contains("num");
    const compare = isNumber ? (a, b) => (a < b ? -1 : a > b ? 1 : 0) : collator.compare;
    const keyed = items.map((item) => ({ item, key: readKey(item.fields[field], isNumber) }));
    keyed.sort(({ key: x }, { key: y }) => {
      if (x === null || y === null) return (x === null) - (y === null);
      return isDown ? compare(y, x) : compare(x, y);
    });
    return keyed.map(({ item }) => item);
  };

  const update = () => {
    const counts = [];
    const asked = readForm();
    for (const table of tables) {
      const all = table.list();
      table.shown = all.filter(makeTest(table, asked));
      if (table.order)
        table.shown = sortItems(table.shown, table.fieldOf[table.heads.indexOf(table.order.head)], table.order);
      counts.push(`${table.part === "none" ? "without stiffness" : table.part} ${table.shown.length} of ${all.length}`);
      show(table, table.limit);
    }
    const words = describe(asked);
    const isMistaken = asked.ranges === null;
    const { number } = form.elements;
    if (isMistaken) number.setAttribute("aria-invalid", "true");
    else number.removeAttribute("aria-invalid");
    form.querySelector("output").textContent = [
      isMistaken ? `Not asked for: number \u201C${asked.number}\u201D, since numbers are such as 1-9, 12.` : "",
      words ? `Only ${words}: ${counts.join(", ")}.` : "",
    ].join(" ").trim();
  };

  const writeAddress = () => {
    const asked = new URLSearchParams([...new FormData(form)].filter(([, value]) => value !== ""));
    for (const { part, order } of tables)
      if (order) asked.set(`sort-${part}`, `${nameHead(order.head)}${order.isDown ? "-down" : ""}`);
    const text = asked.toString();
    try {
      history.replaceState(null, "", text ? `#${text}` : location.pathname + location.search);
    } catch {
      // Some browsers forbid it in a frame or when it is done often; all else works without it.
    }
  };

  const nameHead = (head) => head.querySelector("button")?.textContent.trim().toLowerCase();

  const setOrder = (table, head, isDown) => {
    for (const other of table.heads) other.removeAttribute("aria-sort");
    table.order = head ? { head, isDown } : null;
    head?.setAttribute("aria-sort", isDown ? "descending" : "ascending");
  };

  const fill = (asked) => {
    for (const field of form.elements) {
      const value = asked.get(field.name) ?? "";
      if (field.type === "checkbox") field.checked = value === field.value;
      else if (field.name) field.value = value;
      if (field.selectedIndex < 0) field.selectedIndex = 0; // the address names no choice
    }
    for (const table of tables) {
      const [, name, down] = /^(.*?)(-down)?$/.exec(asked.get(`sort-${table.part}`) ?? "");
      setOrder(table, table.heads.find((head) => name && nameHead(head) === name), down !== undefined);
    }
    update();
  };

  // An address tells what to search for, or a place in the page, which must not be hidden.
  const follow = () => {
    const address = location.hash.slice(1);
    const isSearch = address.includes("=");
    if (isSearch || !document.getElementById(address)) fill(new URLSearchParams(isSearch ? address : ""));
    if (isSearch) form.scrollIntoView();
    else if (address) location.replace(location.href); // to what may have just come back
  };

  for (const table of tables)
    for (const head of table.heads.filter((other) => other.dataset.field)) {
      const button = document.createElement("button");
      button.type = "button";
      button.append(...[...head.childNodes].filter((node) => node.nodeName !== "SMALL"));
      button.addEventListener("click", () => {
        setOrder(table, head, head.getAttribute("aria-sort") === "ascending");
        update();
        writeAddress();
      });
      head.prepend(button);
    }

  form.addEventListener("input", () => {
    update();
    writeAddress();
  });
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("reset", (event) => {
    event.preventDefault();
    fill(new URLSearchParams());
    writeAddress();
  });
  addEventListener("hashchange", follow);
  addEventListener("beforeprint", () => tables.forEach((table) => show(table, Math.max(table.limit, mostPrinted))));
  addEventListener("afterprint", () => tables.forEach((table) => show(table, table.limit)));

  document.documentElement.classList.add("scripted");
  for (const table of tables) table.shown = table.list();
  if (data) tables.forEach((table) => show(table, table.limit));
  if (location.hash.includes("=")) follow();
})();
