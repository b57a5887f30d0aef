#include "zelwbr3/desktop/WebView.h"

#include "zelwbr3/desktop/HelpScheme.h"
#include "zelwbr3/desktop/WebContext.h"
#include "zelwbr3/remote/ErrorPage.h"
#include "zelwbr3/remote/FileURL.h"

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>
#include <wx/nativewin.h>
#include <wx/window.h>

#include <algorithm>
#include <array>
#include <exception>

namespace ZELWbr3::Desktop {

using namespace Remote;

namespace {

constexpr char World[] = "zelwbr3";
constexpr char Handler[] = "zelwbr3";

/// What pages may be made of. The network is not among it for page files; a page
/// of the network that the host asked for may use its own server.
constexpr char ContentPolicy[] =
    "default-src 'self' file: data: blob: about: mk: 'unsafe-inline'; connect-src 'none'; form-action 'none'";
constexpr std::array<std::string_view, 3> Schemes = {"file", "about", "mk"};

int iViews = 0;

bool IsAllowed(std::string_view sURL) { return std::ranges::find(Schemes, SchemeOf(sURL)) != Schemes.end(); }

bool IsNetwork(std::string_view sURL) {
  const std::string sScheme = SchemeOf(sURL);
  return sScheme == "http" || sScheme == "https";
}

/// A value of a page as valid UTF-8 without NUL; empty for undefined and null.
std::string TextOf(JSCValue* oValue) {
  if (oValue == nullptr || jsc_value_is_undefined(oValue) || jsc_value_is_null(oValue)) return {};
  // As bytes: the plain string ends at a NUL.
  GBytes* oBytes = jsc_value_to_string_as_bytes(oValue);
  if (oBytes == nullptr) return {};
  gsize iSize = 0;
  const auto* pData = static_cast<const char*>(g_bytes_get_data(oBytes, &iSize));
  std::string sText(pData, iSize);
  g_bytes_unref(oBytes);
  return sText;
}

WebKitSettings* MakeSettings() {
  WebKitSettings* oSettings = webkit_settings_new();
  // Going back would show a cached page without a live agent.
  webkit_settings_set_enable_page_cache(oSettings, FALSE);
  webkit_settings_set_enable_developer_extras(oSettings, FALSE);
  webkit_settings_set_enable_back_forward_navigation_gestures(oSettings, FALSE);
  webkit_settings_set_javascript_can_open_windows_automatically(oSettings, FALSE);
  webkit_settings_set_enable_html5_local_storage(oSettings, FALSE);
  webkit_settings_set_enable_html5_database(oSettings, FALSE);
  webkit_settings_set_enable_webaudio(oSettings, FALSE);
  webkit_settings_set_enable_webgl(oSettings, FALSE);
  webkit_settings_set_enable_media(oSettings, FALSE);
  // Tables need no graphics card, and without one a view also works over a
  // remote display, in a virtual machine and beside any driver.
  webkit_settings_set_hardware_acceleration_policy(oSettings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  return oSettings;
}

const char* ReasonText(WebKitWebProcessTerminationReason eReason) {
  switch (eReason) {
    case WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT:
      return "it needed too much memory";
    case WEBKIT_WEB_PROCESS_TERMINATED_BY_API:
      return "it was ended";
    case WEBKIT_WEB_PROCESS_CRASHED:
      break;
  }
  return "it crashed or was killed";
}

/// Carries a callback through C; gone views are not called.
struct Pending {
  std::weak_ptr<bool> oAlive;
  WebView::Done oDone;
};

void OnScriptDone(GObject* oView, GAsyncResult* oResult, gpointer pData) {
  const std::unique_ptr<Pending> oPending(static_cast<Pending*>(pData));
  GError* oError = nullptr;
  JSCValue* oValue = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(oView), oResult, &oError);
  WebView::Outcome oOutcome;
  if (oError != nullptr) {
    oOutcome.Error = oError->message;
    g_error_free(oError);
  }
  if (oValue != nullptr) {
    oOutcome.Result = TextOf(oValue);
    g_object_unref(oValue);
  }
  if (!oPending->oAlive.expired()) oPending->oDone(oOutcome);
}

}  // namespace

/// The signal handlers, in C's calling convention.
struct WebView::Native_ {
  static WebView& Self(gpointer pData) { return *static_cast<WebView*>(pData); }

  static void Message(WebKitUserContentManager*, WebKitJavascriptResult* oResult, gpointer pData) {
    Self(pData).Guarded("A message of the page",
                        [&] { Self(pData).m_oEvents.Message(TextOf(webkit_javascript_result_get_js_value(oResult))); });
  }

