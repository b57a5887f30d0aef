#include "zelwbr3/web/PageFiles.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/remote/AgentSource.h"
#include "zelwbr3/remote/ErrorPage.h"
#include "zelwbr3/remote/FileURL.h"
#include "zelwbr3/web/Doorkeeper.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Web {

namespace {

constexpr const char* AgentFile = "zelwbr3-agent.js";
constexpr const char* BlankFile = "zelwbr3-blank.htm";
constexpr const char* ErrorFile = "zelwbr3-error.htm";
constexpr const char* ErrorStyle = "zelwbr3-error.css";

/// Pages load what they name from here, and run no script that stands in their text.
constexpr const char* PagePolicy =
    "default-src 'none'; script-src 'self'; style-src-elem 'self'; style-src-attr 'unsafe-inline'; img-src 'self' "
    "data:; frame-src 'self'; frame-ancestors 'self'; base-uri 'none'; form-action 'none'";

/// What the agent needs of the shell, in front of it.
std::string AgentFileText() {
  return "{\nconst zelwbr3Host = parent.zelwbr3Shell.Port(window);\n" + std::string(Remote::AgentSource) + "}\n";
}

/// A page with the agent as its first script and without a policy of its own,
/// which is written for files. The agent is there when the page begins again.
std::string WithAgent(std::string sPage) {
  const auto Find = [&](std::string_view sText, std::size_t iFrom = 0) { return sPage.find(sText, iFrom); };
  if (const auto iPolicy = Find("<meta http-equiv=\"Content-Security-Policy\""); iPolicy != std::string::npos) {
    sPage.erase(iPolicy, Find(">", iPolicy) + 1 - iPolicy);
  }
  const std::string sScript = std::string("<script src=\"") + AgentFile + "\" data-begins-again></script>";
  auto iHead = Find("<head");
  if (iHead != std::string::npos) iHead = Find(">", iHead);
  sPage.insert(iHead == std::string::npos ? 0 : iHead + 1, sScript);
  return sPage;
}

bool IsPage(const std::string& sName) { return TypeOf(sName).starts_with("text/html"); }

/// What browsers get of the folders, by name.
std::map<std::string, std::string> Read(const std::vector<std::string>& folders) {
  std::map<std::string, std::string> files;
  for (const std::string& sFolder : folders) {
    std::error_code oError;
    for (const auto& oEntry : std::filesystem::directory_iterator(sFolder, oError)) {
      const std::string sName = oEntry.path().filename().string();
      if (!oEntry.is_regular_file() || files.contains(sName)) continue;
      const std::string sContent = ReadFile(oEntry.path().string());
      files[sName] = IsPage(sName) ? WithAgent(sContent) : sContent;
    }
    if (oError) throw std::runtime_error("The folder \"" + sFolder + "\" cannot be read: " + oError.message());
  }
  files[AgentFile] = AgentFileText();
  files[BlankFile] = WithAgent("<!DOCTYPE html><html><head></head><body></body></html>");
  files[ErrorStyle] = Remote::ErrorPageStyle;
  return files;
}

}  // namespace

std::string Unescaped(std::string_view sText) {
  std::string sPlain;
  for (std::size_t i = 0; i < sText.size(); ++i) {
    unsigned iByte = 0;
    if (sText[i] == '%' && i + 2 < sText.size() &&
        std::from_chars(sText.data() + i + 1, sText.data() + i + 3, iByte, 16).ptr == sText.data() + i + 3) {
      sPlain += static_cast<char>(iByte);
      i += 2;
    } else {
      sPlain += sText[i];
    }
  }
  return sPlain;
}

PageFiles::PageFiles(const std::vector<std::string>& folders) : m_oFiles("/p/", Read(folders)) {
  for (const std::string& sFolder : folders) m_folders.push_back(Remote::FilePath(sFolder));
}

std::string PageFiles::NameOf(const std::string& sPathOrURL) const {
  if (sPathOrURL == "about:blank") return BlankFile;
  const std::string sPath = Remote::FilePath(sPathOrURL);
  const auto itFolder =
      std::ranges::find_if(m_folders, [&](const std::string& sFolder) { return sPath.starts_with(sFolder + "/"); });
  if (itFolder == m_folders.end()) return {};
  std::string sName = sPath.substr(itFolder->size() + 1);
  return m_oFiles.Find(sName) != nullptr && IsPage(sName) ? sName : std::string();
}

bool PageFiles::Has(const std::string& sPathOrURL) const { return !NameOf(sPathOrURL).empty(); }

std::string PageFiles::URL(const std::string& sPathOrURL, std::uint32_t iSerial, std::uint32_t iLoad) const {
  const std::string sName = NameOf(sPathOrURL);
  const std::string sTurn = iLoad % 2 == 0 ? "a" : "b";
  return m_oFiles.Folder() +
         (sName.empty() ? ErrorFile + ("?" + sTurn + "&what=" + Remote::EscapePath(sPathOrURL)) : sName + "?" + sTurn) +
         "#zelwbr3=" + std::to_string(iSerial);
}

Response PageFiles::Answer(const Request& oRequest) const {
  Response oResponse = m_oFiles.Answer(oRequest);
  if (oRequest.Path() == m_oFiles.Folder() + ErrorFile) {
    const std::string sPage =
        Remote::ErrorPage(Unescaped(QueryValue(oRequest.Target, "what")), "There is no such page file on this server.",
                          std::string("<link rel=\"stylesheet\" href=\"") + ErrorStyle + "\">");
    oResponse = CachedFiles::Kept(ErrorFile);
    oResponse.Body = std::make_shared<const std::string>(WithAgent(sPage));
  }
  if (oResponse.Status == 200) oResponse.Headers.emplace_back("Content-Security-Policy", PagePolicy);
  return oResponse;
}

}  // namespace ZELWbr3::Web
