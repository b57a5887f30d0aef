#pragma once

#include "zelwbr3/base/Export.h"

#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3 {

class Document;

/// How a navigation treats history and cache; the values add up.
enum class NavigateFlags {
  None = 0,
  NoHistory = 2,
  NoReadFromCache = 4,
  NoWriteToCache = 8,
  Fresh = NoHistory | NoReadFromCache | NoWriteToCache,
};

/// What an embedded web browser reports. All calls come on the user-interface
/// thread, from MessagePump::Turn or the toolkit's own loop, never from within a
/// call that the control makes.
class ZELWBR3_EXPORT WebBrowserEvents {
 public:
  virtual ~WebBrowserEvents() = default;

  /// A navigation begins; bTopLevel is false if it is in a sub-frame.
  virtual void BeforeNavigate(bool bTopLevel) = 0;
  /// A navigation has reached its document, which may still be loading.
  virtual void NavigateComplete() = 0;
  /// A document has loaded. If bTopLevel, WebBrowser::Document returns it now.
  virtual void DocumentComplete(bool bTopLevel) = 0;

  /// A click in the document. The document's active element is the one clicked;
  /// the browser takes no default action in any case.
  virtual void Click() = 0;
  /// A key press in the document, whose window has it as its current event. True
  /// means that the browser must not act on it.
  virtual bool KeyDown() = 0;

  /// The browser's process died; the document is gone. The next Navigate
  /// starts another one.
  virtual void ProcessTerminated(const std::string& sReason) = 0;
};

/// One frame of the control: a picture box with an embedded web browser that
/// fills it. The browser itself may be created on the first navigation.
///
/// A URL is "about:blank", a URL with a scheme, or a file's path, where both
/// backslashes and slashes separate folders.
class ZELWBR3_EXPORT WebBrowser {
 public:
  virtual ~WebBrowser() = default;

  /// The folders of page files, in the order in which they are searched, for
  /// navigations from now on: a page may use files of all of them. A browser that
  /// shows no styles needs none.
  virtual void PageFolders(const std::vector<std::string>& /*folders*/) {}

  /// Begins a navigation and returns at once. The present document takes no more
  /// changes. A browser may make a fresh document of a page that it shows already
  /// without loading it, if that makes no difference but the time.
  virtual void Navigate(const std::string& sURL, NavigateFlags eFlags) = 0;

  /// Navigates to the URL shown already, for new figures of the same page. A browser
  /// may leave what the user sees as it is until the page has filled the fresh
  /// document, and then change only what differs.
  virtual void Refresh(const std::string& sURL) { Navigate(sURL, NavigateFlags::Fresh); }

  /// The document loaded last; null before the first one, and after the browser's
  /// process has died.
  virtual std::shared_ptr<ZELWbr3::Document> Document() const = 0;

  /// Sends the changes made to the document so far, without waiting.
  virtual void Flush() = 0;
  /// True if the browser has confirmed every change made so far, or if there is
  /// no longer a document that could confirm them.
  virtual bool Settled() const = 0;
  /// True while the browser still has several batches of changes to apply; code
  /// that goes on writing gets ahead of the screen.
  virtual bool IsBehind() const { return false; }

  /// Shows the picture box in front of the others, or hides it.
  virtual void Visible(bool bVisible) = 0;
  /// Places the picture box in the control, in the platform's pixels.
  virtual void Move(int iLeft, int iTop, int iWidth, int iHeight) = 0;
};

}  // namespace ZELWbr3
