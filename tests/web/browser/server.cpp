// Serves a recording to the tests in a real browser. A request for /lights asks for a
// comparison of the document that the browser shows with the replica, and answers
// with the number of those made so far and what the last one has found.

#include "zelwbr3/web/Server.h"
#include "host/CommandPictures.h"
#include "host/OpenInstance.h"
#include "host/ProgramFiles.h"
#include "host/WebPages.h"
#include "tests/support/LiveDocument.h"
#include "zelwbr3/web/Sessions.h"
#include "zelwbr3/web/WebWebBrowser.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <mutex>

namespace {

using namespace ZELWbr3;

struct Comparison {
  std::mutex oMutex;
  Web::WebPlatform* oPlatform = nullptr;  ///< of the session begun last
  int iMade = 0;
  std::string sFound;
};

std::string Around(const std::string& sText, std::ptrdiff_t iPlace) {
  const auto iFrom = static_cast<std::size_t>(std::max(iPlace - 200, std::ptrdiff_t{0}));
  return sText.substr(std::min(iFrom, sText.size()), 400);
}

/// On the session's thread.
void Compare(Comparison& oComparison, Web::WebPlatform& oPlatform) {
  Web::WebWebBrowser* oBrowser = oPlatform.Front();
  if (oBrowser == nullptr || !oBrowser->Remote().IsLoaded() || !oBrowser->Settled()) return;
  oBrowser->LiveDocument([&, oDocument = oBrowser->Document()](const std::string& sList) {
    const std::string sLive = Testing::LinesOf(sList);
    const std::string sReplica = Testing::LinesOf(*oDocument->documentElement());
    const auto iPlace = std::ranges::mismatch(sLive, sReplica).in1 - sLive.begin();
    const std::scoped_lock oLock(oComparison.oMutex);
    ++oComparison.iMade;
    oComparison.sFound =
        sLive == sReplica ? "equal" : "differs: " + Around(sLive, iPlace) + "\nreplica: " + Around(sReplica, iPlace);
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::string sRecording = argc > 1 ? argv[1] : "";
  const std::chrono::milliseconds oAbsence(argc > 2 ? std::atoi(argv[2]) : 60000);
  Comparison oComparison;
  const Web::PageFiles oFiles({Host::HTMLFolder()});
  Web::Doorkeeper oDoorkeeper({.Token = "the-token-of-the-tests", .MetricsToken = "another-token-of-the-tests"});
  Web::Sessions::Options oOptions;
  oOptions.Instances = {"Test"};
  oOptions.Absence = oAbsence;
  oOptions.Help = Host::HelpFile();
  oOptions.Picture = Host::CommandPicture;
  oOptions.Trace = [](const std::string& sText) { std::cerr << sText << std::endl; };
  oOptions.Program = [&](Web::WebPlatform& oPlatform, std::size_t) {
    Host::WebPages oPages(oPlatform, Host::OpenInstance(sRecording));
    {
      const std::scoped_lock oLock(oComparison.oMutex);
      oComparison.oPlatform = &oPlatform;
    }
    oPlatform.Keys({119});  // F8
    try {
      oPages.Run("Main");
    } catch (...) {
      const std::scoped_lock oLock(oComparison.oMutex);
      if (oComparison.oPlatform == &oPlatform) oComparison.oPlatform = nullptr;
      throw;
    }
  };
  oOptions.Figures = [&](const std::string&) -> Web::Response {
    const std::scoped_lock oLock(oComparison.oMutex);
    if (auto* oPlatform = oComparison.oPlatform) {
      oPlatform->MessagePump().Post([&oComparison, oPlatform] { Compare(oComparison, *oPlatform); });
    }
    const std::string sText = std::to_string(oComparison.iMade) + " " + oComparison.sFound;
    return {200, {{"Content-Type", "text/plain"}}, std::make_shared<const std::string>(sText)};
  };
  Web::Sessions oSessions(oOptions, oDoorkeeper, oFiles);
  Web::Server oServer({}, oSessions);
  oSessions.ServedBy(oServer);
  oDoorkeeper.ServedAt({"http://127.0.0.1:" + std::to_string(oServer.Port())}, oServer.Port());
  std::cout << "http://127.0.0.1:" << oServer.Port() << "/?token=the-token-of-the-tests" << std::endl;
  oServer.Run([&] { oSessions.End("The server is stopping"); });
  return oSessions.Join(std::chrono::seconds(5)) ? 0 : 1;
}
