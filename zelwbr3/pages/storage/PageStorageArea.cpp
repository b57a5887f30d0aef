#include "zelwbr3/pages/storage/PageStorageArea.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/clsSize.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modTopWarning.h"

namespace ZELWbr3 {

using modElement::ShowElement;

namespace {

constexpr int TabVolumes = 0;
constexpr int TabSettings = 1;
constexpr int TabUsage = 2;
constexpr int TabIO = 3;
constexpr int TabActivity = 4;

constexpr std::string_view ClassLabelDisabled = "zelTbsLabelOffDsbl";

void Write(Element* oElement, std::string_view sText) {
  if (oElement != nullptr) oElement->innerText(sText);
}

/// The second row of a table, below its header row, in any section.
Element* TemplateRow(const Element& oTable) {
  int iRow = 0;
  for (Element* oPart = oTable.firstElementChild(); oPart != nullptr; oPart = oPart->nextElementSibling()) {
    for (Element* o = oPart->firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
      if (o->tagName() == "tr" && iRow++ == 1) return o;
    }
  }
  return nullptr;
}

}  // namespace

void PageStorageArea::FillTabs() {
  const int iLastTab = m_oArea.Counters.empty() ? TabIO : TabActivity;
  const auto ForFigureTabs = [&](const auto& oDo) {
    for (int iTab = TabUsage; iTab <= iLastTab; ++iTab) oDo(iTab);
  };
  Attempt([&] {
    modTopWarning::Show(Form(), *Database());
    if (Given(Database()->StateInfo())->AnyAreaFull()) ForFigureTabs([this](int iTab) { Tabs().Disable(iTab); });
  });

  if (!m_oArea.Refresh(*Database())) {
    ReportLastError();
    FillVolumes();
    return;
  }
  FillLocale();
  FillPart(TabVolumes, &PageStorageArea::FillVolumes);
  FillPart(TabSettings, &PageStorageArea::FillSettings);
  FillPart(TabSettings, &PageStorageArea::FillParameters);
  Long lStatus;
  if (!Attempt([&] { lStatus = Given(Database()->StateInfo())->Status(); })) {
    ForFigureTabs([this](int iTab) { ShowUnread(iTab); });
  } else if (lStatus == ZELLib3::Status::Online) {
    FillPart(TabUsage, &PageStorageArea::FillUsage);
    FillPart(TabIO, &PageStorageArea::FillIO);
    FillPart(TabActivity, &PageStorageArea::FillActivity);
  } else {
    ForFigureTabs([this](int iTab) {
      if (Element* oLabel = Find("tbsTab" + std::to_string(iTab) + Name())) oLabel->className(ClassLabelDisabled);
    });
  }
}

void PageStorageArea::FillPart(int iTab, void (PageStorageArea::*pFill)()) {
  if (!Attempt([&] { (this->*pFill)(); })) ShowUnread(iTab);
}

void PageStorageArea::ShowUnread(int iTab) { ShowElement(Find("txtUnread" + std::to_string(iTab) + Name()), true); }

void PageStorageArea::FillVolumes() {
  FillFigures("tabVolumeHeader", m_oArea.Summary);
  FillVolumeRows("tabVolumes", [this](const ZELLib3::Volume& o) {
    return std::vector<std::string>{SizeText(o.Size()), o.Info1(), o.Info2()};
  });
}

void PageStorageArea::FillSettings() {
  for (const StorageArea::Setting& oSetting : m_oArea.Settings) {
    if (oSetting.WrongVersion(*Database())) {
      ShowElement(Find(oSetting.WrongVersionTable), true);
      continue;
    }
    const Long lCode = oSetting.Code(*Database());
    if (lCode < 0 || lCode >= static_cast<int>(oSetting.Tables.size())) continue;
    ShowElement(Find(oSetting.Tables[static_cast<std::size_t>(lCode)]), true);
  }
}

void PageStorageArea::FillParameters() {
  const Element* oTable = Find(m_oArea.ParameterTable);
  Element* oTemplate = oTable == nullptr ? nullptr : All(oTable).item("rowParameter");
  if (oTemplate == nullptr) return;
  for (const StorageArea::Parameter& oListed : m_oArea.Parameters) {
    if (!oListed.Listed(*Database())) continue;
    const auto oParameter = Given(Given(Database()->Parameters())->Item(oListed.Name));
    if (!oParameter->Exists()) {
      if (oListed.EndsList) return;
      continue;
    }
    // Read everything before adding the row, so that no row is left half filled.
    const std::string sName = oParameter->Name();
    const Long lGroup = oParameter->Group();
    const std::string sValue = oParameter->Value();
    const std::string sDescription = oParameter->Description();
    const auto oCells = modCells::AddRowCells(*oTemplate, 3);
    modCells::FillParamCell(*oCells[0], sName, lGroup);
    oCells[1]->innerText(modCells::Known(sValue));
    oCells[2]->innerText(modCells::Known(sDescription));
  }
}

void PageStorageArea::FillUsage() {
  FillFigures("tabUsageHeader", m_oArea.Usage);
  FillVolumeRows("tabUsage", [this](const ZELLib3::Volume& o) {
    const Long lSize = o.Size();
    const Long lUsed = o.UsedSize();
    return std::vector<std::string>{SizeText(lSize),       SizeText(lUsed), SizeText(o.FreeSize()),
                                    Percent(lUsed, lSize), o.Info1(),       o.Info2()};
  });
}

void PageStorageArea::FillIO() {
  FillVolumeRows("tabIO", [this](const ZELLib3::Volume& o) {
    const auto Counter = [this](Long lCount) { return modCells::FormatCounter(lCount, Locale()); };
    return std::vector<std::string>{Counter(o.IOCount1()), Counter(o.IOCount2()), Counter(o.IOCount3()),
                                    Counter(o.IOCount4())};
  });
}

void PageStorageArea::FillActivity() {
  if (m_oArea.Counters.empty()) return;
  const auto oActivity = Given(Database()->Activity());
  if (!oActivity->Refresh()) return ReportLastError();
  for (const StorageArea::Counter& oCounter : m_oArea.Counters) {
    Write(Find(oCounter.ID), modCells::FormatCounter(oActivity->LogCounter(int{oCounter.Index}), Locale()));
  }
}

void PageStorageArea::FillFigures(std::string_view sTable, std::span<const StorageArea::Figure> figures) {
  const Element* oTable = Find(sTable);
  if (oTable == nullptr) return;
  const All oAll(oTable);
  for (const StorageArea::Figure& oFigure : figures) {
    if (oFigure.Shown != nullptr && !oFigure.Shown(*Database())) continue;
    using Kind = StorageArea::Kind;
    const Long lValue = oFigure.Value(*Database());
    if (Element* oValue = oAll.item(oFigure.ID)) {
      oValue->innerText(oFigure.Kind == Kind::Count ? std::to_string(lValue) : SizeText(lValue));
      if (oFigure.Kind != Kind::Count) SetExact(*oValue, ExactText(lValue, int{clsSize::Pages}));
    }
    if (oFigure.Kind == Kind::Share || oFigure.Kind == Kind::Whole) {
      const std::string sPercent = oFigure.Kind == Kind::Whole ? modCells::FormatPercent(100, Locale())
                                                               : Percent(lValue, m_oArea.ReferenceSize(*Database()));
      Write(oAll.item(std::string(oFigure.ID) + "Pct"), sPercent);
    }
    ShowElement(oFigure.Row.empty() ? nullptr : oAll.item(oFigure.Row), true);
  }
}

void PageStorageArea::FillVolumeRows(std::string_view sTable, const VolumeTexts& oTexts) {
  const Element* oTable = Find(sTable);
  Element* oTemplate = oTable == nullptr ? nullptr : TemplateRow(*oTable);
  if (oTemplate == nullptr) return;
  const std::size_t iColumns = oTemplate->cells().size();
  const auto oVolumes = m_oArea.Volumes(*Database());
  const Long lCount = oVolumes->Count();
  int iListed = 0;
  for (Long i = 1; i <= lCount; ++i) {
    const auto oVolume = Given(oVolumes->Item(i));
    if (!oVolume->Configured() || oVolume->Kind() != m_oArea.VolumeKind) continue;
    const std::string sName = oVolume->Name();
    std::vector<std::string> texts = {std::to_string(iListed + 1), std::string(modCells::Known(sName))};
    for (const std::string& sText : oTexts(*oVolume)) texts.emplace_back(modCells::Known(sText));
    // Not every page file has columns for all of it.
    texts.resize(std::min(texts.size(), iColumns));
    modCells::AddRow(*oTemplate, texts);
    ++iListed;
  }
}

std::string PageStorageArea::Percent(Long lPart, Long lWhole) const {
  const auto fPercent = lWhole > 0 ? modCells::Percentage(static_cast<float>(lWhole), static_cast<float>(lPart)) : 0.0F;
  return modCells::FormatPercent(fPercent, Locale());
}

bool PageStorageArea::OnClick(const std::string& sID) {
  if (!m_oParameterLink.IsClicked(sID)) return TabbedPage::OnClick(sID);
  CarryOut(CommandOpenParameter);
  return true;
}

void PageStorageArea::OnCommand(Long lCommand) {
  if (lCommand != CommandOpenParameter) return;
  Act([this] { m_oParameterLink.Open(Browser(), Database()); });
}

}  // namespace ZELWbr3
