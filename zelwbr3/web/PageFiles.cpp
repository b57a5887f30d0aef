#include "zelwbr3/web/PageFiles.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/remote/AgentSource.h"
#include "zelwbr3/remote/ErrorPage.h"
#include "zelwbr3/remote/FileType.h"
#include "zelwbr3/remote/FileURL.h"
#include "zelwbr3/web/Doorkeeper.h"
#include "zelwbr3/web/Secrets.h"
#include "zelwbr3/web/Shell.h"

#include <zlib.h>

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
/// which is written for files.
std::string WithAgent(std::string sPage) {
  const auto Find = [&](std::string_view sText, std::size_t iFrom = 0) { return sPage.find(sText, iFrom); };
  if (const auto iPolicy = Find("<meta http-equiv=\"Content-Security-Policy\""); iPolicy != std::string::npos) {
    sPage.erase(iPolicy, Find(">", iPolicy) + 1 - iPolicy);
  }
  const std::string sScript = std::string("<script src=\"") + AgentFile + "\"></script>";
  auto iHead = Find("<head");
  if (iHead != std::string::npos) iHead = Find(">", iHead);
  sPage.insert(iHead == std::string::npos ? 0 : iHead + 1, sScript);
  return sPage;
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

std::string TypeOf(std::string_view sName) {
  const std::string sType = Remote::FileType(sName);
  return sType.starts_with("text/") ? sType + "; charset=utf-8" : sType;
}

std::string Compressed(const std::string& sContent) {
  z_stream oStream{};
  constexpr int GZip = 15 + 16;
  if (deflateInit2(&oStream, Z_BEST_COMPRESSION, Z_DEFLATED, GZip, 8, Z_DEFAULT_STRATEGY) != Z_OK) return {};
  std::string sCompressed(deflateBound(&oStream, sContent.size()), '\0');
  oStream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(sContent.data()));
  oStream.avail_in = static_cast<uInt>(sContent.size());
  oStream.next_out = reinterpret_cast<Bytef*>(sCompressed.data());
  oStream.avail_out = static_cast<uInt>(sCompressed.size());
  deflate(&oStream, Z_FINISH);
  sCompressed.resize(oStream.total_out);
  deflateEnd(&oStream);
  return sCompressed;
}

PageFiles::PageFiles(const std::vector<std::string>& folders) {
  std::string sAll;
  for (const std::string& sFolder : folders) {
    m_folders.push_back(Remote::FilePath(sFolder));
    std::error_code oError;
    for (const auto& oEntry : std::filesystem::directory_iterator(sFolder, oError)) {
      const std::string sName = oEntry.path().filename().string();
      if (!oEntry.is_regular_file() || m_files.contains(sName)) continue;
      const std::string sContent = ReadFile(oEntry.path().string());
      Add(sName, TypeOf(sName).starts_with("text/html") ? WithAgent(sContent) : sContent);
    }
    if (oError) throw std::runtime_error("The folder \"" + sFolder + "\" cannot be read: " + oError.message());
  }
  Add(AgentFile, AgentFileText());
  Add(BlankFile, WithAgent("<!DOCTYPE html><html><head></head><body></body></html>"));
  Add(ErrorStyle, std::string(Remote::ErrorPageStyle));
  for (const auto& [sName, oFile] : m_files) sAll += Digest(sName) + Digest(*oFile.Content);
  m_sHash = Digest(sAll);
}

void PageFiles::Add(const std::string& sName, std::string sContent) {
  auto oCompressed = std::make_shared<const std::string>(Compressed(sContent));
  if (oCompressed->empty() || oCompressed->size() > sContent.size() * 9 / 10) oCompressed.reset();
  m_files[sName] = {TypeOf(sName), std::make_shared<const std::string>(std::move(sContent)), std::move(oCompressed)};
}

std::string PageFiles::NameOf(const std::string& sPathOrURL) const {
  if (sPathOrURL == "about:blank") return BlankFile;
  const std::string sPath = Remote::FilePath(sPathOrURL);
  const auto itFolder =
      std::ranges::find_if(m_folders, [&](const std::string& sFolder) { return sPath.starts_with(sFolder + "/"); });
  if (itFolder == m_folders.end()) return {};
  std::string sName = sPath.substr(itFolder->size() + 1);
  const auto it = m_files.find(sName);
  return it != m_files.end() && it->second.Type.starts_with("text/html") ? sName : std::string();
}

bool PageFiles::Has(const std::string& sPathOrURL) const { return !NameOf(sPathOrURL).empty(); }

std::string PageFiles::URL(const std::string& sPathOrURL, std::uint32_t iSerial, std::uint32_t iLoad) const {
  const std::string sName = NameOf(sPathOrURL);
  const std::string sTurn = iLoad % 2 == 0 ? "a" : "b";
  return "/p/" + m_sHash + "/" +
         (sName.empty() ? ErrorFile + ("?" + sTurn + "&what=" + Remote::EscapePath(sPathOrURL)) : sName + "?" + sTurn) +
         "#zelwbr3=" + std::to_string(iSerial);
}

Response PageFiles::Answer(const Request& oRequest) const {
  const std::string sPath = oRequest.Path();
  const std::string sFolder = "/p/" + m_sHash + "/";
  if (!sPath.starts_with(sFolder)) return {404};
  const std::string sName = sPath.substr(sFolder.size());
  Response oResponse{200,
                     {{"Content-Type", TypeOf(sName)},
                      {"Content-Security-Policy", PagePolicy},
                      {"Cache-Control", "private, max-age=31536000, immutable"}}};
  if (sName == ErrorFile) {
    const std::string sPage =
        Remote::ErrorPage(Unescaped(QueryValue(oRequest.Target, "what")), "There is no such page file on this server.",
                          std::string("<link rel=\"stylesheet\" href=\"") + ErrorStyle + "\">");
    oResponse.Body = std::make_shared<const std::string>(WithAgent(sPage));
    return oResponse;
  }
  const auto it = m_files.find(sName);
  if (it == m_files.end()) return {404};
  const bool bCompressed =
      it->second.Compressed != nullptr && oRequest.AcceptEncoding.find("gzip") != std::string::npos;
  if (bCompressed) oResponse.Headers.emplace_back("Content-Encoding", "gzip");
  oResponse.Headers.emplace_back("Vary", "Accept-Encoding");
  oResponse.Body = bCompressed ? it->second.Compressed : it->second.Content;
  return oResponse;
}

}  // namespace ZELWbr3::Web
