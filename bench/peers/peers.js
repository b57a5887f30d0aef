/*
 * What is measured of every grid. Its page defines "peer": how it is given rows and
 * told to go to one, to sort and to filter; what a grid lacks it leaves out.
 */
"use strict";

const Columns = 6;
const Mixed = (row, column) => ((row * Columns + column) * 31) % 6000011;
const Value = (row, column) => `value ${String(Mixed(row, column)).padStart(7, "0")}`;
/** A number, and texts that are all different. */
const Cells = (row) => [(row * 7919) % 1000003, ...[1, 2, 3, 4, 5].map((column) => Value(row, column))];
const AsObject = (row) => Object.fromEntries([["id", row], ...Cells(row).map((cell, column) => [`c${column}`, cell])]);
const ColumnNames = Array.from({ length: Columns }, (_, column) => `c${column}`);
const Numbers = (count) => Array.from({ length: count }, (_, row) => row);

/** Milliseconds until a text is painted, or until that for which the act has a condition; NaN after 20 seconds. */
const UntilPainted = async (text, act) => {
  const start = performance.now();
  const result = act();
  const IsDone = typeof result === "function" ? result : () => document.body.textContent.includes(text);
  do {
    await new Promise(requestAnimationFrame);
    if (performance.now() - start > 20_000) return NaN;
  } while (!IsDone());
  await new Promise((done) => setTimeout(done));
  return performance.now() - start;
};

/** The second row when they are sorted by a key: the first one may be on the screen already. */
const Second = (count, Key) => {
  let [first, second] = [-1, -1];
  for (let row = 0; row < count; ++row) {
    if (first < 0 || Key(row) < Key(first)) [first, second] = [row, first];
    else if (second < 0 || Key(row) < Key(second)) second = row;
  }
  return second;
};

const Sorted = (column, second) => (peer.sort === undefined ? NaN : UntilPainted(Value(second, 1), () => peer.sort(column)));

const Median = (values) => values.sort((a, b) => a - b)[values.length >> 1];

const Steps = {
  async show(count) {
    const data = peer.data(count);
    await new Promise((done) => setTimeout(done, 500));
    return UntilPainted(Value(0, 1), () => peer.show(data));
  },
  async jump(count) {
    const times = [];
    for (let i = 1; i <= 25; ++i) {
      const row = (i * 7919 * 131) % (count - 100);
      times.push(await UntilPainted(Value(row, 1), () => peer.jump(row)));
      if (Number.isNaN(times.at(-1))) return NaN;
    }
    await UntilPainted(Value(0, 1), () => peer.jump(0));
    return Median(times);
  },
  async filter(count) {
    if (peer.filter === undefined) return NaN;
    const text = Value(Math.floor(count * 0.77), 1);
    const time = await UntilPainted(text, () => peer.filter(text));
    await UntilPainted(Value(0, 1), () => peer.filter(""));
    return time;
  },
  sortNumbers: (count) => Sorted(0, Second(count, (row) => (row * 7919) % 1000003)),
  sortTexts: (count) => Sorted(1, Second(count, (row) => Mixed(row, 1))),
};

