#include "zelwbr3/instances/postgres/analyzer/AnalyzerSetup.h"

#include "zelwbr3/instances/postgres/server/Server.h"

#include <cctype>
#include <string_view>

namespace ZELWbr3::Postgres {

namespace {

std::string Escaped(const std::string& sValue) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string sEscaped;
  for (const char c : sValue) {
    const auto l = static_cast<unsigned char>(c);
    if (std::isalnum(l)) {
      sEscaped += c;
    } else {
      sEscaped.append("%").append(1, kDigits[l / 16]).append(1, kDigits[l % 16]);
    }
  }
  return sEscaped;
}

/// The address without any password, as a URI.
std::string ArgumentOf(const Address& oAddress) {
  std::string sURI = "postgresql://";
  char cBetween = '?';
  for (const auto& [sKeyword, sValue] : oAddress.Given()) {
    if (sKeyword == "sslpassword") continue;
    sURI.append(1, cBetween).append(sKeyword).append("=").append(Escaped(sValue));
    cBetween = '&';
  }
  return sURI;
}

}  // namespace

Instances::AnalyzerFolder AnalyzerFolderOf(const Address& oAddress) {
  const auto ValueOr = [&](const char* sKeyword, const char* sDefault) {
    const std::string sValue = oAddress.Value(sKeyword);
    return sValue.empty() ? sDefault : sValue;
  };
  const std::string sServer = ValueOr("host", "localhost") + "-" + ValueOr("port", "5432");
  return {sServer, sServer + "/" + ValueOr("dbname", oAddress.Value("user").c_str()) + " " + oAddress.Value("service")};
}

Instances::BackgroundAnalyzer::Setup AnalyzerSetupOf(std::shared_ptr<Server> oServer) {
  const Address& oAddress = oServer->Address();
  Instances::BackgroundAnalyzer::Setup oSetup;
  oSetup.Instance = oServer->Name();
  oSetup.Argument = ArgumentOf(oAddress);
  if (!oAddress.Password().empty()) oSetup.Environment = {"PGPASSWORD=" + oAddress.Password()};
  oSetup.Program = oServer->Options().AnalyzerProgram;
  oSetup.Folder = [oServer] { return AnalyzerFolderOf(oServer->Address()); };
  oSetup.Refuse = [oServer](const std::string& sWhy) {
    oServer->Refuse(sWhy);
    return oServer->LastError();
  };
  return oSetup;
}

}  // namespace ZELWbr3::Postgres
