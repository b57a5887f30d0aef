#include "zelwbr3/pages/analyzer/PageDBAnalyzer.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modPicture.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerDelete.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerStart.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

using ZELCmd3::CommandItem;
using namespace ZELLib3::AnalyzerState;
/// A code that is not a state; also used if there is no analyzer.
constexpr int Unknown = -1;

Long StateOf(const ZELLib3::Analyzer* oAnalyzer) { return oAnalyzer == nullptr ? Long(Unknown) : oAnalyzer->State(); }

/// Empties a table section except for its template row, which it returns.
Element& Emptied(Element& oSection) {
  Element* oTemplate = oSection.rows(0);
  if (oTemplate == nullptr) throw std::runtime_error("The page file has no template row for protocol sets");
  Element& oKept = oTemplate->cloneNode(true);
  oSection.innerText("");
  return oSection.appendChild(oKept);
}

}  // namespace

void PageDBAnalyzer::Close() { Browser().ShowDefault(); }

void PageDBAnalyzer::OnCommand(Long lCommand) {
  Action oAction = nullptr;
  switch (lCommand) {
    case CommandStart:
      oAction = &PageDBAnalyzer::Start;
      break;
    case CommandStop:
      oAction = &PageDBAnalyzer::Stop;
      break;
    case CommandDelete:
      oAction = &PageDBAnalyzer::DeleteProtocols;
      break;
  }
  if (oAction == nullptr) return;

  Act([&] {
    EnableItems(false, false, false);
    const Busy oBusy(*this);
    bool bChanged = false;
    Finally(
        [&] {
          const auto oAnalyzer = Database()->Analyzer();
          if (oAnalyzer == nullptr) throw std::runtime_error("The database analyzer is unknown");
          bChanged = (this->*oAction)(*oAnalyzer);
          if (bChanged) FillContent();  // also enables the items
        },
        [&] {
          if (!bChanged) EnableItems();
        });
  });
}

bool PageDBAnalyzer::Start(ZELLib3::Analyzer& oAnalyzer) {
  FrontBoxes oBoxes = Boxes();
  const auto oOptions = frmDBAnalyzerStart(oBoxes).StartIt();
  return oOptions && Operate([&] { return oAnalyzer.Start(*oOptions); });
}

bool PageDBAnalyzer::Stop(ZELLib3::Analyzer& oAnalyzer) {
  return Operate([&] { return oAnalyzer.Stop(); });
}

bool PageDBAnalyzer::DeleteProtocols(ZELLib3::Analyzer& oAnalyzer) {
  FrontBoxes oBoxes = Boxes();
  const auto dUntil = frmDBAnalyzerDelete(oBoxes).DeleteProtSets();
  return dUntil && Operate([&] { return oAnalyzer.DeleteProtocols(Calendar::CompactDay(*dUntil)); });
}

void PageDBAnalyzer::AddItems() {
  const auto oCommandlist = Commandlist();
  if (oCommandlist == nullptr || oCommandlist->HasList(PageType())) return;
  oCommandlist->Add(PageType(), CommandItem::MakeChanging(CommandStart, "Start", modPicture::Start));
  oCommandlist->Add(PageType(), CommandItem::MakeChanging(CommandStop, "Stop", modPicture::Stop));
  oCommandlist->Add(PageType(), CommandItem::MakeChanging(CommandDelete, "Delete Protocols", modPicture::Delete));
}

void PageDBAnalyzer::EnableItems() {
  // Until the state has been read, the analyzer is neither started nor stopped.
  EnableItems(false, false, true);
  if (Database() == nullptr) return;
  const Long lState = StateOf(Database()->Analyzer().get());
  EnableItems(lState == Stopped, lState == Started, true);
}

void PageDBAnalyzer::EnableItems(bool bStart, bool bStop, bool bDelete) {
  const auto oCommandlist = Commandlist();
  if (oCommandlist == nullptr) return;
  oCommandlist->Enable(PageType(), CommandStart, bStart);
  oCommandlist->Enable(PageType(), CommandStop, bStop);
  oCommandlist->Enable(PageType(), CommandDelete, bDelete);
}

void PageDBAnalyzer::FillContent() {
  AddItems();
  EnableItems();
  const auto oAnalyzer = Database()->Analyzer();
  FillState(oAnalyzer.get());
  FillError(oAnalyzer.get());
  FillRun(oAnalyzer.get());
  FillProtocolSets(oAnalyzer.get());
}

void PageDBAnalyzer::FillState(const ZELLib3::Analyzer* oAnalyzer) {
  const Long lState = StateOf(oAnalyzer);
  if (lState == Started) SetTextIfPresent("txtStarted", oAnalyzer->StartTime());
  ShowRow("rowStarted", lState == Started);
  ShowRow("rowStopped", lState == Stopped);
  ShowRow("rowUnknown", lState != Started && lState != Stopped && lState != None);
}

void PageDBAnalyzer::FillError(const ZELLib3::Analyzer* oAnalyzer) {
  const bool bError = oAnalyzer != nullptr && oAnalyzer->HasError();
  if (bError) SetTextIfPresent("txtError", oAnalyzer->ErrorText());
  ShowRow("rowError", bError);
}

void PageDBAnalyzer::FillRun(const ZELLib3::Analyzer* oAnalyzer) {
  using Analyzer = ZELLib3::Analyzer;
  struct Detail {
    std::string_view ID;
    std::string (*Text)(const Analyzer&);
  };
  static constexpr Detail Details[] = {
      {"txtInfo", [](const Analyzer& o) { return o.Info(); }},
      {"txtConfigFile", [](const Analyzer& o) { return o.ConfigFile(); }},
      {"txtProtDir", [](const Analyzer& o) { return o.ProtocolDir(); }},
      {"txtInterval", [](const Analyzer& o) { return std::to_string(o.Interval()) + " sec."; }},
      {"txtReconnect", [](const Analyzer& o) { return o.Reconnect(); }},
      {"txtProcessID", [](const Analyzer& o) { return o.ProcessID(); }},
      {"txtSessionID", [](const Analyzer& o) { return o.SessionID(); }},
  };
  const bool bRuns = StateOf(oAnalyzer) == Started;
  for (const Detail& oDetail : Details) SetTextIfPresent(oDetail.ID, bRuns ? oDetail.Text(*oAnalyzer) : std::string());
}

void PageDBAnalyzer::FillProtocolSets(ZELLib3::Analyzer* oAnalyzer) {
  Element* oTable = Document()->all().item("tabProtSets");
  Element* oSection = oTable == nullptr ? nullptr : oTable->tBodies(0);
  if (oSection == nullptr) return;
  // After an action the rows of the last fill are still there.
  Element& oTemplate = Emptied(*oSection);
  if (oAnalyzer == nullptr) return;

  const auto oSets = oAnalyzer->ProtocolSets();
  if (!oSets) {
    ReportLastError();
    return;
  }
  for (const auto& oSet : *oSets) {
    const auto oCells = modCells::AddRowFromTemplate(*oSection, oTemplate).cells();
    if (oCells.empty()) continue;
    modCells::SetCellText(*oCells[0], modFormat::GeneralDate(oSet.Date, Locale()));
    for (std::size_t i = 1; i < oCells.size(); ++i) {
      modCells::SetCellText(*oCells[i], i <= oSet.Texts.size() ? oSet.Texts[i - 1] : std::string());
    }
  }
}

void PageDBAnalyzer::ShowRow(std::string_view sID, bool bVisible) {
  modElement::ShowElement(Document()->all().item(sID), bVisible);
}

}  // namespace ZELWbr3
