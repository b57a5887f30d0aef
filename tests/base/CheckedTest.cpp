#include "zelwbr3/base/Checked.h"

#include <gtest/gtest.h>

#include <limits>

namespace ZELWbr3 {

TEST(Checked, NeverWraps) {
  constexpr Long lMax = std::numeric_limits<std::int32_t>::max();
  EXPECT_THROW(lMax + 1, std::overflow_error);
  EXPECT_THROW(1 - Long(std::numeric_limits<std::int32_t>::min()), std::overflow_error);
  EXPECT_THROW(lMax * lMax, std::overflow_error);
  EXPECT_THROW(Integer(32767) + Integer(1), std::overflow_error);
  EXPECT_THROW(Long(std::uint32_t{4294967295u}), std::overflow_error);
  Long lValue = lMax;
  EXPECT_THROW(++lValue, std::overflow_error);
  EXPECT_THROW(lValue += 1, std::overflow_error);
  EXPECT_EQ(lValue, lMax);
  EXPECT_EQ(lValue - lMax, 0);
}

}  // namespace ZELWbr3
