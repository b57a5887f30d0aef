#pragma once

#include "zelwbr3/desktop/KeyTranslation.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

class wxNativeWindow;
class wxWindow;
typedef struct _GdkEventKey GdkEventKey;
typedef struct _WebKitUserContentManager WebKitUserContentManager;
typedef struct _WebKitWebView WebKitWebView;

namespace ZELWbr3::Desktop {

class WebContext;

/// What a web view reports. Every call comes from the toolkit's loop; what a
/// handler throws is traced and goes no further, for the caller is C code.
class WebViewEvents {
 public:
  virtual ~WebViewEvents() = default;

  /// A message of the agent: a flat list.
  virtual void Message(std::string_view sMessage) = 0;
  /// A key goes down while the view has the focus, before its page sees it.
  /// True swallows it.
  virtual bool KeyPress(const Key& oKey) = 0;
  /// The Tab key has come to the view from outside, backwards unless bForward.
  virtual void Enter(bool bForward) = 0;
  virtual void ProcessTerminated(const std::string& sReason) = 0;
  virtual void Trace(const std::string& sText) = 0;
};

/// A WebKit view inside a wx window, with its own web process. It shows what it
/// is told to and nothing else: a page cannot navigate it, open windows or
/// dialogs, or reach the network.
///
/// This is where WebKit's C interface begins and ends. It is used directly,
/// not through wxWebView: that one has no messages before the page's own
/// scripts, no word of a web process that died, and a way of running scripts
/// that is several times slower.
class WebView {
 public:
  /// What running a script came to: its result as text, or the error.
  struct Outcome {
    std::string Result;
    std::string Error;
  };
  using Done = std::function<void(const Outcome&)>;

  /// Fills oParent, which outlives the view.
  WebView(wxWindow& oParent, const WebContext& oContext, WebViewEvents& oEvents);
  ~WebView();
  WebView(const WebView&) = delete;
  WebView& operator=(const WebView&) = delete;

  /// The agent's text for documents that begin to load from now on.
  void Agent(const std::string& sScript);

  /// Begins to load a URL and answers the number of this load, which the
  /// document finds in its URL. A URL of a scheme that is not allowed, and one
  /// that cannot be loaded, shows an error page with this number instead.
  std::uint32_t Load(const std::string& sURL);
  /// The same with a text in place of what is in the file of that URL.
  std::uint32_t Load(const std::string& sURL, const std::string& sHTML);
  /// A number that no load has, for the present document when it begins again.
  std::uint32_t NewNumber() { return ++m_iLastNumber; }

  /// Lets the frames of the page show what is in this compiled help file, and
  /// from then on nothing else.
  void HelpFile(const std::string& sCHMPath);

  /// Runs a script, valid UTF-8, in the agent's world of the document shown,
  /// in order and without waiting. oDone is called in any case, the death of
  /// the process included, but not after this object is gone.
  void Run(const std::string& sScript, Done oDone);
  /// Calls oDone once the document as it stands has been painted; only a
  /// visible view paints.
  void AfterPaint(std::function<void()> oDone);

  /// Shows the dialog for printing the document, also to a file.
  void Print();
  /// Copies what is selected in the frame with the keyboard to the clipboard.
  void Copy();
  void Focus();
  bool HasFocus() const;
  /// What is seen before a document has painted itself.
  void Background(std::uint32_t lRGB);
  WebKitWebView* Native() const { return m_oView; }

  /// Views that exist now, in the whole program.
  static int Count();

 private:
  struct Native_;

  bool OnKeyPress(const GdkEventKey& oEvent);
  /// Shows why a URL is not shown, in its place.
  void ShowError(const std::string& sURL, const std::string& sReason);
  /// Calls a handler on behalf of C code.
  void Guarded(const char* sWhat, const std::function<void()>& oHandler);

  WebViewEvents& m_oEvents;
  WebKitUserContentManager* m_oManager;
  WebKitWebView* m_oView;
  std::uint32_t m_iLastNumber = 0;
  std::uint32_t m_iSerial = 0;  ///< of the last load
  bool m_bNetwork = false;      ///< the load of that serial is one of http or https
  /// Keys handed to the page, which arrive a second time when it did not handle
  /// them.
  std::deque<std::pair<std::uint32_t, std::uint32_t>> m_oSeenKeys;
  /// Ends what is still on its way when this object goes.
  std::shared_ptr<bool> m_oAlive = std::make_shared<bool>(true);
};

}  // namespace ZELWbr3::Desktop
