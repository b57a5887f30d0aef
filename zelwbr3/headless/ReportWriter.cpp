#include "zelwbr3/headless/ReportWriter.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/dom/HTMLWriter.h"

#include <optional>

namespace ZELWbr3::Headless {

std::string WriteReport(const Document& oDocument, const std::string& sFolder) {
  return WriteReport(oDocument, std::vector{sFolder});
}

std::string WriteReport(const Document& oDocument, const std::vector<std::string>& folders) {
  const auto Inlined = [&](const std::string& sTag, const std::string& sFile) -> std::optional<std::string> {
    if (sFile.empty()) return std::nullopt;
    for (const std::string& sFolder : folders) {
      try {
        return "<" + sTag + ">\n" + ReadFile(sFolder + "/" + sFile) + "</" + sTag + ">";
      } catch (const ReadFileError&) {
        // The next one may have it.
      }
    }
    return std::nullopt;  // stays a link
  };
  const HTMLWriter oWriter([&](const Element& oElement) -> std::optional<std::string> {
    if (oElement.tagName() == "link" && oElement.getAttribute("rel") == "stylesheet") {
      return Inlined("style", oElement.getAttribute("href"));
    }
    if (oElement.tagName() == "script") return Inlined("script", oElement.getAttribute("src"));
    return std::nullopt;
  });
  const Element* oRoot = oDocument.documentElement();
  return "<!DOCTYPE html>\n" + (oRoot == nullptr ? std::string() : oWriter.Outer(*oRoot)) + "\n";
}

}  // namespace ZELWbr3::Headless
