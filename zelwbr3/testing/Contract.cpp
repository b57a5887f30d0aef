#include "zelwbr3/testing/Contract.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/testing/Rows.h"

#include <nlohmann/json.hpp>

namespace ZELWbr3::Testing {

using ZELLib3::RowSource;

namespace {

/// A collection counts from 1 and has nothing around its entries.
template <class Collection>
void ExpectBounded(const Collection& oCollection, const std::string& sWhat) {
  SCOPED_TRACE(sWhat);
  const int lCount = oCollection.Count();
  ASSERT_GE(lCount, 0);
  for (int lItem = 1; lItem <= lCount; ++lItem) EXPECT_NE(nullptr, oCollection.Item(lItem));
  for (const int lItem : {-1, 0, lCount + 1}) EXPECT_THROW(oCollection.Item(lItem), std::out_of_range) << lItem;
}

/// The block protocol of one view or table; how many rows it has.
std::size_t ExpectReadable(RowSource& oSource, const std::string& sWhat, bool bIsLive = false) {
  SCOPED_TRACE(sWhat);
  EXPECT_TRUE(oSource.Open());
  Rows oRows = ReadBlock(oSource);
  EXPECT_EQ(oRows.empty(), oSource.IsEmpty());
  while (oSource.HasMore() && !testing::Test::HasFailure()) {
    EXPECT_TRUE(oSource.EndOfBlock() && !oSource.NextRow());
    EXPECT_EQ(static_cast<int>(oRows.size()), oSource.RowCount());
    EXPECT_TRUE(oSource.ReadMore());
    EXPECT_GT(oSource.RowCount(), static_cast<int>(oRows.size())) << "rows were promised";
    for (auto& oRow : ReadBlock(oSource)) oRows.push_back(oRow);
  }
  EXPECT_EQ(static_cast<int>(oRows.size()), oSource.RowCount());
  const int lColumns = oSource.ColumnCount();
  for (int lColumn = 0; lColumn < lColumns; ++lColumn) oSource.ColumnName(lColumn) + oSource.ColumnTitle(lColumn);
  for (const auto fnMember : {&RowSource::ColumnName, &RowSource::ColumnTitle, &RowSource::Value}) {
    for (const int lColumn : {-1, lColumns}) EXPECT_THROW((oSource.*fnMember)(lColumn), std::out_of_range) << lColumn;
  }
  EXPECT_TRUE(oSource.Open());
  const Rows oAgain = ReadAll(oSource);
  EXPECT_TRUE(bIsLive || oRows == oAgain) << "opened again, it starts again";
  return oRows.size();
}

}  // namespace

// Named here, so that a program that runs the suite links this file.
std::string ContractCase::Named(const ::testing::TestParamInfo<ContractCase>& oInfo) { return oInfo.param.Name; }

// A program may use the rest of the kit only.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Contract);

TEST_P(Contract, SubObjectsAreNeverNull) {
  EXPECT_NE(nullptr, m_oDatabase->StateInfo());
  EXPECT_NE(nullptr, m_oDatabase->Parameters());
  EXPECT_NE(nullptr, m_oDatabase->LogSettings());
  EXPECT_NE(nullptr, m_oDatabase->SysInfos());
  EXPECT_NE(nullptr, m_oDatabase->ParameterHistory());
  EXPECT_NE(nullptr, m_oDatabase->Caches());
  EXPECT_NE(nullptr, m_oDatabase->Activity());
  EXPECT_NE(nullptr, m_oDatabase->SQLTables());
  EXPECT_NE(nullptr, m_oDatabase->DataArea());
  EXPECT_NE(nullptr, m_oDatabase->LogArea());
  EXPECT_NE(nullptr, m_oDatabase->Sessions());
  EXPECT_NE(nullptr, m_oDatabase->HotStandby());
  EXPECT_NE(nullptr, m_oDatabase->Snapshot());
  EXPECT_NE(nullptr, m_oDatabase->Version());
  EXPECT_NE(nullptr, m_oDatabase->History());
}

TEST_P(Contract, CollectionsCountFromOneAndOutliveTheInstance) {
  const auto oParameters = m_oDatabase->Parameters();
  ASSERT_TRUE(oParameters->Load() && oParameters->Read());
  ExpectBounded(*oParameters, "Parameters");
  const auto oSessions = m_oDatabase->Sessions();
  const auto oViews = m_oDatabase->SysInfos();
  ASSERT_TRUE(oViews->Refresh());
  ExpectBounded(*m_oDatabase->DataArea()->Volumes(), "DataArea.Volumes");
  ExpectBounded(*m_oDatabase->LogArea()->Volumes(), "LogArea.Volumes");
  m_oDatabase.reset();
  ExpectBounded(*oSessions, "Sessions");
  ExpectBounded(*oViews, "SysInfos");
  for (int lItem = 1; lItem <= oViews->Count(); ++lItem) {
    ExpectReadable(*oViews->Item(lItem), oViews->Item(lItem)->Name(), GetParam().IsLive);
  }
}

TEST_P(Contract, ParametersAreFoundByTheNameThatPagesShow) {
  const auto oParameters = m_oDatabase->Parameters();
  ASSERT_TRUE(oParameters->Load() && oParameters->Read());
  for (int lItem = 1; lItem <= oParameters->Count(); ++lItem) {
    const auto oParameter = oParameters->Item(lItem);
    const std::string sName = Text::Trim(oParameter->Name());
    const auto oFound = oParameters->Item(sName);
    ASSERT_NE(nullptr, oFound) << sName;
    EXPECT_EQ(oParameter->Name(), oFound->Name());
    EXPECT_EQ(oParameter->Value(), oFound->Value()) << sName;
    EXPECT_TRUE(oFound->Exists()) << sName;
    for (int lEntry = 1; lEntry <= oFound->HistoryCount(); ++lEntry) EXPECT_NO_THROW(oFound->HistoryDate(lEntry));
    for (const int lEntry : {0, 1 + static_cast<int>(oFound->HistoryCount())}) {
      EXPECT_THROW(oFound->HistoryValue(lEntry), std::out_of_range) << sName;
    }
  }
  ASSERT_NE(nullptr, oParameters->Item("NO SUCH PARAMETER"));
  EXPECT_FALSE(oParameters->Item("NO SUCH PARAMETER")->Exists());
}

TEST_P(Contract, ATableIsReadInBlocksOrFailsToOpen) {
  const auto oTable = Table(*m_oDatabase, GetParam().TableOwner, GetParam().TableName);
  EXPECT_GT(ExpectReadable(*oTable, oTable->Name()), 0u);
  const auto oNothing = Table(*m_oDatabase, "NOBODY", "NOTHING; \"'--");
  EXPECT_FALSE(oNothing->Open());
  EXPECT_NE("", m_oDatabase->LastError().ErrorText);
  EXPECT_TRUE(oNothing->EndOfBlock());
  EXPECT_FALSE(oNothing->HasMore());
  EXPECT_EQ(0, oNothing->RowCount());
}

TEST_P(Contract, HistoriesEnd) {
  const auto oHistory = m_oDatabase->History();
  ASSERT_TRUE(oHistory->Open());
  int lItems = 0;
  for (;;) {
    while (const auto oItem = oHistory->NextItem()) ++lItems;
    EXPECT_TRUE(oHistory->EndOfBlock());
    EXPECT_EQ(lItems, oHistory->RowCount());
    if (!oHistory->HasMore()) break;
    ASSERT_TRUE(oHistory->ReadMore());
    ASSERT_GT(oHistory->RowCount(), lItems);
  }
  EXPECT_EQ(lItems == 0, oHistory->IsEmpty());

  const auto oChanges = m_oDatabase->ParameterHistory();
  ASSERT_TRUE(oChanges->Open());
  while (oChanges->HasEntry()) {
    EXPECT_NE("", oChanges->Parameter());
    if (!oChanges->MoveNext()) break;
  }
  EXPECT_FALSE(oChanges->MoveNext());
}

// Visits every member there is: nothing raises, nothing fails, no text and no
// number is one that the pages could not show.
TEST_P(Contract, EverythingCanBeRecorded) {
  const std::string sFirst = m_oFolder.Path("first.json");
  Recorded::RecordOptions oOptions;
  oOptions.Tables = {{GetParam().TableOwner, GetParam().TableName}};
  Recorded::WriteRecording(*m_oDatabase, sFirst, oOptions);
  const auto oContent = nlohmann::json::parse(m_oFolder.Read("first.json"));
  EXPECT_EQ(nlohmann::json::array(), oContent["raises"]);
  EXPECT_EQ(nlohmann::json::array(), oContent["fails"]);

  Recorded::WriteRecording(*Recorded::OpenRecording(sFirst), m_oFolder.Path("second.json"));
  EXPECT_EQ(m_oFolder.Read("first.json"), m_oFolder.Read("second.json"))
      << "the recording answers what the instance answered";
}

}  // namespace ZELWbr3::Testing
