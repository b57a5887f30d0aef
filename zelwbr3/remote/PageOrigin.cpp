#include "zelwbr3/remote/PageOrigin.h"

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/remote/FileURL.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace ZELWbr3::Remote {

namespace {

/// The mark of a script that begins again at the event "zelwbr3reset".
constexpr std::string_view BeginsAgain = "data-begins-again";

/// Elements with a document of their own, and the one that says where files are.
constexpr std::array<std::string_view, 5> Opaque = {"iframe", "frame", "object", "embed", "base"};

}  // namespace

PageOrigin::File::File(std::filesystem::path oFile) : Path(std::move(oFile)) {
  std::error_code oError;
  Time = std::filesystem::last_write_time(Path, oError);
  if (!oError) Size = std::filesystem::file_size(Path, oError);
  Exists = !oError;
}

PageOrigin::PageOrigin(const std::string& sPage) {
  if (!sPage.empty()) m_files.emplace_back(sPage);
}

void PageOrigin::Loaded(const Document& oDocument) {
  const bool bFile = !m_files.empty() && m_files.front().Exists && !oDocument.IsErrorPage();
  m_bKnown = bFile && AddBelow(*oDocument.documentElement());
}

bool PageOrigin::IsStill(const std::string& sPage) const {
  return m_bKnown && m_files.front().Path == sPage &&
         std::ranges::all_of(m_files, [](const File& oFile) { return File(oFile.Path) == oFile; });
}

bool PageOrigin::Add(const Element& oElement) {
  const std::string& sTag = oElement.tagName();
  if (std::ranges::find(Opaque, sTag) != Opaque.end()) return false;
  if (sTag == "script" && !oElement.hasAttribute(BeginsAgain)) return false;
  const std::string& sName = oElement.getAttribute(sTag == "link" ? "href" : "src");
  if (sName.empty() || SchemeOf(sName) == "data") return true;
  if (!SchemeOf(sName).empty() || sName.find_first_of("%?#\\") != std::string::npos) return false;
  m_files.emplace_back(m_files.front().Path.parent_path() / sName);
  return true;
}

bool PageOrigin::AddBelow(const Element& oElement) {
  if (!Add(oElement)) return false;
  for (const Element* o = oElement.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    if (!AddBelow(*o)) return false;
  }
  return true;
}

}  // namespace ZELWbr3::Remote
