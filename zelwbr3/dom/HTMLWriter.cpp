#include "zelwbr3/dom/HTMLWriter.h"

#include "zelwbr3/base/Text.h"

#include <algorithm>
#include <array>

namespace ZELWbr3 {

namespace {

template <std::size_t N>
bool IsOneOf(const std::array<std::string_view, N>& tags, const std::string& sTag) {
  return std::ranges::find(tags, sTag) != tags.end();
}

bool IsVoid(const std::string& sTag) {
  static constexpr std::array<std::string_view, 13> Tags = {"area",  "base", "br",   "col",    "embed", "hr", "img",
                                                            "input", "link", "meta", "source", "track", "wbr"};
  return IsOneOf(Tags, sTag);
}

/// Elements whose text is not escaped: a parser does not resolve entities there.
bool IsRaw(const std::string& sTag) {
  static constexpr std::array<std::string_view, 2> Tags = {"script", "style"};
  return IsOneOf(Tags, sTag);
}

/// A parser drops the first line feed in these.
bool SwallowsLineFeed(const std::string& sTag) {
  static constexpr std::array<std::string_view, 3> Tags = {"pre", "textarea", "listing"};
  return IsOneOf(Tags, sTag);
}

}  // namespace

std::string HTMLWriter::Outer(const Element& oElement) const {
  std::string sOut;
  WriteElement(sOut, oElement);
  return sOut;
}

std::string HTMLWriter::Inner(const Element& oElement) const {
  std::string sOut;
  WriteContent(sOut, oElement);
  return sOut;
}

void HTMLWriter::WriteContent(std::string& sOut, const Element& oElement) const {
  const bool bRaw = IsRaw(oElement.tagName());
  const auto Write = [&](const std::string& sText) { sOut += bRaw ? sText : Text::EscapeHTML(sText); };
  if (SwallowsLineFeed(oElement.tagName()) && oElement.text().starts_with('\n')) sOut += '\n';
  Write(oElement.text());
  oElement.ForEachChild([&](const Element& oChild) {
    WriteElement(sOut, oChild);
    Write(oChild.tail());
  });
}

void HTMLWriter::WriteElement(std::string& sOut, const Element& oElement) const {
  if (m_oReplacement) {
    if (const auto sReplacement = m_oReplacement(oElement)) {
      sOut += *sReplacement;
      return;
    }
  }
  sOut += '<' + oElement.tagName();
  for (const auto& [sName, sValue] : oElement.attributes()) {
    sOut += ' ' + sName;
    sOut += "=\"" + Text::EscapeHTML(sValue) + '"';
  }
  sOut += '>';
  if (IsVoid(oElement.tagName())) return;
  WriteContent(sOut, oElement);
  sOut += "</" + oElement.tagName() + '>';
}

}  // namespace ZELWbr3
