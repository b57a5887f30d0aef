#include "zelwbr3/dom/Markup.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ZELWbr3 {

namespace {

class Parser {
 public:
  Parser(DocumentBuilder& oBuilder, std::string_view sMarkup) : m_oBuilder(oBuilder), m_sMarkup(sMarkup) {}

  void Run() {
    while (m_iPosition < m_sMarkup.size()) {
      if (Skip("</")) {
        EndTag();
      } else if (Skip("<")) {
        StartTag();
      } else {
        m_oBuilder.Text(Text("<"));
      }
    }
    if (!m_open.empty()) Fail("</" + m_open.back() + ">");
  }

 private:
  void StartTag() {
    const std::string sTag = Name();
    m_oBuilder.Begin(sTag);
    while (Skip(" ")) {
      const std::string sName = Name();
      if (!Skip("=\"")) Fail("=\"");
      m_oBuilder.Attribute(sName, Text("\""));
      if (!Skip("\"")) Fail("\"");
    }
    if (!Skip(">")) Fail(">");
    if (IsVoid(sTag)) {
      m_oBuilder.End();
    } else {
      m_open.push_back(sTag);
    }
  }

  void EndTag() {
    const std::string sTag = Name();
    if (m_open.empty() || m_open.back() != sTag || !Skip(">")) {
      Fail(m_open.empty() ? "no end tag" : "</" + m_open.back() + ">");
    }
    m_open.pop_back();
    m_oBuilder.End();
  }

  std::string Name() {
    const auto IsNameCharacter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'; };
    const auto iStart = m_iPosition;
    while (m_iPosition < m_sMarkup.size() && IsNameCharacter(m_sMarkup[m_iPosition])) ++m_iPosition;
    if (m_iPosition == iStart) Fail("a name in lower case");
    return std::string(m_sMarkup.substr(iStart, m_iPosition - iStart));
  }

  /// Text up to one of the stop characters, entities resolved.
  std::string Text(std::string_view sStop) {
    static constexpr std::array<std::pair<std::string_view, char>, 5> Entities = {
        {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&#39;", '\''}}};
    std::string sText;
    while (m_iPosition < m_sMarkup.size() && sStop.find(m_sMarkup[m_iPosition]) == std::string_view::npos) {
      if (m_sMarkup[m_iPosition] != '&') {
        sText += m_sMarkup[m_iPosition++];
        continue;
      }
      const auto it = std::ranges::find_if(Entities, [this](const auto& oEntity) { return Skip(oEntity.first); });
      if (it == Entities.end()) Fail("a basic entity");
      sText += it->second;
    }
    return sText;
  }

  bool Skip(std::string_view sExpected) {
    if (!m_sMarkup.substr(m_iPosition).starts_with(sExpected)) return false;
    m_iPosition += sExpected.size();
    return true;
  }

  static bool IsVoid(const std::string& sTag) { return sTag == "br" || sTag == "img" || sTag == "hr" || sTag == "wbr"; }

  [[noreturn]] void Fail(const std::string& sExpected) const {
    throw std::invalid_argument("Expected " + sExpected + " at character " + std::to_string(m_iPosition) +
                                " of the markup " + std::string(m_sMarkup.substr(0, 200)));
  }

  DocumentBuilder& m_oBuilder;
  std::string_view m_sMarkup;
  std::size_t m_iPosition = 0;
  std::vector<std::string> m_open;
};

}  // namespace

void BuildMarkup(DocumentBuilder& oBuilder, std::string_view sMarkup) { Parser(oBuilder, sMarkup).Run(); }

}  // namespace ZELWbr3
