#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace ZELWbr3 {
class Document;
class Element;
}  // namespace ZELWbr3

namespace ZELWbr3::Remote {

/// What a document was loaded from: the page file, and the scripts, style sheets
/// and pictures that it names, each with its time and size. Tells whether loading
/// it again would give the same document.
class PageOrigin {
 public:
  /// Of a document that is not known.
  PageOrigin() = default;
  /// Of one that is about to be loaded from this file; an empty path for what is
  /// not a file.
  explicit PageOrigin(const std::string& sPage);

  /// The document has been loaded.
  void Loaded(const Document& oDocument);

  /// Loading this file now would give the same document. False where that cannot
  /// be told: for an error page, and for a page with frames, with scripts that do
  /// not begin again when they are told to, or with files from elsewhere. What a
  /// style sheet refers to is not looked at.
  bool IsStill(const std::string& sPage) const;

 private:
  struct File {
    explicit File(std::filesystem::path oFile);
    bool operator==(const File&) const = default;

    std::filesystem::path Path;
    std::filesystem::file_time_type Time{};
    std::uintmax_t Size = 0;
    bool Exists = false;
  };

  /// False if the element's part in the document cannot be told.
  bool Add(const Element& oElement);
  bool AddBelow(const Element& oElement);

  std::vector<File> m_files;
  bool m_bKnown = false;
};

}  // namespace ZELWbr3::Remote
