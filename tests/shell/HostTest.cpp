// What the control does for a host besides showing pages.

#include "tests/support/Shown.h"
#include "zelwbr3/shell/Pages.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace ZELWbr3::Testing {

TEST(Host, AnotherThreadIsToldSoAndPostsItsWork) {
  Shown o("demo");
  std::string sSaid;
  std::thread::id oDone;
  std::thread([&] {
    try {
      o.Browser->ShowOnTop(0);
    } catch (const std::logic_error& oError) {
      sSaid = oError.what();
    }
    o.Browser->Post([&] { oDone = std::this_thread::get_id(); });
  }).join();
  EXPECT_TRUE(sSaid.starts_with("Browser::ShowOnTop was called on another thread")) << sSaid;
  EXPECT_EQ(oDone, std::thread::id());
  o.Settle();
  EXPECT_EQ(oDone, std::this_thread::get_id());

  o.Browser->Post([] { ADD_FAILURE() << "the control is gone"; });
  o.Browser.reset();
  o.Settle();
}

TEST(Host, PagesComeFromTheFirstFolderThatHasThem) {
  Shown o("demo");
  const TempFolder oOwn;
  oOwn.Write("Default.htm", "<!DOCTYPE html><p>My own</p>");
  o.Browser->HTMLPaths({oOwn.Path(), ZELWBR3_SOURCE_DIR "/html"});
  o.Show("Default");
  EXPECT_EQ(o.Picture(), "My own\n");
  o.Show("Sessions");
  EXPECT_EQ(o.Text("txtFormTitle"), "Sessions");
  EXPECT_EQ(o.Browser->HTMLPath(), oOwn.Path());
  EXPECT_THROW(o.Browser->HTMLPaths({}), std::invalid_argument);
  EXPECT_NE(o.Lines(), "");
}

TEST(Host, OneCommandListServesAllPages) {
  Shown o("demo");
  o.Show("Main");
  const auto oOther = std::make_shared<Headless::HeadlessCommandlist>();
  o.Browser->Commandlist(oOther);
  EXPECT_EQ(o.Browser->PageMain()->Commandlist(), oOther);
  o.Browser->CleanUp();
  EXPECT_EQ(o.Browser->PageHistory()->Commandlist(), oOther);
  EXPECT_NE(o.Lines(), "");
}

}  // namespace ZELWbr3::Testing
