#pragma once

#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/shell/Browser.h"

#include <functional>
#include <memory>
#include <string>

#include <wx/frame.h>

namespace ZELWbr3::Bench {

/// A window with a control on the real browser.
class BenchWindow {
 public:
  BenchWindow();
  ~BenchWindow();

  Browser& Control() { return *m_oBrowser; }
  /// The real browser of a frame, once it has shown something.
  Desktop::DesktopWebBrowser& Real(int iFrame) const;

  /// Pumps messages until the condition holds.
  void WaitFor(const std::function<bool()>& oCondition);
  /// Runs a script in the document of a frame and returns its result; throws
  /// std::runtime_error with the browser's message if it fails.
  std::string Script(int iFrame, const std::string& sScript);
  /// Runs a script now and then until it has a result other than the empty text, and
  /// returns that.
  std::string WaitForResult(int iFrame, const std::string& sScript);
  /// Loads a URL in a frame's view without the control, and waits until it has
  /// loaded.
  void LoadBare(int iFrame, const std::string& sURL);
  /// Waits until a frame's document as it stands has been painted.
  void WaitUntilPainted(int iFrame);

 private:
  wxFrame* m_oFrame;
  std::unique_ptr<Desktop::DesktopPlatform> m_oPlatform;
  std::unique_ptr<Browser> m_oBrowser;
};

}  // namespace ZELWbr3::Bench
