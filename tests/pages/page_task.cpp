// A page's work ends where the host takes the page away.

#include "tests/support/Shown.h"
#include "zelwbr3/framework/DataPage.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

/// The host hides the page in its handler of ActionBegin, after which the page
/// has neither a document nor an instance.
void HideAtTheAnnouncement(const std::string& sPage, const std::string& sStep) {
  SCOPED_TRACE(sPage);
  Shown o("demo");
  o.Show(sPage);
  const auto oPage = std::dynamic_pointer_cast<DataPage>(o.Browser->ActPageObj());
  const ScopedConnection oHide = o.Browser->ActionBegin.Connect([&] { oPage->Hide(); });
  o.Quiet();
  o.Do(sStep);
  EXPECT_EQ(o.Lines(), "begin\ncomplete\n");
  for (const int iCommand : {2, 3, 4, 5, 6, 7}) oPage->Command(iCommand);
  EXPECT_EQ(o.Lines(), "") << "commands of the hidden page";
}

}  // namespace

TEST(PageTask, EndsWhenTheHostHidesThePage) {
  HideAtTheAnnouncement("DataArea", "click PARAMMAXDATAVOLUMES");
  HideAtTheAnnouncement("LogArea", "click PARAMLOG_SEGMENT_SIZE");
  HideAtTheAnnouncement("InfoCaches", "click PARAMCACHE_SIZE");
  HideAtTheAnnouncement("Parameters", "click PARAMCACHE_SIZE");
  HideAtTheAnnouncement("SysInfos", "click ITEM1");
  HideAtTheAnnouncement("SysDD", "click ITEM_TABLES");
  HideAtTheAnnouncement("Sessions", "key 116");
  HideAtTheAnnouncement("Main", "key 116");
}

TEST(PageTask, ReportsWhatShowingAPageFailsAt) {
  Shown o("demo", {R"(raises = ["Version"])"});
  EXPECT_NO_THROW(o.Show("SysDD"));
  EXPECT_NE(o.Lines().find("box Error"), std::string::npos);
}

}  // namespace ZELWbr3::Testing
