#include "zelwbr3/headless/HeadlessPlatform.h"

#include "zelwbr3/platform/MessageWindow.h"

#include <stdexcept>

namespace ZELWbr3::Headless {

namespace {

class HeadlessMessageWindow : public MessageWindow {
 public:
  HeadlessMessageWindow(MessageQueue& oQueue, MessageWindowEvents& oEvents,
                        const Event<const HeadlessWebBrowser&>& oShown)
      : m_oQueue(oQueue), m_oShown(oShown), m_oBrowser(oQueue, oEvents) {}

  ZELWbr3::WebBrowser& WebBrowser() override { return m_oBrowser; }
  void ShowModal() override {
    m_oQueue.Poll();
    m_oShown.Raise(m_oBrowser);
  }

 private:
  MessageQueue& m_oQueue;
  const Event<const HeadlessWebBrowser&>& m_oShown;
  HeadlessWebBrowser m_oBrowser;
};

}  // namespace

std::unique_ptr<WebBrowser> HeadlessPlatform::MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) {
  auto oBrowser = std::make_unique<HeadlessWebBrowser>(m_oQueue, oEvents);
  m_frames.at(static_cast<std::size_t>(iFrame)) = oBrowser.get();
  return oBrowser;
}

std::unique_ptr<MessageWindow> HeadlessPlatform::MakeMessageWindow(MessageWindowEvents& oEvents) {
  return std::make_unique<HeadlessMessageWindow>(m_oQueue, oEvents, MessageWindowShown);
}

HeadlessWebBrowser& HeadlessPlatform::Frame(int iFrame) const { return *m_frames.at(static_cast<std::size_t>(iFrame)); }

HeadlessWebBrowser& HeadlessPlatform::FrontFrame() const {
  for (HeadlessWebBrowser* oFrame : m_frames) {
    if (oFrame != nullptr && oFrame->Visible()) return *oFrame;
  }
  throw std::logic_error("No page has been shown yet");
}

}  // namespace ZELWbr3::Headless
