#include "zelwbr3/framework/clsTrace.h"

#include "zelwbr3/testing/TempFolder.h"
#include "zelwbr3/testing/TestLocale.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3 {

namespace {

class clsTraceTest : public testing::Test {
 protected:
  Testing::TempFolder Folder;
  Testing::TestLocale Locale;
  std::int64_t Now = 5'000'000'000;
  clsTrace Trace{Locale, [this] { return Now; }};
};

}  // namespace

TEST_F(clsTraceTest, WritesLinesThatLineUp) {
  Trace.Text("before the start");
  Trace.StopLogging();
  EXPECT_EQ(Folder.Read("t.log"), "");
  Trace.StartLogging(Folder.Path("t.log"));
  Now += 5;
  Trace.Push("A");
  Now += 1229;
  Trace.Text("B");
  Trace.Push("C");
  Now += 1;
  Trace.Pop("C");
  Trace.Pop("A");
  Now += 2147482412;  // up to the last millisecond that can be told
  Trace.StopLogging();
  EXPECT_EQ(Folder.Read("t.log"),
            "[00,000,000]           Beginning\n"
            "[00,000,005]             > A\n"
            "[00,001,234]            B\n"
            "[00,001,234]             >  C\n"
            "[00,001,235][00,000,001] <  C\n"
            "[00,001,235][00,001,230] < A\n"
            "[2,147,483,647]           Ending\n");
  Now += 1;
  EXPECT_THROW(Trace.Text("late"), std::overflow_error);
  Trace.StartLogging(Folder.Path("t.log"));  // begins anew, after what is there
  EXPECT_TRUE(Folder.Read("t.log").ends_with("Ending\n[00,000,000]           Beginning\n"));
}

TEST_F(clsTraceTest, RefusesLevelsThatAreNotThere) {
  Trace.StartLogging(Folder.Path("t.log"));
  EXPECT_THROW(Trace.Pop("none"), std::out_of_range);
  for (int i = 0; i < 1025; ++i) Trace.Push("");
  EXPECT_THROW(Trace.Push("one too many"), std::out_of_range);
  for (int i = 0; i < 1025; ++i) Trace.Pop("");
  EXPECT_THROW(Trace.Pop("none"), std::out_of_range);
  EXPECT_TRUE(Folder.Read("t.log").ends_with("[00,000,000][00,000,000] < \n"));
}

TEST_F(clsTraceTest, NamesTheFileThatCannotBeWritten) {
  Now = 0;
  EXPECT_THROW(Trace.Push("never started"), std::runtime_error);
  try {
    Trace.StartLogging(Folder.Path("missing/t.log"));
    FAIL() << "written into a folder that is not there";
  } catch (const std::runtime_error& oError) {
    EXPECT_NE(std::string(oError.what()).find(Folder.Path("missing/t.log")), std::string::npos);
  }
}

}  // namespace ZELWbr3
