#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Change.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3 {

class Element;

/// Rows that follow each other in a section of a table, and of which nothing is
/// kept but their texts, and those attributes that differ from row to row: they were
/// appended with Element::appendRow, and nobody has asked for one of them since. An
/// Element costs some two hundred bytes, and a row has one for each cell; a frozen
/// row costs its texts, and 15 bytes or so.
///
/// The rows stand behind an element of the section, and before its next sibling.
/// Each has its numbers and its place, as if it were made of elements, so that
/// nobody can tell the difference: whoever asks for a row gets the Element that
/// the document makes of it at that moment (Document::Thaw), and that stays. What
/// only reads in passing, as a writer of HTML does, is shown a stand-in.
///
/// Each frozen row is a visible copy of its template as that was when the first of
/// them was appended. An element with the template's ids stands before it, so the
/// document's index by id need not know it; rows with ids of their own are asked for
/// (WithID) before the index is.
class ZELWBR3_EXPORT FrozenRows {
 public:
  /// The tag of each.
  static constexpr std::string_view Tag = "tr";

  /// None.
  FrozenRows() = default;
  /// To be copies of this template, numbered from iFirst on, with texts in their cells;
  /// still none.
  FrozenRows(const Element& oTemplate, NodeNumber iFirst);
  /// The same, with other texts and attributes where oRow, a copy of the template,
  /// has them.
  FrozenRows(const Element& oTemplate, NodeNumber iFirst, const Element& oRow);

  std::uint32_t Count() const { return m_iCount; }
  bool Empty() const { return m_iCount == 0; }
  /// The numbers of the rows and their cells are those from First() to before End().
  NodeNumber First() const { return m_iFirst; }
  NodeNumber End() const { return Number(m_iCount); }
  /// The number of a row, counted from 0.
  NodeNumber Number(std::uint32_t iRow) const;
  /// The row with a number, its own or that of a cell.
  std::uint32_t RowWith(NodeNumber iNumber) const;
  /// Some element in each row has its template's id.
  bool HasIDs() const;
  /// The numbers of the rows in which an element has this id, and not from the template.
  std::vector<NodeNumber> WithID(std::string_view sID) const;

  /// Appends a row with texts for its first cells, if it is the next one of these:
  /// a copy of the same unchanged template, and one that its columns can tell. Returns
  /// the values as a Change has them, valid until the next row is appended; none if the
  /// row has to be made of elements.
  std::optional<std::string_view> Append(const Element& oTemplate, NodeNumber iNumber,
                                         std::span<const std::string> texts);
  /// The same with what is written to a visible copy of the template.
  std::optional<std::string_view> Append(const Element& oTemplate, NodeNumber iNumber, const Element& oRow);
  /// What the values are, as a Change says it in its Name.
  const std::string& Columns() const;

  /// A row as an element of a section, to be read before the next one is asked for.
  /// It has no siblings.
  const Element& StandIn(std::uint32_t iRow, Element& oSection) const;

  /// Some of the rows. Both share the texts.
  FrozenRows Part(std::uint32_t iFrom, std::uint32_t iCount) const;
  /// The same rows with numbers from iFirst on.
  FrozenRows Copy(NodeNumber iFirst) const;

 private:
  /// Grows only, so that any number of parts can share it.
  class Store;

  bool IsNext(const Element& oTemplate, NodeNumber iNumber) const;

  NodeNumber m_iFirst = 0;
  std::uint32_t m_iBegin = 0;  ///< the first row in the store
  std::uint32_t m_iCount = 0;
  std::shared_ptr<Store> m_oStore;
};

}  // namespace ZELWbr3
