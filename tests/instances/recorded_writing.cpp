#include "tests/instances/RecordingFiles.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"

#include <cmath>
#include <limits>

using namespace RecordingFiles;
using ZELLib3::Long;
using ZELWbr3::Recorded::WriteRecording;

namespace {

using SharedView = std::shared_ptr<ZELLib3::SysInfo>;

/// The view V of 40 rows "1", "2", …, ten a block, or one that cannot be opened.
SharedView View(bool bFails) {
  Json oView = {{"Name", "V"}, {"BlockSize", 10}, {"Columns", {{{"Name", "N"}}}}};
  for (int i = 1; i <= 40; ++i) oView["Rows"].push_back({std::to_string(i)});
  return OpenWith({{"SysInfos", {oView}}}, {{"fails", bFails ? Json{"SysInfo.Open"} : Json::array()}})
      ->SysInfos()
      ->Item(1);
}

/// An instance in a bad way.
struct Troubled : ZELLib3::Database {
  struct State : ZELLib3::StateInfo {
    std::string StateText() const override { return "ill \xff formed \xe2\x82"; }
    Long DataTotal() const override { throw ZELLib3::InstanceError({-7, "no answer"}); }
    Long LogTotal() const override { return Long(2147483647) + 1; }  // overflows
    ZELWbr3::Date StartOn() const override { return {2026, 2, 30, 0, 0, 0}; }
  };
  struct Sizes : ZELLib3::Caches {
    double DataCacheSize() const override { return std::numeric_limits<double>::infinity(); }
    double DataCacheAccesses(Long lIndex) const override { return lIndex == 1 ? std::nan("") : 5; }
  };
  struct Crowd : ZELLib3::Volumes {
    Long Count() const override { return 2000000000; }
    std::shared_ptr<ZELLib3::Volume> Item(Long lItem) const override {
      return lItem < 3 ? std::make_shared<ZELLib3::Volume>() : throw std::out_of_range("no more");
    }
  };
  struct Area : ZELLib3::DataArea {
    std::shared_ptr<ZELLib3::Volumes> Volumes() const override { return std::make_shared<Crowd>(); }
    bool Refresh() override { return false; }
  };
  struct Listed : ZELLib3::SysInfos {
    explicit Listed(std::vector<SharedView> oViews) : m_oViews(std::move(oViews)) {}
    ZELLib3::Integer Count() const override { return m_oViews.size(); }
    SharedView Item(Long lItem) const override { return m_oViews.at(lItem - 1); }
    std::vector<SharedView> m_oViews;
  };

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override { return std::make_shared<State>(); }
  std::shared_ptr<ZELLib3::Caches> Caches() override { return std::make_shared<Sizes>(); }
  std::shared_ptr<ZELLib3::DataArea> DataArea() override { return std::make_shared<Area>(); }
  std::shared_ptr<ZELLib3::Snapshot> Snapshot() override { throw ZELLib3::InstanceError({-8, "no snapshot"}); }
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override { return std::make_shared<Listed>(oViews); }
  ZELLib3::Error LastError() override { return {-9, "the last one"}; }

  std::vector<SharedView> oViews;
};

}  // namespace

TEST(RecordedWriting, ATroubledInstanceIsRecordedAsFarAsItAnswers) {
  Troubled oInstance;
  const File oFile;
  WriteRecording(oInstance, oFile.Path());
  const Json oContent = oFile.Content();
  EXPECT_EQ((Json{"Snapshot", "StateInfo.DataTotal", "StateInfo.LogTotal"}), oContent["raises"]);
  EXPECT_EQ((Json{"DataArea.Refresh"}), oContent["fails"]);
  EXPECT_EQ("the last one", oContent["LastError"]["ErrorText"]) << "of the operation that failed";
  EXPECT_FALSE(oContent["Database"]["StateInfo"].contains("StartOn")) << "no such day";
  EXPECT_FALSE(oContent["Database"].contains("Snapshot"));

  const auto oOpened = OpenRecording(oFile.Path());
  EXPECT_EQ("ill \xEF\xBF\xBD formed \xEF\xBF\xBD", oOpened->StateInfo()->StateText());
  EXPECT_THROW(oOpened->StateInfo()->DataTotal(), ZELLib3::InstanceError);
  EXPECT_THROW(oOpened->Snapshot(), ZELLib3::InstanceError);
  EXPECT_EQ(0, oOpened->Caches()->DataCacheSize());
  EXPECT_EQ(-1, oOpened->Caches()->DataCacheAccesses(1));
  EXPECT_EQ(5, oOpened->Caches()->DataCacheAccesses(2));
  EXPECT_EQ(2000000000, oOpened->DataArea()->Volumes()->Count());
  EXPECT_NO_THROW(oOpened->DataArea()->Volumes()->Item(2));
}

