#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/dom/Document.h"

#include <functional>
#include <string_view>

namespace ZELWbr3 {

/// The main page's table of hot-standby nodes. The rows of known nodes are copies
/// of a hidden template unless the page file has numbered rows.
class HotStandbyTable {
 public:
  /// Finds an element that the page file must have, or throws.
  using Finder = std::function<Element&(std::string_view)>;

  HotStandbyTable(Finder oRequired, Document& oDocument) : m_oRequired(std::move(oRequired)), m_oDocument(oDocument) {}

  void Fill(ZELLib3::Database& oDatabase);

 private:
  void FillOfficial(ZELLib3::Database& oDatabase);
  void FillNode(int iNumber, const ZELLib3::HotStandby::Node& oNode);
  Element& KnownRow(int iNumber);
  Element& UnknownRow();
  /// Inserts a copy of a row after the last node's row.
  Element& Copy(Element& oTemplate);

  Finder m_oRequired;
  Document& m_oDocument;
  /// The row after which the next node's row is inserted.
  Element* m_oLast = nullptr;
  bool m_bUnknownUsed = false;
};

}  // namespace ZELWbr3
