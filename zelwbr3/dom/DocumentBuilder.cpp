#include "zelwbr3/dom/DocumentBuilder.h"

#include "zelwbr3/base/Text.h"

#include <stdexcept>

namespace ZELWbr3 {

Element& DocumentBuilder::Begin(std::string_view sTag) {
  Element& oElement = m_oDocument.NewElement(sTag, m_oDocument.m_iNext);
  if (m_oCurrent != nullptr) {
    m_oCurrent->Append(oElement);
    m_oDocument.Report({Change::Kind::Create, m_oCurrent->Number(), oElement.Number(), oElement.tagName()});
  } else if (m_oDocument.m_oRoot == nullptr) {
    m_oDocument.m_oRoot = &oElement;
  } else {
    throw std::logic_error("A document has one root element");
  }
  m_oCurrent = &oElement;
  return oElement;
}

void DocumentBuilder::Attribute(std::string_view sName, std::string_view sValue) {
  m_oCurrent->setAttribute(sName, sValue);
}

void DocumentBuilder::Text(std::string_view sText) {
  if (m_oCurrent == nullptr || sText.empty()) return;
  const std::string sClean = ZELWbr3::Text::Clean(sText);
  Element* oLast = m_oCurrent->lastElementChild();
  (oLast == nullptr ? m_oCurrent->m_sText : oLast->m_sTail) += sClean;
  m_oDocument.Report({Change::Kind::AppendText, m_oCurrent->Number(), 0, {}, sClean});
}

void DocumentBuilder::End() { m_oCurrent = m_oCurrent->m_oParent; }

}  // namespace ZELWbr3
