#include "zelwbr3/framework/modFormat.h"

#include "zelwbr3/framework/modLocal.h"
#include "zelwbr3/testing/TestLocale.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace ZELWbr3::modFormat {

namespace {

constexpr auto Infinity = std::numeric_limits<double>::infinity();
constexpr auto LongMin = std::numeric_limits<std::int32_t>::min();
constexpr auto LongMax = std::numeric_limits<std::int32_t>::max();

class modFormatTest : public testing::Test {
 protected:
  Testing::TestLocale Locale;
};

}  // namespace

TEST_F(modFormatTest, RoundsHalfAwayFromZeroOnTheDecimalDigits) {
  const std::tuple<double, int, const char*> cases[] = {{1.005, 2, "1.01"},
                                                        {-1.005, 2, "-1.01"},
                                                        {2.675, 2, "2.68"},
                                                        {0.5, 0, "1"},
                                                        {2.5, 0, "3"},
                                                        {0.49999, 0, "0"},
                                                        {-0.4, 0, "0"},
                                                        {-0.0, 2, "0.00"},
                                                        {-0.004, 2, "0.00"},
                                                        {9.995, 2, "10.00"},
                                                        {1e-300, 3, "0.000"},
                                                        {123456.789, 1, "123456.8"},
                                                        {1e21, 0, "1000000000000000000000"},
                                                        {0.1 + 0.2, 17, "0.30000000000000004"}};
  for (const auto& [dValue, iDecimals, sText] : cases) EXPECT_EQ(Fixed(dValue, iDecimals, Locale), sText);
  EXPECT_EQ(Fixed(0.1f, 4, Locale), "0.1000");
  EXPECT_EQ(Fixed(33.335f, 2, Locale), "33.34");  // with its own digits, not a double's 33.33499908
  EXPECT_EQ(Fixed(std::numeric_limits<double>::max(), 0, Locale).size(), 309u);
  for (const double dNone : {Infinity, -Infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(Number(dNone, 2, Locale), "-");
  }
}

TEST_F(modFormatTest, GroupsAsTheUserDoes) {
  EXPECT_EQ(Number(1234567.891, 2, Locale), "1,234,567.89");
  EXPECT_EQ(Number(-999.995, 2, Locale), "-1,000.00");
  EXPECT_EQ(Fixed(1234567.0, 0, Locale), "1234567");
  for (const auto& [sGroups, sNumber] : {std::pair("3;2;0", "1,23,45,67,890"),
                                         {"3", "1234567,890"},
                                         {"3;2", "12345,67,890"},
                                         {"", "1234567890"},
                                         {"0", "1234567890"}}) {
    Locale.Groups = sGroups;
    EXPECT_EQ(Number(1234567890, 0, Locale), sNumber) << sGroups;
  }
  Locale.Groups = "3;0";
  Locale.Thousands = "\xE2\x80\xAF";
  Locale.Decimal = "\xD9\xAB";
  EXPECT_EQ(Number(1234567.5, 1, Locale),
            "1\xE2\x80\xAF"
            "234\xE2\x80\xAF"
            "567\xD9\xAB"
            "5");
  Locale.Thousands = std::string("'\0\0", 3);  // padded as a system may hand it out
  EXPECT_EQ(Number(1234, 0, Locale), "1'234");
}

TEST_F(modFormatTest, FillsPatterns) {
  EXPECT_EQ(Padded(65, 5), "00065");
  EXPECT_EQ(Padded(123456, 5), "123456");
  EXPECT_EQ(Padded(-7, 5), "-00007");
  EXPECT_EQ(Padded(LongMin, 5), "-2147483648");
  EXPECT_EQ(Grouped(0, Locale), "");
  EXPECT_EQ(Grouped(LongMin, Locale), "-2,147,483,648");
  EXPECT_EQ(PaddedGrouped(0, Locale), "00,000,000");
  EXPECT_EQ(PaddedGrouped(LongMax, Locale), "2,147,483,647");
  Locale.Groups = "3;2;0";  // this pattern is in threes everywhere
  EXPECT_EQ(PaddedGrouped(1234, Locale), "00,001,234");
  Locale.Thousands = "";
  EXPECT_EQ(PaddedGrouped(1234, Locale), "00001234");
}

TEST_F(modFormatTest, ReadsLeadingNumbers) {
  const std::pair<const char*, double> cases[] = {
      {"12", 12},  {" 1 2 .5kB", 12.5}, {"-3", -3},     {"+4x", 4}, {"- 5", -5}, {"1e3", 1000}, {"1e", 1},
      {".5", 0.5}, {"5.", 5},           {"1.5.5", 1.5}, {"", 0},    {"x1", 0},   {"-", 0},      {".", 0},
      {"+-5", 0},  {"inf", 0},          {"nan", 0},     {"\t7", 0}, {"1,5", 1},
  };
  for (const auto& [sText, dValue] : cases) EXPECT_EQ(Val(sText), dValue) << sText;

  EXPECT_EQ(modLocal::LocaleNumber(Locale, Locale.UserDefaultLCID(), 17), 2);
  Locale.Places = std::string("3\0x", 3);
  EXPECT_EQ(modLocal::LocaleNumber(Locale, Locale.UserDefaultLCID(), 17), 3);
  EXPECT_EQ(modLocal::LocaleString(Locale, Locale.UserDefaultLCID(), 17), "3");
  Locale.Places = "many";
  EXPECT_EQ(modLocal::LocaleNumber(Locale, Locale.UserDefaultLCID(), 17), 0);
  EXPECT_EQ(modLocal::LocaleString(Locale, 1, 14), "");
}

TEST_F(modFormatTest, RoundsToLongHalfToEvenAndNeverWraps) {
  for (const auto& [dValue, lLong] : {std::pair(0.5, 0),
                                      {1.5, 2},
                                      {2.5, 2},
                                      {-0.5, 0},
                                      {-1.5, -2},
                                      {-2.5, -2},
                                      {2147483647.5 - 1, 2147483646},
                                      {-2147483648.5, LongMin},
                                      {0.49999999999999994, 0}}) {
    EXPECT_EQ(ToLong(dValue), lLong) << dValue;
  }
  for (const double dTooBig :
       {2147483647.5, -2147483649.0, 1e18, -1e300, Infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(ToLong(dTooBig), std::overflow_error);
  }
}

}  // namespace ZELWbr3::modFormat
