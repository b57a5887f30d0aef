#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/SystemLocale.h"
#include "zelwbr3/headless/HeadlessWebBrowser.h"
#include "zelwbr3/headless/MessageQueue.h"
#include "zelwbr3/headless/ScriptedAnswers.h"
#include "zelwbr3/platform/Platform.h"
#include "zelwbr3/platform/ScreenPointer.h"

#include <array>
#include <functional>
#include <memory>
#include <utility>

namespace ZELWbr3::Headless {

/// The platform without a screen, for tests, reports and any program that needs
/// the pages' content but no window. Serves one control at a time.
class ZELWBR3_EXPORT HeadlessPlatform : public Platform {
 public:
  /// Uses the locale of the environment unless given another one.
  explicit HeadlessPlatform(std::unique_ptr<ZELWbr3::UserLocale> oLocale = std::make_unique<SystemLocale>())
      : m_oLocale(std::move(oLocale)) {}

  std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) override;
  MessageQueue& MessagePump() override { return m_oQueue; }
  ZELWbr3::ScreenPointer& ScreenPointer() override { return m_oPointer; }
  ScriptedAnswers& MessageBox() override { return m_oAnswers; }
  ScriptedAnswers& DialogBox() override { return m_oAnswers; }
  /// A window that closes as soon as its document has loaded.
  std::unique_ptr<MessageWindow> MakeMessageWindow(MessageWindowEvents& oEvents) override;
  void Post(std::function<void()> oWork) override { m_oQueue.Post(std::move(oWork)); }
  const ZELWbr3::UserLocale& UserLocale() const override { return *m_oLocale; }
  bool Trace(const std::string& sText) override {
    Traced.Raise(sText);
    return Traced.HasHandlers();
  }

  /// The browser of a frame (0 to 3), as long as the control lives.
  HeadlessWebBrowser& Frame(int iFrame) const;
  /// The browser in front; throws std::logic_error if there is none.
  HeadlessWebBrowser& FrontFrame() const;

  /// A message window was shown. Its browser still holds the document.
  Event<const HeadlessWebBrowser&> MessageWindowShown;
  /// A line was traced.
  Event<const std::string&> Traced;

 private:
  class Pointer : public ZELWbr3::ScreenPointer {
   public:
    Integer MousePointer() const override { return m_iPointer; }
    void MousePointer(Integer iPointer) override { m_iPointer = iPointer; }

   private:
    Integer m_iPointer;
  };

  std::unique_ptr<ZELWbr3::UserLocale> m_oLocale;
  MessageQueue m_oQueue;
  Pointer m_oPointer;
  ScriptedAnswers m_oAnswers;
  /// Owned by the control; only valid while it lives.
  std::array<HeadlessWebBrowser*, 4> m_frames = {};
};

}  // namespace ZELWbr3::Headless
