#include "framework/SystemLocale.h"

#include "framework/modFormat.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

constexpr Date When{2026, 2, 3, 14, 5, 6};

/// Locales of the machine, as the build has made them.
class SystemLocaleTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("LOCPATH", ZELWBR3_LOCALES, 1); }

  static SystemLocale Named(const char* sName) {
    try {
      return SystemLocale(std::locale(sName));
    } catch (const std::runtime_error&) {
      throw std::runtime_error(std::string("The locale ") + sName + " is not in " ZELWBR3_LOCALES);
    }
  }
  static std::string Item(const SystemLocale& oLocale, UserLocale::Item eItem) {
    return oLocale.LocaleInfo(oLocale.UserDefaultLCID(), static_cast<int>(eItem));
  }
};

}  // namespace

TEST_F(SystemLocaleTest, CLocaleGroupsNothing) {
  const SystemLocale oLocale(std::locale::classic());
  EXPECT_EQ(Item(oLocale, UserLocale::DecimalSeparator), ".");
  EXPECT_EQ(Item(oLocale, UserLocale::ThousandsSeparator), "");
  EXPECT_EQ(Item(oLocale, UserLocale::Grouping), "");
  EXPECT_EQ(Item(oLocale, UserLocale::DecimalPlaces), "2");
  EXPECT_EQ(oLocale.LocaleInfo(0, 99), "");
  EXPECT_EQ(modFormat::Number(1234567.891, 2, oLocale), "1234567.89");
  EXPECT_EQ(modFormat::PaddedGrouped(1234, oLocale), "00001234");
  EXPECT_EQ(modFormat::GeneralDate(When, oLocale), "02/03/26 14:05:06");
}

TEST_F(SystemLocaleTest, FollowsTheLocalesOfTheMachine) {
  struct Case {
    const char* Name;
    const char* Number;
    const char* Date;
  };
  const Case cases[] = {
      {"de_DE.UTF-8", "1.234.567,89", "03.02.2026 14:05:06"},
      {"en_US.UTF-8", "1,234,567.89", "02/03/2026 02:05:06 PM"},
      {"fr_FR.UTF-8",
       "1\xE2\x80\xAF"
       "234\xE2\x80\xAF"
       "567,89",
       "03/02/2026 14:05:06"},
      {"en_IN.UTF-8", "12,34,567.89", "03/02/26 02:05:06 PM"},
      {"hi_IN.UTF-8", "1,234,567.89",
       "3/2/26 02:05:06 \xE0\xA4\x85\xE0\xA4\xAA\xE0\xA4\xB0\xE0\xA4\xBE\xE0\xA4\xB9\xE0\xA5\x8D\xE0\xA4\xA8"},
  };
  for (const Case& oCase : cases) {
    SCOPED_TRACE(oCase.Name);
    const SystemLocale oLocale = Named(oCase.Name);
    EXPECT_EQ(modFormat::Number(1234567.891, 2, oLocale), oCase.Number);
    EXPECT_EQ(modFormat::GeneralDate(When, oLocale), oCase.Date);
  }
}

TEST_F(SystemLocaleTest, TakesTheEnvironmentAndSurvivesALocaleThatIsNotThere) {
  const char* pBefore = std::getenv("LC_ALL");
  const std::string sBefore = pBefore == nullptr ? "" : pBefore;
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(modFormat::Number(1234.5, 1, SystemLocale()), "1.234,5");
  setenv("LC_ALL", "tlh_QX.UTF-8", 1);
  EXPECT_EQ(modFormat::Number(1234.5, 1, SystemLocale()), "1234.5");
  pBefore == nullptr ? unsetenv("LC_ALL") : setenv("LC_ALL", sBefore.c_str(), 1);
}

}  // namespace ZELWbr3
