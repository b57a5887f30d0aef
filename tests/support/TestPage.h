#pragma once

#include "zelwbr3/framework/Page.h"
#include "zelwbr3/testing/Story.h"

#include <functional>
#include <string>

namespace ZELWbr3::Testing {

/// A page of a host's own: tells what is done to it, and does what a test says.
class TestPage : public Page {
 public:
  explicit TestPage(Story& oStory, std::string sName = "Test", int iFrame = 1, int iType = 1)
      : m_oStory(oStory), m_sName(std::move(sName)), m_iFrame(iFrame), m_iType(iType) {}

  std::function<void()> OnFill = [] {};
  std::function<bool(const std::string&)> OnClick = [](const std::string&) { return true; };
  std::function<bool(Long&)> OnKey = [](Long&) { return false; };

  std::string Name() const override { return m_sName; }
  Long PageType() const override { return m_iType; }
  Long WebBrowser() const override { return m_iFrame; }
  void Show() { ShowInFrame(); }
  void Hide() override {
    m_oStory.Line(m_sName + ".Hide");
    Page::Hide();
  }
  void CleanUp() override {
    m_oStory.Line(m_sName + ".CleanUp");
    Page::CleanUp();
  }
  bool HandleOnClick(const std::string& sID) override {
    const auto Handler = OnClick;  // outlives the page
    m_oStory.Line(m_sName + ".Click " + sID);
    return Handler(sID);
  }
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override {
    const auto Handler = OnKey;
    m_oStory.Line(m_sName + ".Key " + std::to_string(lKeyCode) + " on " + (oElement == nullptr ? "-" : oElement->id()));
    return Handler(lKeyCode);
  }

  using Page::BeginReload;
  using Page::Browser;
  using Page::Document;
  using Page::HasBrowser;
  using Page::NoEvents;

 protected:
  void Fill() override {
    const auto Handler = OnFill;
    m_oStory.Line(m_sName + ".Fill" + (NoEvents() ? "" : " with events"));
    Handler();
  }

 private:
  Story& m_oStory;
  std::string m_sName;
  int m_iFrame;
  int m_iType;
};

}  // namespace ZELWbr3::Testing
