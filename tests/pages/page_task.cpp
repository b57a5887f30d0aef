// A page's work ends where the host takes the page away.

#include "host/HostPages.h"
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

/// An instance whose author has nothing to give yet.
struct Careless : ZELLib3::Database {
  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override { return bState ? Database::StateInfo() : nullptr; }
  std::shared_ptr<ZELLib3::Parameters> Parameters() override { return nullptr; }
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override { return nullptr; }
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override { return nullptr; }
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override { return nullptr; }
  std::shared_ptr<ZELLib3::Caches> Caches() override { return nullptr; }
  std::shared_ptr<ZELLib3::Activity> Activity() override { return nullptr; }
  std::shared_ptr<ZELLib3::SQLTables> SQLTables() override { return nullptr; }
  std::shared_ptr<ZELLib3::DataArea> DataArea() override { return nullptr; }
  std::shared_ptr<ZELLib3::LogArea> LogArea() override { return nullptr; }
  std::shared_ptr<ZELLib3::Sessions> Sessions() override { return nullptr; }
  std::shared_ptr<ZELLib3::HotStandby> HotStandby() override { return nullptr; }
  std::shared_ptr<ZELLib3::Snapshot> Snapshot() override { return nullptr; }
  std::shared_ptr<ZELLib3::Version> Version() override { return bState ? Database::Version() : nullptr; }
  std::shared_ptr<ZELLib3::History> History() override { return nullptr; }
  bool Connected() override { return true; }
  bool bState = false;
};

}  // namespace

TEST(PageTask, SaysWhatAnInstanceAnswersNullFor) {
  Shown o("demo");
  const auto oDatabase = std::make_shared<Careless>();
  std::string sTold;
  for (const bool bState : {false, true}) {
    oDatabase->bState = bState;
    for (const auto& oEntry : Host::HostPages::All()) {
      EXPECT_NO_THROW(oEntry.Show(*o.Browser, oDatabase)) << oEntry.Name;
      o.Settle();
      sTold += o.Lines() + o.Picture();
    }
  }
  for (const char* sClass : {"StateInfo", "Parameters", "SysInfos", "Caches", "Activity", "DataArea", "LogArea",
                             "Sessions", "Version", "History"}) {
    EXPECT_NE(sTold.find("answers null where it owes " + std::string(sClass)), std::string::npos) << sClass;
  }
}

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
