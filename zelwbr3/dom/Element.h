#pragma once

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Change.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZELWbr3 {

class All;
class Document;
class EmbeddedObject;
class Style;

/// One element of a Document, which owns it: a pointer to an element is good
/// for as long as its document.
///
/// Text is kept with the elements instead of in nodes of its own: `text` is
/// what stands before the first child, `tail` what follows the element inside
/// its parent. Names of attributes and tags are in lower case. Every text that
/// is written may be any bytes; it is cleaned (Text::Clean) on its way in.
class Element {
 public:
  using Attribute = std::pair<std::string, std::string>;
  using Attributes = std::vector<Attribute>;

  /// Only documents make elements.
  class Key {
    friend class Document;
    Key() = default;
  };
  Element(Key, Document& oDocument, NodeNumber iNumber, const std::string& sTag)
      : m_oDocument(&oDocument), m_sTag(&sTag), m_iNumber(iNumber) {}
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;

  NodeNumber Number() const { return m_iNumber; }
  Document& OwnerDocument() const { return *m_oDocument; }
  const std::string& tagName() const { return *m_sTag; }

  // Attributes. An absent one reads as the empty text.
  const Attributes& attributes() const;
  const std::string& getAttribute(std::string_view sName) const;
  bool hasAttribute(std::string_view sName) const;
  void setAttribute(std::string_view sName, std::string_view sValue);
  void removeAttribute(std::string_view sName);

  const std::string& id() const { return getAttribute("id"); }
  void id(std::string_view sValue) { setAttribute("id", sValue); }
  const std::string& className() const { return getAttribute("class"); }
  void className(std::string_view sValue) { setAttribute("class", sValue); }
  const std::string& title() const { return getAttribute("title"); }
  void title(std::string_view sValue) { setAttribute("title", sValue); }
  const std::string& width() const { return getAttribute("width"); }
  void width(std::string_view sValue) { setAttribute("width", sValue); }
  Style style();
  /// The properties of an embedded object.
  EmbeddedObject object();

  /// The text of the element and all below it, to the blank.
  std::string innerText() const;
  /// Replaces the whole content by a text.
  void innerText(std::string_view sText);
  std::string innerHTML() const;
  /// Replaces the whole content by markup. Only for markup that the program
  /// itself has built: elements with quoted attributes, text and the five
  /// basic entities; anything else throws std::invalid_argument.
  void innerHTML(std::string_view sMarkup);

  // Text parts, for those who write a document out.
  const std::string& text() const { return m_sText; }
  const std::string& tail() const { return m_sTail; }

  // The tree, elements only.
  Element* parentElement() const { return m_oParent; }
  Element* firstElementChild() const { return m_oFirstChild; }
  Element* nextElementSibling() const { return m_oNext; }
  Element* previousElementSibling() const { return m_oPrevious; }
  /// True for the element itself, too.
  bool contains(const Element& oOther) const;
  /// True while the element is part of its document.
  bool isConnected() const;

  /// The elements below this one.
  All all();

  // Tables, 0-based; null when there is no such section, row or cell.
  Element* tBodies(std::size_t iIndex) const;
  Element* rows(std::size_t iIndex) const;
  Element* cells(std::size_t iIndex) const;
  /// All cells of a row, for those who write more than one.
  std::vector<Element*> cells() const;

  /// A copy with everything below it, not attached anywhere.
  Element& cloneNode(bool bDeep);
  /// Moves an unattached element to the end of this one.
  Element& appendChild(Element& oChild);
  /// Puts an unattached element right behind this one.
  Element& after(Element& oElement);

 private:
  friend class Document;
  friend class DocumentBuilder;
  friend class IdIndex;
  friend class Style;

  Element* NthChild(std::size_t iIndex, bool (*Matches)(const Element&)) const;
  void AssignAttribute(std::string_view sName, std::optional<std::string> sValue);
  void Insert(Element* oAfter, Element& oChild);
  void RemoveContent();
  void AppendTextContent(std::string& sText) const;
  bool Precedes(const Element& oOther) const;

  Document* m_oDocument;
  const std::string* m_sTag;
  Element* m_oParent = nullptr;
  Element* m_oFirstChild = nullptr;
  Element* m_oLastChild = nullptr;
  Element* m_oPrevious = nullptr;
  Element* m_oNext = nullptr;
  /// Grows from sibling to sibling, so that two rows of a long table can be
  /// compared without walking between them.
  std::uint64_t m_iOrder = 0;
  /// Shared between clones until one of them writes.
  std::shared_ptr<Attributes> m_oAttributes;
  std::string m_sText;
  std::string m_sTail;
  NodeNumber m_iNumber;
};

}  // namespace ZELWbr3