  static gboolean KeyPress(GtkWidget*, GdkEventKey* oEvent, gpointer pData) {
    return Self(pData).OnKeyPress(*oEvent) ? TRUE : FALSE;
  }

  static gboolean Focus(GtkWidget* oWidget, GtkDirectionType eDirection, gpointer pData) {
    const bool bTab = eDirection == GTK_DIR_TAB_FORWARD || eDirection == GTK_DIR_TAB_BACKWARD;
    if (!bTab || gtk_widget_has_focus(oWidget)) return FALSE;
    Self(pData).Guarded("The Tab key", [&] { Self(pData).m_oEvents.Enter(eDirection == GTK_DIR_TAB_FORWARD); });
    return TRUE;
  }

  static gboolean DecidePolicy(WebKitWebView*, WebKitPolicyDecision* oDecision, WebKitPolicyDecisionType eType,
                               gpointer pData) {
    const std::uint32_t iSerial = Self(pData).m_iSerial;
    const bool bNetwork = Self(pData).m_bNetwork;  // the host has asked for a page of the network
    bool bAllowed = false;
    std::string sURL;
    if (eType == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
      auto* oResponse = WEBKIT_RESPONSE_POLICY_DECISION(oDecision);
      sURL = webkit_uri_request_get_uri(webkit_response_policy_decision_get_request(oResponse));
      bAllowed = webkit_response_policy_decision_is_mime_type_supported(oResponse) &&
                 (!webkit_response_policy_decision_is_main_frame_main_resource(oResponse) ||
                  SerialOf(sURL) == iSerial || (bNetwork && IsNetwork(sURL)));
    } else {
      WebKitNavigationAction* oAction =
          webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(oDecision));
      sURL = webkit_uri_request_get_uri(webkit_navigation_action_get_request(oAction));
      // Links, forms, history and reloading are other types. Top frame or not
      // cannot be told here: a foreign document in the top frame is turned away
      // when its response comes. An about: document has none.
      bAllowed = eType == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION &&
                 webkit_navigation_action_get_navigation_type(oAction) == WEBKIT_NAVIGATION_TYPE_OTHER &&
                 IsAllowed(sURL) && (SchemeOf(sURL) != "about" || SerialOf(sURL) == iSerial);
      // A page cannot go there by itself, but its server may send the host on.
      const bool bHosts = SerialOf(sURL) == iSerial || webkit_navigation_action_is_redirect(oAction);
      bAllowed = bAllowed || (bNetwork && IsNetwork(sURL) && bHosts);
      const bool bHelp = !HelpFileOf(Self(pData).m_oView).empty();
      bAllowed = bAllowed && (!bHelp || SchemeOf(sURL) == "mk" || SerialOf(sURL) == iSerial);
    }
    if (bAllowed) {
      webkit_policy_decision_use(oDecision);
    } else {
      webkit_policy_decision_ignore(oDecision);
      // A load of our own that another one has overtaken is nothing to report.
      const bool bOvertaken = SerialOf(sURL) != 0 && SerialOf(sURL) < iSerial;
      if (!bOvertaken) Self(pData).m_oEvents.Trace("Refused to go to " + sURL);
    }
    return TRUE;
  }

  static gboolean LoadFailed(WebKitWebView*, WebKitLoadEvent, const char* sURL, GError* oError, gpointer pData) {
    WebView& oSelf = Self(pData);
    const bool bCancelled = g_error_matches(oError, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED);
    if (SerialOf(sURL) == oSelf.m_iSerial && !bCancelled) oSelf.ShowError(sURL, oError->message);
    return TRUE;
  }

  static void ProcessTerminated(WebKitWebView*, WebKitWebProcessTerminationReason eReason, gpointer pData) {
    Self(pData).Guarded("The end of a web process",
                        [&] { Self(pData).m_oEvents.ProcessTerminated(ReasonText(eReason)); });
  }

