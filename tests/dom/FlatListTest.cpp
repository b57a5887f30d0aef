#include "zelwbr3/dom/FlatList.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3 {

TEST(FlatList, WritesWhatItReads) {
  std::string sAllControls;
  for (char c = 0; c < 0x20; ++c) sAllControls += c;
  const std::string texts[] = {
      "", "plain", "\"\\/\"", sAllControls, "</script><!--", "\xE2\x80\xA8 \xF0\x9F\x98\x80", "[]", "\\u0041"};
  FlatListWriter oWriter;
  EXPECT_TRUE(oWriter.Empty());
  oWriter.Add(0u);
  for (const std::string& sText : texts) oWriter.Add(sText);
  oWriter.Add(4294967295u);
  EXPECT_FALSE(oWriter.Empty());
  const std::string sList = oWriter.Take();
  EXPECT_TRUE(oWriter.Empty());
  EXPECT_EQ(sList.find_first_of(sAllControls), std::string::npos);

  FlatListReader oReader(sList);
  EXPECT_EQ(oReader.Number(), 0u);
  for (const std::string& sText : texts) EXPECT_EQ(oReader.Text(), sText);
  EXPECT_FALSE(oReader.AtEnd());
  EXPECT_EQ(oReader.Number(), 4294967295u);
  EXPECT_TRUE(oReader.AtEnd());
  EXPECT_THROW(oReader.Number(), std::invalid_argument);
  EXPECT_THROW(oReader.Text(), std::invalid_argument);

  EXPECT_EQ(oWriter.Take(), "[]");
  EXPECT_TRUE(FlatListReader("[]").AtEnd());
}

TEST(FlatList, ReadsEveryEscape) {
  FlatListReader oReader(
      R"(["\n\t\r\b\f\"\\\/","\u00e9\u20AC","\uD83D\uDE00","\ud83d","\ud83dx","\ud83d\u0041","\udE00"])");
  EXPECT_EQ(oReader.Text(), "\n\t\r\b\f\"\\/");
  EXPECT_EQ(oReader.Text(), "\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(oReader.Text(), "\xF0\x9F\x98\x80");
  // Half a pair stands for nothing, and costs nothing of what is beside it.
  EXPECT_EQ(oReader.Text(), "\xEF\xBF\xBD");
  EXPECT_EQ(oReader.Text(), "\xEF\xBF\xBDx");
  EXPECT_EQ(oReader.Text(),
            "\xEF\xBF\xBD"
            "A");
  EXPECT_EQ(oReader.Text(), "\xEF\xBF\xBD");
  EXPECT_TRUE(oReader.AtEnd());
}

TEST(FlatList, RefusesWhatIsNoFlatList) {
  const auto ReadAll = [](const char* sList) {
    FlatListReader oReader{std::string_view(sList)};
    const bool bText = sList[1] == '"';
    while (!oReader.AtEnd()) bText ? void(oReader.Text()) : void(oReader.Number());
  };
  for (const char* sList :
       {"",          "[",         "]",     "x",       "[1",        "1]",           "[,]",           "[1,]",
        "[1 ]",      "[ 1]",      "[1]]",  "[-1]",    "[1.5]",     "[4294967296]", "[null]",        "[[1]]",
        "[{}]",      "[1,\"a\"]", "[\"a]", "[\"a\\]", "[\"a\\\"]", "[\"\\u12]",    "[\"\\u12g4\"]", "[\"\\ud83d\\u]",
        "[\"\\x\"]", "[\"a\"b]",  "[\"]",  "[\"a\",]"}) {
    EXPECT_THROW(ReadAll(sList), std::invalid_argument) << sList;
  }
  try {
    ReadAll("[1,true]");
  } catch (const std::invalid_argument& oError) {
    EXPECT_STREQ(oError.what(), "Expected a whole number at byte 3 of a list of 8 bytes");
  }
}

}  // namespace ZELWbr3
