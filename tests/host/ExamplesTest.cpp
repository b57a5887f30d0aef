#include "tests/host/Run.h"
#include "tests/support/Picture.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {

TEST(Examples, AnInstanceOfOnesOwnIsShownWithItsFigures) {
  const Ended oEnded = RunProgram(OWN_INSTANCE, {});
  EXPECT_EQ(oEnded.Exit, 0) << oEnded.Err;
  const std::string sPicture = Picture(*Headless::ParseHTML(oEnded.Out));
  EXPECT_NE(sPicture.find("\nThe root file system\nMounted\n"), std::string::npos) << sPicture;
  EXPECT_NE(sPicture.find("percent="), std::string::npos);
  EXPECT_EQ(sPicture.find("percent=-1} Total"), std::string::npos);
}

}  // namespace ZELWbr3::Testing
