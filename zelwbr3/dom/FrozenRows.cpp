#include "zelwbr3/dom/FrozenRows.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/Style.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <unordered_map>

namespace ZELWbr3 {

/// The values of rows, and a row to show them in: the template's copy.
class FrozenRows::Store {
 public:
  /// Null if the rows are not of such elements that values can tell them.
  static std::shared_ptr<Store> Of(const Element& oTemplate, const Element* oRow);

  explicit Store(const Element& oTemplate);

  bool IsOf(const Element& oTemplate) const;
  bool HasIDs() const;
  NodeNumber Step() const { return static_cast<NodeNumber>(m_parts.size()); }
  std::uint32_t Count() const { return m_iCount; }
  const std::string& Columns() const { return m_sColumns; }
  std::optional<std::string_view> Append(std::span<const std::string> texts);
  std::optional<std::string_view> Append(const Element& oRow);
  const Element& Show(std::uint32_t iRow, NodeNumber iNumber, Element& oSection);
  /// The rows from iBegin to before iEnd with a value for an id.
  std::vector<std::uint32_t> WithID(std::string_view sID, std::uint32_t iBegin, std::uint32_t iEnd) const;

 private:
  static constexpr std::uint32_t BlockRows = 256;
  static constexpr std::string_view ID = "id";
  /// The values of each row, with a separator between two.
  struct Block {
    std::string Values;
    std::vector<std::size_t> Ends;
  };
  /// An element of the row, and what it has from the template.
  struct Part {
    Element& Shown;
    int Depth;
    std::shared_ptr<Element::Attributes> Attributes;
    std::string Text;
  };
  /// What a value is: the text of a part or, with a name, an attribute.
  struct Column {
    std::size_t Part;
    std::string Attribute = {};
    bool operator==(const Column&) const = default;
  };

  /// A cell, or the only thing in a cell, which has nothing in it.
  static bool HasText(const Element& o, int iDepth) { return o.m_oFirstChild == nullptr && iDepth > 0; }
  static bool IsCell(const Element& o) {
    const Element* oOnly = o.m_oFirstChild;
    const bool bTellable = oOnly == nullptr || (oOnly->m_oNext == nullptr && oOnly->m_oFirstChild == nullptr &&
                                                o.m_sText.empty() && oOnly->m_sTail.empty());
    return (o.tagName() == "td" || o.tagName() == "th") && bTellable;
  }

  /// Calls oVisit with the elements of a row in document order and their depths,
  /// until it answers false.
  template <class Visit>
  static bool Each(const Element& oElement, const Visit& oVisit, int iDepth = 0) {
    if (!oVisit(oElement, iDepth)) return false;
    for (const Element* o = oElement.m_oFirstChild; o != nullptr; o = o->m_oNext) {
      if (!Each(*o, oVisit, iDepth + 1)) return false;
    }
    return true;
  }

  void Copy(const Element& oElement, Element* oParent, int iDepth);
  /// The differences of a row from the template's copy by column; with bAnyColumn,
  /// there is a column for each of them afterwards. False if they cannot be told.
  bool Read(const Element& oRow, bool bAnyColumn);
  bool ReadAttributes(const Element& oElement, std::size_t iPart, bool bAnyColumn);
  /// The column's value is this from now on. Returns the column; none if it cannot be told.
  std::optional<std::size_t> ReadValue(const Column& oColumn, const std::string& sValue, bool bAnyColumn);
  void NameColumns();

  std::string_view Row(std::uint32_t iRow) const {
    const Block& oBlock = m_blocks[iRow / BlockRows];
    const std::uint32_t iInBlock = iRow % BlockRows;
    const std::size_t iBegin = iInBlock == 0 ? 0 : oBlock.Ends[iInBlock - 1];
    return std::string_view(oBlock.Values).substr(iBegin, oBlock.Ends[iInBlock] - iBegin);
  }
  /// Takes the next value from a row.
  static std::string_view Next(std::string_view& sRow) {
    const auto iEnd = std::min(sRow.find(Change::Separator), sRow.size());
    const std::string_view sValue = sRow.substr(0, iEnd);
    sRow.remove_prefix(std::min(iEnd + 1, sRow.size()));
    return sValue;
  }

