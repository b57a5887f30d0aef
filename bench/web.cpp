// Serves a recording to bench/web.py, which measures in a real browser, and does with
// the session begun last what the lines on standard input say. Each is answered with
// the milliseconds that it took, until the browser had confirmed everything:
//
//   empty PAGE        shows a page of bench/pages with an empty table
//   rows PAGE COUNT   fills it
//   show NAME         shows a page of the control
//
// "script" is answered with the script that fills such a table inside the page, as JSON.

#include "bench/Figures.h"
#include "bench/Rows.h"
#include "host/HostPages.h"
#include "host/OpenInstance.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/web/Server.h"
#include "zelwbr3/web/Sessions.h"
#include "zelwbr3/web/WebCommandlist.h"
#include "zelwbr3/web/WebWebBrowser.h"

#include <filesystem>
#include <future>
#include <iostream>
#include <mutex>
#include <sstream>
#include <thread>

namespace {

using namespace ZELWbr3;
using namespace ZELWbr3::Bench;

/// A folder with the pages of bench/pages beside the control's own.
std::string MakeFolder() {
  const std::filesystem::path oFolder = ZELWBR3_BENCH_PAGES;
  std::filesystem::remove_all(oFolder);
  std::filesystem::copy(ZELWBR3_PAGES, oFolder);
  for (const auto& oEntry : std::filesystem::directory_iterator(ZELWBR3_SOURCE_DIR "/bench/pages")) {
    std::string sPage = ReadFile(oEntry.path().string());
    constexpr std::string_view Elsewhere = "../../html/";
    for (std::size_t i; (i = sPage.find(Elsewhere)) != std::string::npos;) sPage.erase(i, Elsewhere.size());
    std::ofstream(oFolder / oEntry.path().filename()) << sPage;
  }
  return oFolder.string();
}

/// The control of a session. Ask is for any thread, the rest for the session's.
class Shown {
 public:
  Shown(Web::WebPlatform& oPlatform, const std::string& sInstance)
      : m_oPlatform(oPlatform),
        m_oBrowser(oPlatform),
        m_oPages(m_oBrowser, Host::OpenInstance(sInstance), std::make_shared<Web::WebCommandlist>(oPlatform, "")) {
    m_oBrowser.HTMLPaths(oPlatform.Files().Folders());
  }

  [[noreturn]] void Run() {
    m_oPages.Show("Main");
    for (;;) m_oPlatform.Run();
  }

  double Ask(const std::string& sLine) {
    std::promise<double> oTook;
    m_oPlatform.MessagePump().Post([&] {
      try {
        oTook.set_value(Do(sLine));
      } catch (...) {
        oTook.set_exception(std::current_exception());
      }
    });
    return oTook.get_future().get();
  }

 private:
  double Do(const std::string& sLine) {
    std::istringstream oLine(sLine);
    std::string sWhat;
    std::string sName;
    int iCount = 0;
    oLine >> sWhat >> sName >> iCount;
    if (sWhat == "show") {
      return Milliseconds([&] {
        m_oPages.Show(sName);
        Settle();
      });
    }
    if (m_oRows == nullptr || m_oRows->Name() != sName) {
      m_oRows = std::make_shared<PageRows>(sName);
      m_oBrowser.Show(m_oRows, 1);
    }
    m_oRows->Show();  // once more: what a load leaves to be done is not measured
    Settle();
    if (sWhat == "empty") return 0;
    const auto texts = MakeTexts(iCount);
    return Milliseconds([&] {
      AddRows(*m_oRows->Document(), texts);
      m_oPlatform.Front()->Flush();
      Settle();
    });
  }

  void Settle() {
    while (!m_oPlatform.Front()->Remote().IsLoaded() || !m_oPlatform.Front()->Settled())
      m_oPlatform.MessagePump().Turn();
  }

  Web::WebPlatform& m_oPlatform;
  Browser m_oBrowser;
  Host::HostPages m_oPages;
  std::shared_ptr<PageRows> m_oRows;
};

}  // namespace

int main(int argc, char** argv) {
  const std::string sInstance = argc > 1 ? argv[1] : "";
  std::mutex oMutex;
  Shown* oShown = nullptr;
  const Web::PageFiles oFiles({MakeFolder()});
  Web::Doorkeeper oDoorkeeper({.Token = "the-token-of-the-benchmarks", .MetricsToken = "another-token-of-them"});
  Web::Sessions::Options oOptions;
  oOptions.Instances = {"Benchmark"};
  oOptions.Trace = [](const std::string& sText) { std::cerr << sText << std::endl; };
  oOptions.Figures = [](const std::string&) { return Web::Response{404}; };
  oOptions.Program = [&](Web::WebPlatform& oPlatform, std::size_t) {
    Shown oControl(oPlatform, sInstance);
    {
      const std::scoped_lock oLock(oMutex);
      oShown = &oControl;
    }
    oControl.Run();
  };
  Web::Sessions oSessions(oOptions, oDoorkeeper, oFiles);
  Web::Server oServer({}, oSessions);
  oSessions.ServedBy(oServer);
  oDoorkeeper.ServedAt({"http://127.0.0.1:" + std::to_string(oServer.Port())}, oServer.Port());
  std::cout << "http://127.0.0.1:" << oServer.Port() << "/?token=the-token-of-the-benchmarks" << std::endl;

  // Whoever drives this ends it by closing its input, when the browser is gone already.
  std::thread oReader([&] {
    for (std::string sLine; std::getline(std::cin, sLine);) {
      if (sLine == "script") {
        std::cout << nlohmann::json(BuildRows) << std::endl;
        continue;
      }
      const std::scoped_lock oLock(oMutex);
      std::cout << oShown->Ask(sLine) << std::endl;
    }
    oServer.Stop();
  });
  oServer.Run([&] { oSessions.End("The server is stopping"); });
  oReader.join();
  return oSessions.Join(std::chrono::seconds(5)) ? 0 : 1;
}
