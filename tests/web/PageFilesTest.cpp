#include "zelwbr3/testing/TempFolder.h"
#include "zelwbr3/web/PageFiles.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Web {

namespace {

std::string TextOf(const PageFiles& oFiles, const std::string& sURL) {
  Request oRequest;
  oRequest.Target = sURL.substr(0, sURL.find('#'));
  const Response oResponse = oFiles.Answer(oRequest);
  return oResponse.Body == nullptr ? "" : *oResponse.Body;
}

}  // namespace

TEST(PageFilesTest, FoldersStandSideBySideAndTheFirstOneWins) {
  const Testing::TempFolder oOwn;
  const Testing::TempFolder oInstalled;
  const std::string sOwn = oOwn.Write("Own.htm", "an own page");
  oOwn.Write("Main.htm", "our overview");
  const std::string sMain = oInstalled.Write("Main.htm", "their overview");
  oInstalled.Write("style.css", "their style");

  const PageFiles oFiles({oOwn.Path(), oInstalled.Path()});
  EXPECT_NE(TextOf(oFiles, oFiles.URL(sOwn, 1, 1)).find("an own page"), std::string::npos);
  EXPECT_NE(TextOf(oFiles, oFiles.URL(sMain, 2, 2)).find("our overview"), std::string::npos);
  EXPECT_EQ(TextOf(oFiles, oFiles.URL(sMain, 3, 3).substr(0, oFiles.URL(sMain, 3, 3).rfind('/')) + "/style.css"),
            "their style");
  EXPECT_FALSE(oFiles.Has("/etc/Main.htm"));
  EXPECT_THROW(PageFiles({oOwn.Path(), oInstalled.Path("missing")}), std::runtime_error);
}

}  // namespace ZELWbr3::Web
