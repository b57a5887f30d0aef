#include "zelwbr3/web/WebPlatform.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/web/WebCommandlist.h"
#include "zelwbr3/web/WebMessageWindow.h"
#include "zelwbr3/web/WebWebBrowser.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace ZELWbr3::Web {

namespace {

/// Bytes of what a browser says about an error that are traced.
constexpr std::size_t MostOfError = 500;

std::string Shortened(const std::string& sError) { return Text::Clean(sError.substr(0, MostOfError)); }

bool IsTheme(const std::string& sName) { return sName.empty() || sName == "light" || sName == "dark"; }

Long Number(const std::string& sText) {
  std::int32_t iNumber = 0;
  const auto oEnd = std::from_chars(sText.data(), sText.data() + sText.size(), iNumber);
  if (oEnd.ec != std::errc() || oEnd.ptr != sText.data() + sText.size()) {
    throw std::invalid_argument("\"" + sText + "\" is not a number");
  }
  return iNumber;
}

}  // namespace

WebPlatform::WebPlatform(WebPump& oPump, Wire& oWire, const PageFiles& oFiles, const Greeting& oGreeting,
                         TraceTo oTrace)
    : m_oPump(oPump),
      m_oWire(oWire),
      m_oFiles(oFiles),
      m_oTrace(std::move(oTrace)),
      m_oLocale(oGreeting.Locale),
      m_sTheme(IsTheme(oGreeting.Theme) ? oGreeting.Theme : ""),
      m_oPointer(*this),
      m_oBoxes(*this) {
  m_oPump.Handler([this](const std::string& sMessage, bool bDuringWork) { Handle(sMessage, bDuringWork); });
}

WebPlatform::~WebPlatform() { m_oPump.Handler({}); }

std::unique_ptr<WebBrowser> WebPlatform::MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) {
  return std::make_unique<WebWebBrowser>(*this, static_cast<std::uint32_t>(iFrame), oEvents);
}

std::unique_ptr<MessageWindow> WebPlatform::MakeMessageWindow(MessageWindowEvents& oEvents) {
  return std::make_unique<WebMessageWindow>(*this, oEvents);
}

bool WebPlatform::Trace(const std::string& sText) {
  if (m_oTrace) m_oTrace(sText);
  return m_oTrace != nullptr;
}

void WebPlatform::Run() {
  for (;;) {
    try {
      m_oPump.Turn();
    } catch (const ClosingError&) {
      throw;
    } catch (const std::exception& o) {
      TraceFailure("An error outside of any wait", o);
    }
  }
}

void WebPlatform::SendList(FlatListWriter& oList, const std::string& sBody) {
  std::string sMessage = oList.Take();
  if (!sBody.empty()) sMessage += '\n' + sBody;
  m_oWire.Send(std::move(sMessage));
}

void WebPlatform::Pointer::MousePointer(Integer iPointer) {
  if (iPointer == m_iPointer) return;
  m_iPointer = iPointer;
  m_oPlatform.Send("pointer", iPointer == Hourglass ? 1U : 0U);
}

void WebPlatform::Pages(std::vector<OfferedPage> pages) {
  m_pages = std::move(pages);
  FlatListWriter oList;
  oList.Add("pages");
  for (const OfferedPage& oPage : m_pages) {
    oList.Add(oPage.Name);
    oList.Add(oPage.Title);
    oList.Add(oPage.Group);
    oList.Add(oPage.Findings);
  }
  SendList(oList);
}

void WebPlatform::Keys(std::vector<Long> codes) {
  m_keys = std::move(codes);
  FlatListWriter oList;
  oList.Add("keys");
  for (const Long lCode : m_keys) oList.Add(static_cast<std::uint32_t>(std::int32_t(lCode)));
  SendList(oList);
}

void WebPlatform::ShowsPage(const std::string& sName, const std::string& sTitle, bool bTryAgain,
                            const std::string& sRead) {
  m_sPage = sName;
  m_sTitle = Text::Clean(sTitle);
  m_sRead = sRead;
  Send("page", m_sPage, m_sTitle, bTryAgain ? 1U : 0U, m_sRead);
}

void WebPlatform::ShowFailure(const std::string& sText, const std::string& sSince) {
  m_oFailure = {Text::Clean(sText), Text::Clean(sSince)};
  // The page that began to load with the shell has told nobody: the first one is another.
  m_iLastNumber = std::max(m_iLastNumber, 1U);
  Send("failure", m_oFailure.first, m_oFailure.second);
}