  static gboolean ScriptDialog(WebKitWebView*, WebKitScriptDialog* oDialog, gpointer pData) {
    // Unanswered, it would keep the page's process waiting for ever.
    Self(pData).Guarded("A dialog of the page", [&] {
      Self(pData).m_oEvents.Trace(std::string("The page asks: ") + webkit_script_dialog_get_message(oDialog));
    });
    if (webkit_script_dialog_get_dialog_type(oDialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
      webkit_script_dialog_confirm_set_confirmed(oDialog, TRUE);
    }
    return TRUE;
  }

  static gboolean PermissionRequest(WebKitWebView*, WebKitPermissionRequest* oRequest, gpointer) {
    webkit_permission_request_deny(oRequest);
    return TRUE;
  }

  static gboolean FileChooser(WebKitWebView*, WebKitFileChooserRequest* oRequest, gpointer) {
    webkit_file_chooser_request_cancel(oRequest);
    return TRUE;
  }

  static gboolean Refuse() { return TRUE; }
};

WebView::WebView(wxWindow& oParent, const WebContext& oContext, WebViewEvents& oEvents)
    : m_oEvents(oEvents), m_oManager(webkit_user_content_manager_new()) {
  webkit_user_content_manager_register_script_message_handler_in_world(m_oManager, Handler, World);
  WebKitSettings* oSettings = MakeSettings();
  m_oView = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", oContext.Native(), "user-content-manager",
                                         m_oManager, "settings", oSettings, "default-content-security-policy",
                                         ContentPolicy, nullptr));
  g_object_ref_sink(m_oView);
  g_object_unref(oSettings);

  const auto Connect = [this](gpointer oObject, const char* sSignal, auto pHandler) {
    g_signal_connect(oObject, sSignal, G_CALLBACK(pHandler), this);
  };
  Connect(m_oManager, (std::string("script-message-received::") + Handler).c_str(), Native_::Message);
  Connect(m_oView, "key-press-event", Native_::KeyPress);
  Connect(m_oView, "focus", Native_::Focus);
  Connect(m_oView, "decide-policy", Native_::DecidePolicy);
  Connect(m_oView, "load-failed", Native_::LoadFailed);
  Connect(m_oView, "web-process-terminated", Native_::ProcessTerminated);
  Connect(m_oView, "script-dialog", Native_::ScriptDialog);
  Connect(m_oView, "permission-request", Native_::PermissionRequest);
  Connect(m_oView, "run-file-chooser", Native_::FileChooser);
  for (const char* sSignal : {"context-menu", "print", "enter-fullscreen", "authenticate"}) {
    Connect(m_oView, sSignal, Native_::Refuse);
  }

  // wx handles keys at the widget it is given, and would see each one twice at
  // the view itself: before the page and again after it. At a box around the
  // view it sees only those that the page leaves.
  GtkWidget* oBox = gtk_event_box_new();
  gtk_container_add(GTK_CONTAINER(oBox), GTK_WIDGET(m_oView));
  gtk_widget_show_all(oBox);
  auto* oWindow = new wxNativeWindow(&oParent, wxID_ANY, oBox);
  oWindow->SetSize(oParent.GetClientSize());
  oParent.Bind(wxEVT_SIZE, [oWindow, oAlive = std::weak_ptr(m_oAlive)](wxSizeEvent& oEvent) {
    if (!oAlive.expired()) oWindow->SetSize(oEvent.GetSize());
    oEvent.Skip();
  });
  ++iViews;
}

WebView::~WebView() {
  --iViews;
  g_signal_handlers_disconnect_by_data(m_oManager, this);
  g_signal_handlers_disconnect_by_data(m_oView, this);
  webkit_user_content_manager_unregister_script_message_handler_in_world(m_oManager, Handler, World);
  webkit_user_content_manager_remove_all_scripts(m_oManager);
  g_object_unref(m_oView);
  g_object_unref(m_oManager);
}

int WebView::Count() { return iViews; }

void WebView::Guarded(const char* sWhat, const std::function<void()>& oHandler) {
  const std::weak_ptr oAlive(m_oAlive);
  try {
    oHandler();
  } catch (const std::exception& oError) {
    if (!oAlive.expired()) m_oEvents.Trace(std::string(sWhat) + ": " + oError.what());
  }
}

void WebView::Agent(const std::string& sScript) {
  webkit_user_content_manager_remove_all_scripts(m_oManager);
  WebKitUserScript* oScript =
      webkit_user_script_new_for_world(sScript.c_str(), WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
                                       WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, World, nullptr, nullptr);
  webkit_user_content_manager_add_script(m_oManager, oScript);
  webkit_user_script_unref(oScript);
}

std::uint32_t WebView::Load(const std::string& sURL) {
  m_iSerial = NewNumber();
  m_bNetwork = IsNetwork(sURL);
  if (IsAllowed(sURL) || m_bNetwork) {
    webkit_web_view_load_uri(m_oView, WithSerial(sURL, m_iSerial).c_str());
  } else {
    ShowError(sURL, "Only files and pages of the network are shown");
  }
  return m_iSerial;
}

