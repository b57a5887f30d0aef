#include "tests/support/Told.h"
#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/pages/config/PageParameters.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/pages/monitor/PageInfoCaches.h"
#include "zelwbr3/pages/monitor/PageSessions.h"
#include "zelwbr3/pages/monitor/PageSysDD.h"
#include "zelwbr3/pages/monitor/PageSysInfos.h"
#include "zelwbr3/pages/storage/PageDataArea.h"
#include "zelwbr3/pages/storage/PageLogArea.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

std::shared_ptr<ZELLib3::Database> Demo() {
  return Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json", {});
}

/// The host hides the page in its handler of ActionBegin, after which the page
/// has neither a document nor an instance.
template <typename PageClass>
void HideAtTheAnnouncement(std::shared_ptr<PageClass> (Browser::*oMake)(), const std::function<void(Told&)>& oBegin) {
  Told o(Demo());
  const auto oPage = (o.Browser.*oMake)();
  o.Show(oPage);
  const auto oHide = o.Browser.ActionBegin.Connect([&] { oPage->Hide(); });
  o.Lines();
  oBegin(o);
  EXPECT_EQ(o.Lines(), "begin\ncomplete\n") << oPage->Name();
  for (const int iCommand : {2, 3, 4, 5, 6, 7}) oPage->Command(iCommand);
  EXPECT_EQ(o.Lines(), "") << "commands of the hidden page " << oPage->Name();
}

std::function<void(Told&)> Clicking(const std::string& sID) {
  return [sID](Told& o) { o.Click(sID); };
}

void PressF5(Told& o) { o.Key(KeyCode::F5); }

}  // namespace

TEST(PageTask, EndsWhenTheHostHidesThePage) {
  HideAtTheAnnouncement(&Browser::PageDataArea, Clicking("PARAMMAXDATAVOLUMES"));
  HideAtTheAnnouncement(&Browser::PageLogArea, Clicking("PARAMLOG_SEGMENT_SIZE"));
  HideAtTheAnnouncement(&Browser::PageInfoCaches, Clicking("PARAMCACHE_SIZE"));
  HideAtTheAnnouncement(&Browser::PageParameters, Clicking("PARAMCACHE_SIZE"));
  HideAtTheAnnouncement(&Browser::PageSysInfos, Clicking("ITEM1"));
  HideAtTheAnnouncement(&Browser::PageSysDD, Clicking("ITEM_TABLES"));
  HideAtTheAnnouncement(&Browser::PageSessions, PressF5);
  HideAtTheAnnouncement(&Browser::PageMain, PressF5);
}

TEST(PageTask, ReportsWhatShowingAPageFailsAt) {
  Told o("\"Version\": {\"Major\": 7, \"Minor\": 6}", "\"raises\": [\"Version\"]");
  EXPECT_NO_THROW(o.Show(o.Browser.PageSysDD()));
  EXPECT_NE(o.Lines().find("box Error"), std::string::npos);
}

}  // namespace ZELWbr3::Testing
