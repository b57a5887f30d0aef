#include "zelwbr3/framework/ZELHTMLForm.h"

#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"

namespace ZELWbr3 {

using modElement::ShowElement;

void ZELHTMLForm::Init(std::shared_ptr<Document> oDocument) {
  m_oDocument = std::move(oDocument);
  const All oAll = m_oDocument->all();
  m_oWait = oAll.item("divFrmWait");
  m_oContent = oAll.item("divFrmCnt");
  m_oFooter = oAll.item("divFrmFtr");
  m_oTopWarning = oAll.item("divTopWarning");
}

void ZELHTMLForm::ShowContent(bool bFooter) {
  ShowElement(m_oWait, false);
  ShowElement(m_oContent, true);
  if (bFooter) ShowElement(m_oFooter, true);
}

void ZELHTMLForm::ShowWait(bool bFooter) {
  ShowElement(m_oContent, false);
  if (bFooter) ShowElement(m_oFooter, false);
  ShowElement(m_oWait, true);
}

void ZELHTMLForm::ShowTopWarning(const std::string& sText, const std::string& sInfo) {
  if (m_oTopWarning == nullptr) return;
  const All oAll = m_oTopWarning->all();
  if (Element* oText = oAll.item("txtTopWarning")) oText->innerText(sText);
  if (Element* oRow = oAll.item("rowTopWarningInfo"); oRow != nullptr && !sInfo.empty()) {
    if (Element* oInfo = oAll.item("txtTopWarningInfo")) oInfo->innerHTML(sInfo);
    ShowElement(oRow, true);
  }
  ShowElement(m_oTopWarning, true);
}

void ZELHTMLForm::HideTopWarning() { ShowElement(m_oTopWarning, false); }

void ZELHTMLForm::SetCommand(const std::string& sID, Long lCommand) {
  if (m_oDocument == nullptr) return;
  if (Element* oElement = m_oDocument->all().namedItem(sID)) oElement->id(sID + modFormat::Padded(lCommand, 5));
}

}  // namespace ZELWbr3
