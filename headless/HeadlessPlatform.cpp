#include "headless/HeadlessPlatform.h"

#include <stdexcept>

namespace ZELWbr3::Headless {

std::unique_ptr<WebBrowser> HeadlessPlatform::MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) {
  auto oBrowser = std::make_unique<HeadlessWebBrowser>(m_oQueue, oEvents);
  m_frames.at(static_cast<std::size_t>(iFrame)) = oBrowser.get();
  return oBrowser;
}

HeadlessWebBrowser& HeadlessPlatform::Frame(int iFrame) const { return *m_frames.at(static_cast<std::size_t>(iFrame)); }

HeadlessWebBrowser& HeadlessPlatform::FrontFrame() const {
  for (HeadlessWebBrowser* oFrame : m_frames) {
    if (oFrame != nullptr && oFrame->Visible()) return *oFrame;
  }
  throw std::logic_error("No page has been shown yet");
}

}  // namespace ZELWbr3::Headless
