#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/headless/MessageQueue.h"
#include "zelwbr3/platform/WebBrowser.h"

#include <memory>
#include <string>

namespace ZELWbr3::Headless {

/// A web browser without a screen: parses the page file and holds the document.
/// Its navigation notifications go through the message queue in the order in
/// which a real browser sends them. Click, Key and Focus play the user.
class ZELWBR3_EXPORT HeadlessWebBrowser : public WebBrowser {
 public:
  HeadlessWebBrowser(MessageQueue& oQueue, WebBrowserEvents& oEvents) : m_oQueue(oQueue), m_oEvents(oEvents) {}

  void Navigate(const std::string& sURL, NavigateFlags eFlags) override;
  std::shared_ptr<ZELWbr3::Document> Document() const override { return m_oDocument; }
  void Flush() override {}
  bool Settled() const override { return true; }
  void Visible(bool bVisible) override { m_bVisible = bVisible; }
  void Move(int iLeft, int iTop, int iWidth, int iHeight) override;

  bool Visible() const { return m_bVisible; }
  /// The URL of the last navigation.
  const std::string& URL() const { return m_sURL; }
  /// The page file could be read. If not, an error page is shown instead.
  bool Found() const { return m_bFound; }
  /// The folder of the page file shown; empty if the URL is not a file.
  std::string Folder() const;
  int Width() const { return m_iWidth; }
  int Height() const { return m_iHeight; }

  /// Clicks the element with that id. Throws std::invalid_argument, which names
  /// the id, if the document has no such element.
  void Click(const std::string& sID);
  /// Presses a key. If the page does not handle it, Enter and Space click the
  /// active element, as in a browser. True if the page swallowed the key.
  bool Key(Long lKeyCode);
  /// Makes the element with that id active; throws like Click.
  void Focus(const std::string& sID);
  /// Simulates the death of the browser's process.
  void Crash(const std::string& sReason);

 private:
  Element& Find(const std::string& sID) const;
  /// Queues a notification of the current navigation; it is dropped if another
  /// navigation starts first.
  void Post(std::function<void()> oNotification);

  MessageQueue& m_oQueue;
  WebBrowserEvents& m_oEvents;
  std::string m_sURL;
  std::shared_ptr<ZELWbr3::Document> m_oDocument;
  bool m_bFound = true;
  bool m_bVisible = false;
  int m_iWidth = 0;
  int m_iHeight = 0;
  /// Expires when the current navigation ends or the browser is destroyed.
  std::shared_ptr<const bool> m_oNavigation;
};

}  // namespace ZELWbr3::Headless
