#pragma once

#include "zelwbr3/dom/DocumentBuilder.h"
#include "zelwbr3/headless/MessageQueue.h"
#include "zelwbr3/headless/ScriptedAnswers.h"
#include "zelwbr3/platform/Platform.h"
#include "zelwbr3/platform/ScreenPointer.h"
#include "zelwbr3/platform/WebBrowser.h"
#include "zelwbr3/testing/Story.h"
#include "zelwbr3/testing/TestLocale.h"

#include <array>
#include <string>

namespace ZELWbr3::Testing {

/// A platform that does nothing by itself: it writes down what the control
/// asks of its browsers, and a test plays the browser by way of Events.
class RecordingPlatform : public Platform {
 public:
  class Browser : public WebBrowser {
   public:
    Browser(Story& oStory, int iFrame, WebBrowserEvents& oEvents)
        : Events(oEvents), m_oStory(oStory), m_sFrame(std::to_string(iFrame)) {}

    void Navigate(const std::string& sURL, NavigateFlags eFlags) override {
      m_oStory.Line("Navigate " + m_sFrame + " " + sURL + " flags " + std::to_string(static_cast<int>(eFlags)));
    }
    std::shared_ptr<ZELWbr3::Document> Document() const override { return Loaded; }
    void Flush() override { ++Flushes; }
    bool Settled() const override {
      if (Unsettled > 0) m_oStory.Line("not settled " + m_sFrame);
      return Unsettled == 0 || --Unsettled == 0;
    }
    void Visible(bool bVisible) override { m_oStory.Line((bVisible ? "show " : "hide ") + m_sFrame); }
    void Move(int, int, int, int) override {}

    void Load() {
      Loaded = std::make_shared<ZELWbr3::Document>();
      DocumentBuilder oBuilder(*Loaded);
      oBuilder.Begin("html");
      oBuilder.Begin("body");
    }

    WebBrowserEvents& Events;
    std::shared_ptr<ZELWbr3::Document> Loaded;
    int Flushes = 0;
    mutable int Unsettled = 0;  ///< questions until it has settled

   private:
    Story& m_oStory;
    std::string m_sFrame;
  };

  explicit RecordingPlatform(Story& oStory) : m_oStory(oStory) {}

  std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) override {
    auto oBrowser = std::make_unique<Browser>(m_oStory, iFrame, oEvents);
    Frames.at(static_cast<std::size_t>(iFrame)) = oBrowser.get();
    return oBrowser;
  }
  Headless::MessageQueue& MessagePump() override { return Queue; }
  ZELWbr3::ScreenPointer& ScreenPointer() override { return m_oPointer; }
  ZELWbr3::MessageBox& MessageBox() override { return m_oAnswers; }
  const ZELWbr3::UserLocale& UserLocale() const override { return m_oLocale; }
  bool Trace(const std::string& sText) override {
    m_oStory.Line("Trace " + sText);
    return true;
  }

  std::array<Browser*, 4> Frames = {};
  Headless::MessageQueue Queue;

 private:
  struct Pointer : ZELWbr3::ScreenPointer {
    Integer MousePointer() const override { return 0; }
    void MousePointer(Integer) override {}
  };

  Story& m_oStory;
  Pointer m_oPointer;
  Headless::ScriptedAnswers m_oAnswers;
  TestLocale m_oLocale;
};

}  // namespace ZELWbr3::Testing
