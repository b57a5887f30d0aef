// Stands in front of uPlot's script: it keeps nothing of a page that could not begin
// again, and it fails where the browser's language, such as "c", is none.
document.currentScript.dataset.beginsAgain = "";
try {
  new Intl.NumberFormat(navigator.language);
} catch {
  Object.defineProperty(navigator, "language", { value: "en-US", configurable: true });
}
