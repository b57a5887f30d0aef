// zelweb: serves the pages of instances to any browser.

#include "host/CommandLine.h"
#include "host/CommandPictures.h"
#include "host/HostPages.h"
#include "host/Monitor.h"
#include "host/OpenInstance.h"
#include "host/OutputFiles.h"
#include "host/ProgramFiles.h"
#include "host/WebPages.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/web/Secrets.h"
#include "zelwbr3/web/Server.h"
#include "zelwbr3/web/Sessions.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>

namespace {

using namespace ZELWbr3::Host;
using ZELWbr3::Web::Response;

struct Arguments {
  std::vector<std::string> Instances;
  std::string Listen = "127.0.0.1:0";
  std::vector<std::string> Origins;
  std::string TokenFile;
  std::string MetricsTokenFile;
  std::string CertificateFile;
  std::string KeyFile;
  bool Insecure = false;
  bool AllowCommands = false;
  std::string Page = "Main";
  std::size_t MaxSessions = 64;
};

/// "127.0.0.1:8080" or "[::1]:8080" in its two parts.
std::pair<std::string, std::uint16_t> ParseListen(const std::string& sListen) {
  const auto iColon = sListen.rfind(':');
  std::string sAddress = sListen.substr(0, iColon);
  if (sAddress.starts_with('[') && sAddress.ends_with(']')) sAddress = sAddress.substr(1, sAddress.size() - 2);
  std::uint16_t iPort = 0;
  const char* pEnd = sListen.data() + sListen.size();
  const bool bPort = iColon != std::string::npos && iColon > 0;
  const auto oRead = std::from_chars(bPort ? sListen.data() + iColon + 1 : pEnd, pEnd, iPort);
  if (!bPort || oRead.ec != std::errc() || oRead.ptr != pEnd) {
    throw std::invalid_argument("--listen: \"" + sListen + "\" is not ADDRESS:PORT, such as 127.0.0.1:8080");
  }
  return {sAddress, iPort};
}

bool IsLoopback(const std::string& sAddress) { return sAddress.starts_with("127.") || sAddress == "::1"; }

std::string InURL(const std::string& sAddress) {
  return sAddress.find(':') == std::string::npos ? sAddress : "[" + sAddress + "]";
}

/// The token in a file, which is made when it is not there.
std::string TokenOf(const std::string& sOption, const std::string& sFile) {
  if (sFile.empty()) return ZELWbr3::Web::MakeSecret();
  if (!std::filesystem::exists(sFile)) {
    const std::string sToken = ZELWbr3::Web::MakeSecret();
    const mode_t eBefore = umask(0077);
    ZELWbr3::Finally([&] { WriteFile(sFile, sToken + "\n"); }, [&] { umask(eBefore); });
    return sToken;
  }
  try {
    std::string sToken = ZELWbr3::ReadFile(sFile, 4096);
    while (sToken.ends_with('\n') || sToken.ends_with('\r')) sToken.pop_back();
    constexpr std::size_t Shortest = 16;
    const bool bPlain = sToken.find_first_not_of(
                            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~") == std::string::npos;
    if (sToken.size() < Shortest || !bPlain) {
      throw ZELWbr3::ReadFileError("a token has at least 16 letters, digits, '-', '_', '.' or '~'");
    }
    return sToken;
  } catch (const ZELWbr3::ReadFileError& oError) {
    throw std::invalid_argument(sOption + ": the file \"" + sFile + "\" cannot be used: " + oError.what());
  }
}

/// The time zone of this program's times, by its name and its distance from UTC.
std::string TimeZone() {
  const std::time_t lNow = std::time(nullptr);
  std::tm oNow{};
  localtime_r(&lNow, &oNow);
  std::array<char, 64> name{};
  std::array<char, 8> distance{};
  std::strftime(name.data(), name.size(), "%Z", &oNow);
  std::strftime(distance.data(), distance.size(), "%z", &oNow);
  const std::string sName = name.data();
  const std::string sDistance = distance.data();  // +0130
  if (sDistance.size() != 5 || sName == "UTC") return "Times are the server's, in " + sName + ".";
  const std::string sUTC = "UTC" + sDistance.substr(0, 3) + ":" + sDistance.substr(3);
  const bool bNamed = sName.find_first_of("+-0123456789") == std::string::npos;
  return "Times are the server's, in " + (bNamed ? sName + " (" + sUTC + ")" : sUTC) + ".";
}

/// The program of a session.
void Show(ZELWbr3::Web::WebPlatform& oPlatform, const std::string& sInstance, const Arguments& oArguments) {
  const auto oDatabase = OpenFor(oPlatform, [&] {
    return OpenInstance(sInstance, oArguments.AllowCommands ? ZELWbr3::Recorded::CallObserver() : RefuseChanges);
  });
  WebPages(oPlatform, oDatabase, oArguments.AllowCommands ? "" : ChangesRefused).Run(oArguments.Page);
}

int Serve(const Arguments& oArguments) {
  HostPages::Find(oArguments.Page);
  const auto [sAddress, iPort] = ParseListen(oArguments.Listen);
  const bool bTLS = !oArguments.CertificateFile.empty();
  if (bTLS != !oArguments.KeyFile.empty()) throw std::invalid_argument("--tls-cert and --tls-key need each other");
  if (!IsLoopback(sAddress) && !bTLS && !oArguments.Insecure) {
    throw std::invalid_argument("--listen: others could read what goes to " + sAddress +
                                "; use --tls-cert and --tls-key, or --insecure if something else protects it");
  }
  for (const std::string& sInstance : oArguments.Instances) FilesOf(sInstance);  // says what is not an instance
  const std::string sToken = TokenOf("--token-file", oArguments.TokenFile);
  const std::string sMetricsToken = TokenOf("--metrics-token-file", oArguments.MetricsTokenFile);
  if (sToken == sMetricsToken) throw std::invalid_argument("--token-file and --metrics-token-file hold the same token");

  // A session needs a socket, and its instance some files.
  rlimit oFiles{};
  if (getrlimit(RLIMIT_NOFILE, &oFiles) == 0) {
    oFiles.rlim_cur = oFiles.rlim_max;
    setrlimit(RLIMIT_NOFILE, &oFiles);
  }

  const ZELWbr3::Web::PageFiles oPages({HTMLFolder()});
  std::vector<std::unique_ptr<Monitor>> monitors;
  ZELWbr3::Web::Sessions::Options oOptions;
  oOptions.Most = oArguments.MaxSessions;
  oOptions.Program = [&](ZELWbr3::Web::WebPlatform& oPlatform, std::size_t i) {
    Show(oPlatform, oArguments.Instances[i], oArguments);
  };
  oOptions.Zone = TimeZone;
  oOptions.Help = HelpFile();
  oOptions.Picture = CommandPicture;
  oOptions.Trace = [](const std::string& sText) { Complain(sText); };
  oOptions.Figures = [&](const std::string& sPath) -> Response {
    const bool bMetrics = sPath == "/metrics";
    return {200,
            {{"Content-Type", bMetrics ? "text/plain; version=0.0.4; charset=utf-8" : "application/json"},
             {"Cache-Control", "no-store"}},
            std::make_shared<const std::string>(bMetrics ? MetricsText(monitors) : LightsJSON(monitors))};
  };
  for (const std::string& sInstance : oArguments.Instances) oOptions.Instances.push_back(ShownInstance(sInstance));

  // The port is known only now; the doorkeeper must know it before the first request.
  ZELWbr3::Web::Doorkeeper oDoorkeeper(
      {.Token = sToken,
       .MetricsToken = sMetricsToken,
       .VisitsFile = oArguments.TokenFile.empty() ? "" : oArguments.TokenFile + ".visits"});
  ZELWbr3::Web::Sessions oSessions(oOptions, oDoorkeeper, oPages);
  ZELWbr3::Web::Server oServer({sAddress, iPort, oArguments.CertificateFile, oArguments.KeyFile}, oSessions);
  oSessions.ServedBy(oServer);
  const std::string sScheme = bTLS ? "https://" : "http://";
  const std::string sPort = ":" + std::to_string(oServer.Port());
  std::vector<std::string> origins = oArguments.Origins;
  for (const std::string& sHost :
       {InURL(sAddress), std::string("127.0.0.1"), std::string("localhost"), std::string("[::1]")}) {
    origins.push_back(sScheme + sHost + sPort);
    if (oServer.Port() == (bTLS ? 443 : 80)) origins.push_back(sScheme + sHost);
  }
  oDoorkeeper.ServedAt(origins, oServer.Port());
  for (const std::string& sInstance : oArguments.Instances) {
    monitors.push_back(std::make_unique<Monitor>(sInstance, std::chrono::seconds(5)));
  }

  const bool bEverywhere = sAddress == "0.0.0.0" || sAddress == "::";
  const std::string sHere = sScheme + InURL(bEverywhere ? "127.0.0.1" : sAddress) + sPort;
  std::cout << (oArguments.Origins.empty() ? sHere : oArguments.Origins.front()) << "/?token=" << sToken << "\n"
            << "metrics token " << sMetricsToken << std::endl;
  oServer.Run([&] { oSessions.End("The server is stopping"); });
  // A session or a monitor that waits for its database cannot be ended, but need not
  // be waited for.
  oSessions.Join(std::chrono::seconds(5));
  std::_Exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  Arguments oArguments;
  CommandLine oApp("zelweb", "Serves the pages of database instances to browsers.");
  oApp.add_option(
      "INSTANCE", oArguments.Instances,
      "recorded:FILE, sqlite:FILE, a file of either kind, or postgresql://…; one or more, the sample database by "
      "default");
  oApp.add_option("--listen", oArguments.Listen, "ADDRESS:PORT to listen on (default: 127.0.0.1 and a free port)");
  oApp.add_option("--origin", oArguments.Origins,
                  "Address that browsers use, such as https://db.example.org; repeatable")
      ->allow_extra_args(false);
  oApp.add_option("--token-file", oArguments.TokenFile, "File with the token; made when it is not there");
  oApp.add_option("--metrics-token-file", oArguments.MetricsTokenFile, "File with the token for /metrics and /health");
  oApp.add_option("--tls-cert", oArguments.CertificateFile, "Certificate with its chain (PEM)");
  oApp.add_option("--tls-key", oArguments.KeyFile, "The certificate's key (PEM)");
  oApp.add_flag("--insecure", oArguments.Insecure, "Allow an address that others reach without TLS");
  oApp.add_flag("--allow-commands", oArguments.AllowCommands, "Allow commands that change an instance");
  oApp.add_option("--page", oArguments.Page, "The page to show first (default: Main)");
  oApp.add_option("--max-sessions", oArguments.MaxSessions, "Sessions at a time (default: 64)")
      ->check(CLI::Range(1, 10000));
  return oApp.Run(argc, argv, [&] {
    for (std::string& sOrigin : oArguments.Origins) {
      while (sOrigin.ends_with('/')) sOrigin.pop_back();
      const auto iHost = sOrigin.find("://");
      const std::string sScheme = sOrigin.substr(0, iHost);
      if ((sScheme != "http" && sScheme != "https") || iHost + 3 >= sOrigin.size() ||
          sOrigin.find_first_of("/?# ", iHost + 3) != std::string::npos) {
        throw std::invalid_argument("--origin: \"" + sOrigin + "\" is not SCHEME://HOST or SCHEME://HOST:PORT");
      }
    }
    if (oArguments.Instances.empty()) oArguments.Instances.push_back(SampleInstance());
    return Serve(oArguments);
  });
}
