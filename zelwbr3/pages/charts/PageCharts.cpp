#include "zelwbr3/pages/charts/PageCharts.h"

#include "zelwbr3/ZELLib3/Analyzer.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/ProtocolSamples.h"
#include "zelwbr3/framework/SeriesElements.h"
#include "zelwbr3/framework/modElement.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3 {

namespace {

/// What was read since the instance was opened here.
constexpr const char* SourceOpen = "btnSourceOpen";
constexpr const char* SourceProtocols = "btnSourceProtocols";
constexpr int DaysOfProtocols = 28;

}  // namespace

void PageCharts::Show(std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sGroup,
                      const std::string& sFigure) {
  m_bProtocols = false;
  m_sGroup = sGroup;
  m_sFigure = sFigure;
  DataPage::Show(std::move(oDatabase));
}

void PageCharts::FillContent() {
  NewCommandlist();
  FillLocale();
  const auto oAnalyzer = Database()->Analyzer();
  const auto oSets = oAnalyzer == nullptr ? std::nullopt : oAnalyzer->ProtocolSets();
  const bool bHasProtocols = oSets && !oSets->empty();
  m_bProtocols = m_bProtocols && bHasProtocols;
  if (Element* oSources = Document()->all().item("divSources")) modElement::ShowElement(oSources, bHasProtocols);
  for (const auto& [sID, bChosen] : {std::pair(SourceOpen, !m_bProtocols), {SourceProtocols, m_bProtocols}}) {
    if (Element* o = Document()->all().item(sID)) o->setAttribute("aria-pressed", bChosen ? "true" : "false");
  }
  m_bProtocols ? FillProtocols(*oAnalyzer) : FillOpen();
}

void PageCharts::FillOpen() {
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

void PageCharts::FillProtocols(ZELLib3::Analyzer& oAnalyzer) {
  Samples oSamples;
  ProtocolSamples::Add(oSamples, oAnalyzer, DaysOfProtocols);
  const Samples::Group* oGroup = oSamples.Of(ProtocolSamples::Name);
  if (oGroup == nullptr || oGroup->Count() < 2) return;
  const std::string sNearest = ProtocolSamples::Nearest(m_sFigure);
  const auto figures = oGroup->Figures();
  const auto it = std::ranges::find(figures, sNearest, &Samples::Figure::ID);
  RequiredElement("lstSeries").setAttribute("data-chosen", "SERIES" + (it == figures.end() ? figures.front() : *it).ID);
  SeriesElements::Fill(*Document(), *oGroup, Samples::Most);
}

bool PageCharts::OnClick(const std::string& sID) {
  if (sID != SourceOpen && sID != SourceProtocols) return false;
  m_bProtocols = sID == SourceProtocols;
  CarryOut(CommandRefresh);
  return true;
}

}  // namespace ZELWbr3
