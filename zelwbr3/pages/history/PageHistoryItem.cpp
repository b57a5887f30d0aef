#include "zelwbr3/pages/history/PageHistoryItem.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/pages/history/HistoryKind.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

/// Adds rows of a name and a value to a table.
class Properties {
 public:
  explicit Properties(const Element& oTable) : m_oTemplate(TableRow(oTable, TemplateAlone)) {}

  void Add(std::string_view sName, std::string_view sValue) {
    const auto oCells = modCells::AddRowCells(m_oTemplate, 2);
    modCells::SetCellText(*oCells[0], sName);
    modCells::SetCellText(*oCells[1], sValue);
  }

 private:
  Element& m_oTemplate;
};

}  // namespace

void PageHistoryItem::Show(std::shared_ptr<ZELLib3::Database> oDatabase,
                           std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) {
  HistoryItem(std::move(oHistoryItem));
  DataPage::Show(std::move(oDatabase));
}

void PageHistoryItem::CleanUp() {
  m_oHistoryItem.reset();
  DataPage::CleanUp();
}

void PageHistoryItem::FillContent() {
  if (m_oHistoryItem == nullptr) throw std::logic_error("The page " + Name() + " has nothing to show");
  const ZELLib3::HistoryItem& oItem = *m_oHistoryItem;
  FillLocale();
  Element& oTitle = RequiredElement("txtFormTitle");
  if (const auto sLabel = modCells::Known(oItem.Label); !sLabel.empty()) {
    oTitle.innerText(oTitle.innerText() + " - " + Text::Isolated(sLabel));
  }
  FillError();

  Properties oEntry(RequiredElement("tabHistoryItem"));
  oEntry.Add("Label", oItem.Label);
  oEntry.Add("Kind", HistoryKind::Of(oItem.Kind).sName);
  oEntry.Add("Action", oItem.Action);
  oEntry.Add("Date", oItem.Date == Date() ? "" : modFormat::GeneralDate(oItem.Date, Locale()));
  oEntry.Add("Return Code", std::to_string(oItem.ReturnCode));

  Element& oFieldTable = RequiredElement("tabHistoryItemFields");
  modElement::ShowElement(&oFieldTable, !oItem.Fields.empty());
  Properties oFields(oFieldTable);
  for (const auto& oField : oItem.Fields) oFields.Add(oField.Name, oField.Value);
}

void PageHistoryItem::FillError() {
  const bool bFailed = m_oHistoryItem->ReturnCode != 0;
  Element& oError = RequiredElement("divError");
  oError.className(bFailed ? "zelError" : "zelNote");
  SetText("txtErrorTitle", bFailed ? "The backup failed" : "Message");
  SetText("txtErrorText", m_oHistoryItem->ErrorText);
  modElement::ShowElement(&oError, bFailed || !m_oHistoryItem->ErrorText.empty());
}

}  // namespace ZELWbr3
