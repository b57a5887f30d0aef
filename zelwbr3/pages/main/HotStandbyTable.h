#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/dom/Document.h"

#include <functional>
#include <string_view>

namespace ZELWbr3 {

/// The main page's table of hot-standby nodes. Its rows for known nodes are
/// made from a hidden template unless the page file has them numbered.
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
  /// A copy of a row behind the last node's.
  Element& Copy(Element& oTemplate);

  Finder m_oRequired;
  Document& m_oDocument;
  /// The row behind which the next node's row goes.
  Element* m_oLast = nullptr;
  bool m_bUnknownUsed = false;
};

}  // namespace ZELWbr3