TEST(RecordedWriting, WhatIsLeftOutIsNoted) {
  Troubled oInstance;
  const File oFile;
  ZELWbr3::Recorded::RecordOptions oOptions;
  oOptions.MaxRows = 25;
  oInstance.oViews = {View(false), View(true)};
  const auto oNotes = WriteRecording(oInstance, oFile.Path(), oOptions);
  for (const char* sNote : {"SysInfo \"V\": only the first 25 rows are recorded",
                            "SysInfo.Open failed in 1 of 2 calls; recorded without what these would have given"}) {
    EXPECT_NE(oNotes.end(), std::find(oNotes.begin(), oNotes.end(), sNote)) << sNote;
  }
  const Json oView = oFile.Content()["Database"]["SysInfos"][0];
  EXPECT_EQ(25u, oView["Rows"].size());
  EXPECT_EQ("25", oView["Rows"][24][0]);
  EXPECT_EQ(10, oView["BlockSize"]);
  // "fails" speaks of all views, so that one alone is left without its rows.
  EXPECT_EQ((Json{"DataArea.Refresh"}), oFile.Content()["fails"]);
  const auto oOpened = OpenRecording(oFile.Path())->SysInfos()->Item(2);
  EXPECT_TRUE(oOpened->Open() && oOpened->IsEmpty());

  oInstance.oViews = {View(true)};
  WriteRecording(oInstance, oFile.Path(), oOptions);
  EXPECT_EQ((Json{"DataArea.Refresh", "SysInfo.Open"}), oFile.Content()["fails"]);
}

// What a user sends in answers on the next desk what it answered on the first.
TEST(RecordedWriting, ARecordingOfARecordingIsTheSame) {
  for (const char* sName : {"demo", "full-log", "old-7.1", "new-7.6", "hot-standby", "hostile"}) {
    SCOPED_TRACE(sName);
    Json oSample = SampleContent(sName);
    oSample["fails"].push_back("Analyzer.Stop");
    oSample["raises"].push_back("StateInfo.BadVolumes");
    std::sort(oSample["fails"].begin(), oSample["fails"].end());
    const File oWritten;
    WriteRecording(*OpenRecording(File(oSample).Path()), oWritten.Path());
    const Json oBack = oWritten.Content();
    const Json oValues = oSample.flatten();
    for (const auto& [sPath, oValue] : oValues.items()) {
      if (oValue.is_structured() || oValue.is_null() || sPath.ends_with("/BadVolumes")) continue;
      EXPECT_EQ(oValue, oBack.value(Json::json_pointer(sPath), Json("missing"))) << sPath;
    }
    const File oAgain;
    WriteRecording(*OpenRecording(oWritten.Path()), oAgain.Path());
    EXPECT_EQ(oWritten.Text(), oAgain.Text());
  }
}

TEST(RecordedWriting, AFileThatCannotBeWrittenLeavesTheOldOne) {
  const File oFile(std::string("the old one"));
  const auto oDatabase = OpenRecording(SamplePath("full-log"));
  const auto ExpectRefused = [&](const std::string& sPath, const std::string& sWhy) {
    try {
      WriteRecording(*oDatabase, sPath);
      ADD_FAILURE() << sPath << " was written";
    } catch (const ZELWbr3::Recorded::RecordingError& oError) {
      EXPECT_EQ(0u, std::string(oError.what()).find(sPath + ": " + sWhy)) << oError.what();
    }
  };
  ExpectRefused(oFile.Folder(), "is not a regular file");
  ExpectRefused("/dev/null", "is not a regular file");
  ExpectRefused(oFile.Folder() + "/none/it.json", "the recording cannot be written: ");
  EXPECT_EQ("the old one", oFile.Text());

  WriteRecording(*oDatabase, oFile.Path());
  EXPECT_EQ("FULLLOG", OpenRecording(oFile.Path())->InstanceName());
  const auto oEntries = std::filesystem::directory_iterator(oFile.Folder());
  EXPECT_EQ(1, std::distance(begin(oEntries), end(oEntries))) << "nothing but the recording is left";
}
