#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/dom/All.h"
#include "zelwbr3/dom/Element.h"
#include "zelwbr3/dom/IdIndex.h"
#include "zelwbr3/dom/Window.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace ZELWbr3 {

/// The document that a page works on: with a browser, the replica of what it
/// shows; without a screen, the document itself. Reads are answered here; writes
/// change the document and are reported to the change log, if there is one.
/// Built by a DocumentBuilder.
class ZELWBR3_EXPORT Document {
 public:
  Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  /// Reports writes to this log from now on; null = to none. The log must outlive
  /// the document or be replaced before it is destroyed.
  void ReportTo(ChangeLog* oLog) { m_oLog = oLog; }

  /// The html element; null in an empty document.
  Element* documentElement() const { return m_oRoot; }
  /// True for the page that a platform shows if a page file cannot be loaded. Its
  /// root has the attribute ErrorPageMark.
  bool IsErrorPage() const;
  static constexpr std::string_view ErrorPageMark = "data-zel-error-page";
  /// Null when the document has none.
  Element* body() const;
  /// The elements of the document.
  All all() const { return All(m_oRoot); }

  /// The element with the focus; the body if no other element has it, null in an
  /// empty document.
  Element* activeElement() const;
  /// Makes an element active: oElement or its nearest ancestor that is a link, a
  /// button, a form control, an embedded object or a table cell or has a
  /// tabindex; the body if there is none.
  void Activate(Element* oElement);

  Window& parentWindow() { return m_oWindow; }

  /// Null when no element has this number, or when its row has left the document
  /// before anybody asked for it.
  Element* ByNumber(NodeNumber iNumber);
  /// Numbers given so far, also to elements that have left the document.
  std::size_t Count() const { return m_iNext - 1; }

 private:
  friend class DocumentBuilder;
  friend class Element;
  friend class FrozenRows;
  friend class All;
  friend class Style;

  Element& NewElement(std::string_view sTag, NodeNumber& iNext);
  /// A copy, with the numbers from iNext on.
  Element& CloneBelow(const Element& oSource, Element* oParent, NodeNumber& iNext);
  /// Counts and reports a row that is the last of the frozen ones behind its section's
  /// last child.
  void AddFrozen(const Element& oTemplate, std::string_view sValues);
  /// Makes the element of a frozen row, given its number or that of an element in it.
  Element& Thaw(NodeNumber iNumber);
  /// To be called before the index by id is asked.
  void ThawWithID(std::string_view sID);
  /// To be called before an element of the document loses its id or its content: it
  /// may be the one that stands for frozen rows in the index by id.
  void ThawFollowers(const Element& oElement);
  void Connect(Element& oRoot);
  void Disconnect(Element& oRoot);
  void Report(const Change& oChange) {
    if (m_oLog != nullptr) m_oLog->Record(oChange);
  }
  /// Writes that are reported together, as one change, by the caller.
  template <class Writes>
  void Unreported(const Writes& oWrites) {
    ChangeLog* oLog = std::exchange(m_oLog, nullptr);
    Finally(oWrites, [&] { m_oLog = oLog; });
  }

  std::set<std::string, std::less<>> m_tags;
  NodeNumber m_iNext = 1;
  std::map<NodeNumber, Element> m_elements;
  /// The elements with frozen rows behind them, by the first number of these.
  std::map<NodeNumber, Element*> m_frozen;
  IdIndex m_ids;
  Element* m_oRoot = nullptr;
  Element* m_oActive = nullptr;
  Window m_oWindow;
  ChangeLog* m_oLog = nullptr;
};

}  // namespace ZELWbr3
