#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageType.h"

#include <memory>
#include <string>

namespace ZELCmd3 {
class FCommandlist;
}

namespace ZELWbr3 {

class Document;
class Element;
class PageSite;

/// A page controller: has one page file, fills its document when it has loaded
/// and handles clicks and keys in it. Held by shared pointers of the control's
/// registry, the frame that shows it, and the host.
///
/// One display: the host calls the page's Show, which calls the control's. The
/// control navigates the page's frame and passes the document to the page
/// (DocumentComplete). Clicks and keys follow until Hide or CleanUp.
class ZELWBR3_EXPORT Page : public std::enable_shared_from_this<Page> {
 public:
  virtual ~Page();
  Page() = default;
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  /// The page file's base name.
  virtual std::string Name() const = 0;
  /// The page type, 1 to 16 for the control's own pages.
  virtual Long PageType() const = 0;
  /// The frame to show the page in, 0 to 3.
  virtual Long WebBrowser() const = 0;
  virtual std::shared_ptr<ZELCmd3::FCommandlist> Commandlist() const;

  /// True while the page's document is being replaced.
  void NoEvents(bool bNoEvents) { m_bNoEvents = bNoEvents; }

  /// Releases the document, because another page takes the frame.
  virtual void Hide();
  /// Fills the document and reports completion to the control. Errors while
  /// filling do not leave it.
  void DocumentComplete(const std::shared_ptr<ZELWbr3::Document>& oDocument);
  /// Releases everything; the page must not be shown again.
  virtual void CleanUp();

  /// Handles a click on the element with that id. True if it was handled.
  virtual bool HandleOnClick(const std::string& sID) = 0;
  /// Handles a key pressed in the document; true keeps it from the browser.
  virtual bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) = 0;

 protected:
  /// Asks the control to show this page in its frame and waits for it.
  void ShowInFrame();
  /// Writes the page's content into Document().
  virtual void Fill() {}

  /// Throws std::logic_error after CleanUp and before the control has adopted the
  /// page.
  PageSite& Browser() const;
  bool HasBrowser() const { return m_oBrowser != nullptr; }
  /// Null while no document is shown.
  const std::shared_ptr<ZELWbr3::Document>& Document() const { return m_oDocument; }
  bool NoEvents() const { return m_bNoEvents; }

  /// Announces an action that ends with the reload of the document, and remembers
  /// to report its end.
  void BeginReload();
  /// Reports the end of such an action, if one is pending.
  void EndReload();

 private:
  friend class PageSite;
  void SetBrowser(PageSite& oBrowser) { m_oBrowser = &oBrowser; }

  PageSite* m_oBrowser = nullptr;
  std::shared_ptr<ZELWbr3::Document> m_oDocument;
  bool m_bNoEvents = false;
  bool m_bActionPending = false;
};

}  // namespace ZELWbr3
