#pragma once

#include "zelwbr3/framework/Page.h"
#include "zelwbr3/platform/Platform.h"
#include "zelwbr3/platform/WebBrowser.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3 {

/// One frame of the control: its web browser, the page shown in it and the URL of
/// its last navigation. Passes the web browser's events to the page.
///
/// Held by a shared pointer, so that it survives a handler in which the host
/// destroys the control; Detach tells it that this has happened.
class BrowserFrame : public WebBrowserEvents, public std::enable_shared_from_this<BrowserFrame> {
 public:
  /// What a frame needs of the control.
  class Owner {
   public:
    virtual void NavigateCompleted() = 0;
    virtual bool IsInFront(int iFrame) const = 0;
    /// False while another click or key is being handled; drop this one then.
    virtual bool EnterDocumentEvent() = 0;
    virtual void LeaveDocumentEvent() = 0;
    virtual void ProcessTerminated(const std::string& sReason) = 0;
    /// Traces an error of a page's handler; the host is not told.
    virtual void TraceFailure(const std::string& sWhere, const std::exception& oThrown) = 0;

   protected:
    ~Owner() = default;
  };

  BrowserFrame(int iFrame, Owner& oOwner) : m_iFrame(iFrame), m_oOwner(&oOwner) {}

  /// Creates the web browser.
  void Attach(Platform& oPlatform);
  /// The control is being destroyed; nothing is reported to it any more.
  void Detach();

  /// Throws WaitError after Detach.
  ZELWbr3::WebBrowser& WebBrowser() const;

  std::shared_ptr<ZELWbr3::Page> Page;
  std::string URL;

 private:
  void BeforeNavigate(bool bTopLevel) override;
  void NavigateComplete() override;
  void DocumentComplete(bool bTopLevel) override;
  void Click() override;
  bool KeyDown() override;
  void ProcessTerminated(const std::string& sReason) override;

  void HandleDocumentEvent(const std::function<void(Document&)>& oHandler);
  void Flush();

  int m_iFrame;
  Owner* m_oOwner;
  std::unique_ptr<ZELWbr3::WebBrowser> m_oWebBrowser;
};

}  // namespace ZELWbr3
