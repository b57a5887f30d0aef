#include "zelwbr3/dom/FrozenRows.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/Style.h"

#include <algorithm>
#include <deque>
#include <vector>

namespace ZELWbr3 {

/// The texts of rows, and a row to show them in: the template's copy.
class FrozenRows::Store {
 public:
  /// Null if copies of this template have more than texts to be told.
  static std::shared_ptr<Store> Of(const Element& oTemplate);

  explicit Store(const Element& oTemplate);

  bool IsOf(const Element& oTemplate) const;
  bool HasIDs() const;
  NodeNumber Step() const { return static_cast<NodeNumber>(1 + m_cells.size()); }
  std::uint32_t Count() const { return m_iCount; }
  std::optional<std::string_view> Append(std::span<const std::string> texts);
  const Element& Show(std::uint32_t iRow, NodeNumber iNumber, Element& oSection);

 private:
  static constexpr std::uint32_t BlockRows = 256;
  /// The texts of each row, with a separator between two.
  struct Block {
    std::string Texts;
    std::vector<std::size_t> Ends;
  };
  struct Cell {
    Element& Shown;
    /// Of the template.
    std::string Text;
  };

  static bool IsPlain(const Element& oCell) {
    return (oCell.tagName() == "td" || oCell.tagName() == "th") && oCell.m_oFirstChild == nullptr;
  }

  static std::string_view Row(const Block& oBlock, std::uint32_t iRow) {
    const std::size_t iBegin = iRow == 0 ? 0 : oBlock.Ends[iRow - 1];
    return std::string_view(oBlock.Texts).substr(iBegin, oBlock.Ends[iRow] - iBegin);
  }

  /// The template's own attributes; shared, so that a write to them makes others.
  std::shared_ptr<Element::Attributes> m_oAttributes;
  std::deque<Element> m_shown;
  std::vector<Cell> m_cells;
  std::vector<Block> m_blocks;
  std::uint32_t m_iCount = 0;
};

std::shared_ptr<FrozenRows::Store> FrozenRows::Store::Of(const Element& oTemplate) {
  if (oTemplate.tagName() != Tag || oTemplate.m_oFirstChild == nullptr) return nullptr;
  for (const Element* o = oTemplate.m_oFirstChild; o != nullptr; o = o->m_oNext) {
    if (!IsPlain(*o)) return nullptr;
  }
  return std::make_shared<Store>(oTemplate);
}

FrozenRows::Store::Store(const Element& oTemplate) : m_oAttributes(oTemplate.m_oAttributes) {
  Document& oDocument = *oTemplate.m_oDocument;
  const auto Copy = [&](const Element& o) -> Element& {
    Element& oCopy = m_shown.emplace_back(Element::Key(), oDocument, NodeNumber{0}, o.tagName());
    oCopy.m_oAttributes = o.m_oAttributes;
    oCopy.m_sText = o.m_sText;
    return oCopy;
  };
  Element& oRow = Copy(oTemplate);
  oDocument.Unreported([&] { oRow.style().display(""); });
  for (const Element* o = oTemplate.m_oFirstChild; o != nullptr; o = o->m_oNext) {
    Element& oCell = Copy(*o);
    oRow.Append(oCell);
    oCell.m_sTail = o->m_sTail;
    m_cells.push_back({oCell, o->m_sText});
  }
}

bool FrozenRows::Store::IsOf(const Element& oTemplate) const {
  const Element& oRow = m_shown.front();
  if (oTemplate.m_oAttributes != m_oAttributes || oTemplate.m_sText != oRow.m_sText) return false;
  const Element* oCell = oTemplate.m_oFirstChild;
  for (const auto& [oShown, sText] : m_cells) {
    if (oCell == nullptr || oCell->m_oAttributes != oShown.m_oAttributes || oCell->m_sText != sText ||
        oCell->m_sTail != oShown.m_sTail || oCell->m_sTag != oShown.m_sTag || !IsPlain(*oCell)) {
      return false;
    }
    oCell = oCell->m_oNext;
  }
  return oCell == nullptr;
}

bool FrozenRows::Store::HasIDs() const {
  return std::ranges::any_of(m_shown, [](const Element& o) { return !o.id().empty(); });
}

std::optional<std::string_view> FrozenRows::Store::Append(std::span<const std::string> texts) {
  if (texts.size() > m_cells.size()) return std::nullopt;
  const auto IsSeparable = [](const std::string& s) { return s.find(Change::Separator) == std::string::npos; };
  if (!std::ranges::all_of(texts, IsSeparable)) return std::nullopt;

  if (m_iCount % BlockRows == 0) {
    if (m_iCount > 0) m_blocks.back().Texts.shrink_to_fit();
    m_blocks.emplace_back();
  }
  Block& oBlock = m_blocks.back();
  for (std::size_t i = 0; i < m_cells.size(); ++i) {
    if (i > 0) oBlock.Texts += Change::Separator;
    if (i < texts.size()) oBlock.Texts += Text::Clean(texts[i]);
  }
  oBlock.Ends.push_back(oBlock.Texts.size());
  return Row(oBlock, m_iCount++ % BlockRows);
}

const Element& FrozenRows::Store::Show(std::uint32_t iRow, NodeNumber iNumber, Element& oSection) {
  Element& oRow = m_shown.front();
  oRow.m_oParent = &oSection;
  oRow.m_iNumber = iNumber;
  std::string_view sRest = Row(m_blocks[iRow / BlockRows], iRow % BlockRows);
  for (auto& [oCell, sOfTemplate] : m_cells) {
    oCell.m_iNumber = ++iNumber;
    const auto iEnd = std::min(sRest.find(Change::Separator), sRest.size());
    oCell.m_sText = iEnd == 0 ? sOfTemplate : sRest.substr(0, iEnd);
    sRest.remove_prefix(std::min(iEnd + 1, sRest.size()));
  }
  return oRow;
}

FrozenRows::FrozenRows(const Element& oTemplate, NodeNumber iFirst)
    : m_iFirst(iFirst), m_oStore(Store::Of(oTemplate)) {}

NodeNumber FrozenRows::Number(std::uint32_t iRow) const {
  return m_oStore == nullptr ? m_iFirst : m_iFirst + iRow * m_oStore->Step();
}

std::uint32_t FrozenRows::RowWith(NodeNumber iNumber) const { return (iNumber - m_iFirst) / m_oStore->Step(); }

bool FrozenRows::HasIDs() const { return m_oStore->HasIDs(); }

std::optional<std::string_view> FrozenRows::Append(const Element& oTemplate, NodeNumber iNumber,
                                                   std::span<const std::string> texts) {
  const bool bNext =
      m_oStore != nullptr && iNumber == End() && m_iBegin + m_iCount == m_oStore->Count() && m_oStore->IsOf(oTemplate);
  const auto sRow = bNext ? m_oStore->Append(texts) : std::nullopt;
  if (sRow) ++m_iCount;
  return sRow;
}

const Element& FrozenRows::StandIn(std::uint32_t iRow, Element& oSection) const {
  return m_oStore->Show(m_iBegin + iRow, Number(iRow), oSection);
}

FrozenRows FrozenRows::Part(std::uint32_t iFrom, std::uint32_t iCount) const {
  FrozenRows oPart = Copy(Number(iFrom));
  oPart.m_iBegin += iFrom;
  oPart.m_iCount = iCount;
  return oPart;
}

FrozenRows FrozenRows::Copy(NodeNumber iFirst) const {
  FrozenRows oCopy = *this;
  oCopy.m_iFirst = iFirst;
  return oCopy;
}

}  // namespace ZELWbr3
