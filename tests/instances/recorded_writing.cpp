#include "tests/instances/RecordingFiles.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"

#include <cmath>
#include <limits>

using namespace RecordingFiles;
using ZELLib3::Long;
using ZELWbr3::Date;
using ZELWbr3::Recorded::WriteRecording;

namespace {

/// A view that delivers rows without end, ten a block; its number 13 cannot be
/// opened.
class EndlessView : public ZELLib3::SysInfo {
 public:
  explicit EndlessView(int lIndex) : m_lIndex(lIndex) {}
  Long Index() const override { return m_lIndex; }
  std::string Name() const override { return "V" + std::to_string(m_lIndex); }
  bool IsEmpty() const override { return false; }
  Long RowCount() const override { return m_lDelivered; }
  Long ColumnCount() const override { return 1; }
  std::string ColumnName(Long) const override { return "N"; }
  std::string ColumnTitle(Long) const override { return "(null)"; }
  bool Open() override {
    m_lRow = 0;
    m_lDelivered = 10;
    return m_lIndex != 13;
  }
  bool ReadMore() override { return (m_lDelivered += 10) > 0; }
  bool NextRow() override { return m_lRow < m_lDelivered && ++m_lRow > 0; }
  std::string Value(Long) const override { return std::to_string(m_lRow); }
  bool EndOfBlock() const override { return m_lRow >= m_lDelivered; }
  bool HasMore() const override { return true; }

 private:
  int m_lIndex;
  int m_lRow = 0;
  int m_lDelivered = 0;
};

class Views : public ZELLib3::SysInfos {
 public:
  explicit Views(std::vector<int> oIndexes) : m_oIndexes(std::move(oIndexes)) {}
  ZELLib3::Integer Count() const override { return m_oIndexes.size(); }
  std::shared_ptr<ZELLib3::SysInfo> Item(Long lItem) const override {
    return std::make_shared<EndlessView>(m_oIndexes.at(lItem - 1));
  }

 private:
  std::vector<int> m_oIndexes;
};

/// An instance in a bad way.
class Troubled : public ZELLib3::Database {
 public:
  class State : public ZELLib3::StateInfo {
   public:
    std::string StateText() const override { return "ill \xff formed \xe2\x82"; }
    Long DataTotal() const override { throw ZELLib3::InstanceError({-7, "no answer"}); }
    Long LogTotal() const override { return Long(2147483647) + 1; }  // overflows
    Date StartOn() const override { return {2026, 2, 30, 0, 0, 0}; }
  };
  class Sizes : public ZELLib3::Caches {
   public:
    double DataCacheSize() const override { return std::numeric_limits<double>::infinity(); }
    double DataCacheAccesses(Long lIndex) const override { return lIndex == 1 ? std::nan("") : 5; }
  };
  class Area : public ZELLib3::DataArea {
   public:
    class Crowd : public ZELLib3::Volumes {
      Long Count() const override { return 2000000000; }
      std::shared_ptr<ZELLib3::Volume> Item(Long lItem) const override {
        return lItem < 3 ? std::make_shared<ZELLib3::Volume>() : throw std::out_of_range("no more");
      }
    };
    std::shared_ptr<ZELLib3::Volumes> Volumes() const override { return std::make_shared<Crowd>(); }
    bool Refresh() override { return false; }
  };

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override { return std::make_shared<State>(); }
  std::shared_ptr<ZELLib3::Caches> Caches() override { return std::make_shared<Sizes>(); }
  std::shared_ptr<ZELLib3::DataArea> DataArea() override { return std::make_shared<Area>(); }
  std::shared_ptr<ZELLib3::Snapshot> Snapshot() override { throw ZELLib3::InstanceError({-8, "no snapshot"}); }
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override { return std::make_shared<Views>(oViews); }
  ZELLib3::Error LastError() override { return {-9, "the last one"}; }

  std::vector<int> oViews = {1};
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
  oInstance.oViews = {1, 13};
  const auto oNotes = WriteRecording(oInstance, oFile.Path(), oOptions);
  for (const char* sNote : {"SysInfo \"V1\": only the first 25 rows are recorded",
                            "SysInfo.Open failed in 1 of 2 calls; recorded without what these would have given"}) {
    EXPECT_NE(oNotes.end(), std::find(oNotes.begin(), oNotes.end(), sNote)) << sNote;
  }
  const Json oViews = oFile.Content()["Database"]["SysInfos"];
  EXPECT_EQ(25u, oViews[0]["Rows"].size());
  EXPECT_EQ("25", oViews[0]["Rows"][24][0]);
  EXPECT_EQ(10, oViews[0]["BlockSize"]);
  // "fails" speaks of all views, so that one alone is left without its rows.
  EXPECT_EQ((Json{"DataArea.Refresh"}), oFile.Content()["fails"]);
  const auto oOpened = OpenRecording(oFile.Path())->SysInfos()->Item(2);
  EXPECT_TRUE(oOpened->Open() && oOpened->IsEmpty());

  oInstance.oViews = {13};
  WriteRecording(oInstance, oFile.Path(), oOptions);
  EXPECT_EQ((Json{"DataArea.Refresh", "SysInfo.Open"}), oFile.Content()["fails"]);
}

// What a user sends in answers on the next desk what it answered on the first.
TEST(RecordedWriting, ARecordingOfARecordingIsTheSame) {
  for (const char* sName : {"demo", "full-log", "old-7.1", "new-7.6", "hot-standby", "hostile"}) {
    SCOPED_TRACE(sName);
    auto oSample = Json::parse(std::ifstream(SamplePath(sName)));
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
  const auto Refusal = [&](const std::string& sPath) -> std::string {
    try {
      WriteRecording(*oDatabase, sPath);
    } catch (const ZELWbr3::Recorded::RecordingError& oError) {
      return oError.what();
    }
    return "written";
  };
  EXPECT_EQ(0u, Refusal(oFile.Folder()).find(oFile.Folder() + ": is not a regular file"));
  EXPECT_EQ(0u, Refusal("/dev/null").find("/dev/null: is not a regular file"));
  const std::string sNowhere = oFile.Folder() + "/none/it.json";
  EXPECT_EQ(0u, Refusal(sNowhere).find(sNowhere + ": the recording cannot be written: "));
  EXPECT_EQ("the old one", oFile.Text());

  EXPECT_EQ("written", Refusal(oFile.Path()));
  EXPECT_EQ("FULLLOG", OpenRecording(oFile.Path())->InstanceName());
  const auto oEntries = std::filesystem::directory_iterator(oFile.Folder());
  EXPECT_EQ(1, std::distance(begin(oEntries), end(oEntries))) << "nothing but the recording is left";
}
