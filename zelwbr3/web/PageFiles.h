#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/web/CachedFiles.h"
#include "zelwbr3/web/HTTP.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Web {

/// The page files of some folders as browsers get them, side by side: read once, with
/// the agent as each page's first script, and compressed once. A name is looked up
/// here, so no request reaches the file system.
class ZELWBR3_EXPORT PageFiles {
 public:
  /// A file of an earlier folder hides one of the same name in a later folder. Throws
  /// std::runtime_error that names the folder or file.
  explicit PageFiles(const std::vector<std::string>& folders);

  /// Where a frame finds the page of a path, in the form of a navigation's: in
  /// these folders, or "about:blank". The error page for everything else. iSerial is
  /// that navigation's number; iLoad counts the loads of the frame, because another
  /// fragment alone would be no navigation.
  std::string URL(const std::string& sPathOrURL, std::uint32_t iSerial, std::uint32_t iLoad) const;
  /// False if the URL is that of the error page.
  bool Has(const std::string& sPathOrURL) const;
  const std::vector<std::string>& Folders() const { return m_folders; }

  /// What a request for a path below /p/ is answered.
  Response Answer(const Request& oRequest) const;

 private:
  /// The name of a page file in these folders; empty for anything else.
  std::string NameOf(const std::string& sPathOrURL) const;

  std::vector<std::string> m_folders;
  CachedFiles m_oFiles;
};

/// The text of a path or query in which %XX stands for a byte.
std::string Unescaped(std::string_view sText);

}  // namespace ZELWbr3::Web
