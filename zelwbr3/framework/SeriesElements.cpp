#include "zelwbr3/framework/SeriesElements.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace ZELWbr3::SeriesElements {

namespace {

template <typename Number>
void Append(std::string& sText, Number n) {
  char sNumber[32];
  const auto oEnd = std::to_chars(std::begin(sNumber), std::end(sNumber), n);
  if (!sText.empty()) sText += ' ';
  sText.append(sNumber, oEnd.ptr);
}

void AppendValue(std::string& sText, double dValue) {
  if (std::isfinite(dValue)) return Append(sText, dValue);
  sText += sText.empty() ? "-" : " -";
}

}  // namespace

void Fill(Document& oDocument, const Samples::Group& oGroup, std::size_t iMost,
          const std::function<bool(const Samples::Figure&)>& oIsWanted) {
  Element* oBlock = oDocument.all().item("lstSeries");
  Element* oTemplate = oDocument.all().item("rowSeries");
  if (oBlock == nullptr || oTemplate == nullptr || oGroup.Count() < 2) return;
  const std::size_t iCount = oGroup.Count();
  const std::size_t iFirst = iCount - std::min(iCount, iMost);
  std::string sTimes;
  for (std::size_t i = iFirst; i < iCount; ++i) {
    Append(sTimes, i == iFirst ? oGroup.Time(i) : oGroup.Time(i) - oGroup.Time(i - 1));
  }
  oBlock->setAttribute("data-times", sTimes);
  const auto figures = oGroup.Figures();
  for (std::size_t iFigure = 0; iFigure < figures.size(); ++iFigure) {
    const Samples::Figure& oFigure = figures[iFigure];
    if (oIsWanted && !oIsWanted(oFigure)) continue;
    std::string sValues;
    for (std::size_t i = iFirst; i < iCount; ++i) AppendValue(sValues, oGroup.Value(i, iFigure));
    Element& oSeries = oTemplate->cloneNode(true);
    oSeries.id("SERIES" + oFigure.ID);
    oSeries.setAttribute("data-label", oFigure.Label);
    oSeries.setAttribute("data-unit", oFigure.Unit);
    oSeries.setAttribute("data-counter", oFigure.IsCounter ? "true" : "false");
    oSeries.setAttribute("data-place", oFigure.Place);
    oSeries.setAttribute("data-values", sValues);
    oBlock->appendChild(oSeries);
  }
}

}  // namespace ZELWbr3::SeriesElements
