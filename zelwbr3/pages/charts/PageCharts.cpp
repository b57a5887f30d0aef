#include "zelwbr3/pages/charts/PageCharts.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/SeriesElements.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3 {

void PageCharts::Show(std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sGroup,
                      const std::string& sFigure) {
  m_sGroup = sGroup;
  m_sFigure = sFigure;
  DataPage::Show(std::move(oDatabase));
}

void PageCharts::FillContent() {
  NewCommandlist();
  FillLocale();
  const auto oSamples = Samples::Of(Database());
  const Samples::Group* oGroup = oSamples->Of(m_sGroup);
  if (oGroup == nullptr) return;
  const auto figures = oGroup->Figures();
  const auto it = std::ranges::find(figures, m_sFigure, &Samples::Figure::ID);
  if (it == figures.end()) return;
  RequiredElement("lstSeries").setAttribute("data-chosen", "SERIES" + m_sFigure);
  const auto Table = [](const Samples::Figure& o) { return o.Place.substr(0, o.Place.find(' ')); };
  const bool bTable = it->Place.find(' ') != std::string::npos;
  SeriesElements::Fill(*Document(), *oGroup, Samples::Most,
                       [&](const Samples::Figure& o) { return !bTable || Table(o) == Table(*it); });
}

}  // namespace ZELWbr3
