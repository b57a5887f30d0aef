#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"

#include <memory>
#include <string>
#include <string_view>

namespace ZELWbr3 {

/// A tab strip of a page file: a row of tab links with an angle between
/// neighbours and an edge at both ends, above one content block per tab. The ids
/// of its elements end with the strip's name; tabs count from 0.
///
/// Sets class names and shows and hides the blocks. The selection is stored in
/// the strip's attribute "selectedtab". Elements missing in the page file are
/// skipped.
class ZELWBR3_EXPORT clsTabStrip {
 public:
  /// For the page's use; the strip itself does not need it.
  bool Enabled() const { return m_bEnabled; }
  void Enabled(bool bEnabled) { m_bEnabled = bEnabled; }

  /// Finds the strip in a document; keeps the document until CleanUp.
  void Init(std::shared_ptr<Document> oDocument, std::string sName);
  void CleanUp();

  /// Handles a click on the element with that id, which is the active one. True
  /// if it was a link of this strip and its tab is now selected. The tab is one
  /// digit of the id, so only the first ten can be selected.
  bool HandleOnClick(std::string_view sID);

  /// The selected tab; 0 without a strip.
  Long Selected() const;
  /// True for a tab that is neither selected nor disabled.
  bool IsSelectable(Long lTab) const;
  /// Selects a tab, 0 to the number of tabs - 1.
  void Select(Long lTab);
  /// Greys out a tab; it no longer reacts to clicks.
  void Disable(Long lTab);

 private:
  Element* Find(const std::string& sPart) const;
  Element* Link(Long lTab) const;
  void SetClass(Element* oElement, std::string_view sClass) const;
  /// Shows whether a tab is the selected one.
  void Mark(Long lTab, std::string_view sClass, const char* sSelected) const;
  /// The angle before a tab.
  void SetAngle(Long lTab, std::string_view sClass) const;
  void SetEdges(std::string_view sFirst, std::string_view sLast) const;
  void ShowContent(Long lTab, std::string_view sDisplay) const;

  std::shared_ptr<Document> m_oDocument;
  std::string m_sName;
  Element* m_oStrip = nullptr;
  Long m_lTabCount = 0;
  bool m_bEnabled = false;
};

}  // namespace ZELWbr3
