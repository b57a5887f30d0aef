#include "zelwbr3/web/Sessions.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/chm/CompiledHelp.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/remote/ErrorPage.h"
#include "zelwbr3/remote/FileType.h"
#include "zelwbr3/web/Server.h"
#include "zelwbr3/web/Shell.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace ZELWbr3::Web {

namespace {

constexpr const char* ShellPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src 'self'; frame-src "
    "'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'self'";

/// A topic is somebody else's text: nothing in it runs, or leads out of the help file.
constexpr const char* HelpPolicy =
    "sandbox allow-same-origin; default-src 'none'; style-src 'self' 'unsafe-inline'; img-src 'self' data:; "
    "frame-ancestors 'self'; base-uri 'none'; form-action 'none'";

/// The shell confirms, and is confirmed, messages in portions of this size.
constexpr std::uint64_t Portion = 32;

constexpr const char* HTML = "text/html; charset=utf-8";

constexpr const char* ShellFolder = "/shell/";

const CachedFiles& ShellFiles() {
  static const CachedFiles oFiles(ShellFolder, {{"shell.js", std::string(ShellScript)},
                                                {"shell.css", std::string(ShellStyle)},
                                                {"instances.js", std::string(InstancesScript)}});
  return oFiles;
}

std::string Script(const std::string& sName) {
  return "<script src=\"" + ShellFiles().Folder() + sName + "\" async></script>";
}

Response Page(int iStatus, const std::string& sTitle, const std::string& sBody, const std::string& sHead = {}) {
  const std::string sPage =
      "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><meta name=\"viewport\" "
      "content=\"width=device-width\"><title>" +
      sTitle + "</title><link rel=\"stylesheet\" href=\"" + ShellFiles().Folder() + "shell.css\">" + sHead +
      "</head><body class=\"notice\"><main><h1>" + sTitle + "</h1>" + sBody + "</main></body></html>";
  return {iStatus,
          {{"Content-Type", HTML}, {"Content-Security-Policy", ShellPolicy}, {"Cache-Control", "no-store"}},
          std::make_shared<const std::string>(sPage)};
}

std::string Replaced(std::string sText, std::string_view sWhat, std::string_view sBy) {
  for (auto i = sText.find(sWhat); i != std::string::npos; i = sText.find(sWhat, i + sBy.size())) {
    sText.replace(i, sWhat.size(), sBy);
  }
  return sText;
}

/// The number that a path ends with behind its beginning; no value for another path.
std::optional<std::uint32_t> NumberBehind(std::string_view sPath, std::string_view sBegin) {
  std::uint32_t i = 0;
  if (!sPath.starts_with(sBegin)) return std::nullopt;
  const auto oEnd = std::from_chars(sPath.data() + sBegin.size(), sPath.data() + sPath.size(), i);
  return oEnd.ec == std::errc() && oEnd.ptr == sPath.data() + sPath.size() && i <= INT32_MAX ? std::optional(i)
                                                                                             : std::nullopt;
}

std::string Control(auto... items) {
  FlatListWriter oList;
  (oList.Add(items), ...);
  return oList.Take();
}

void SendControl(Socket& oSocket, std::string sText) {
  oSocket.Send(std::make_shared<const std::string>(std::move(sText)));
}

/// What every answer says to a browser, unless it says something else itself.
Response Guarded(Response o) {
  for (const auto& [sName, sValue] :
       std::initializer_list<std::pair<const char*, const char*>>{{"X-Content-Type-Options", "nosniff"},
                                                                  {"Referrer-Policy", "no-referrer"},
                                                                  {"Cross-Origin-Opener-Policy", "same-origin"},
                                                                  {"Cross-Origin-Resource-Policy", "same-origin"}}) {
    const bool bOwn = std::ranges::any_of(o.Headers, [&](const auto& oHeader) { return oHeader.first == sName; });
    if (!bOwn) o.Headers.emplace_back(sName, sValue);
  }
  return o;
}

}  // namespace

// ---- a socket ---------------------------------------------------------------

