// Looks at every open document in every way, last to first, and closes it. Gives of each its name, the title
// of the page, what is said of the document, and what should not be there.
async () => {
  const known = document.querySelectorAll("script, style").length;
  const unwanted = "img, object, embed, dialog, .notice, form[action], main script";
  const paint = () => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve)));
  const settle = async () => {
    do await paint();
    while (!document.getElementById("working").hidden);
  };
  const look = async () => {
    const view = document.querySelector("main > section:not([hidden])");
    for (const tab of [...view.querySelectorAll("[role=tab]")].reverse()) {
      tab.click();
      await settle();
    }
    const harm = [...document.querySelectorAll(unwanted)];
    if (document.querySelectorAll("script, style").length !== known) harm.push(document.head);
    return {
      name: document.querySelector("#documents .current bdi").textContent,
      title: document.title,
      state: view.querySelector(".card h1, .facts span:nth-child(2)").textContent,
      harm: harm.map((element) => element.outerHTML),
    };
  };
  const shown = [];
  while (document.querySelector("#documents .open")) {
    document.querySelector("#documents .open").click();
    await settle();
    shown.push(await look());
    document.querySelector("#documents .current .close").click();
    await settle();
  }
  return shown;
};