  /// The template's own attributes; shared, so that a write to them makes others.
  std::shared_ptr<Element::Attributes> m_oAttributes;
  std::deque<Element> m_shown;
  std::vector<Part> m_parts;
  /// First those of all texts.
  std::vector<Column> m_columns;
  std::string m_sColumns;
  std::vector<Block> m_blocks;
  std::uint32_t m_iCount = 0;
  /// The rows by their ids' hashes.
  std::unordered_multimap<std::size_t, std::uint32_t> m_ids;
  /// Of the row read last, by column.
  std::vector<std::string> m_values;
};

std::shared_ptr<FrozenRows::Store> FrozenRows::Store::Of(const Element& oTemplate, const Element* oRow) {
  if (oTemplate.tagName() != Tag || oTemplate.m_oFirstChild == nullptr) return nullptr;
  for (const Element* o = oTemplate.m_oFirstChild; o != nullptr; o = o->m_oNext) {
    if (!IsCell(*o)) return nullptr;
  }
  auto oStore = std::make_shared<Store>(oTemplate);
  // Texts for cells take the place of what is in them.
  if (oRow == nullptr && oStore->m_parts.size() > 1 + oStore->m_columns.size()) return nullptr;
  if (oRow != nullptr && !oStore->Read(*oRow, true)) return nullptr;
  oStore->NameColumns();
  return oStore;
}

FrozenRows::Store::Store(const Element& oTemplate) : m_oAttributes(oTemplate.m_oAttributes) {
  Copy(oTemplate, nullptr, 0);
  Element& oRow = m_shown.front();
  oRow.m_oDocument->Unreported([&] { oRow.style().display(""); });
  m_parts.front().Attributes = oRow.m_oAttributes;
}

void FrozenRows::Store::Copy(const Element& oElement, Element* oParent, int iDepth) {
  Element& oCopy = m_shown.emplace_back(Element::Key(), *oElement.m_oDocument, NodeNumber{0}, oElement.tagName());
  oCopy.m_oAttributes = oElement.m_oAttributes;
  oCopy.m_sText = oElement.m_sText;
  if (oParent != nullptr) {
    oParent->Append(oCopy);
    oCopy.m_sTail = oElement.m_sTail;
  }
  if (HasText(oElement, iDepth)) m_columns.push_back({m_parts.size()});
  m_parts.push_back({oCopy, iDepth, oElement.m_oAttributes, oElement.m_sText});
  for (const Element* o = oElement.m_oFirstChild; o != nullptr; o = o->m_oNext) Copy(*o, &oCopy, iDepth + 1);
}

bool FrozenRows::Store::IsOf(const Element& oTemplate) const {
  std::size_t iPart = 0;
  const auto IsSame = [&](const Element& o, int iDepth) {
    if (iPart == m_parts.size()) return false;
    const Part& oPart = m_parts[iPart++];
    return o.m_oAttributes == (iDepth == 0 ? m_oAttributes : oPart.Attributes) && o.m_sText == oPart.Text &&
           o.m_sTag == oPart.Shown.m_sTag && iDepth == oPart.Depth && (iDepth == 0 || o.m_sTail == oPart.Shown.m_sTail);
  };
  return Each(oTemplate, IsSame) && iPart == m_parts.size();
}

bool FrozenRows::Store::HasIDs() const {
  const auto IsID = [](const Element::Attribute& o) { return o.first == ID; };
  return std::ranges::any_of(
      m_parts, [&](const Part& o) { return o.Attributes != nullptr && std::ranges::any_of(*o.Attributes, IsID); });
}

bool FrozenRows::Store::Read(const Element& oRow, bool bAnyColumn) {
  m_values.assign(m_columns.size(), {});
  std::size_t iPart = 0;
  const auto ReadPart = [&](const Element& o, int iDepth) {
    if (iPart == m_parts.size()) return false;
    const Part& oPart = m_parts[iPart];
    if (o.tagName() != oPart.Shown.tagName() || iDepth != oPart.Depth) return false;
    if (o.m_sText != oPart.Text && !ReadValue({iPart}, o.m_sText, bAnyColumn && HasText(o, iDepth))) return false;
    return ReadAttributes(o, iPart++, bAnyColumn);
  };
  return Each(oRow, ReadPart) && iPart == m_parts.size();
}

bool FrozenRows::Store::ReadAttributes(const Element& oElement, std::size_t iPart, bool bAnyColumn) {
  const auto& oOwn = m_parts[iPart].Attributes;
  if (oElement.m_oAttributes == oOwn) return true;
  const std::size_t iOwn = oOwn == nullptr ? 0 : oOwn->size();
  const Element::Attributes& oWritten = oElement.attributes();
  if (oWritten.size() < iOwn) return false;
  std::size_t iLast = 0;
  for (std::size_t i = 0; i < oWritten.size(); ++i) {
    const auto& [sName, sValue] = oWritten[i];
    if (i < iOwn && (*oOwn)[i].first != sName) return false;
    if (i < iOwn && (*oOwn)[i].second == sValue) continue;
    const auto iColumn = ReadValue({iPart, sName}, sValue, bAnyColumn);
    // New ones are shown in the order of the columns.
    if (!iColumn || (i >= iOwn && *iColumn < iLast)) return false;
    if (i >= iOwn) iLast = *iColumn;
  }
  return true;
}

std::optional<std::size_t> FrozenRows::Store::ReadValue(const Column& oColumn, const std::string& sValue,
                                                        bool bAnyColumn) {
  if (sValue.empty()) return std::nullopt;
  auto it = std::ranges::find(m_columns, oColumn);
  if (it == m_columns.end()) {
    if (!bAnyColumn) return std::nullopt;
    it = m_columns.insert(it, oColumn);
    m_values.emplace_back();
  }
  const auto iColumn = static_cast<std::size_t>(it - m_columns.begin());
  m_values[iColumn] = sValue;
  return iColumn;
}

void FrozenRows::Store::NameColumns() {
  // Texts of all cells need no name.
  if (m_columns.size() == m_parts.size() - 1 && m_columns.back().Attribute.empty()) return;
  for (const auto& [iPart, sAttribute] : m_columns) {
    if (!m_sColumns.empty()) m_sColumns += ' ';
    m_sColumns += std::to_string(iPart);
    if (!sAttribute.empty()) m_sColumns += '@' + sAttribute;
  }
}

std::optional<std::string_view> FrozenRows::Store::Append(const Element& oRow) {
  return Read(oRow, false) ? Append(m_values) : std::nullopt;
}

std::optional<std::string_view> FrozenRows::Store::Append(std::span<const std::string> texts) {
  if (texts.size() > m_columns.size()) return std::nullopt;
  const auto IsSeparable = [](const std::string& s) { return s.find(Change::Separator) == std::string::npos; };
  if (!std::ranges::all_of(texts, IsSeparable)) return std::nullopt;

  if (m_iCount % BlockRows == 0) {
    if (m_iCount > 0) m_blocks.back().Values.shrink_to_fit();
    m_blocks.emplace_back();
  }
  Block& oBlock = m_blocks.back();
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (i > 0) oBlock.Values += Change::Separator;
    if (i >= texts.size()) continue;
    oBlock.Values += Text::Clean(texts[i]);
    if (m_columns[i].Attribute == ID && !texts[i].empty())
      m_ids.emplace(std::hash<std::string_view>()(texts[i]), m_iCount);
  }
  oBlock.Ends.push_back(oBlock.Values.size());
  return Row(m_iCount++);
}

