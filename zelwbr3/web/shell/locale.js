/** Separators, groups and the order of a date, as the browser's user has them. */
const zelwbr3Locale = () => {
  "use strict";

  const oParts = new Intl.NumberFormat(undefined, { useGrouping: true, minimumFractionDigits: 1 }).formatToParts(123456789.5);
  const Value = (sType) => oParts.find(({ type }) => type === sType)?.value ?? "";
  const aGroups = oParts.filter(({ type }) => type === "integer").map(({ value }) => value.length).reverse();
  const sGroups = aGroups.length < 2 ? "" : aGroups[0] === aGroups[1] ? `${aGroups[0]};0` : `${aGroups[0]};${aGroups[1]};0`;
  const Pattern = (oOptions) => {
    const oFormat = new Intl.DateTimeFormat(undefined, oOptions);
    const oHour = { h11: "h", h12: "h", h23: "H", h24: "H" }[oFormat.resolvedOptions().hourCycle] ?? "H";
    const oLetters = { day: "d", month: "M", year: "y", hour: oHour, minute: "m", second: "s" };
    return oFormat.formatToParts(new Date(2006, 0, 2, 3, 4, 5)).map(({ type, value }) =>
      type === "dayPeriod" ? "tt" : type in oLetters ? oLetters[type].repeat(value.length) : value.replace(/[a-zA-Z]/g, "")
    ).join("");
  };
  const Period = (iHour) =>
    new Intl.DateTimeFormat(undefined, { hour: "numeric", hour12: true }).formatToParts(new Date(2006, 0, 2, iHour))
      .find(({ type }) => type === "dayPeriod")?.value ?? "";
  return [Value("decimal"), aGroups.length < 2 ? "" : Value("group"), sGroups,
    Pattern({ year: "numeric", month: "2-digit", day: "2-digit" }),
    Pattern({ hour: "numeric", minute: "2-digit", second: "2-digit" }), Period(3), Period(15)];
};
