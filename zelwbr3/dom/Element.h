#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Change.h"
#include "zelwbr3/dom/FrozenRows.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZELWbr3 {

class All;
class Document;
class EmbeddedObject;
class Style;

/// One element of a Document. The document owns it: a pointer to an element is
/// valid as long as its document lives.
///
/// There are no text nodes. `text` is the text before the first child, `tail`
/// the text that follows the element inside its parent. Attribute and tag names
/// are in lower case. A text to write may hold any bytes; it is cleaned
/// (Text::Clean) first.
class ZELWBR3_EXPORT Element {
 public:
  using Attribute = std::pair<std::string, std::string>;
  using Attributes = std::vector<Attribute>;

  /// Only a Document creates elements.
  class Key {
    friend class Document;
    friend class FrozenRows;
    Key() = default;
  };
  Element(Key, Document& oDocument, NodeNumber iNumber, const std::string& sTag)
      : m_oDocument(&oDocument), m_sTag(&sTag), m_iNumber(iNumber) {}
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;

  NodeNumber Number() const { return m_iNumber; }
  Document& OwnerDocument() const { return *m_oDocument; }
  const std::string& tagName() const { return *m_sTag; }

  // Attributes. An absent attribute reads as the empty text.
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

  /// The text of the element and all its descendants, with every blank.
  std::string innerText() const;
  /// Replaces the whole content with a text.
  void innerText(std::string_view sText);
  std::string innerHTML() const;
  /// Replaces the whole content with markup. Only for markup that the program
  /// itself has built: elements with quoted attributes, text and the five
  /// basic entities. Throws std::invalid_argument for anything else.
  void innerHTML(std::string_view sMarkup);

  // The parts of the text, for writing a document to a file.
  const std::string& text() const { return m_sText; }
  const std::string& tail() const { return m_sTail; }

  // The tree, elements only.
  Element* parentElement() const { return m_oParent; }
  Element* firstElementChild() const { return m_oFirstChild; }
  Element* lastElementChild() const;
  Element* nextElementSibling() const;
  Element* previousElementSibling() const;
  /// Calls oVisit with each child in order. Costs a long table much less than going
  /// from sibling to sibling, but each child is for this call only, and not to be
  /// written to.
  template <class Visit>
  void ForEachChild(const Visit& oVisit) const {
    for (const Element* o = m_oFirstChild; o != nullptr; o = o->m_oNext) {
      oVisit(*o);
      for (std::uint32_t i = 0; i < o->m_oFrozen.Count(); ++i) oVisit(o->m_oFrozen.StandIn(i, *o->m_oParent));
    }
  }
  /// Also true for the element itself.
  bool contains(const Element& oOther) const;
  /// True while the element is part of its document.
  bool isConnected() const;

  /// The elements below this one.
  All all();

  // Tables, 0-based; null if there is no such section, row or cell.
  Element* tBodies(std::size_t iIndex) const;
  Element* rows(std::size_t iIndex) const;
  Element* cells(std::size_t iIndex) const;
  /// All cells of a row, for callers that write more than one.
  std::vector<Element*> cells() const;

  /// An unattached copy with all descendants. bDeep must be true.
  Element& cloneNode(bool bDeep);
  /// Moves an unattached element to the end of this one.
  Element& appendChild(Element& oChild);
  /// Appends a visible copy of a template row, one of this section's rows, with
  /// texts for its first cells; an empty text leaves its cell as the template has
  /// it. Many rows added in this way are kept as FrozenRows, and reach a browser as
  /// one record. Throws std::runtime_error if there are more texts than cells.
  void appendRow(Element& oTemplate, std::span<const std::string> texts);
  /// The same with what oWrite writes: texts, and attributes such as ids and classes.
  /// What it is given looks like the row, but is for this call only. Nothing is
  /// appended if it throws.
  void appendRow(Element& oTemplate, const std::function<void(Element& oRow)>& oWrite);
  /// Inserts an unattached element directly after this one.
  Element& after(Element& oElement);

 private:
  friend class Document;
  friend class DocumentBuilder;
  friend class FrozenRows;
  friend class IdIndex;
  friend class Style;

  Element* NthChild(std::size_t iIndex, bool (*Matches)(std::string_view sTag)) const;
  void AssignAttribute(std::string_view sName, std::optional<std::string> sValue);
  /// Inserts an unattached element after a child or, if that is null, as the first
  /// one, with frozen rows between the two and behind the element.
  void Insert(Element* oAfter, Element& oChild, const FrozenRows& oBefore, const FrozenRows& oBehind);
  /// Inserts an unattached element as the last child.
  void Append(Element& oChild);
  void RemoveContent();
  /// Takes the texts and attributes of a copy of this element over.
  void TakeOver(const Element& oCopy);
  /// Keeps frozen rows between this element and its next sibling.
  void Frozen(FrozenRows oRows);
  /// The order number of the last of these; the element's own if there are none.
  std::uint64_t LastOrder() const;
  void AppendTextContent(std::string& sText) const;
  bool Precedes(const Element& oOther) const;

  Document* m_oDocument;
  const std::string* m_sTag;
  Element* m_oParent = nullptr;
  Element* m_oFirstChild = nullptr;
  Element* m_oLastChild = nullptr;
  Element* m_oPrevious = nullptr;
  Element* m_oNext = nullptr;
  FrozenRows m_oFrozen;
  /// Grows from sibling to sibling, so that the order of two rows of a long table
  /// is known without walking from one to the other. Frozen rows have places of
  /// their own.
  std::uint64_t m_iOrder = 0;
  /// Shared between clones until one of them writes.
  std::shared_ptr<Attributes> m_oAttributes;
  std::string m_sText;
  std::string m_sTail;
  NodeNumber m_iNumber;
};

}  // namespace ZELWbr3