std::uint32_t WebView::Load(const std::string& sURL, const std::string& sHTML) {
  m_iSerial = NewNumber();
  m_bNetwork = false;
  const std::string sAddress = WithSerial(sURL, m_iSerial);
  webkit_web_view_load_alternate_html(m_oView, sHTML.c_str(), sAddress.c_str(), sAddress.c_str());
  return m_iSerial;
}

void WebView::ShowError(const std::string& sURL, const std::string& sReason) {
  const std::string sHTML = Remote::ErrorPage(WithoutSerial(sURL), sReason);
  const std::string sAddress = WithSerial("about:blank", m_iSerial);
  webkit_web_view_load_alternate_html(m_oView, sHTML.c_str(), sAddress.c_str(), sAddress.c_str());
}

void WebView::Run(const std::string& sScript, Done oDone) {
  webkit_web_view_evaluate_javascript(m_oView, sScript.data(), static_cast<gssize>(sScript.size()), World, nullptr,
                                      nullptr, OnScriptDone, new Pending{m_oAlive, std::move(oDone)});
}

void WebView::AfterPaint(std::function<void()> oDone) {
  // An asynchronous function is reported only after a rendering update.
  const auto OnDone = [](GObject* oView, GAsyncResult* oResult, gpointer pData) {
    const std::unique_ptr<Pending> oPending(static_cast<Pending*>(pData));
    GError* oError = nullptr;
    JSCValue* oValue = webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(oView), oResult, &oError);
    if (oValue != nullptr) g_object_unref(oValue);
    if (oError != nullptr) g_error_free(oError);
    if (!oPending->oAlive.expired()) oPending->oDone({});
  };
  static constexpr char Script[] =
      "return new Promise(Done => requestAnimationFrame(() => requestAnimationFrame(() => Done(0))));";
  webkit_web_view_call_async_javascript_function(
      m_oView, Script, -1, nullptr, World, nullptr, nullptr, OnDone,
      new Pending{m_oAlive, [oDone = std::move(oDone)](const Outcome&) { oDone(); }});
}

bool WebView::OnKeyPress(const GdkEventKey& oEvent) {
  // WebKit takes these for its own history, which is empty here. They are the program's.
  if ((oEvent.state & GDK_MOD1_MASK) != 0 && (oEvent.keyval == GDK_KEY_Left || oEvent.keyval == GDK_KEY_Right)) {
    g_signal_stop_emission_by_name(m_oView, "key-press-event");
    return false;
  }
  // A key that the page leaves is dispatched once more, with the same time.
  const std::pair<std::uint32_t, std::uint32_t> oSeen(oEvent.time, oEvent.hardware_keycode);
  if (const auto it = std::ranges::find(m_oSeenKeys, oSeen); it != m_oSeenKeys.end()) {
    m_oSeenKeys.erase(it);
    return false;
  }

  bool bSwallow = false;
  const std::weak_ptr oAlive(m_oAlive);
  Guarded("A key", [&] { bSwallow = m_oEvents.KeyPress(Translate(oEvent)); });
  if (!bSwallow && !oAlive.expired()) {
    m_oSeenKeys.push_back(oSeen);
    if (m_oSeenKeys.size() > 16) m_oSeenKeys.pop_front();
  }
  return bSwallow;
}

void WebView::HelpFile(const std::string& sCHMPath) {
  GiveHelpFile(m_oView, sCHMPath);
  // Topics come from anywhere; the agent runs all the same.
  webkit_settings_set_enable_javascript_markup(webkit_web_view_get_settings(m_oView), FALSE);
}

void WebView::Copy() { webkit_web_view_execute_editing_command(m_oView, WEBKIT_EDITING_COMMAND_COPY); }

void WebView::Print() {
  WebKitPrintOperation* oOperation = webkit_print_operation_new(m_oView);
  webkit_print_operation_run_dialog(oOperation, GTK_WINDOW(gtk_widget_get_toplevel(GTK_WIDGET(m_oView))));
  g_object_unref(oOperation);
}

void WebView::Focus() { gtk_widget_grab_focus(GTK_WIDGET(m_oView)); }

bool WebView::HasFocus() const { return gtk_widget_is_focus(GTK_WIDGET(m_oView)) != FALSE; }

void WebView::Background(std::uint32_t lRGB) {
  const auto Part = [lRGB](int iShift) { return static_cast<double>(lRGB >> iShift & 255) / 255; };
  const GdkRGBA oColour = {Part(16), Part(8), Part(0), 1};
  webkit_web_view_set_background_color(m_oView, &oColour);
}

}  // namespace ZELWbr3::Desktop
