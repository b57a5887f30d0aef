#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"

#include <memory>
#include <string>

namespace ZELWbr3 {

/// The frame that all page files share: wait area, content, footer and the
/// warning strip at the top. Shows and hides them by their style; creates
/// nothing. Elements missing in the page file are skipped.
class ZELWBR3_EXPORT ZELHTMLForm {
 public:
  /// Finds the areas in a document; keeps the document until CleanUp.
  void Init(std::shared_ptr<Document> oDocument);
  void CleanUp() { *this = ZELHTMLForm(); }

  /// Shows the content instead of the wait area. If bFooter is false, the footer
  /// stays as it is.
  void ShowContent(bool bFooter);
  /// Shows the wait area instead of the content. If bFooter is false, the footer
  /// stays as it is.
  void ShowWait(bool bFooter);

  /// Shows the warning strip with a text. sInfo is an optional second line of
  /// markup that the program itself has built; if empty, that line stays as it
  /// is.
  void ShowTopWarning(const std::string& sText, const std::string& sInfo);
  void HideTopWarning();

  /// Turns the first element with the id sID into a command link: appends the
  /// command's number to its id, so that the next call finds the next element.
  void SetCommand(const std::string& sID, Long lCommand);

 private:
  std::shared_ptr<Document> m_oDocument;
  Element* m_oWait = nullptr;
  Element* m_oContent = nullptr;
  Element* m_oFooter = nullptr;
  Element* m_oTopWarning = nullptr;
};

}  // namespace ZELWbr3