/// One socket, from its greeting on that of a session.
class Sessions::Line : public SocketOwner {
 public:
  Line(Sessions& oSessions, std::string sCookie, std::shared_ptr<Socket> oSocket)
      : m_oSessions(oSessions), m_sCookie(std::move(sCookie)), m_oSocket(std::move(oSocket)) {}

  bool Text(std::string sText) override {
    if (m_bOver) return false;
    // Not a visit: nobody need be there for it.
    if (m_oSession != nullptr && sText == R"(["ping"])") {
      SendControl(*m_oSocket, Control("pong"));
      return true;
    }
    // The cookie is asked for each time: its browser may have signed out meanwhile.
    if (!m_oSessions.m_oDoorkeeper.IsGood(m_sCookie)) {
      if (m_oSession != nullptr) m_oSessions.EndSession(m_oSession, "Signed out");
      return Refuse();
    }
    if (m_oSession == nullptr) {
      try {
        m_oSession = m_oSessions.Greet(m_sCookie, sText, m_oSocket);
      } catch (const std::invalid_argument&) {
        // Whoever says something else has no business here.
      } catch (const std::exception& o) {
        if (m_oSessions.m_oOptions.Trace) {
          m_oSessions.m_oOptions.Trace(std::string("A session cannot begin: ") + o.what());
        }
      }
      return m_oSession != nullptr || Refuse();
    }
    // The shell has come back over another socket: what this one still brings is sent
    // again over that one, or is of a shell that is gone.
    if (!m_oSession->Wire().IsAttached(m_oSocket.get())) return Refuse();
    constexpr std::string_view Got = "[\"got\",";
    if (sText.starts_with(Got)) {
      std::uint64_t iGot = 0;
      std::from_chars(sText.data() + Got.size(), sText.data() + sText.size(), iGot);
      m_oSession->Wire().Confirm(iGot);
      return true;
    }
    const bool bMore = m_oSession->Arrive(std::move(sText));
    if (m_oSession->Arrived() % Portion == 0) {
      SendControl(*m_oSocket, Control("got", static_cast<std::uint32_t>(m_oSession->Arrived())));
    }
    return bMore;
  }

  void Gone() override {
    m_bOver = true;
    if (m_oSession != nullptr) m_oSessions.Left(std::exchange(m_oSession, nullptr), m_oSocket.get());
    m_oSocket.reset();
  }
  /// It has had time enough to say what it is for.
  void TimeIsUp() {
    if (m_oSession == nullptr && !m_bOver) Refuse();
  }

 private:
  bool Refuse() {
    m_bOver = true;
    m_oSocket->Close(1008);
    return false;
  }

  Sessions& m_oSessions;
  std::string m_sCookie;
  std::shared_ptr<Socket> m_oSocket;
  std::shared_ptr<Session> m_oSession;
  bool m_bOver = false;
};

Sessions::Sessions(Options oOptions, Doorkeeper& oDoorkeeper, const PageFiles& oFiles)
    : m_oOptions(std::move(oOptions)), m_oDoorkeeper(oDoorkeeper), m_oFiles(oFiles) {}

Sessions::~Sessions() { End("The server is stopping"); }

// ---- requests ---------------------------------------------------------------

