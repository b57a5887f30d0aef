#include "zelwbr3/dom/Element.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/All.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/EmbeddedObject.h"
#include "zelwbr3/dom/HTMLWriter.h"
#include "zelwbr3/dom/Markup.h"
#include "zelwbr3/dom/Style.h"

#include <algorithm>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

/// Gap between the order numbers of two siblings when the second is appended:
/// enough to insert thirty times at one place before siblings are renumbered.
constexpr std::uint64_t OrderStep = std::uint64_t{1} << 30;

const std::string NoText;
const Element::Attributes NoAttributes;

auto Named(std::string_view sName) {
  return [sName](const Element::Attribute& oAttribute) { return oAttribute.first == sName; };
}

}  // namespace

const Element::Attributes& Element::attributes() const { return m_oAttributes ? *m_oAttributes : NoAttributes; }

const std::string& Element::getAttribute(std::string_view sName) const {
  const Attributes& oAttributes = attributes();
  const auto it = std::ranges::find_if(oAttributes, Named(sName));
  return it == oAttributes.end() ? NoText : it->second;
}

bool Element::hasAttribute(std::string_view sName) const { return std::ranges::any_of(attributes(), Named(sName)); }

void Element::setAttribute(std::string_view sName, std::string_view sValue) {
  AssignAttribute(sName, Text::Clean(sValue));
  m_oDocument->Report({Change::Kind::Attribute, m_iNumber, 0, sName, getAttribute(sName)});
}

void Element::removeAttribute(std::string_view sName) {
  if (!hasAttribute(sName)) return;
  AssignAttribute(sName, std::nullopt);
  m_oDocument->Report({Change::Kind::RemoveAttribute, m_iNumber, 0, sName});
}

void Element::AssignAttribute(std::string_view sName, std::optional<std::string> sValue) {
  const bool bIndexed = sName == "id" && isConnected();
  if (bIndexed) {
    if (!id().empty()) m_oDocument->ThawFollowers(*this);
    m_oDocument->m_ids.Remove(*this);
  }

  if (m_oAttributes == nullptr) {
    m_oAttributes = std::make_shared<Attributes>();
  } else if (m_oAttributes.use_count() > 1) {
    m_oAttributes = std::make_shared<Attributes>(*m_oAttributes);
  }
  const auto it = std::ranges::find_if(*m_oAttributes, Named(sName));
  if (!sValue) {
    if (it != m_oAttributes->end()) m_oAttributes->erase(it);
  } else if (it != m_oAttributes->end()) {
    it->second = std::move(*sValue);
  } else {
    m_oAttributes->emplace_back(sName, std::move(*sValue));
  }

  if (bIndexed) m_oDocument->m_ids.Add(*this);
}

Style Element::style() { return Style(*this); }

EmbeddedObject Element::object() { return EmbeddedObject(*this); }

std::string Element::innerText() const {
  std::string sText;
  AppendTextContent(sText);
  return sText;
}

void Element::AppendTextContent(std::string& sText) const {
  sText += m_sText;
  ForEachChild([&](const Element& oChild) {
    oChild.AppendTextContent(sText);
    sText += oChild.m_sTail;
  });
}

void Element::innerText(std::string_view sText) {
  std::string sClean = Text::Clean(sText);  // first, because sText may be this element's own text
  RemoveContent();
  m_sText = std::move(sClean);
  m_oDocument->Report({Change::Kind::Text, m_iNumber, 0, {}, m_sText});
}

std::string Element::innerHTML() const { return HTMLWriter().Inner(*this); }

void Element::innerHTML(std::string_view sMarkup) {
  // Parsed once before anything changes: broken markup must not destroy the
  // present content, and sMarkup may be part of that content.
  const std::string sOwn(sMarkup);
  Document oTrial;
  DocumentBuilder oTrialBuilder(oTrial);
  oTrialBuilder.Begin(tagName());
  BuildMarkup(oTrialBuilder, sOwn);

  innerText("");
  DocumentBuilder oBuilder(*m_oDocument, *this);
  BuildMarkup(oBuilder, sOwn);
}

void Element::RemoveContent() {
  const bool bConnected = m_oFirstChild != nullptr && isConnected();
  if (bConnected) m_oDocument->ThawFollowers(*this);
  for (Element* oChild = m_oFirstChild; oChild != nullptr;) {
    Element* oNext = oChild->m_oNext;
    if (bConnected) m_oDocument->Disconnect(*oChild);
    oChild->Frozen({});
    oChild->m_oParent = oChild->m_oPrevious = oChild->m_oNext = nullptr;
    oChild->m_sTail.clear();
    oChild = oNext;
  }
  m_oFirstChild = m_oLastChild = nullptr;
  m_sText.clear();
}

bool Element::contains(const Element& oOther) const {
  for (const Element* o = &oOther; o != nullptr; o = o->m_oParent) {
    if (o == this) return true;
  }
  return false;
}