const Element& FrozenRows::Store::Show(std::uint32_t iRow, NodeNumber iNumber, Element& oSection) {
  m_shown.front().m_oParent = &oSection;
  for (const Part& oPart : m_parts) {
    oPart.Shown.m_iNumber = iNumber++;
    oPart.Shown.m_oAttributes = oPart.Attributes;
  }
  std::string_view sRest = Row(iRow);
  for (const auto& [iPart, sAttribute] : m_columns) {
    const std::string_view sValue = Next(sRest);
    const auto& [oShown, iDepth, oAttributes, sText] = m_parts[iPart];
    if (sAttribute.empty()) {
      oShown.m_sText = sValue.empty() ? sText : sValue;
    } else if (!sValue.empty()) {
      // Not by its member, which would look for the row in the index by id.
      if (oShown.m_oAttributes == oAttributes)
        oShown.m_oAttributes = std::make_shared<Element::Attributes>(oShown.attributes());
      const auto it = std::ranges::find(*oShown.m_oAttributes, sAttribute, &Element::Attribute::first);
      if (it != oShown.m_oAttributes->end())
        it->second = sValue;
      else
        oShown.m_oAttributes->emplace_back(sAttribute, sValue);
    }
  }
  return m_shown.front();
}

std::vector<std::uint32_t> FrozenRows::Store::WithID(std::string_view sID, std::uint32_t iBegin,
                                                     std::uint32_t iEnd) const {
  std::vector<std::uint32_t> rows;
  const auto HasID = [&](std::uint32_t iRow) {
    std::string_view sRest = Row(iRow);
    return std::ranges::any_of(m_columns, [&](const Column& o) { return Next(sRest) == sID && o.Attribute == ID; });
  };
  const auto [oFirst, oLast] = m_ids.equal_range(std::hash<std::string_view>()(sID));
  for (auto it = oFirst; it != oLast; ++it) {
    if (it->second >= iBegin && it->second < iEnd && HasID(it->second)) rows.push_back(it->second);
  }
  // A cell and the link in it may have the same one.
  std::ranges::sort(rows);
  rows.erase(std::ranges::unique(rows).begin(), rows.end());
  return rows;
}

