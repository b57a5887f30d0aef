#include "zelwbr3/base/Text.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Text {

TEST(Text, CleanReplacesEveryMaximalInvalidSequenceOnce) {
  const std::string R = "\xEF\xBF\xBD";
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"plain & <b>", "plain & <b>"},
      {"\x7F\x01\n\t", "\x7F\x01\n\t"},
      {std::string("a\0b", 3), "a" + R + "b"},
      {"gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80", "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80"},
      {"\xE2\x80\xA8\xE2\x80\xA9", "\xE2\x80\xA8\xE2\x80\xA9"},  // line separators are text
      {"\xE0\xA0\x80\xED\x9F\xBF", "\xE0\xA0\x80\xED\x9F\xBF"},  // the first of three bytes, the last before surrogates
      {"\xEF\xBF\xBF\xF4\x8F\xBF\xBF", "\xEF\xBF\xBF\xF4\x8F\xBF\xBF"},
      {"\x80", R},  // a continuation alone
      {"\xBF\x80z", R + R + "z"},
      {"\xC0\xAF", R + R},                                  // overlong, two bytes
      {"\xE0\x9F\xBF", R + R + R},                          // overlong, three bytes
      {"\xF0\x8F\xBF\xBF", R + R + R + R},                  // overlong, four bytes
      {"\xED\xA0\x80\xED\xB0\x80", R + R + R + R + R + R},  // a surrogate pair
      {"\xF4\x90\x80\x80", R + R + R + R},                  // beyond U+10FFFF
      {"\xF5\x80\x80\x80", R + R + R + R},
      {"\xFE\xFF", R + R},
      {"\xC3", R},  // cut off at the end
      {"\xE2\x82", R},
      {"\xF0\x9F\x98", R},
      {"\xC3z", R + "z"},  // cut off by another character
      {"\xE2\x82z", R + "z"},
      {"\xF0\x9F\x98z", R + "z"},
      {"\xE2\x82\xE2\x82\xAC", R + "\xE2\x82\xAC"},
      {"\xE1\x80\xC3\xBC", R + "\xC3\xBC"},
  };
  for (const auto& [sText, sClean] : cases) {
    EXPECT_EQ(Clean(sText), sClean);
    EXPECT_EQ(Clean(Clean(sText)), sClean);
  }
}

TEST(Text, IsolatedKeepsANameFromTurningTheSentenceAround) {
  const std::string F = "\u2068", P = "\u2069", Override = "\u202E";
  EXPECT_EQ(Isolated("Plain \u00FC \u20AC"), "Plain \u00FC \u20AC");
  EXPECT_EQ(Isolated(Override + "gpj.exe"), F + Override + "gpj.exe" + P);
  EXPECT_EQ(Isolated("\u05D0\u05D1"), F + "\u05D0\u05D1" + P);
  // What the name itself opens or ends does not end its isolation.
  EXPECT_EQ(Isolated(P + Override), F + F + P + Override + P);
  EXPECT_EQ(Isolated(F + "x"), F + F + "x" + P + P);
}

}  // namespace ZELWbr3::Text
