#include "zelwbr3/pages/config/PageParameters.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/pages/config/ParameterChange.h"

#include <optional>
#include <unordered_map>

namespace ZELWbr3 {

using modElement::ShowElement;

namespace {

constexpr std::array<std::string_view, 3> GroupTables = {"tabGeneral", "tabExtended", "tabSupport"};

// Attributes of a parameter's row: its history is in the table, and is visible.
constexpr std::string_view MarkRead = "readed";
constexpr std::string_view MarkExpanded = "expanded";

constexpr std::string_view RowHistory = "rowItem";

/// No group has this number.
constexpr int GroupNone = 4;

}  // namespace

void PageParameters::Hide() {
  m_oRow = nullptr;
  m_open.clear();
  TabbedPage::Hide();
}

void PageParameters::FillTabs() {
  m_filled.fill(false);
  m_oRow = nullptr;
  FillTab(0);
  if (ChosenTab() != 0) FillTab(ChosenTab());
}

void PageParameters::FillTab(Long lTab) {
  const auto iTab = static_cast<std::size_t>(int{lTab});
  if (iTab >= m_filled.size() || m_filled[iTab]) return;
  if (iTab == TabHistory) {
    FillHistory();
  } else {
    FillGroup(iTab);
  }
}

void PageParameters::FillGroup(std::size_t iGroup) {
  const auto oParameters = Given(Database()->Parameters());
  if (!oParameters->Load() || !oParameters->Read()) return ReportLastError();

  // The tab counts as filled from here on, even if a parameter cannot be read:
  // filling it again would list the parameters before that one twice.
  m_filled[iGroup] = true;
  Element& oTemplate = RequiredRow(GroupTables[iGroup], "rowTemplate");
  const Long lCount = oParameters->Count();
  for (Long i = 1; i <= lCount; ++i) {
    const auto oParameter = Given(oParameters->Item(i));
    const Long lGroup = oParameter->Group();
    if (lGroup != static_cast<int>(iGroup)) continue;
    modCells::AddRow(oTemplate, 4, [&](const auto& oCells) {
      const std::string sName = Text::Trim(oParameter->Name());
      oCells[0]->id("PHIST" + sName);
      if (sName.empty()) oCells[0]->removeAttribute("tabindex");  // like its name, not a link
      modCells::FillParamCell(*oCells[1], sName, lGroup);
      modCells::SetCellText(*oCells[2], oParameter->Value());
      modCells::SetCellText(*oCells[3], oParameter->Description());
      MarkChange(*oCells[2], *oParameter);
    });
  }
  OpenHistories(RequiredElement(GroupTables[iGroup]));
}

void PageParameters::OpenHistories(Element& oTable) {
  const auto open = m_open;
  for (const std::string& sName : open) {
    Element* oExpander = oTable.all().item("PHIST" + sName);
    if (oExpander == nullptr) continue;
    m_sParameter = sName;
    m_oRow = oExpander->parentElement();
    ToggleHistory();
  }
}

void PageParameters::MarkChange(Element& oValue, const ZELLib3::Parameter& oParameter) {
  try {
    const std::string sNew = oParameter.NewValue();
    const bool bPending = !modCells::Known(sNew).empty() && sNew != oParameter.Value();
    if (bPending) oValue.setAttribute("data-zel-new", sNew);
    if (bPending) {
      oValue.parentElement()->setAttribute("data-zel-state", "pending");
    } else if (oParameter.HistoryCount() > 0) {
      oValue.parentElement()->setAttribute("data-zel-state", "changed");
    }
  } catch (const ZELLib3::InstanceError&) {
    // The row is not marked then. The parameter's own page reads the same and reports it.
  }
}

void PageParameters::FillHistory() {
  const auto oHistory = Given(Database()->ParameterHistory());
  if (!oHistory->Open()) return ReportLastError();

  m_filled[TabHistory] = true;
  const auto oParameters = Given(Database()->Parameters());
  std::unordered_map<std::string, Long> groups;
  const auto GroupOf = [&](const std::string& sName) {
    const auto [it, bNew] = groups.try_emplace(sName, GroupNone);
    // A parameter that the instance no longer knows has no name.
    if (bNew) {
      if (const auto oParameter = Given(oParameters->Item(sName)); !oParameter->Name().empty())
        it->second = oParameter->Group();
    }
    return it->second;
  };

  Element& oDateTemplate = RequiredRow("tabHistoryDate", "rowTemplate1");
  Element& oEntryTemplate = RequiredRow("tabHistoryDate", "rowTemplate2");
  std::optional<std::string> sLastDate;
  for (bool bEntry = oHistory->HasEntry(); bEntry; bEntry = oHistory->MoveNext()) {
    const Date dDate = oHistory->Date();
    const bool bDated = dDate != Date();
    const std::string sName = Text::Trim(oHistory->Parameter());
    const Long lGroup = GroupOf(sName);
    const std::array<std::string, 3> texts = {oHistory->Value(), oHistory->NewValue(), oHistory->Text()};

    if (const std::string sDate = bDated ? Locale().ShortDate(dDate) : ""; sDate != sLastDate) {
      modCells::AddRow(oDateTemplate, std::array{modCells::CellText(sDate)});
      sLastDate = sDate;
    }
    modCells::AddRow(oEntryTemplate, 2 + texts.size(), [&](const auto& oCells) {
      modCells::SetCellText(*oCells[0], bDated ? Locale().LongTime(dDate) : "");
      modCells::FillParamCell(*oCells[1], sName, lGroup);
      for (std::size_t i = 0; i < texts.size(); ++i) modCells::SetCellText(*oCells[2 + i], texts[i]);
    });
  }
}

bool PageParameters::OnClick(const std::string& sID) {
  const bool bTab = TabbedPage::OnClick(sID);
  for (int iTab = 0; iTab < static_cast<int>(m_filled.size()); ++iTab) {
    if (sID != "tbsTab" + std::to_string(iTab) + Name()) continue;
    CarryOut(CommandFillTab + iTab);
    return true;
  }
  if (m_oParameterLink.IsClicked(sID)) {
    CarryOut(CommandOpenParameter);
    return true;
  }
  if (modCells::AfterPrefix("PHIST", sID, m_sParameter) && !m_sParameter.empty()) {
    m_oRow = Document()->activeElement()->parentElement();
    CarryOut(CommandToggleHistory);
    return true;
  }
  return bTab;
}

void PageParameters::OnCommand(Long lCommand) {
  if (lCommand == CommandOpenParameter) {
    Act([this] { m_oParameterLink.Open(Browser(), Database()); });
  } else if (lCommand == CommandToggleHistory) {
    Act([this] { ToggleHistory(); });
  } else if (lCommand >= CommandFillTab && lCommand <= CommandFillTab + static_cast<int>(TabHistory)) {
    Act([this, lCommand] { WithTabsDisabled([this, lCommand] { FillTab(lCommand - CommandFillTab); }); });
  }
}

void PageParameters::ToggleHistory() {
  Element* oExpander = m_oRow == nullptr ? nullptr : m_oRow->cells(0);
  if (oExpander == nullptr) return;
  if (m_oRow->hasAttribute(MarkExpanded)) {
    ShowHistory(false);
    oExpander->className("zelTblCellExpClosed");
    m_oRow->removeAttribute(MarkExpanded);
    m_open.erase(m_sParameter);
    return;
  }
  if (!m_oRow->hasAttribute(MarkRead) && !AddHistory()) return;
  oExpander->className(ShowHistory(true) > 0 ? "zelTblCellExpOpen" : "zelTblCellExpDsbl");
  m_oRow->setAttribute(MarkExpanded, "true");
  m_open.insert(m_sParameter);
}

bool PageParameters::AddHistory() {
  const auto oParameter = Given(Given(Database()->Parameters())->Item(m_sParameter));
  if (!oParameter->Exists()) {
    ReportLastError();
    return false;
  }
  Element& oTemplate = RequiredRow("tabHistoryItem", "rowTemplate");
  const auto changes = ParameterChange::ReadAll(*oParameter, Locale());
  m_oRow->setAttribute(MarkRead, "true");
  Element* oLast = m_oRow;
  for (const ParameterChange& oChange : changes) {
    Element& oRow = oTemplate.cloneNode(true);
    oRow.id(RowHistory);
    oChange.Write(oRow.cells(), 1);
    oLast = &oLast->after(oRow);
  }
  return true;
}

int PageParameters::ShowHistory(bool bShow) {
  int iRows = 0;
  for (Element* o = m_oRow->nextElementSibling(); o != nullptr && o->id() == RowHistory; o = o->nextElementSibling()) {
    ShowElement(o, bShow);
    ++iRows;
  }
  return iRows;
}

}  // namespace ZELWbr3