bool Element::isConnected() const {
  const Element* oRoot = m_oDocument->documentElement();
  return oRoot != nullptr && oRoot->contains(*this);
}

bool Element::Precedes(const Element& oOther) const {
  if (this == &oOther) return false;
  const auto Depth = [](const Element* o) {
    int iDepth = 0;
    while ((o = o->m_oParent) != nullptr) ++iDepth;
    return iDepth;
  };
  const Element* a = this;
  const Element* b = &oOther;
  const int iDepthA = Depth(a);
  const int iDepthB = Depth(b);
  for (int i = iDepthA; i > iDepthB; --i) a = a->m_oParent;
  for (int i = iDepthB; i > iDepthA; --i) b = b->m_oParent;
  if (a == b) return iDepthA < iDepthB;  // one contains the other and precedes it
  while (a->m_oParent != b->m_oParent) {
    a = a->m_oParent;
    b = b->m_oParent;
  }
  return a->m_iOrder < b->m_iOrder;
}

All Element::all() { return All(this); }

Element* Element::lastElementChild() const {
  if (m_oLastChild == nullptr || m_oLastChild->m_oFrozen.Empty()) return m_oLastChild;
  return &m_oDocument->Thaw(m_oLastChild->m_oFrozen.End() - 1);
}

Element* Element::nextElementSibling() const {
  return m_oFrozen.Empty() ? m_oNext : &m_oDocument->Thaw(m_oFrozen.First());
}

Element* Element::previousElementSibling() const {
  if (m_oPrevious == nullptr || m_oPrevious->m_oFrozen.Empty()) return m_oPrevious;
  return &m_oDocument->Thaw(m_oPrevious->m_oFrozen.End() - 1);
}

Element* Element::NthChild(std::size_t iIndex, bool (*Matches)(std::string_view sTag)) const {
  for (Element* oChild = m_oFirstChild; oChild != nullptr; oChild = oChild->m_oNext) {
    if (Matches(oChild->tagName()) && iIndex-- == 0) return oChild;
    const FrozenRows& oRows = oChild->m_oFrozen;
    if (oRows.Empty() || !Matches(FrozenRows::Tag)) continue;
    if (iIndex < oRows.Count()) return &m_oDocument->Thaw(oRows.Number(static_cast<std::uint32_t>(iIndex)));
    iIndex -= oRows.Count();
  }
  return nullptr;
}

namespace {

bool IsCell(std::string_view sTag) { return sTag == "td" || sTag == "th"; }

}  // namespace

Element* Element::tBodies(std::size_t iIndex) const {
  return NthChild(iIndex, [](std::string_view sTag) { return sTag == "tbody"; });
}

Element* Element::rows(std::size_t iIndex) const {
  return NthChild(iIndex, [](std::string_view sTag) { return sTag == FrozenRows::Tag; });
}

Element* Element::cells(std::size_t iIndex) const { return NthChild(iIndex, IsCell); }

std::vector<Element*> Element::cells() const {
  std::vector<Element*> oCells;
  for (Element* oChild = m_oFirstChild; oChild != nullptr; oChild = oChild->m_oNext) {
    if (IsCell(oChild->tagName())) oCells.push_back(oChild);
  }
  return oCells;
}

Element& Element::cloneNode(bool bDeep) {
  if (!bDeep) throw std::invalid_argument("An element can only be cloned with its content");
  const NodeNumber iFirst = m_oDocument->m_iNext;
  Element& oClone = m_oDocument->CloneBelow(*this, nullptr, m_oDocument->m_iNext);
  m_oDocument->Report({Change::Kind::Clone, m_iNumber, iFirst});
  return oClone;
}

Element& Element::appendChild(Element& oChild) {
  Append(oChild);
  m_oDocument->Report({Change::Kind::Append, m_iNumber, oChild.m_iNumber});
  return oChild;
}

void Element::appendRow(Element& oTemplate, std::span<const std::string> texts) {
  if (oTemplate.m_oParent != this) throw std::logic_error("Only a row of the section can be its template");
  Element& oLast = *m_oLastChild;
  const NodeNumber iNext = m_oDocument->m_iNext;
  if (oLast.m_oFrozen.Empty()) oLast.m_oFrozen = FrozenRows(oTemplate, iNext);
  if (const auto sRow = oLast.m_oFrozen.Append(oTemplate, iNext, texts))
    return m_oDocument->AddFrozen(oTemplate, *sRow);

  const std::size_t iCells = oTemplate.cells().size();
  if (texts.size() > iCells) {
    throw std::runtime_error("The template row \"" + oTemplate.id() + "\" has " + std::to_string(iCells) +
                             " cells instead of " + std::to_string(texts.size()));
  }
  Element& oRow = appendChild(oTemplate.cloneNode(true));
  oRow.style().display("");
  const auto oCells = oRow.cells();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!texts[i].empty()) oCells[i]->innerText(texts[i]);
  }
}

