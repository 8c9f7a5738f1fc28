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
