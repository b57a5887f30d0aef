#include "zelwbr3/framework/clsTabStrip.h"

#include "zelwbr3/dom/Style.h"
#include "zelwbr3/framework/modFormat.h"

namespace ZELWbr3 {

namespace {

constexpr std::string_view LinkOn = "zelTbsLinkOn";
constexpr std::string_view LinkOff = "zelTbsLinkOff";
constexpr std::string_view LinkDisabled = "zelTbsLinkOffDsbl";
constexpr std::string_view FirstOn = "zelTbsFirstAngOnPrevoff";
constexpr std::string_view FirstOff = "zelTbsFirstAngOffPrevoff";
constexpr std::string_view LastOn = "zelTbsLastOnNextoff";
constexpr std::string_view LastOff = "zelTbsLastOffNextoff";
constexpr std::string_view AngleOffOn = "zelTbsAngOffOn";
constexpr std::string_view AngleOnOff = "zelTbsAngOnOff";
constexpr std::string_view AngleOffOff = "zelTbsAngOffOff";

Long NumberIn(std::string_view sText) { return modFormat::ToLong(modFormat::Val(sText)); }

}  // namespace

void clsTabStrip::Init(std::shared_ptr<Document> oDocument, std::string sName) {
  m_oDocument = std::move(oDocument);
  m_sName = std::move(sName);
  m_oStrip = Find("tbsTabStrip");
  m_lTabCount = m_oStrip == nullptr ? Long(0) : NumberIn(m_oStrip->getAttribute("tabcount"));
}

void clsTabStrip::CleanUp() {
  m_oStrip = nullptr;
  m_oDocument.reset();
}

bool clsTabStrip::HandleOnClick(std::string_view sID) {
  if (m_oStrip == nullptr || !sID.starts_with("tbsTab") || !sID.ends_with(m_sName)) return false;
  const Element* oActive = m_oDocument->activeElement();
  if (oActive == nullptr || oActive->className() != LinkOff) return false;
  Select(NumberIn(sID.substr(6, 1)));
  return true;
}

Long clsTabStrip::Selected() const {
  return m_oStrip == nullptr ? Long(0) : NumberIn(m_oStrip->getAttribute("selectedtab"));
}

bool clsTabStrip::IsSelectable(Long lTab) const {
  const Element* oLink = Link(lTab);
  return oLink != nullptr && oLink->className() == LinkOff;
}

void clsTabStrip::Select(Long lTab) {
  const Long lOld = Selected();
  if (m_oStrip == nullptr || lTab == lOld) return;
  const Long lLast = m_lTabCount - 1;

  // The first tab has an angle after it even if it is also the last one.
  Mark(lOld, LinkOff, "false");
  if (lOld != 0) SetAngle(lOld, AngleOffOff);
  if (lOld == 0 || lOld != lLast) SetAngle(lOld + 1, AngleOffOff);

  Mark(lTab, LinkOn, "true");
  if (lTab != 0) SetAngle(lTab, AngleOffOn);
  if (lTab == 0 || lTab != lLast) SetAngle(lTab + 1, AngleOnOff);
  SetEdges(lTab == 0 ? FirstOn : FirstOff, lTab != 0 && lTab == lLast ? LastOn : LastOff);

  m_oStrip->setAttribute("selectedtab", std::to_string(lTab));
  ShowContent(lOld, "none");
  ShowContent(lTab, "block");
}

void clsTabStrip::Disable(Long lTab) { SetClass(Link(lTab), LinkDisabled); }

Element* clsTabStrip::Find(const std::string& sPart) const {
  return m_oDocument == nullptr ? nullptr : m_oDocument->all().item(sPart + m_sName);
}

Element* clsTabStrip::Link(Long lTab) const { return Find("tbsTab" + std::to_string(lTab)); }

void clsTabStrip::SetClass(Element* oElement, std::string_view sClass) const {
  if (oElement != nullptr && oElement->className() != sClass) oElement->className(sClass);
}

void clsTabStrip::Mark(Long lTab, std::string_view sClass, const char* sSelected) const {
  Element* oLink = Link(lTab);
  SetClass(oLink, sClass);
  if (oLink != nullptr) oLink->setAttribute("aria-selected", sSelected);
}

void clsTabStrip::SetAngle(Long lTab, std::string_view sClass) const {
  SetClass(Find("tbsTab" + std::to_string(lTab) + "Ang"), sClass);
}

void clsTabStrip::SetEdges(std::string_view sFirst, std::string_view sLast) const {
  SetClass(Find("tbsPrev"), sFirst);
  SetClass(Find("tbsNext"), sLast);
}

void clsTabStrip::ShowContent(Long lTab, std::string_view sDisplay) const {
  if (Element* oContent = Find("tbsContent" + std::to_string(lTab))) oContent->style().display(sDisplay);
}

}  // namespace ZELWbr3
