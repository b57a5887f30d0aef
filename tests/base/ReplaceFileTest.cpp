#include "zelwbr3/base/ReplaceFile.h"

#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

namespace ZELWbr3 {

TEST(ReplaceFile, LeavesTheOldFileAndNothingElseWhenTheDiskIsFull) {
  const Testing::TempFolder oFolder;
  const std::string sFile = oFolder.Write("picture.png", "old");
  const std::string sLink = oFolder.Path() + "/link.png";
  std::filesystem::create_symlink(sFile, sLink);
  ReplaceFile(sLink, "new");
  EXPECT_EQ(oFolder.Read("picture.png"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(sLink));

  rlimit oBefore{};
  getrlimit(RLIMIT_FSIZE, &oBefore);
  const rlimit oFull{10, oBefore.rlim_max};
  const auto pHandler = signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &oFull);
  EXPECT_THROW(ReplaceFile(sFile, std::string(100'000, 'x')), std::runtime_error);
  setrlimit(RLIMIT_FSIZE, &oBefore);
  signal(SIGXFSZ, pHandler);
  EXPECT_EQ(oFolder.Read("picture.png"), "new");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(oFolder.Path()), {}), 2);
  EXPECT_THROW(ReplaceFile(oFolder.Path() + "/no folder/x", "x"), std::runtime_error);
}

}  // namespace ZELWbr3
