#pragma once

#include "zelwbr3/dom/All.h"
#include "zelwbr3/dom/Element.h"
#include "zelwbr3/dom/IdIndex.h"
#include "zelwbr3/dom/Window.h"

#include <deque>
#include <set>
#include <string>
#include <string_view>

namespace ZELWbr3 {

/// The document that a page works on: a replica in this process of what a
/// browser shows, or all there is without a screen. Reads are answered here;
/// writes change the replica and are reported to the change log, if there is
/// one. Made by a DocumentBuilder.
class Document {
 public:
  Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  /// Where writes are reported to from now on; null = nowhere. The log must
  /// outlive the document or be replaced before it goes.
  void ReportTo(ChangeLog* oLog) { m_oLog = oLog; }

  /// The html element; null in an empty document.
  Element* documentElement() const { return m_oRoot; }
  /// Null when the document has none.
  Element* body() const;
  /// The elements of the document.
  All all() const { return All(m_oRoot); }

  /// The element with the focus: the body unless something else has it, null
  /// in an empty document.
  Element* activeElement() const;
  /// Makes the nearest element that can be active the active one: oElement or
  /// what is around it that is a link, a button, a form control, an embedded
  /// object, a table cell or has a tabindex; else the body.
  void Activate(Element* oElement);

  Window& parentWindow() { return m_oWindow; }

  /// Null when no element has this number.
  Element* ByNumber(NodeNumber iNumber);
  /// Elements ever made, those that have left the document included.
  std::size_t Count() const { return m_elements.size(); }

 private:
  friend class DocumentBuilder;
  friend class Element;
  friend class All;
  friend class Style;

  Element& NewElement(std::string_view sTag);
  Element& CloneBelow(const Element& oSource, Element* oParent);
  void Connect(Element& oRoot);
  void Disconnect(Element& oRoot);
  void Report(const Change& oChange) {
    if (m_oLog != nullptr) m_oLog->Record(oChange);
  }

  std::set<std::string, std::less<>> m_tags;
  std::deque<Element> m_elements;
  IdIndex m_ids;
  Element* m_oRoot = nullptr;
  Element* m_oActive = nullptr;
  Window m_oWindow;
  ChangeLog* m_oLog = nullptr;
};

}  // namespace ZELWbr3