Response Sessions::Answer(const Request& o) {
  if (const auto oRefusal = m_oDoorkeeper.Refusal(o)) return Guarded(*oRefusal);
  const std::string sPath = o.Path();
  if (sPath == "/logout" && o.Method == "POST") {
    if (!m_oDoorkeeper.IsFromOurPage(o)) return Guarded({403});
    const std::string sCookie = m_oDoorkeeper.CookieOf(o);
    for (const auto& [sNumber, oSession] : m_sessions) {
      if (!sCookie.empty() && oSession->Cookie() == sCookie) EndSession(oSession, "Signed out");
    }
    Response oBye = Page(200, "Signed out", "<p>The sessions of this browser have ended.</p>");
    oBye.Headers.emplace_back("Set-Cookie", m_oDoorkeeper.Leave(o));
    return Guarded(std::move(oBye));
  }
  if (o.Method != "GET" && o.Method != "HEAD") return Guarded({405, {{"Allow", "GET, HEAD"}}});
  if (sPath == "/metrics" || sPath == "/health") {
    const auto oEntry = m_oDoorkeeper.MayReadFigures(o);
    if (oEntry.Refused != 0) return Guarded({oEntry.Refused, {{"WWW-Authenticate", "Bearer"}}});
    return Guarded(m_oOptions.Figures(sPath));
  }
  if (sPath == "/" && !QueryValue(o.Target, "token").empty()) {
    const auto oEntry = m_oDoorkeeper.Enter(o);
    if (oEntry.Refused == 0) {
      // Not a redirection: a browser that comes from elsewhere would not send the
      // new cookie with it.
      Response oGoOn = Page(200, "One moment", "<p><a href=\"/\">Go on</a></p>",
                            "<meta http-equiv=\"refresh\" content=\"0;url=/\">");
      oGoOn.Headers.emplace_back("Set-Cookie", oEntry.SetCookie);
      return Guarded(std::move(oGoOn));
    }
    if (oEntry.Refused == 429) return Guarded(Page(429, "Too many attempts", "<p>Try again in a minute.</p>"));
  }
  if (sPath == "/favicon.ico") return Guarded({204});
  // The style of what is shown to strangers.
  if (sPath == ShellFiles().Folder() + "shell.css") return Guarded(ShellFiles().Answer(o));
  if (m_oDoorkeeper.CookieOf(o).empty()) {
    return Guarded(Page(401, "Please sign in",
                        "<p>Open the address that <code>zelweb</code> printed when it started: it has the token.</p>"));
  }
  return Guarded(AnswerVisitor(o));
}

Response Sessions::AnswerVisitor(const Request& o) {
  const std::string sPath = o.Path();
  if (sPath.starts_with("/p/")) return m_oFiles.Answer(o);
  if (sPath == "/") return m_oOptions.Instances.size() == 1 ? Shell(0) : StartPage();
  if (sPath.starts_with(ShellFolder)) return ShellFiles().Answer(o);
  if (sPath == "/lights") return m_oOptions.Figures(sPath);
  if (sPath.starts_with(HelpFolder)) return Help(Unescaped(sPath.substr(std::string_view(HelpFolder).size())));
  if (const auto i = NumberBehind(sPath, "/picture/"); i && m_oOptions.Picture) {
    const std::string sPicture = m_oOptions.Picture(static_cast<std::int32_t>(*i));
    if (sPicture.empty()) return {404};
    return {200,
            {{"Content-Type", TypeOf(".svg")}, {"Cache-Control", "private, max-age=3600"}},
            std::make_shared<const std::string>(sPicture)};
  }
  if (const auto i = NumberBehind(sPath, "/instance/"); i && *i < m_oOptions.Instances.size()) return Shell(*i);
  return Page(404, "Not found", "<p><a href=\"/\">To the start</a></p>");
}

Response Sessions::Help(const std::string& sObject) const {
  Response o{200, {{"Content-Security-Policy", HelpPolicy}, {"Cache-Control", "no-cache"}}};
  try {
    o.Body = std::make_shared<const std::string>(CHM::CompiledHelp::Read(m_oOptions.Help, sObject));
    o.Headers.emplace_back("Content-Type", TypeOf(sObject));
  } catch (const CHM::HelpError& oError) {
    o.Status = 404;
    o.Body = std::make_shared<const std::string>(Remote::ErrorPage(sObject, oError.what()));
    o.Headers.emplace_back("Content-Type", HTML);
  }
  return o;
}

