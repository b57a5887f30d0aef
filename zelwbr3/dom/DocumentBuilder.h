#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"

#include <string_view>

namespace ZELWbr3 {

/// Builds elements in document order, which is also the order of their numbers:
/// a whole document from a parsed file or a browser's snapshot, or the content
/// of one element from markup.
///
///     DocumentBuilder oBuilder(oDocument);
///     oBuilder.Begin("html"); oBuilder.Attribute("lang", "en"); ... oBuilder.End();
class ZELWBR3_EXPORT DocumentBuilder {
 public:
  /// For an empty document.
  explicit DocumentBuilder(Document& oDocument) : m_oDocument(oDocument) {}
  /// Appends content to an element of the document and reports it to the
  /// document's change log.
  DocumentBuilder(Document& oDocument, Element& oParent) : m_oDocument(oDocument), m_oCurrent(&oParent) {}

  Element& Begin(std::string_view sTag);
  /// An attribute of the element begun last. Call it before adding content.
  void Attribute(std::string_view sName, std::string_view sValue);
  void Text(std::string_view sText);
  /// Ends the element begun last.
  void End();

 private:
  Document& m_oDocument;
  Element* m_oCurrent = nullptr;
};

}  // namespace ZELWbr3
