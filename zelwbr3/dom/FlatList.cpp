#include "zelwbr3/dom/FlatList.h"

#include "zelwbr3/base/Text.h"

#include <charconv>
#include <stdexcept>

namespace ZELWbr3 {

void FlatListWriter::Add(std::uint32_t lNumber) {
  char sDigits[10];
  const auto oEnd = std::to_chars(std::begin(sDigits), std::end(sDigits), lNumber).ptr;
  m_sList += m_sList.empty() ? '[' : ',';
  m_sList.append(sDigits, oEnd);
}

void FlatListWriter::Add(std::string_view sText) {
  static constexpr char Hex[] = "0123456789abcdef";
  m_sList += m_sList.empty() ? '[' : ',';
  m_sList += '"';
  // Runs of bytes that need no escape are copied in one go.
  std::size_t iStart = 0;
  for (std::size_t i = 0; i < sText.size(); ++i) {
    const auto c = static_cast<unsigned char>(sText[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    m_sList.append(sText, iStart, i - iStart);
    iStart = i + 1;
    if (c < 0x20) {
      m_sList += "\\u00";
      m_sList += Hex[c >> 4];
      m_sList += Hex[c & 15];
    } else {
      m_sList += '\\';
      m_sList += static_cast<char>(c);
    }
  }
  m_sList.append(sText, iStart);
  m_sList += '"';
}

std::string FlatListWriter::Take() {
  std::string sList = m_sList.empty() ? "[" : std::move(m_sList);
  m_sList.clear();
  sList += ']';
  return sList;
}

FlatListReader::FlatListReader(std::string_view sList) : m_sList(sList) {
  if (sList.empty() || sList.front() != '[' || sList.back() != ']') Fail("a list in square brackets");
  m_iPosition = 1;
  m_bAtEnd = sList.size() == 2;
}

std::uint32_t FlatListReader::Number() {
  std::uint32_t lNumber = 0;
  const char* pBegin = m_sList.data() + m_iPosition;
  const auto [pEnd, eError] = std::from_chars(pBegin, m_sList.data() + m_sList.size(), lNumber);
  if (m_bAtEnd || eError != std::errc()) Fail("a whole number");
  m_iPosition += static_cast<std::size_t>(pEnd - pBegin);
  Separator();
  return lNumber;
}

std::string FlatListReader::Text() {
  if (m_bAtEnd || m_sList[m_iPosition] != '"') Fail("a string");
  ++m_iPosition;
  const auto Hex4 = [this] {
    if (m_iPosition + 4 > m_sList.size()) Fail("four hexadecimal digits");
    char32_t lUnit = 0;
    const char* pBegin = m_sList.data() + m_iPosition;
    std::uint32_t lValue = 0;
    const auto [pEnd, eError] = std::from_chars(pBegin, pBegin + 4, lValue, 16);
    if (eError != std::errc() || pEnd != pBegin + 4) Fail("four hexadecimal digits");
    lUnit = lValue;
    m_iPosition += 4;
    return lUnit;
  };

  std::string sText;
  while (true) {
    const auto iStop = m_sList.find_first_of("\"\\", m_iPosition);
    if (iStop == std::string_view::npos) Fail("the end of the string");
    sText.append(m_sList, m_iPosition, iStop - m_iPosition);
    m_iPosition = iStop + 1;
    if (m_sList[iStop] == '"') break;

    if (m_iPosition >= m_sList.size()) Fail("an escaped character");
    switch (const char c = m_sList[m_iPosition++]) {
      case 'n':
        sText += '\n';
        break;
      case 't':
        sText += '\t';
        break;
      case 'r':
        sText += '\r';
        break;
      case 'b':
        sText += '\b';
        break;
      case 'f':
        sText += '\f';
        break;
      case '"':
      case '\\':
      case '/':
        sText += c;
        break;
      case 'u': {
        char32_t lCodePoint = Hex4();
        const bool bHigh = lCodePoint >= 0xD800 && lCodePoint < 0xDC00;
        if (bHigh && m_sList.substr(m_iPosition, 2) == "\\u") {
          const auto iBefore = m_iPosition;
          m_iPosition += 2;
          const char32_t lLow = Hex4();
          if (lLow >= 0xDC00 && lLow < 0xE000) {
            lCodePoint = 0x10000 + ((lCodePoint - 0xD800) << 10) + (lLow - 0xDC00);
          } else {
            m_iPosition = iBefore;
          }
        }
        ZELWbr3::Text::AppendCodePoint(sText, lCodePoint);
        break;
      }
      default:
        Fail("an escaped character");
    }
  }
  Separator();
  return sText;
}

void FlatListReader::Separator() {
  if (m_iPosition + 1 == m_sList.size()) {
    m_bAtEnd = true;
  } else if (m_iPosition < m_sList.size() && m_sList[m_iPosition] == ',') {
    ++m_iPosition;
  } else {
    Fail("a comma or the end of the list");
  }
}

void FlatListReader::Fail(const char* sExpected) const {
  throw std::invalid_argument("Expected " + std::string(sExpected) + " at byte " + std::to_string(m_iPosition) +
                              " of a list of " + std::to_string(m_sList.size()) + " bytes");
}

}  // namespace ZELWbr3