void Element::appendRow(Element& oTemplate, const std::function<void(Element& oRow)>& oWrite) {
  if (oTemplate.m_oParent != this) throw std::logic_error("Only a row of the section can be its template");
  Document oDraft;
  Element& oCopy = oDraft.CloneBelow(oTemplate, nullptr, oDraft.m_iNext);
  oCopy.style().display("");
  oWrite(oCopy);

  Element& oLast = *m_oLastChild;
  const NodeNumber iNext = m_oDocument->m_iNext;
  if (oLast.m_oFrozen.Empty()) oLast.m_oFrozen = FrozenRows(oTemplate, iNext, oCopy);
  if (const auto sRow = oLast.m_oFrozen.Append(oTemplate, iNext, oCopy))
    return m_oDocument->AddFrozen(oTemplate, *sRow);

  Element& oRow = appendChild(oTemplate.cloneNode(true));
  oRow.style().display("");
  oRow.TakeOver(oCopy);
}

void Element::TakeOver(const Element& oCopy) {
  const Attributes oOld = attributes();
  for (const auto& [sName, sValue] : oOld) {
    if (!oCopy.hasAttribute(sName)) removeAttribute(sName);
  }
  for (const auto& [sName, sValue] : oCopy.attributes()) {
    if (!hasAttribute(sName) || getAttribute(sName) != sValue) setAttribute(sName, sValue);
  }
  if (oCopy.m_oFirstChild == nullptr) {
    if (m_oFirstChild != nullptr || m_sText != oCopy.m_sText) innerText(oCopy.m_sText);
    return;
  }
  const Element* oFrom = oCopy.m_oFirstChild;
  for (Element* o = m_oFirstChild; o != nullptr && oFrom != nullptr; o = o->m_oNext, oFrom = oFrom->m_oNext) {
    o->TakeOver(*oFrom);
  }
}

Element& Element::after(Element& oElement) {
  if (m_oParent == nullptr) throw std::logic_error("An element without a parent cannot get a sibling");
  m_oParent->Insert(this, oElement, {}, m_oFrozen);
  oElement.m_sTail = std::exchange(m_sTail, {});
  m_oDocument->Report({Change::Kind::After, m_iNumber, oElement.m_iNumber});
  return oElement;
}

void Element::Append(Element& oChild) {
  Insert(m_oLastChild, oChild, m_oLastChild == nullptr ? FrozenRows() : m_oLastChild->m_oFrozen, {});
}

void Element::Insert(Element* oAfter, Element& oChild, const FrozenRows& oBefore, const FrozenRows& oBehind) {
  if (oChild.m_oParent != nullptr || oChild.m_oDocument != m_oDocument || oChild.contains(*this)) {
    throw std::logic_error("Only an unattached element of the same document can be inserted");
  }
  // Both may be rows that stand behind oAfter until now.
  FrozenRows oRows = oBehind;
  if (oAfter != nullptr) oAfter->Frozen(oBefore);
  oChild.Frozen(std::move(oRows));

  Element* oNext = oAfter == nullptr ? m_oFirstChild : oAfter->m_oNext;
  oChild.m_oParent = this;
  oChild.m_oPrevious = oAfter;
  oChild.m_oNext = oNext;
  (oAfter == nullptr ? m_oFirstChild : oAfter->m_oNext) = &oChild;
  (oNext == nullptr ? m_oLastChild : oNext->m_oPrevious) = &oChild;

  const std::uint64_t iLow = oAfter == nullptr ? 0 : oAfter->LastOrder();
  const std::uint64_t iHigh = oNext == nullptr ? 0 : oNext->m_iOrder - oChild.m_oFrozen.Count() * OrderStep;
  if (oNext == nullptr) {
    oChild.m_iOrder = iLow + OrderStep;
  } else if (iHigh - iLow > 1) {
    oChild.m_iOrder = iLow + (iHigh - iLow) / 2;
  } else {
    std::uint64_t iOrder = 0;
    for (Element* o = m_oFirstChild; o != nullptr; o = o->m_oNext) {
      o->m_iOrder = iOrder + OrderStep;
      iOrder = o->LastOrder();
    }
  }
  if (isConnected()) m_oDocument->Connect(oChild);
}

std::uint64_t Element::LastOrder() const { return m_iOrder + m_oFrozen.Count() * OrderStep; }

void Element::Frozen(FrozenRows oRows) {
  auto& frozen = m_oDocument->m_frozen;
  if (!m_oFrozen.Empty()) frozen.erase(m_oFrozen.First());
  m_oFrozen = std::move(oRows);
  if (!m_oFrozen.Empty()) frozen.emplace(m_oFrozen.First(), this);
}

}  // namespace ZELWbr3
