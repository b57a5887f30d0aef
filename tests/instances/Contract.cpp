#include "tests/instances/Contract.h"

#include "tests/instances/RecordingFiles.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"

using namespace ZELLib3;
using RecordingFiles::File;
using RecordingFiles::Json;

namespace {

std::string Trimmed(const std::string& sText) {
  const auto lFirst = sText.find_first_not_of(' ');
  return lFirst == std::string::npos ? "" : sText.substr(lFirst, sText.find_last_not_of(' ') - lFirst + 1);
}

/// A collection counts from 1 and has nothing around its entries.
template <class Collection>
void ExpectBounded(const Collection& oCollection, const std::string& sWhat) {
  SCOPED_TRACE(sWhat);
  const int lCount = oCollection.Count();
  ASSERT_GE(lCount, 0);
  for (int lItem = 1; lItem <= lCount; ++lItem) EXPECT_NE(nullptr, oCollection.Item(lItem));
  for (const int lItem : {-1, 0, lCount + 1}) EXPECT_THROW(oCollection.Item(lItem), std::out_of_range) << lItem;
}

/// Reads all rows block by block; each row as one text.
std::vector<std::string> ReadRows(RowSource& oSource) {
  std::vector<std::string> oRows;
  EXPECT_TRUE(oSource.Open());
  for (;;) {
    while (!oSource.EndOfBlock()) {
      if (!oSource.NextRow()) {
        ADD_FAILURE() << "no next row although the block has not ended";
        return oRows;
      }
      std::string& sRow = oRows.emplace_back();
      for (int lColumn = 0; lColumn < oSource.ColumnCount(); ++lColumn) sRow += oSource.Value(lColumn) + "|";
    }
    EXPECT_FALSE(oSource.NextRow()) << "a row beyond the block's end";
    EXPECT_EQ(static_cast<int>(oRows.size()), oSource.RowCount());
    if (!oSource.HasMore() || testing::Test::HasFailure()) return oRows;
    const std::size_t lBefore = oRows.size();
    EXPECT_TRUE(oSource.ReadMore());
    EXPECT_GT(static_cast<int>(oSource.RowCount()), static_cast<int>(lBefore)) << "rows were promised";
  }
}

/// The block protocol of one view or table; how many rows it has.
std::size_t ExpectReadable(RowSource& oSource, const std::string& sWhat) {
  SCOPED_TRACE(sWhat);
  const std::vector<std::string> oRows = ReadRows(oSource);
  EXPECT_EQ(oRows.empty(), oSource.IsEmpty());
  const int lColumns = oSource.ColumnCount();
  for (int lColumn = 0; lColumn < lColumns; ++lColumn) {
    oSource.ColumnName(lColumn);
    oSource.ColumnTitle(lColumn);
  }
  for (const int lColumn : {-1, lColumns}) {
    EXPECT_THROW(oSource.ColumnName(lColumn), std::out_of_range) << lColumn;
    EXPECT_THROW(oSource.ColumnTitle(lColumn), std::out_of_range) << lColumn;
    EXPECT_THROW(oSource.Value(lColumn), std::out_of_range) << lColumn;
  }
  EXPECT_EQ(oRows, ReadRows(oSource)) << "opened again, it starts again";
  return oRows.size();
}

}  // namespace

TEST_P(Contract, CollectionsCountFromOne) {
  ASSERT_TRUE(m_oDatabase->Parameters()->Load());
  ASSERT_TRUE(m_oDatabase->Parameters()->Read());
  ExpectBounded(*m_oDatabase->Parameters(), "Parameters");
  ExpectBounded(*m_oDatabase->Sessions(), "Sessions");
  ExpectBounded(*m_oDatabase->SysInfos(), "SysInfos");
  ExpectBounded(*m_oDatabase->DataArea()->Volumes(), "DataArea.Volumes");
  ExpectBounded(*m_oDatabase->LogArea()->Volumes(), "LogArea.Volumes");
}

TEST_P(Contract, ParametersAreFoundByTheNameThatPagesShow) {
  const auto oParameters = m_oDatabase->Parameters();
  ASSERT_TRUE(oParameters->Load() && oParameters->Read());
  for (int lItem = 1; lItem <= oParameters->Count(); ++lItem) {
    const auto oParameter = oParameters->Item(lItem);
    const std::string sName = Trimmed(oParameter->Name());
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
  const auto oUnknown = oParameters->Item("NO SUCH PARAMETER");
  ASSERT_NE(nullptr, oUnknown);
  EXPECT_FALSE(oUnknown->Exists());
}

TEST_P(Contract, ViewsAndTablesAreReadInBlocks) {
  const auto oViews = m_oDatabase->SysInfos();
  ASSERT_TRUE(oViews->Refresh());
  for (int lItem = 1; lItem <= oViews->Count(); ++lItem) {
    const auto oView = oViews->Item(lItem);
    ExpectReadable(*oView, oView->Name());
  }
  const auto oTable = m_oDatabase->SQLTables()->NewTable();
  oTable->Owner(GetParam().TableOwner);
  oTable->Name(GetParam().TableName);
  EXPECT_GT(ExpectReadable(*oTable, oTable->Name()), 0u);
}

TEST_P(Contract, ATableThatIsNotThereFailsToOpen) {
  const auto oTable = m_oDatabase->SQLTables()->NewTable();
  oTable->Owner("NOBODY");
  oTable->Name("NOTHING; \"'--");
  EXPECT_FALSE(oTable->Open());
  EXPECT_NE("", m_oDatabase->LastError().ErrorText);
  EXPECT_TRUE(oTable->EndOfBlock());
  EXPECT_FALSE(oTable->HasMore());
  EXPECT_EQ(0, oTable->RowCount());
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
    ASSERT_GT(static_cast<int>(oHistory->RowCount()), lItems);
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
  const File oFirst;
  ZELWbr3::Recorded::RecordOptions oOptions;
  oOptions.Tables = {{GetParam().TableOwner, GetParam().TableName}};
  ZELWbr3::Recorded::WriteRecording(*m_oDatabase, oFirst.Path(), oOptions);
  EXPECT_EQ(Json::array(), oFirst.Content()["raises"]);
  EXPECT_EQ(Json::array(), oFirst.Content()["fails"]);

  const File oSecond;
  ZELWbr3::Recorded::WriteRecording(*ZELWbr3::Recorded::OpenRecording(oFirst.Path()), oSecond.Path());
  EXPECT_EQ(oFirst.Text(), oSecond.Text()) << "the recording answers what the instance answered";
}
