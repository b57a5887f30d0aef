#include "zelwbr3/web/CachedFiles.h"

#include "zelwbr3/remote/FileType.h"
#include "zelwbr3/web/Secrets.h"

#include <zlib.h>

namespace ZELWbr3::Web {

namespace {

/// For "Content-Encoding: gzip".
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

}  // namespace

std::string TypeOf(std::string_view sName) {
  const std::string sType = Remote::FileType(sName);
  return sType.starts_with("text/") ? sType + "; charset=utf-8" : sType;
}

CachedFiles::CachedFiles(const std::string& sBegin, const std::map<std::string, std::string>& files) {
  std::string sAll;
  for (const auto& [sName, sContent] : files) {
    sAll += Digest(sName) + Digest(sContent);
    auto oCompressed = std::make_shared<const std::string>(Compressed(sContent));
    if (oCompressed->empty() || oCompressed->size() > sContent.size() * 9 / 10) oCompressed.reset();
    m_files[sName] = {std::make_shared<const std::string>(sContent), std::move(oCompressed)};
  }
  m_sFolder = sBegin + Digest(sAll) + "/";
}

const std::string* CachedFiles::Find(const std::string& sName) const {
  const auto it = m_files.find(sName);
  return it == m_files.end() ? nullptr : it->second.Content.get();
}

Response CachedFiles::Kept(const std::string& sName) {
  return {200, {{"Content-Type", TypeOf(sName)}, {"Cache-Control", "private, max-age=31536000, immutable"}}};
}

Response CachedFiles::Answer(const Request& oRequest) const {
  const std::string sPath = oRequest.Path();
  const auto it = sPath.starts_with(m_sFolder) ? m_files.find(sPath.substr(m_sFolder.size())) : m_files.end();
  if (it == m_files.end()) return {404};
  const File& oFile = it->second;
  Response oResponse = Kept(it->first);
  const bool bCompressed = oFile.Compressed != nullptr && oRequest.AcceptEncoding.find("gzip") != std::string::npos;
  if (bCompressed) oResponse.Headers.emplace_back("Content-Encoding", "gzip");
  oResponse.Headers.emplace_back("Vary", "Accept-Encoding");
  oResponse.Body = bCompressed ? oFile.Compressed : oFile.Content;
  return oResponse;
}

}  // namespace ZELWbr3::Web