Response Sessions::Shell(std::size_t iInstance) const {
  // The first frame begins to load at once: a session's first navigation is that
  // of the overview, under the number 1.
  std::string sShell =
      Replaced(std::string(ShellPage), "@FIRST@", m_oFiles.URL(m_oFiles.Folders().front() + "/Main.htm", 1, 1));
  sShell = Replaced(sShell, "@FILES@", ShellFiles().Folder());
  sShell = Replaced(sShell, "@INSTANCE@", std::to_string(iInstance));
  sShell = Replaced(sShell, "@ZONE@", m_oOptions.Zone ? Text::EscapeHTML(m_oOptions.Zone()) : "");
  sShell = Replaced(sShell, "@NAME@", Text::EscapeHTML(Text::Clean(m_oOptions.Instances[iInstance])));
  const bool bSeveral = m_oOptions.Instances.size() > 1;
  sShell = Replaced(sShell, "@INSTANCES@",
                    bSeveral ? "<nav id=\"instances\" aria-label=\"Instances\"><h2><a href=\"/\">Instances</a></h2>" +
                                   InstanceList(iInstance) + "</nav>" + Script("instances.js")
                             : "");
  // Without a referrer, a browser would not say that signing out comes from this page.
  return {200,
          {{"Content-Type", HTML},
           {"Content-Security-Policy", ShellPolicy},
           {"Referrer-Policy", "same-origin"},
           {"Cache-Control", "no-store"}},
          std::make_shared<const std::string>(sShell)};
}

std::string Sessions::InstanceList(std::optional<std::size_t> iPresent) const {
  std::string sList = "<ul class=\"instances\">";
  for (std::size_t i = 0; i < m_oOptions.Instances.size(); ++i) {
    const std::string sAddress = Text::EscapeHTML(Text::Clean(m_oOptions.Instances[i]));
    sList += "<li><a href=\"/instance/" + std::to_string(i) + "\"" + (i == iPresent ? " aria-current=\"page\"" : "") +
             "><span class=\"light\"></span><span class=\"name\">" + sAddress + "</span><span class=\"address\"><bdi>" +
             sAddress + "</bdi></span><span class=\"finding\">Reading…</span></a></li>";
  }
  return sList + "</ul>";
}

Response Sessions::StartPage() const {
  return Page(200, "Instances", InstanceList(std::nullopt) + Script("instances.js"));
}

std::optional<Response> Sessions::Refusal(const Request& o) {
  if (auto oRefusal = m_oDoorkeeper.Refusal(o)) return oRefusal;
  if (o.Path() != "/socket") return Response{404};
  // Browsers always say where a socket is opened from.
  if (!m_oDoorkeeper.IsFromOurPage(o)) return Response{403};
  if (m_oDoorkeeper.CookieOf(o).empty()) return Response{401};
  return std::nullopt;
}

std::shared_ptr<SocketOwner> Sessions::Opened(const Request& o, std::shared_ptr<Socket> oSocket) {
  const auto oLine = std::make_shared<Line>(*this, m_oDoorkeeper.CookieOf(o), std::move(oSocket));
  m_oServer->After(m_oOptions.Greeting, [oWeak = std::weak_ptr(oLine)] {
    if (const auto oWaiting = oWeak.lock()) oWaiting->TimeIsUp();
  });
  return oLine;
}

// ---- sessions ---------------------------------------------------------------

