#include "zelwbr3/pages/main/PageMain.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/dom/EmbeddedObject.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/ProtocolSamples.h"
#include "zelwbr3/framework/clsSize.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modTopWarning.h"
#include "zelwbr3/pages/main/FindingList.h"
#include "zelwbr3/pages/main/HotStandbyTable.h"
#include "zelwbr3/pages/main/MainDetails.h"
#include "zelwbr3/pages/main/StateCommands.h"

#include <stdexcept>

namespace ZELWbr3 {

using modElement::ShowElement;

namespace {

constexpr int White = 0xFFFFFF;

/// The free part of a size; throws if more is used than there is.
Long Free(Long lTotal, Long lUsed, const char* sOfWhat) {
  const Long lFree = lTotal - lUsed;
  if (lFree < 0) {
    throw std::range_error("The instance reports more used than there is: " + std::to_string(lUsed) + " of " +
                           std::to_string(lTotal) + " " + sOfWhat);
  }
  return lFree;
}

void SetLimits(EmbeddedObject oBar, const ZELLib3::StateInfo::Thresholds& limits, std::size_t iFirst) {
  oBar.Property("ColdPercent", limits[iFirst]);
  oBar.Property("MediumPercent", limits[iFirst + 1]);
  oBar.Property("HotPercent", limits[iFirst + 2]);
}

/// "No value" is a 16-bit number, any value a 32-bit one.
const Integer NoValue = -1;

}  // namespace

std::shared_ptr<ZELLib3::StateInfo> PageMain::State() const { return Given(Database()->StateInfo()); }

bool PageMain::IsAtLeast(int lVersion) const { return Given(Database()->Version())->Number() >= lVersion; }

void PageMain::FillContent() {
  m_oHealth = {};
  if (const auto oCommandlist = Commandlist()) StateCommands::FillCommandlist(*oCommandlist, PageType(), *Database());
  FillPicture();
  FillNameAndState();
  FillBars();
  FillTexts();
  FillLogRows();
  FillDetails();
  FillHotStandby();
  modTopWarning::Show(Form(), *Database());
  SampleState();
  FillHealth();
  if (!Database()->Connected()) NoteGone();
}

void PageMain::OnCommand(Long lCommand) {
  FrontBoxes oBoxes = Boxes();
  const auto oDecision = StateCommands::Ask(lCommand, *Database(), oBoxes, Locale(),
                                            [this](const auto& oOperation) { return Operate(oOperation); });
  if (oDecision.Operation) {
    ChangeState(oDecision.Operation);
  } else if (oDecision.InstanceChanged) {
    Browser().Refresh(WebBrowser());
  }
}

void PageMain::ChangeState(const std::function<bool(ZELLib3::Database&)>& oOperation) {
  const auto oDatabase = Database();
  AnnounceReload();
  Finally(
      [&] {
        RequiredElement("imgInstance").object().Property("Wait", true);
        Operate([&] { return oOperation(*oDatabase); });
      },
      [this] {
        if (Document() != nullptr) Browser().Refresh(WebBrowser());
      });
}

void PageMain::FillPicture() {
  const auto PictureState = [this] {
    if (!Database()->Connected()) return 1;
    switch (State()->Status()) {
      case ZELLib3::Status::Offline:
        return 3;
      case ZELLib3::Status::Admin:
      case ZELLib3::Status::AdminToOnline:
        return 4;
      case ZELLib3::Status::Online:
        return 5;
      default:
        return 2;
    }
  };
  EmbeddedObject oPicture = RequiredElement("imgInstance").object();
  oPicture.Property("BackColor", White);
  oPicture.Property("InstanceType", Database()->InstanceType());
  oPicture.Property("State", PictureState());
  oPicture.Property("Wait", false);
  oPicture.Property("HotStandby", Given(Database()->HotStandby())->Enabled());
}

void PageMain::FillNameAndState() {
  SetText("txtName", Database()->InstanceName());
  SetText("txtState", State()->StateText() + (State()->AnyAreaFull() ? " (Full)" : ""));
}

void PageMain::FillBars() {
  const auto oLimits = State()->BarThresholds();
  // Only reads what the state has not already decided.
  const auto ShowArea = [&](const char* sID, std::size_t iFirstLimit, Flag pFull, Figure pPercent) {
    EmbeddedObject oBar = RequiredElement(sID).object();
    SetLimits(oBar, oLimits, iFirstLimit);
    const auto oState = State();
    if (AreasOpen() && (*oState.*pFull)()) {
      oBar.Property("Percent", 100);
    } else if (AreasOpen() && oState->InfoAvailable()) {
      oBar.Property("Percent", (*oState.*pPercent)());
    } else {
      oBar.Property("Percent", NoValue);
    }
  };
  ShowArea("pbrData", 0, &ZELLib3::StateInfo::DataFull, &ZELLib3::StateInfo::DataPercent);
  ShowArea("pbrLog", 3, &ZELLib3::StateInfo::LogFull, &ZELLib3::StateInfo::LogPercent);

  EmbeddedObject oSessions = RequiredElement("pbrSessions").object();
  if (State()->InfoAvailable()) {
    SetLimits(oSessions, oLimits, 6);
    oSessions.Property("Percent", State()->SessionPercent());
  } else {
    oSessions.Property("Percent", NoValue);
  }
}

void PageMain::FillTexts() {
  const bool bShowsFree = IsAtLeast(ZELLib3::Kernel::V72);

  FillArea("txtData", &ZELLib3::StateInfo::DataFull, "Data Area Full", [&] {
    const Long lTotal = State()->DataTotal();
    const Long lUsed = State()->DataUsed();
    std::vector<AreaSize> sizes = {
        {"Total", lTotal}, {"Perm", State()->DataPerm()}, {"Temp", State()->DataTemp()}, {"Used", lUsed}};
    if (bShowsFree) sizes.push_back({"Free", Free(lTotal, lUsed, "pages of the data area")});
    return sizes;
  });

  FillArea("txtLog", &ZELLib3::StateInfo::LogFull, "Log Area Full", [&] {
    const auto oSettings = Given(Database()->LogSettings());
    if (oSettings->WriteOff() == ZELLib3::Switch::On || oSettings->AutoOverwrite() == ZELLib3::Switch::On)
      return std::vector<AreaSize>();
    const Long lTotal = State()->LogTotal();
    const Long lUsed = State()->LogUsed();
    std::vector<AreaSize> sizes = {{"Total", lTotal}, {"Used", lUsed}};
    if (bShowsFree) sizes.push_back({"Free", Free(lTotal, lUsed, "pages of the log area")});
    return sizes;
  });

  std::string sSessions = " ";
  if (State()->InfoAvailable()) {
    const Long lUsed = State()->SessionsUsed();
    sSessions = "Used: " + modFormat::Grouped(lUsed, Locale()) + " ";
    if (bShowsFree) sSessions += "Free: " + modFormat::Grouped(State()->SessionsMax() - lUsed, Locale());
  }
  SetText("txtSessions", sSessions);
}

void PageMain::FillArea(std::string_view sID, Flag pFull, const std::string& sFullText,
                        const std::function<std::vector<AreaSize>()>& oSizes) {
  if (!AreasOpen()) return SetText(sID, " ");
  if ((*State().*pFull)()) return SetText(sID, sFullText);
  if (!State()->InfoAvailable()) return SetText(sID, " ");
  const auto sizes = oSizes();
  const auto Joined = [&](const auto& oText) {
    std::string sText;
    for (const AreaSize& o : sizes) sText += std::string(o.Label) + ": " + oText(o.Pages) + " ";
    return sText;
  };
  SetText(sID, Joined([this](Long lPages) { return SizeText(lPages); }));
  if (sizes.empty() || ExactText(sizes.front().Pages, clsSize::Pages).empty()) return;
  SetExact(RequiredElement(sID), Joined([this](Long lPages) { return ExactText(lPages, clsSize::Pages); }));
}

void PageMain::FillLogRows() {
  if (!AreasOpen() || !State()->InfoAvailable()) return;
  Element& oLog = RequiredElement("State.Log.Row");
  Element& oOverwrite = RequiredElement("State.LogAutoOwerwrite.Row");
  Element& oWriteOff = RequiredElement("State.LogWriteOff.Row");
  if (Given(Database()->LogSettings())->WriteOff() == ZELLib3::Switch::On) {
    // The row that says so stays as the page file has it.
    ShowElement(&oLog, false);
    ShowElement(&oOverwrite, false);
    return;
  }
  const bool bOverwrite = Given(Database()->LogSettings())->AutoOverwrite() == ZELLib3::Switch::On;
  ShowElement(&oLog, !bOverwrite);
  ShowElement(&oOverwrite, bOverwrite);
  ShowElement(&oWriteOff, false);
}

void PageMain::FillDetails() {
  std::string sExact;
  const MainDetails::Facts oFacts{Database(), Locale(), [&](Long lPages) {
                                    sExact = ExactText(lPages, clsSize::Pages);
                                    return SizeText(lPages);
                                  }};
  for (const MainDetails::Detail& oDetail : MainDetails::All) {
    Element& oElement = RequiredElement(oDetail.ID);
    const bool bHolds = oDetail.Condition(oFacts);
    if (oDetail.Text == nullptr) {
      ShowElement(&oElement, bHolds);
    } else if (bHolds) {
      sExact.clear();
      oElement.innerText(modCells::Known(oDetail.Text(oFacts)));
      SetExact(oElement, sExact);
    }
  }
}

void PageMain::FillHotStandby() {
  HotStandbyTable oTable([this](std::string_view sID) -> Element& { return RequiredElement(sID); }, *Document());
  oTable.Fill(*Database());
}

void PageMain::SampleState() {
  const auto oState = State();
  if (!AreasOpen() || !oState->InfoAvailable() || oState->AnyAreaFull()) return;
  const auto Level = [](const char* sID, const char* sLabel, const char* sUnit, Long lValue, const char* sPlace) {
    const double dValue = int{lValue};
    return Samples::Figure{.ID = sID, .Label = sLabel, .Unit = sUnit, .Value = dValue, .Place = sPlace};
  };
  const std::vector<Samples::Figure> figures = {
      Level("DataPercent", "Data Area", "%", oState->DataPercent(), "txtData"),
      Level("LogPercent", "Log Area", "%", oState->LogPercent(), "txtLog"),
      Level("SessionPercent", "Sessions", "%", oState->SessionPercent(), "txtSessions"),
      Level("DataUsed", "Data Area, used pages", "", oState->DataUsed(), ""),
      Level("LogUsed", "Log Area, used pages", "", oState->LogUsed(), ""),
      Level("CacheHitRate", "Hit Rate", "%", oState->CacheHitRate(), "")};
  try {
    if (const auto oAnalyzer = Database()->Analyzer())
      ProtocolSamples::Begin(*Samples::Of(Database()), *oAnalyzer, figures);
  } catch (const ZELLib3::InstanceError&) {
    // Health says what is wrong with the analyzer.
  }
  Sample("State", figures);
}

void PageMain::FillHealth() {
  if (!FindingList::IsIn(*Document())) return;
  m_oHealth = Health::Of(*Database(), Samples::Of(Database())->Of("State"));
  FindingList::Fill(*Document(), m_oHealth,
                    [this](const std::string& sHelpID) { return Browser().MessageHelp(sHelpID) != nullptr; });
}

bool PageMain::OnClick(const std::string& sID) {
  if (const auto* oFinding = FindingList::Linked(m_oHealth, sID)) {
    // The page may go while the other one is shown.
    Act([this, oShown = *oFinding] { Browser().ShowPage(oShown.Page, Database(), oShown.Tab); });
    return true;
  }
  if (const auto* oFinding = FindingList::LinkedHelp(m_oHealth, sID)) {
    if (const auto oHelp = Browser().MessageHelp(oFinding->HelpID())) Boxes().ShowHelp(oHelp);
    return true;
  }
  return false;
}

bool PageMain::AreasOpen() const {
  const Long lStatus = State()->Status();
  return lStatus == ZELLib3::Status::AdminToOnline || lStatus == ZELLib3::Status::Online;
}

}  // namespace ZELWbr3
