#pragma once

#include "zelwbr3/web/HTTP.h"

#include <map>
#include <memory>
#include <string>

namespace ZELWbr3::Web {

/// Files that browsers keep: compressed once, in a folder whose name stands for all
/// that is in them, so that they are never asked for again until one has changed.
class CachedFiles {
 public:
  /// Contents by name, in a folder below sBegin, such as "/p/".
  CachedFiles(const std::string& sBegin, const std::map<std::string, std::string>& files);

  /// The folder's path, up to its last "/".
  const std::string& Folder() const { return m_sFolder; }
  /// A file's content; null if there is no such file.
  const std::string* Find(const std::string& sName) const;
  /// What a request for a path in the folder is answered: 404 if it is no file of it.
  Response Answer(const Request& oRequest) const;
  /// The headers that everything in the folder has.
  static Response Kept(const std::string& sName);

 private:
  struct File {
    std::shared_ptr<const std::string> Content;
    std::shared_ptr<const std::string> Compressed;  ///< null where that is not worth it
  };

  std::string m_sFolder;
  std::map<std::string, File> m_files;
};

/// The MIME type of a file by its name.
std::string TypeOf(std::string_view sName);

}  // namespace ZELWbr3::Web