std::shared_ptr<Session> Sessions::Greet(const std::string& sCookie, std::string_view sMessage,
                                         const std::shared_ptr<Socket>& oSocket) {
  FlatListReader oList(sMessage);
  if (oList.Text() != "hello") return nullptr;
  const std::size_t iInstance = oList.Number();
  const std::string sNumber = oList.Text();
  const std::string sLoad = oList.Text();
  const std::uint64_t iGot = oList.Number();
  const bool bGreeted = oList.Number() != 0;
  const bool bLeft = oList.Number() != 0;
  Greeting oGreeting{.Locale = {}, .Theme = oList.Text()};
  while (!oList.AtEnd()) oGreeting.Locale.push_back(oList.Text());

  const auto it = m_sessions.find(sNumber);
  const auto oSession = it == m_sessions.end() ? nullptr : it->second;
  const bool bTheirs = oSession != nullptr && oSession->Cookie() == sCookie && oSession->Instance() == iInstance &&
                       !oSession->IsEnding();
  if (bTheirs && oSession->Load() == sLoad) {
    SendControl(*oSocket, Control("welcome", sNumber, static_cast<std::uint32_t>(oSession->Arrived())));
    if (oSession->Wire().Attach(oSocket, iGot)) {
      oSession->Returned();
      return oSession;
    }
  }
  if (bGreeted) {
    // What it shows is no longer known here.
    SendControl(*oSocket, Control("reload"));
    return nullptr;
  }
  // The shell before it in its tab is gone, even if its socket does not know yet.
  if (bTheirs && (bLeft || !oSession->Wire().IsAttached())) {
    SendControl(*oSocket, Control("welcome", sNumber, 0U));
    oSession->Wire().Restart(oSocket);
    oSession->BeginAgain(sLoad, oGreeting);
    oSession->Returned();
    return oSession;
  }
  if (iInstance >= m_oOptions.Instances.size() || m_bEnded) return nullptr;
  if (m_sessions.size() >= m_oOptions.Most) {
    SendControl(*oSocket, Control("full", static_cast<std::uint32_t>(m_oOptions.Most)));
    return nullptr;
  }
  const auto oNew = std::make_shared<Session>(sCookie, iInstance);
  oNew->Load(sLoad);
  SendControl(*oSocket, Control("welcome", oNew->Number(), 0U));
  oNew->Wire().Restart(oSocket);
  const auto Running = [this](int iMore) {
    const std::scoped_lock oLock(m_oMutex);
    m_iRunning += iMore;
    m_oEnded.notify_all();
  };
  Running(1);
  try {
    oNew->Begin(
        m_oFiles, oGreeting, m_oOptions.Trace,
        [this, iInstance](WebPlatform& oPlatform) { m_oOptions.Program(oPlatform, iInstance); },
        [this, Running, sNew = oNew->Number()] {
          m_oServer->Post([this, sNew] {
            const auto it = m_sessions.find(sNew);
            if (it == m_sessions.end()) return;
            it->second->Wire().Close(1000);
            m_sessions.erase(it);
          });
          Running(-1);
        });
  } catch (const std::exception&) {
    Running(-1);  // there is no thread for it
    throw;
  }
  return m_sessions[oNew->Number()] = oNew;
}

void Sessions::Left(const std::shared_ptr<Session>& oSession, const Socket* oSocket) {
  oSession->Wire().Detach(oSocket);
  if (oSession->IsEnding() || oSession->Wire().IsAttached()) return;
  m_oServer->After(m_oOptions.Absence, [this, oWeak = std::weak_ptr(oSession), iSeen = oSession->Returns()] {
    const auto o = oWeak.lock();
    // Somebody who came back and left again is waited for anew.
    if (o != nullptr && !o->Wire().IsAttached() && o->Returns() == iSeen) EndSession(o, "The connection is gone");
  });
}

void Sessions::EndSession(const std::shared_ptr<Session>& oSession, const std::string& sReason) {
  if (oSession->IsEnding()) return;
  oSession->Wire().Send(Control("ended", sReason));
  oSession->End(sReason);
  InterruptUntilEnded(oSession);
}

void Sessions::InterruptUntilEnded(const std::weak_ptr<Session>& oSession) {
  const auto o = oSession.lock();
  if (o == nullptr) return;
  o->Interrupt();
  m_oServer->After(std::chrono::milliseconds(50), [this, oSession] { InterruptUntilEnded(oSession); });
}

void Sessions::End(const std::string& sReason) {
  m_bEnded = true;
  for (const auto& [sNumber, oSession] : m_sessions) {
    if (oSession->IsEnding()) continue;
    oSession->End(sReason);
    oSession->Interrupt();
  }
}

bool Sessions::Join(std::chrono::milliseconds oAtMost) {
  const auto oUntil = std::chrono::steady_clock::now() + oAtMost;
  std::unique_lock oLock(m_oMutex);
  while (m_iRunning > 0) {
    // One interruption just before a part of the work begins is lost.
    for (const auto& [sNumber, oSession] : m_sessions) oSession->Interrupt();
    if (std::chrono::steady_clock::now() >= oUntil) return false;
    m_oEnded.wait_for(oLock, std::chrono::milliseconds(50));
  }
  oLock.unlock();
  m_sessions.clear();
  return true;
}

}  // namespace ZELWbr3::Web
