#include "zelwbr3/base/Text.h"

#include <algorithm>

namespace ZELWbr3::Text {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD";

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

/// The first bytes of a text: a well-formed sequence of Length bytes, or the
/// longest part of an ill-formed one.
struct Sequence {
  std::size_t Length;
  bool WellFormed;
};

Sequence Measure(std::string_view sText) {
  const auto cLead = static_cast<unsigned char>(sText[0]);
  if (cLead < 0x80) return {1, cLead != 0};
  std::size_t iLength = 0;
  unsigned char cLow = 0x80;
  unsigned char cHigh = 0xBF;
  if (cLead >= 0xC2 && cLead <= 0xDF) {
    iLength = 2;
  } else if (cLead >= 0xE0 && cLead <= 0xEF) {
    iLength = 3;
    if (cLead == 0xE0) cLow = 0xA0;   // overlong
    if (cLead == 0xED) cHigh = 0x9F;  // surrogates
  } else if (cLead >= 0xF0 && cLead <= 0xF4) {
    iLength = 4;
    if (cLead == 0xF0) cLow = 0x90;   // overlong
    if (cLead == 0xF4) cHigh = 0x8F;  // beyond U+10FFFF
  } else {
    return {1, false};
  }
  for (std::size_t i = 1; i < iLength; ++i) {
    if (i >= sText.size()) return {i, false};
    const auto c = static_cast<unsigned char>(sText[i]);
    const bool bFits = i == 1 ? (c >= cLow && c <= cHigh) : IsContinuation(c);
    if (!bFits) return {i, false};
  }
  return {iLength, true};
}

/// The code point of a well-formed sequence.
char32_t CodePoint(std::string_view sSequence) {
  const auto cLead = static_cast<unsigned char>(sSequence[0]);
  if (sSequence.size() == 1) return cLead;
  char32_t lCodePoint = cLead & (0x7F >> sSequence.size());
  for (const char c : sSequence.substr(1)) lCodePoint = lCodePoint << 6 | (static_cast<unsigned char>(c) & 0x3F);
  return lCodePoint;
}

/// True for right-to-left characters and for bidirectional controls.
bool TurnsDirection(char32_t lCodePoint) {
  struct Range {
    char32_t First;
    char32_t Last;
  };
  static constexpr Range Ranges[] = {
      {0x0590, 0x08FF},    // Hebrew, Arabic, Syriac, Thaana and their neighbours
      {0x200E, 0x200F},    // marks
      {0x202A, 0x202E},    // embeddings and overrides
      {0x2066, 0x2069},    // isolates
      {0xFB1D, 0xFDFF},    // presentation forms
      {0xFE70, 0xFEFF},    //
      {0x10800, 0x10FFF},  // historic scripts
      {0x1E800, 0x1EFFF},  //
  };
  return std::ranges::any_of(Ranges, [&](const Range& o) { return lCodePoint >= o.First && lCodePoint <= o.Last; });
}

}  // namespace

std::string Clean(std::string_view sText) {
  const auto IsPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\0'; };
  if (std::ranges::all_of(sText, IsPlain)) return std::string(sText);

  std::string sClean;
  sClean.reserve(sText.size());
  while (!sText.empty()) {
    const Sequence oSequence = Measure(sText);
    sClean += oSequence.WellFormed ? sText.substr(0, oSequence.Length) : Replacement;
    sText.remove_prefix(oSequence.Length);
  }
  return sClean;
}

std::string Trim(std::string_view sText, std::string_view sBlanks) {
  const auto iFirst = sText.find_first_not_of(sBlanks);
  if (iFirst == std::string_view::npos) return {};
  return std::string(sText.substr(iFirst, sText.find_last_not_of(sBlanks) - iFirst + 1));
}

std::string OneLine(std::string_view sText) {
  std::string sLine(sText);
  for (char& c : sLine) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  for (const std::string_view sEnd : {"\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    for (auto i = sLine.find(sEnd); i != std::string::npos; i = sLine.find(sEnd, i)) sLine.replace(i, sEnd.size(), " ");
  }
  return sLine;
}

std::string Isolated(std::string_view sName) {
  constexpr std::string_view FirstStrongIsolate = "\xE2\x81\xA8";
  constexpr std::string_view PopIsolate = "\xE2\x81\xA9";
  bool bTurns = false;
  int iOpen = 0;      // isolates that the name begins and does not end
  int iUnopened = 0;  // ends of isolates that it did not begin
  for (std::string_view sRest = sName; !sRest.empty();) {
    const Sequence oSequence = Measure(sRest);
    const char32_t lCodePoint = oSequence.WellFormed ? CodePoint(sRest.substr(0, oSequence.Length)) : 0;
    sRest.remove_prefix(oSequence.Length);
    bTurns = bTurns || TurnsDirection(lCodePoint);
    if (lCodePoint >= 0x2066 && lCodePoint <= 0x2068) ++iOpen;
    if (lCodePoint == 0x2069) iOpen > 0 ? --iOpen : ++iUnopened;
  }
  if (!bTurns) return std::string(sName);
  std::string sIsolated;
  for (int i = 0; i <= iUnopened; ++i) sIsolated += FirstStrongIsolate;
  sIsolated += sName;
  for (int i = 0; i <= iOpen; ++i) sIsolated += PopIsolate;
  return sIsolated;
}

std::string EscapeHTML(std::string_view sText) {
  std::string sEscaped;
  sEscaped.reserve(sText.size());
  for (const char c : sText) {
    switch (c) {
      case '&':
        sEscaped += "&amp;";
        break;
      case '<':
        sEscaped += "&lt;";
        break;
      case '>':
        sEscaped += "&gt;";
        break;
      case '"':
        sEscaped += "&quot;";
        break;
      case '\r':
        sEscaped += "&#13;";
        break;  // a parser would turn it into a line feed
      default:
        sEscaped += c;
    }
  }
  return sEscaped;
}

std::string CSVField(std::string sText) {
  if (sText.find_first_of("\",\r\n") == std::string::npos) return sText;
  for (std::size_t i = 0; (i = sText.find('"', i)) != std::string::npos; i += 2) sText.insert(i, 1, '"');
  return '"' + sText + '"';
}

void AppendCodePoint(std::string& sText, char32_t lCodePoint) {
  const auto Byte = [&](char32_t lBits) { sText += static_cast<char>(lBits); };
  if (lCodePoint > 0x10FFFF || (lCodePoint >= 0xD800 && lCodePoint <= 0xDFFF)) {
    sText += Replacement;
  } else if (lCodePoint < 0x80) {
    Byte(lCodePoint);
  } else if (lCodePoint < 0x800) {
    Byte(0xC0 | lCodePoint >> 6);
    Byte(0x80 | (lCodePoint & 0x3F));
  } else if (lCodePoint < 0x10000) {
    Byte(0xE0 | lCodePoint >> 12);
    Byte(0x80 | (lCodePoint >> 6 & 0x3F));
    Byte(0x80 | (lCodePoint & 0x3F));
  } else {
    Byte(0xF0 | lCodePoint >> 18);
    Byte(0x80 | (lCodePoint >> 12 & 0x3F));
    Byte(0x80 | (lCodePoint >> 6 & 0x3F));
    Byte(0x80 | (lCodePoint & 0x3F));
  }
}

}  // namespace ZELWbr3::Text
