#include "zelwbr3/framework/clsSize.h"

#include "zelwbr3/testing/TestLocale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

class clsSizeTest : public testing::Test {
 protected:
  Testing::TestLocale Locale;
  clsSize Size{Locale};
};

}  // namespace

TEST_F(clsSizeTest, ConvertsBetweenAllUnits) {
  Size.Value(clsSize::Bytes, 8192);
  EXPECT_EQ(Size.Value(clsSize::KB), 8);
  EXPECT_EQ(Size.Value(clsSize::MB), 8 / 1024.0);
  Size.Value(clsSize::GB, 1.5);
  EXPECT_EQ(Size.Value(clsSize::Pages), 1.5 * 1024 * 1024 / 8);
  Size.Value(clsSize::Pages, 3);
  EXPECT_EQ(Size.Value(clsSize::Bytes), 3 * 8192);
  EXPECT_EQ(Size.Value(clsSize::GB), 24.0 / 1024 / 1024);
  EXPECT_EQ(Size.Value(5), 0);
  EXPECT_THROW(Size.Value(-1), std::out_of_range);
  EXPECT_THROW(Size.Value(5, 1.0), std::out_of_range);
  EXPECT_EQ(Size.Value(clsSize::Pages), 3);  // the refused value left the old one
}

TEST_F(clsSizeTest, OnlyBytesUseThePageSizeInBytes) {
  Size.PageBytes(1536);  // 1.5 KB count as 2
  Size.Value(clsSize::Pages, 4);
  EXPECT_EQ(Size.Value(clsSize::Bytes), 6144);
  EXPECT_EQ(Size.Value(clsSize::KB), 8);
  Size.Value(clsSize::Bytes, 6144);
  EXPECT_EQ(Size.Value(clsSize::Pages), 4);
  Size.Value(clsSize::KB, 6);
  EXPECT_EQ(Size.Value(clsSize::Pages), 3);
  Size.PageBytes(2560);  // 2.5 KB count as 2, too
  EXPECT_EQ(Size.Value(clsSize::Pages), 3);
  Size.PageBytes(4096);
  EXPECT_EQ(Size.Value(clsSize::Pages), 1.5);
  Size.PageBytes(0);  // an instance that does not know its page size
  EXPECT_EQ(Size.ValueStr(clsSize::Pages, true), "- Pages");
}

TEST_F(clsSizeTest, RoundsToWholePagesInEveryUnit) {
  Size.RoundToPages(clsSize::Up);
  Size.Value(clsSize::Bytes, 1);
  EXPECT_EQ(Size.Value(clsSize::Bytes), 8192);
  Size.Value(clsSize::KB, 16);
  EXPECT_EQ(Size.Value(clsSize::KB), 16);
  Size.Value(clsSize::GB, 17 / 1024.0 / 1024);
  EXPECT_EQ(Size.Value(clsSize::Pages), 3);
  Size.Value(clsSize::Pages, 2.25);
  EXPECT_EQ(Size.Value(clsSize::Pages), 3);

  Size.RoundToPages(clsSize::Nearest);  // half to even
  for (const auto& [dPages, dRounded] : {std::pair(0.5, 0.0), {1.5, 2.0}, {2.5, 2.0}, {2.51, 3.0}, {-0.5, 0.0}}) {
    Size.Value(clsSize::Pages, dPages);
    EXPECT_EQ(Size.Value(clsSize::Pages), dRounded) << dPages;
  }
  Size.RoundToPages(clsSize::None);
  EXPECT_EQ(Size.Value(clsSize::Pages), -0.5);
}

TEST_F(clsSizeTest, FormatsInTheUsersNotation) {
  EXPECT_EQ(Size.NumberStr(1234.5, clsSize::MB, clsSize::MB, true), "1,234.50 MB");
  EXPECT_EQ(Size.NumberStr(1234.5, clsSize::MB, clsSize::Bytes, true), "1,294,467,072 Bytes");
  EXPECT_EQ(Size.NumberStr(1, clsSize::Pages, clsSize::Pages, false), "1");
  EXPECT_EQ(Size.NumberStr(-1234567, clsSize::KB, clsSize::KB, true), "-1,234,567 KB");
  Size.NumDigitsAfterDecimals(clsSize::MB, 0);
  EXPECT_EQ(Size.NumberStr(0.5, clsSize::MB, clsSize::MB, true), "1 MB");
  Locale.Decimal = ",";
  Locale.Thousands = ".";
  EXPECT_EQ(Size.NumberStr(1234.5, clsSize::GB, clsSize::GB, true), "1.234,50 GB");

  for (const int lUnit : {-1, 6}) {
    EXPECT_THROW(Size.NumDigitsAfterDecimals(lUnit), std::out_of_range);
    EXPECT_THROW(Size.NumDigitsAfterDecimals(lUnit, 1), std::out_of_range);
    EXPECT_THROW(Size.ValueStr(lUnit, true), std::out_of_range);
  }
  EXPECT_THROW(Size.NumDigitsAfterDecimals(clsSize::MB, -1), std::out_of_range);
  EXPECT_THROW(Size.NumDigitsAfterDecimals(clsSize::MB, 1'000'000), std::out_of_range);
}

TEST_F(clsSizeTest, AutomaticTakesTheLargestUnitThatIsAtLeastOne) {
  const std::tuple<double, int, const char*> cases[] = {
      {1023, clsSize::KB, "1,023 KB"},        {1024, clsSize::KB, "1.00 MB"},
      {1023.999, clsSize::MB, "1,024.00 MB"}, {1024, clsSize::MB, "1.00 GB"},
      {1023, clsSize::Bytes, "1,023 Bytes"},  {0, clsSize::GB, "0 Bytes"},
      {128, clsSize::Pages, "1.00 MB"},       {-5, clsSize::GB, "-5,368,709,120 Bytes"},
  };
  for (const auto& [dValue, lUnit, sText] : cases) {
    EXPECT_EQ(Size.NumberStr(dValue, lUnit, clsSize::Automatic, true), sText);
  }
}

TEST_F(clsSizeTest, TakesWhatConvertsToACurrencyValue) {
  const auto Stored = [&](const clsSize::Variant& vValue) {
    Size.ValueVar(clsSize::KB, vValue);
    return Size.Value(clsSize::KB);
  };
  EXPECT_EQ(Stored(std::string("1,234.56789")), 1234.5679);
  EXPECT_EQ(Stored(std::string(" -12 ")), -12);
  EXPECT_EQ(Stored(std::string("+1.5e3")), 1500);
  EXPECT_EQ(Stored(0.00005), 0);  // four decimals, half to even
  EXPECT_EQ(Stored(0.00025), 0.0002);
  EXPECT_EQ(Stored(0.00035), 0.0004);
  EXPECT_EQ(Stored(true), -1);
  EXPECT_EQ(Stored(Long(7)), 7);
  EXPECT_EQ(Stored(922337203685477.5), 922337203685477.5);
  for (const char* sText : {"", " ", "abc", "12 KB", "1 2", "+-5", "--5", "1.2.3", "inf", "nan", "0x10", "e5", "1e999",
                            "922337203685478"}) {
    EXPECT_EQ(Stored(std::string(sText)), 0) << sText;
  }
  EXPECT_EQ(Stored(std::monostate()), 0);
  EXPECT_EQ(Stored(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(Stored(-1e300), 0);
  EXPECT_EQ(Size.Value(clsSize::Bytes), 0);
  Locale.Decimal = ",";
  Locale.Thousands = ".";
  EXPECT_EQ(Stored(std::string("1.234,5")), 1234.5);
}

}  // namespace ZELWbr3