FrozenRows::FrozenRows(const Element& oTemplate, NodeNumber iFirst)
    : m_iFirst(iFirst), m_oStore(Store::Of(oTemplate, nullptr)) {}

FrozenRows::FrozenRows(const Element& oTemplate, NodeNumber iFirst, const Element& oRow)
    : m_iFirst(iFirst), m_oStore(Store::Of(oTemplate, &oRow)) {}

NodeNumber FrozenRows::Number(std::uint32_t iRow) const {
  return m_oStore == nullptr ? m_iFirst : m_iFirst + iRow * m_oStore->Step();
}

std::uint32_t FrozenRows::RowWith(NodeNumber iNumber) const { return (iNumber - m_iFirst) / m_oStore->Step(); }

bool FrozenRows::HasIDs() const { return m_oStore->HasIDs(); }

std::vector<NodeNumber> FrozenRows::WithID(std::string_view sID) const {
  std::vector<NodeNumber> numbers;
  for (const std::uint32_t iRow : m_oStore->WithID(sID, m_iBegin, m_iBegin + m_iCount)) {
    numbers.push_back(Number(iRow - m_iBegin));
  }
  return numbers;
}

const std::string& FrozenRows::Columns() const { return m_oStore->Columns(); }

bool FrozenRows::IsNext(const Element& oTemplate, NodeNumber iNumber) const {
  return m_oStore != nullptr && iNumber == End() && m_iBegin + m_iCount == m_oStore->Count() &&
         m_oStore->IsOf(oTemplate);
}

std::optional<std::string_view> FrozenRows::Append(const Element& oTemplate, NodeNumber iNumber,
                                                   std::span<const std::string> texts) {
  const bool bTexts = IsNext(oTemplate, iNumber) && m_oStore->Columns().empty();
  const auto sRow = bTexts ? m_oStore->Append(texts) : std::nullopt;
  if (sRow) ++m_iCount;
  return sRow;
}

std::optional<std::string_view> FrozenRows::Append(const Element& oTemplate, NodeNumber iNumber, const Element& oRow) {
  const auto sRow = IsNext(oTemplate, iNumber) ? m_oStore->Append(oRow) : std::nullopt;
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
