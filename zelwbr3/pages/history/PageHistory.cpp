#include "zelwbr3/pages/history/PageHistory.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/pages/history/HistoryKind.h"
#include "zelwbr3/pages/monitor/ListLink.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

/// The date in a form that can be sorted, unlike the user's own format.
std::string SortKey(const Date& dDate) {
  std::string sKey = Calendar::CompactDay(dDate);
  for (const int iPart : {dDate.Hour, dDate.Minute, dDate.Second}) sKey += modFormat::Padded(iPart, 2);
  return sKey;
}

}  // namespace

void PageHistory::ObtainSource() { m_oHistory = Given(Database()->History()); }

void PageHistory::ReleaseSource() {
  m_oHistory.reset();
  m_oTemplate = nullptr;
  m_items.clear();
}

void PageHistory::FillHead() {
  if (Given(Database()->StateInfo())->HistoryLost()) {
    Form().ShowTopWarning("Backup History Lost", "Backups that were made before are missing from this list.");
  } else {
    Form().HideTopWarning();
  }
}

void PageHistory::BeginTable() {
  m_oTemplate = &TableRow(RequiredElement("tabHistory"), TemplateBelowHeadings);
  m_items.clear();
}

void PageHistory::AddBlock() {
  while (!m_oHistory->EndOfBlock()) {
    const auto oItem = m_oHistory->NextItem();
    if (oItem == nullptr) return;
    m_items.push_back(oItem);
    AddItem(*oItem);
  }
}

void PageHistory::AddItem(const ZELLib3::HistoryItem& oItem) {
  const HistoryKind& oKind = HistoryKind::Of(oItem.Kind);
  const bool bFailed = oItem.ReturnCode != 0;
  modCells::AddRow(*m_oTemplate, 6, [&](const auto& oCells) {
    oCells[0]->parentElement()->className(std::string(oKind.sClass) + (bFailed ? " zelHistFailed" : ""));

    Element* oLink = oCells[0]->firstElementChild();
    if (oLink == nullptr) throw std::runtime_error("The template row of \"tabHistory\" has no link in its first cell");
    const auto sLabel = modCells::Known(oItem.Label);
    oLink->innerText(sLabel.empty() ? "No label" : sLabel);  // a link without text could not be clicked
    oLink->id(ListLink::ID(m_items.size()));
    modCells::SetCellText(*oCells[1], oKind.sName);
    modCells::SetCellText(*oCells[2], oItem.Action);
    const bool bDated = oItem.Date != Date();
    modCells::SetCellText(*oCells[3], bDated ? modFormat::GeneralDate(oItem.Date, Locale()) : "");
    if (bDated) oCells[3]->setAttribute("data-sort", SortKey(oItem.Date));
    modCells::SetCellText(*oCells[4], std::to_string(oItem.ReturnCode));
    modCells::SetCellText(*oCells[5], bFailed ? "Failed" : "Done");
  });
}

bool PageHistory::OnClick(const std::string& sID) {
  const auto lIndex = ListLink::Index(sID);
  if (!lIndex) return BlockPage::OnClick(sID);
  m_lIndex = *lIndex;
  CarryOut(CommandOpen);
  return true;
}

void PageHistory::OnCommand(Long lCommand) {
  if (lCommand != CommandOpen) return BlockPage::OnCommand(lCommand);
  if (m_lIndex < 1 || static_cast<std::size_t>(m_lIndex) > m_items.size()) {
    throw std::out_of_range("The backup history shown has no entry " + std::to_string(m_lIndex));
  }
  Act([this] { Browser().ShowHistoryItem(Database(), m_items[static_cast<std::size_t>(m_lIndex) - 1]); });
}

}  // namespace ZELWbr3
