#include "zelwbr3/framework/SystemLocale.h"

#include "zelwbr3/framework/modFormat.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <tuple>

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
};

}  // namespace

TEST_F(SystemLocaleTest, FollowsTheLocalesOfTheMachine) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"C", "1234567.89", "02/03/26 14:05:06"},
      {"de_DE.UTF-8", "1.234.567,89", "03.02.2026 14:05:06"},
      {"en_US.UTF-8", "1,234,567.89", "02/03/2026 02:05:06 PM"},
      {"en_IN.UTF-8", "12,34,567.89", "03/02/26 02:05:06 PM"},
      {"hi_IN.UTF-8", "1,234,567.89",
       "3/2/26 02:05:06 \xE0\xA4\x85\xE0\xA4\xAA\xE0\xA4\xB0\xE0\xA4\xBE\xE0\xA4\xB9\xE0\xA5\x8D\xE0\xA4\xA8"},
  };
  for (const auto& [sName, sNumber, sDate] : cases) {
    SCOPED_TRACE(sName);
    const SystemLocale oLocale = Named(sName);
    EXPECT_EQ(modFormat::Number(1234567.891, 2, oLocale), sNumber);
    EXPECT_EQ(modFormat::GeneralDate(When, oLocale), sDate);
  }
}

TEST_F(SystemLocaleTest, TakesTheEnvironmentAndSurvivesALocaleThatIsNotThere) {
  const char* pBefore = std::getenv("LC_ALL");
  const std::string sBefore = pBefore == nullptr ? "" : pBefore;
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(modFormat::Number(1234.5, 1, SystemLocale()), "1.234,5");
  setenv("LC_ALL", "tlh_QX.UTF-8", 1);
  EXPECT_EQ(modFormat::Number(1234.5, 1, SystemLocale()), "1234.5");
  // A category that is missing does not take the others with it.
  unsetenv("LC_ALL");
  setenv("LC_TIME", "zz_ZZ", 1);
  setenv("LC_NUMERIC", "de_DE.UTF-8", 1);
  EXPECT_EQ(modFormat::Number(1234.5, 1, SystemLocale()), "1.234,5");
  unsetenv("LC_TIME");
  unsetenv("LC_NUMERIC");
  pBefore == nullptr ? unsetenv("LC_ALL") : setenv("LC_ALL", sBefore.c_str(), 1);
}

}  // namespace ZELWbr3
