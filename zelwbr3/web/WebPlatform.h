#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/chm/CompiledHelp.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/platform/Platform.h"
#include "zelwbr3/platform/ScreenPointer.h"
#include "zelwbr3/web/PageFiles.h"
#include "zelwbr3/web/WebBoxes.h"
#include "zelwbr3/web/WebLocale.h"
#include "zelwbr3/web/WebPump.h"
#include "zelwbr3/web/Wire.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZELWbr3::Web {

class WebCommandlist;
class WebMessageWindow;
class WebWebBrowser;

/// Where the server has the topics of the help file.
inline constexpr const char* HelpFolder = "/help/";

/// A page that the shell offers.
struct OfferedPage {
  std::string Name;
  std::string Title;
  std::string Group;           ///< of pages in the list; empty for none
  std::uint32_t Findings = 0;  ///< that need attention, on this page
};

/// What the shell says about itself when it begins a session.
struct Greeting {
  std::vector<std::string> Locale;  ///< as WebLocale takes it
  std::string Theme;                ///< "light", "dark", or empty for the system's
};

/// The platform on a browser elsewhere: one session. The frames lie in a shell
/// page, which carries out what Send sends and sends back what the user does.
/// Made, used and destroyed on one thread.
class ZELWBR3_EXPORT WebPlatform : public Platform {
 public:
  using TraceTo = std::function<void(const std::string&)>;

  /// All of them outlive the platform.
  WebPlatform(WebPump& oPump, Wire& oWire, const PageFiles& oFiles, const Greeting& oGreeting, TraceTo oTrace);
  ~WebPlatform() override;

  std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) override;
  WebPump& MessagePump() override { return m_oPump; }
  ZELWbr3::ScreenPointer& ScreenPointer() override { return m_oPointer; }
  ZELWbr3::MessageBox& MessageBox() override { return m_oBoxes; }
  ZELWbr3::DialogBox& DialogBox() override { return m_oBoxes; }
  const ZELWbr3::UserLocale& UserLocale() const override { return m_oLocale; }
  std::unique_ptr<MessageWindow> MakeMessageWindow(MessageWindowEvents& oEvents) override;
  ZELWbr3::HelpFile& HelpFile() override { return m_oHelp; }
  bool Trace(const std::string& sText) override;

  /// Handles what comes until the session ends, which throws ClosingError. What a
  /// message throws otherwise is traced.
  void Run();

  /// Sends a message: a kind, and numbers and texts.
  template <typename... Items>
  void Send(const Items&... items) {
    SendWith({}, items...);
  }
  /// The same with another list behind it, which is not written once more.
  template <typename... Items>
  void SendWith(const std::string& sBody, const Items&... items) {
    FlatListWriter oList;
    (oList.Add(items), ...);
    SendList(oList, sBody);
  }
  void SendList(FlatListWriter& oList, const std::string& sBody = {});

  /// The pages that the shell offers.
  void Pages(std::vector<OfferedPage> pages);
  /// What the shell says of the page shown, and in the window's title. bTryAgain: the
  /// page could not be read and is to be tried again by itself. sRead says when its
  /// figures were read.
  void ShowsPage(const std::string& sName, const std::string& sTitle, bool bTryAgain = false,
                 const std::string& sRead = {});
  /// Shows an error in place of the pages, and since when, while a session cannot
  /// begin; an empty text ends that. The shell asks for another attempt by RefreshAsked,
  /// again and again by itself.
  void ShowFailure(const std::string& sText, const std::string& sSince = {});

  /// The user asks for a page by its name.
  Event<const std::string&> PageAsked;
  /// The page shown is to be read again. False: not because the user has just asked
  /// for it, so nothing may be disturbed.
  Event<bool> RefreshAsked;

  /// Keys that pages of the program handle besides Escape, F5, Enter and Space, by their
  /// codes, without Ctrl, Alt and Shift. The browser's own meaning of them is lost.
  void Keys(std::vector<Long> codes);

  /// The browser in front; null when there is none.
  WebWebBrowser* Front() const;
  const PageFiles& Files() const { return m_oFiles; }
  const std::string& Theme() const { return m_sTheme; }
  /// The number of a load.
  std::uint32_t NewNumber() { return ++m_iLastNumber; }
  std::uint32_t LastNumber() const { return m_iLastNumber; }
  /// The snapshot that a page has had in a theme; empty if it is not known.
  std::string& KnownSnapshot(const std::string& sURL, const std::string& sTheme) {
    return m_snapshots[sTheme + "\n" + sURL];
  }

  /// The shell was loaded anew and has nothing: everything is shown again.
  void ShellBeginsAgain(const Greeting& oGreeting);

 private:
  friend class WebCommandlist;
  friend class WebMessageWindow;
  friend class WebWebBrowser;

  class Pointer : public ZELWbr3::ScreenPointer {
   public:
    explicit Pointer(WebPlatform& oPlatform) : m_oPlatform(oPlatform) {}
    Integer MousePointer() const override { return m_iPointer; }
    void MousePointer(Integer iPointer) override;

   private:
    WebPlatform& m_oPlatform;
    Integer m_iPointer;
  };

  /// A message of the shell. One that is none ends the session.
  void Handle(const std::string& sMessage, bool bDuringWork);
  void Dispatch(const std::string& sKind, FlatListReader& oList, std::string_view sBody);
  void Theme(const std::string& sName);
  WebWebBrowser* Browser(std::uint32_t iFrame) const;

  WebPump& m_oPump;
  Wire& m_oWire;
  const PageFiles& m_oFiles;
  TraceTo m_oTrace;
  WebLocale m_oLocale;
  std::string m_sTheme;
  Pointer m_oPointer;
  WebBoxes m_oBoxes;
  std::map<std::uint32_t, WebWebBrowser*> m_browsers;
  WebCommandlist* m_oCommandlist = nullptr;
  WebMessageWindow* m_oMessageWindow = nullptr;
  CHM::CompiledHelp m_oHelp;
  std::uint32_t m_iLastNumber = 0;
  std::map<std::string, std::string> m_snapshots;
  std::vector<OfferedPage> m_pages;
  std::vector<Long> m_keys;
  std::string m_sPage;
  std::string m_sTitle;
  std::string m_sRead;
  std::pair<std::string, std::string> m_oFailure;
};

}  // namespace ZELWbr3::Web
