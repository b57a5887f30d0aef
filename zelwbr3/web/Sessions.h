#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/web/Doorkeeper.h"
#include "zelwbr3/web/HTTP.h"
#include "zelwbr3/web/PageFiles.h"
#include "zelwbr3/web/Session.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Web {

class Server;

/// The site: the shell and its files for those who may come in, and a session for
/// each shell. Everything but Join is for the server's thread.
class ZELWBR3_EXPORT Sessions : public Site {
 public:
  struct Options {
    /// What is shown, by the numbers that Program is called with.
    std::vector<std::string> Instances;
    /// Runs on the thread of a new session; see Session::Program.
    std::function<void(WebPlatform&, std::size_t iInstance)> Program;
    /// Answers the requests for /metrics and /health, and for /lights (JSON) of the
    /// list of instances.
    std::function<Response(const std::string& sPath)> Figures;
    /// Says of which time zone the times are; may be empty.
    std::function<std::string()> Zone;
    /// The help file, or folder of topics, that the message window shows.
    std::string Help;
    /// A picture of the command list by its number, as SVG; empty for one that there is not.
    std::function<std::string(Long)> Picture;
    WebPlatform::TraceTo Trace;
    std::size_t Most = 64;
    /// How long a session waits for a shell that is gone.
    std::chrono::milliseconds Absence{60000};
    /// How long a socket may be open before it says what it is for.
    std::chrono::milliseconds Greeting{10000};
  };

  Sessions(Options oOptions, Doorkeeper& oDoorkeeper, const PageFiles& oFiles);
  ~Sessions() override;

  /// The server that serves this site, which it outlives.
  void ServedBy(Server& oServer) { m_oServer = &oServer; }

  Response Answer(const Request& oRequest) override;
  std::optional<Response> Refusal(const Request& oRequest) override;
  std::shared_ptr<SocketOwner> Opened(const Request& oRequest, std::shared_ptr<Socket> oSocket) override;

  /// Ends all sessions; their threads end soon.
  void End(const std::string& sReason);
  /// Waits for the threads of ended sessions, when no server runs any more. False
  /// if some are still at work after that time.
  bool Join(std::chrono::milliseconds oAtMost);
  std::size_t Count() const { return m_sessions.size(); }

 private:
  class Line;

  /// Of a browser that has a cookie.
  Response AnswerVisitor(const Request& oRequest);
  Response Shell(std::size_t iInstance) const;
  Response Help(const std::string& sObject) const;
  Response StartPage() const;
  /// The instances as links, each with a light; iPresent is the one that the page shows.
  std::string InstanceList(std::optional<std::size_t> iPresent) const;

  /// What a shell says first. Null if there is no session for it; the socket then
  /// knows why.
  std::shared_ptr<Session> Greet(const std::string& sCookie, std::string_view sMessage,
                                 const std::shared_ptr<Socket>& oSocket);
  /// The shell's socket is gone.
  void Left(const std::shared_ptr<Session>& oSession, const Socket* oSocket);
  void EndSession(const std::shared_ptr<Session>& oSession, const std::string& sReason);
  void InterruptUntilEnded(const std::weak_ptr<Session>& oSession);

  Options m_oOptions;
  Doorkeeper& m_oDoorkeeper;
  const PageFiles& m_oFiles;
  Server* m_oServer = nullptr;
  std::map<std::string, std::shared_ptr<Session>> m_sessions;  ///< by number

  /// There are no further ones.
  bool m_bEnded = false;

  std::mutex m_oMutex;
  std::condition_variable m_oEnded;
  int m_iRunning = 0;
};

}  // namespace ZELWbr3::Web
