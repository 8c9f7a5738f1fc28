"use strict";

// The menu of narrow screens, the search, and what the keyboard can scroll.
(() => {
  /// What is of the page itself is named so that no heading is.
  const byId = (id) => document.getElementById(`page-${id}`);
  const most = 30; // results shown

  const menu = byId("menu");
  const contents = byId("contents");
  const form = byId("search");
  const query = byId("query");
  const results = byId("results");
  const list = results.querySelector("ol");
  const status = results.querySelector("p");
  const top = document.body.dataset.top;

  document.documentElement.classList.add("scripted");
  menu.hidden = false;
  form.hidden = false;

  menu.addEventListener("click", () => {
    const isOpen = contents.classList.toggle("open");
    menu.setAttribute("aria-expanded", String(isOpen));
  });

  const current = contents.querySelector("[aria-current]");
  if (current && contents.scrollHeight > contents.clientHeight)
    contents.scrollTop = current.offsetTop - contents.clientHeight / 2;

  /// What is cut off can be scrolled with the keyboard, too.
  const letScroll = () => {
    for (const box of document.querySelectorAll("pre, .scroll, #page-sections, #page-contents")) {
      if (box.scrollWidth > box.clientWidth || box.scrollHeight > box.clientHeight) box.tabIndex = 0;
      else box.removeAttribute("tabindex");
    }
  };
  addEventListener("resize", letScroll);
  letScroll();

  // --- Search

  /// The sections are loaded when somebody begins to search, as a script: pages that were opened
  /// from the file system may load nothing else.
  let loading = null;
  const load = () => {
    loading = loading || new Promise((resolve) => {
      const script = document.createElement("script");
      script.src = `${top}/search.js`;
      script.addEventListener("load", () => resolve(window.manualSections));
      script.addEventListener("error", () => resolve([]));
      document.head.append(script);
    });
    return loading;
  };

  const normalize = (text) => text.toLowerCase().normalize("NFKD");

  /// How well a section fits one word: words of titles count most, and whole words more.
  const rate = (section, word) => {
    const title = normalize(section.title);
    const text = normalize(section.text);
    if (title === word) return 100;
    if (title.split(/\W+/).includes(word)) return 40;
    if (title.includes(word)) return 20;
    if (normalize(section.page).includes(word)) return 8;
    if (text.split(/\W+/).includes(word)) return 4;
    return text.includes(word) ? 2 : 0;
  };

  /// Pages come before their sections, and behind all what is for few.
  const lasts = { "maintainers/": 0.1, "changelog.html": 0.2, "manual-page.html": 0.6 };
  const weigh = (section) => {
    const last = Object.keys(lasts).find((start) => section.address.startsWith(start));
    return (section.page === "" ? 1.5 : 1) * (last ? lasts[last] : 1);
  };

  const find = (sections, words) =>
    sections
      .map((section) => ({ section, rates: words.map((word) => rate(section, word)) }))
      .filter(({ rates }) => rates.every((value) => value > 0))
      .map(({ section, rates }) => ({ section, sum: rates.reduce((a, b) => a + b, 0) * weigh(section) }))
      .sort((a, b) => b.sum - a.sum)
      .map(({ section }) => section);

  const excerpt = (section, words) => {
    const at = Math.max(0, ...words.map((word) => normalize(section.text).indexOf(word)));
    const start = Math.max(0, at - 50);
    const text = section.text.slice(start, start + 150);
    return `${start > 0 ? "... " : ""}${text}${start + 150 < section.text.length ? " ..." : ""}`;
  };

  const makeItem = (section, words) => {
    const item = document.createElement("li");
    const link = document.createElement("a");
    const title = document.createElement("b");
    const text = document.createElement("small");
    link.href = `${top}/${section.address}`;
    title.textContent = section.page ? `${section.page}: ${section.title}` : section.title;
    text.textContent = excerpt(section, words);
    link.append(title, text);
    item.append(link);
    return item;
  };

  const close = () => {
    results.hidden = true;
  };

  const search = async () => {
    const words = normalize(query.value).split(/\s+/).filter(Boolean);
    if (words.length === 0) return close();
    const found = find(await load(), words);
    const shown = found.slice(0, most);
    status.textContent = found.length === 0 ? "Nothing found" : found.length === 1 ? "1 section" : `${found.length} sections`;
    if (found.length > most) status.textContent += `, the best ${most} are shown`;
    list.replaceChildren(...shown.map((section) => makeItem(section, words)));
    results.hidden = false;
  };

  query.addEventListener("focus", load);
  query.addEventListener("input", search);
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    const first = list.querySelector("a");
    if (!results.hidden && first) first.click();
  });
  list.addEventListener("click", close);

  /// Arrows go from the field to the results and back, Escape closes, "/" begins.
  addEventListener("keydown", (event) => {
    const links = [query, ...list.querySelectorAll("a")];
    const at = links.indexOf(document.activeElement);
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (event.key === "Escape" && !results.hidden) {
      close();
      query.focus();
    } else if (step && at >= 0 && !results.hidden) {
      event.preventDefault();
      links[Math.min(Math.max(at + step, 0), links.length - 1)].focus();
    } else if (event.key === "/" && !/^(input|textarea)$/i.test(document.activeElement.tagName)) {
      event.preventDefault();
      query.focus();
    }
  });
  addEventListener("click", (event) => {
    if (!results.contains(event.target) && !form.contains(event.target)) close();
  });
})();