void WebPlatform::ShellBeginsAgain(const Greeting& oGreeting) {
  if (IsTheme(oGreeting.Theme)) m_sTheme = oGreeting.Theme;
  Keys(std::vector(m_keys));
  Pages(std::vector(m_pages));
  Send("page", m_sPage, m_sTitle, 0U, m_sRead);
  if (!m_oFailure.first.empty()) Send("failure", m_oFailure.first, m_oFailure.second);
  if (m_oCommandlist != nullptr) m_oCommandlist->Send();
  for (const auto& [iFrame, oBrowser] : m_browsers) {
    if (iFrame != WebMessageWindow::Frame) oBrowser->ShowAgain();
  }
  Send("pointer", m_oPointer.MousePointer() == ScreenPointer::Hourglass ? 1U : 0U);
  m_oBoxes.SendAgain();
  if (m_oMessageWindow != nullptr) m_oMessageWindow->ShowAgain();
}

WebWebBrowser* WebPlatform::Front() const {
  const auto it = std::ranges::find_if(m_browsers, [](const auto& o) { return o.second->IsVisible(); });
  return it == m_browsers.end() ? nullptr : it->second;
}

WebWebBrowser* WebPlatform::Browser(std::uint32_t iFrame) const {
  const auto it = m_browsers.find(iFrame);
  return it == m_browsers.end() ? nullptr : it->second;
}

void WebPlatform::Theme(const std::string& sName) {
  if (!IsTheme(sName)) throw std::invalid_argument("There is no theme \"" + sName + "\"");
  m_sTheme = sName;
  for (const auto& [iFrame, oBrowser] : m_browsers) oBrowser->Remote().Theme(m_sTheme);
}

void WebPlatform::Handle(const std::string& sMessage, bool bDuringWork) {
  // A message is a list, or one with another one behind it in a line of its own.
  const auto iBody = std::min(sMessage.find('\n'), sMessage.size());
  const std::string_view sHead = std::string_view(sMessage).substr(0, iBody);
  const std::string_view sBody = std::string_view(sMessage).substr(std::min(iBody + 1, sMessage.size()));
  try {
    FlatListReader oList(sHead);
    const std::string sKind = oList.Text();
    const bool bInput = sKind == "item" || sKind == "show" || sKind == "refresh" || sBody.starts_with("[\"click\"") ||
                        sBody.starts_with("[\"key\"");
    if (bDuringWork && bInput) return;
    Dispatch(sKind, oList, sBody);
  } catch (const std::invalid_argument& o) {
    // Whoever waits for what it should have said would wait for ever.
    m_oPump.End(std::string("Its shell has sent what is no message. ") + Shortened(o.what()), true);
  }
}

void WebPlatform::Dispatch(const std::string& sKind, FlatListReader& oList, std::string_view sBody) {
  if (sKind == "item") {
    if (m_oCommandlist != nullptr) m_oCommandlist->Clicked(Number(oList.Text()));
  } else if (sKind == "show") {
    PageAsked.Raise(oList.Text());
  } else if (sKind == "refresh") {
    RefreshAsked.Raise(oList.Number() != 0);
  } else if (sKind == "theme") {
    Theme(oList.Text());
  } else if (sKind == "pressed") {
    const std::uint32_t iBox = oList.Number();
    const std::uint32_t iButton = oList.Number();
    std::vector<std::string> values;
    while (!oList.AtEnd()) values.push_back(oList.Text());
    m_oBoxes.Pressed(iBox, iButton, std::move(values));
  } else if (sKind == "entered") {
    const std::uint32_t iBox = oList.Number();
    const std::uint32_t iField = oList.Number();
    m_oBoxes.Entered(iBox, iField, oList.Text());
  } else if (sKind == "help") {
    m_oBoxes.Help(oList.Number());
  } else if (sKind == "closed") {
    if (m_oMessageWindow != nullptr) m_oMessageWindow->Closed();
  } else {
    const std::uint32_t iFrame = oList.Number();
    WebWebBrowser* oBrowser = Browser(iFrame);
    if (oBrowser == nullptr) return;  // a message window's, which is closed
    if (sKind == "agent") {
      oBrowser->Remote().Handle(sBody);
    } else if (sKind == "ack") {
      const std::uint32_t iSerial = oList.Number();
      const std::uint32_t iBatch = oList.Number();
      const std::string sError = oList.Text();
      if (!sError.empty()) Trace("Some changes were not made: " + Shortened(sError));
      oBrowser->Remote().Acknowledge(iSerial, iBatch);
    } else if (sKind == "live") {
      oBrowser->LiveTold(std::string(sBody));
    } else if (sKind == "failed") {
      oBrowser->Failed(oList.Number());
    } else if (sKind == "notagain") {
      oBrowser->NotAgain(oList.Number());
    } else {
      throw std::invalid_argument("There is no message \"" + sKind + "\"");
    }
  }
}

}  // namespace ZELWbr3::Web
