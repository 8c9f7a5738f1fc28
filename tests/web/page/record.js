// Writes down into window.recorded when pictures are drawn, and how many of them lack rows of the table at its
// top, in its middle or at its end, until isDone is set.
() => {
  const recorded = (window.recorded = { times: [], gaps: 0, isDone: false });
  const grid = document.querySelector("main > section:not([hidden]) .grid");
  const place = grid.getBoundingClientRect();
  const head = grid.querySelector(".head").getBoundingClientRect();
  const heights = [head.bottom + 5, place.top + place.height / 2, place.bottom - 25];
  const look = () => {
    const find = (y) => document.elementFromPoint(place.left + 200, y)?.closest("[data-row]");
    if (!heights.every(find)) ++recorded.gaps;
  };
  let last = performance.now();
  const step = () => {
    const now = performance.now();
    recorded.times.push(now - last);
    last = now;
    setTimeout(look); // when all that belongs to this picture is done
    if (!recorded.isDone) requestAnimationFrame(step);
  };
  requestAnimationFrame(step);
};
