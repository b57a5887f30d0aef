#include "bench/BenchWindow.h"

#include "zelwbr3/platform/MessagePump.h"

#include <stdexcept>
#include <utility>

#include <webkit2/webkit2.h>
#include <wx/timer.h>

namespace ZELWbr3::Bench {

BenchWindow::BenchWindow() {
  m_oFrame = new wxFrame(nullptr, wxID_ANY, "zelwbr3 bench", wxPoint(0, 0), wxSize(1000, 800));
  m_oFrame->Show();
  m_oPlatform = std::make_unique<Desktop::DesktopPlatform>(*m_oFrame);
  m_oPlatform->Trace([](const std::string& sText) { throw std::runtime_error(sText); });
  m_oBrowser = std::make_unique<Browser>(*m_oPlatform);
  m_oBrowser->Resize(1000, 800);
}

BenchWindow::~BenchWindow() {
  m_oBrowser.reset();
  m_oPlatform.reset();
  m_oFrame->Destroy();
}

Desktop::DesktopWebBrowser& BenchWindow::Real(int iFrame) const {
  return *m_oPlatform->Browsers().at(static_cast<std::size_t>(iFrame));
}

void BenchWindow::WaitFor(const std::function<bool()>& oCondition) {
  while (!oCondition()) m_oPlatform->MessagePump().Turn();
}

std::string BenchWindow::Script(int iFrame, const std::string& sScript) {
  Desktop::WebView::Outcome oOutcome;
  bool bDone = false;
  Real(iFrame).View()->Run(sScript, [&](const Desktop::WebView::Outcome& o) {
    oOutcome = o;
    bDone = true;
  });
  WaitFor([&] { return bDone; });
  if (!oOutcome.Error.empty()) throw std::runtime_error(oOutcome.Error);
  return oOutcome.Result;
}

std::string BenchWindow::WaitForResult(int iFrame, const std::string& sScript) {
  bool bNext = true;
  wxTimer oNext;
  oNext.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { bNext = true; });
  oNext.Start(5);
  std::string sResult;
  WaitFor([&] {
    if (std::exchange(bNext, false)) sResult = Script(iFrame, sScript);
    return !sResult.empty();
  });
  return sResult;
}

void BenchWindow::LoadBare(int iFrame, const std::string& sURL) {
  WebKitWebView* oView = Real(iFrame).View()->Native();
  bool bLoaded = false;
  const auto OnChange = +[](WebKitWebView*, WebKitLoadEvent eEvent, gpointer pLoaded) {
    if (eEvent == WEBKIT_LOAD_FINISHED) *static_cast<bool*>(pLoaded) = true;
  };
  const auto iHandler = g_signal_connect(oView, "load-changed", G_CALLBACK(OnChange), &bLoaded);
  Real(iFrame).View()->Load(sURL);
  WaitFor([&] { return bLoaded; });
  g_signal_handler_disconnect(oView, iHandler);
}

void BenchWindow::WaitUntilPainted(int iFrame) {
  bool bPainted = false;
  Real(iFrame).AfterPaint([&] { bPainted = true; });
  WaitFor([&] { return bPainted; });
}

}  // namespace ZELWbr3::Bench
