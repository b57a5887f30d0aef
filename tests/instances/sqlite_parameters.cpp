#include "tests/instances/SQLiteFiles.h"
#include "tests/instances/SQLiteOpened.h"

#include <algorithm>

using namespace SQLiteFiles;

namespace {

class SQLiteParameters : public testing::Test {
 protected:
  std::shared_ptr<ZELLib3::Database> Open(const std::string& sName = "a.db") {
    ZELWbr3::SQLite::Options oOptions;
    oOptions.StateFolder = m_sState;
    return SQLiteFiles::OpenDatabase(m_oFolder / sName, oOptions);
  }
  void Run(const std::string& sSQL, const std::string& sName = "a.db") { Application(m_oFolder / sName, sSQL); }

  static std::string Value(ZELLib3::Database& oDatabase, const std::string& sName) {
    return oDatabase.Parameters()->Item(sName)->Value();
  }
  /// "name: old -> new", newest first.
  static std::vector<std::string> Changes(ZELLib3::Database& oDatabase) {
    std::vector<std::string> oTexts;
    const auto oHistory = oDatabase.ParameterHistory();
    EXPECT_TRUE(oHistory->Open()) << oDatabase.LastError().ErrorText;
    for (bool b = oHistory->HasEntry(); b; b = oHistory->MoveNext()) {
      EXPECT_GT(oHistory->Date().Year, 2000);
      oTexts.push_back(oHistory->Parameter() + ": " + oHistory->Value() + " -> " + oHistory->NewValue());
    }
    return oTexts;
  }

  Folder m_oFolder;
  std::string m_sState = m_oFolder / "state";
};

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(SQLiteParameters, AreWhatTheFileAndTheConnectionHave) {
  Run("PRAGMA page_size=8192; PRAGMA auto_vacuum=INCREMENTAL; PRAGMA encoding='UTF-16le'; PRAGMA journal_mode=WAL;"
      "PRAGMA user_version=42; PRAGMA application_id=-5; CREATE TABLE t(v)");
  const auto oDatabase = Open();
  EXPECT_EQ("8192", Value(*oDatabase, "page_size"));
  EXPECT_EQ("INCREMENTAL", Value(*oDatabase, "auto_vacuum"));
  EXPECT_EQ("UTF-16le", Value(*oDatabase, "encoding"));
  EXPECT_EQ("wal", Value(*oDatabase, "journal_mode"));
  EXPECT_EQ("42", Value(*oDatabase, "user_version"));
  EXPECT_EQ("-5", Value(*oDatabase, "application_id"));
  EXPECT_EQ("ON", Value(*oDatabase, "query_only"));
  EXPECT_EQ("250", Value(*oDatabase, "busy_timeout"));
  EXPECT_EQ("normal", Value(*oDatabase, "locking_mode"));
  for (const char* sName : {"MAXDATAVOLUMES", "PAGE_SIZE", "integrity_check", "", "page_size; --"}) {
    EXPECT_FALSE(oDatabase->Parameters()->Item(sName)->Exists()) << sName;
  }

  const auto oParameters = oDatabase->Parameters();
  ASSERT_TRUE(oParameters->Load() && oParameters->Read());
  std::map<int, int> groups;
  for (int i = 1; i <= oParameters->Count(); ++i) {
    const auto oParameter = oParameters->Item(i);
    ++groups[oParameter->Group()];
    EXPECT_FALSE(oParameter->Description().empty() || oParameter->Explanation().empty()) << oParameter->Name();
    EXPECT_EQ(oParameter->Value(), oParameter->NewValue()) << oParameter->Name() << ": nothing waits";
  }
  EXPECT_EQ(3u, groups.size());
  EXPECT_TRUE(groups.contains(0) && groups.contains(1) && groups.contains(2));

  ASSERT_TRUE(oDatabase->Admin()) << oDatabase->LastError().ErrorText;
  EXPECT_EQ("exclusive", Value(*oDatabase, "locking_mode"));
  ASSERT_TRUE(oDatabase->Shutdown());
  EXPECT_FALSE(oDatabase->Parameters()->Load());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("offline"));
  EXPECT_EQ(0, oDatabase->Parameters()->Count());
  EXPECT_FALSE(oDatabase->Parameters()->Item("page_size")->Exists());
}

TEST_F(SQLiteParameters, ADefaultThatIsReadWhenTheFileIsOpenedWaits) {
  Run("PRAGMA default_cache_size=500; CREATE TABLE t(v)");
  const auto oDatabase = Open();
  EXPECT_EQ("500", Value(*oDatabase, "cache_size"));
  Run("PRAGMA default_cache_size=700");
  const auto oWaits = oDatabase->Parameters()->Item("cache_size");
  EXPECT_EQ("500", oWaits->Value());
  EXPECT_EQ("700", oWaits->NewValue());
  EXPECT_EQ("700", oWaits->NewValueOnline());
  ASSERT_TRUE(oDatabase->Shutdown() && oDatabase->Online());
  EXPECT_EQ("700", Value(*oDatabase, "cache_size"));
  EXPECT_EQ("700", oDatabase->Parameters()->Item("cache_size")->NewValue());
}

TEST_F(SQLiteParameters, HistoryIsWhatWasObserved) {
  Run("PRAGMA user_version=1; CREATE TABLE t(v)");
  const auto oDatabase = Open();
  EXPECT_EQ(Texts{}, Changes(*oDatabase)) << "there is nothing to compare with";
  Run("PRAGMA user_version=2");
  EXPECT_EQ(Texts{"user_version: 1 -> 2"}, Changes(*oDatabase));
  Run("PRAGMA user_version=3");
  Run("PRAGMA user_version=4");  // nobody has looked meanwhile
  ASSERT_TRUE(oDatabase->Parameters()->Load());
  Run("PRAGMA page_size=1024; VACUUM; PRAGMA journal_mode=WAL");
  const Texts oAll = {"page_size: 4096 -> 1024", "journal_mode: delete -> wal", "user_version: 2 -> 4",
                      "user_version: 1 -> 2"};
  Texts oSeen = Changes(*Open());  // another instance of the same file
  ASSERT_EQ(4u, oSeen.size());
  std::sort(oSeen.begin(), oSeen.begin() + 2, std::greater<>());  // noticed together
  EXPECT_EQ(oAll, oSeen);
  EXPECT_EQ(oAll.size(), Changes(*oDatabase).size()) << "what was noticed already is no change";

  const auto oParameter = oDatabase->Parameters()->Item("user_version");
  ASSERT_EQ(2, oParameter->HistoryCount());
  EXPECT_EQ("2", oParameter->HistoryValue(1));
  EXPECT_EQ("4", oParameter->HistoryNewValue(1));
  EXPECT_EQ("1", oParameter->HistoryValue(2));
  EXPECT_GE(oParameter->HistoryDate(1), oParameter->HistoryDate(2));
  EXPECT_EQ(0, oDatabase->Parameters()->Item("cache_size")->HistoryCount());
}

TEST_F(SQLiteParameters, HistoryBelongsToTheFileNotToItsName) {
  Run("PRAGMA user_version=1; CREATE TABLE t(v)");
  EXPECT_EQ(Texts{}, Changes(*Open()));
  Run("PRAGMA user_version=2");
  ASSERT_EQ(1u, Changes(*Open()).size());
  std::filesystem::rename(m_oFolder / "a.db", m_oFolder / "b.db");
  Run("PRAGMA user_version=9; CREATE TABLE t(v)");
  EXPECT_EQ(Texts{}, Changes(*Open())) << "another file under the old name";
  EXPECT_EQ(1u, Changes(*Open("b.db")).size()) << "the file under its new name";
}

TEST_F(SQLiteParameters, ABrokenSideFileIsReportedOnceAndHidesNothing) {
  Run("PRAGMA user_version=7; CREATE TABLE t(v)");
  std::filesystem::create_directory(m_sState);
  WriteFile(m_sState + "/history.db", std::string(4096, 'x'));
  const auto oDatabase = Open();
  ASSERT_TRUE(oDatabase->Parameters()->Load());
  EXPECT_EQ("7", Value(*oDatabase, "user_version"));
  EXPECT_EQ(0, oDatabase->Parameters()->Item("user_version")->HistoryCount());

  EXPECT_FALSE(oDatabase->ParameterHistory()->Open());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find(m_sState + "/history.db"));
  EXPECT_EQ(Texts{}, Changes(*oDatabase)) << "told already";
  EXPECT_FALSE(oDatabase->History()->Open());

  std::filesystem::remove(m_sState + "/history.db");
  EXPECT_EQ(Texts{}, Changes(*oDatabase));
  Run("PRAGMA user_version=8");
  EXPECT_EQ(Texts{"user_version: 7 -> 8"}, Changes(*oDatabase)) << "mended without being opened again";
}

TEST_F(SQLiteParameters, ASideFileOfALaterVersionIsLeftAlone) {
  Run("CREATE TABLE t(v)");
  std::filesystem::create_directory(m_sState);
  Application(m_sState + "/history.db", "CREATE TABLE later(v); PRAGMA user_version=99");
  const auto oDatabase = Open();
  EXPECT_TRUE(oDatabase->Parameters()->Load());
  EXPECT_FALSE(oDatabase->ParameterHistory()->Open());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("format 99"));
  EXPECT_EQ(1, Application(m_sState + "/history.db").Number("SELECT count(*) FROM sqlite_schema"));
}

TEST_F(SQLiteParameters, AFolderThatCannotBeMadeHidesNothing) {
  Run("CREATE TABLE t(v)");
  WriteFile(m_sState, "a file where the folder should be");
  const auto oDatabase = Open();
  EXPECT_TRUE(oDatabase->Parameters()->Load());
  EXPECT_GT(oDatabase->Parameters()->Count(), 20);
  EXPECT_FALSE(oDatabase->ParameterHistory()->Open());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("history.db")) << oDatabase->LastError().ErrorText;
}

// Each of them sees the change; it happened once.
TEST_F(SQLiteParameters, ProcessesThatObserveTogetherRememberAChangeOnce) {
  Run("PRAGMA user_version=1; CREATE TABLE t(v)");
  ASSERT_TRUE(Open()->Parameters()->Load());
  for (const char* sVersion : {"2", "3"}) {
    Run(std::string("PRAGMA user_version=") + sVersion);
    std::vector<std::unique_ptr<Process>> processes;
    for (int i = 0; i < 6; ++i) {
      processes.push_back(std::make_unique<Process>([&] { return std::to_string(Changes(*Open()).size()); }));
    }
    for (const auto& oProcess : processes) EXPECT_EQ(std::to_string(sVersion[0] - '1'), oProcess->Result());
  }
  EXPECT_EQ((Texts{"user_version: 2 -> 3", "user_version: 1 -> 2"}), Changes(*Open()));
}

TEST_F(SQLiteParameters, CopiesAreListedNewestFirst) {
  Run("CREATE TABLE t(v)");
  ZELWbr3::SQLite::Options oOptions;
  oOptions.StateFolder = m_sState;
  ZELWbr3::SQLite::SQLiteDatabase oDatabase(m_oFolder / "a.db", oOptions);
  auto oHistory = oDatabase.History();
  EXPECT_TRUE(oHistory->Open() && oHistory->IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(m_sState)) << "nothing is made for looking";

  WriteFile(m_oFolder / "copy.db", "12345");
  EXPECT_TRUE(oDatabase.RegisterCopy(m_oFolder / "copy.db", {2026, 1, 31, 23, 0, 0}, "nightly"));
  EXPECT_TRUE(oDatabase.RegisterCopy("/nowhere/tape.db", {2026, 2, 1, 0, 0, 0}, "it's on tape"));
  EXPECT_TRUE(oDatabase.RegisterCopy(m_oFolder / "copy.db", {2025, 12, 1, 0, 0, 0}, ""));
  EXPECT_FALSE(oDatabase.RegisterCopy("", {2026, 1, 1}, "x"));
  EXPECT_FALSE(oDatabase.RegisterCopy("x", {}, "x"));
  EXPECT_NE(std::string::npos, oDatabase.LastError().ErrorText.find("without a date"));

  oHistory = oDatabase.History();
  ASSERT_TRUE(oHistory->Open());
  ASSERT_EQ(3, oHistory->RowCount());
  const auto oTape = oHistory->NextItem();
  const auto oNightly = oHistory->NextItem();
  EXPECT_EQ("it's on tape", oTape->Label);
  EXPECT_EQ("not known", oTape->Fields.at(1).Value);
  EXPECT_EQ("not there", oTape->Fields.at(2).Value);
  EXPECT_EQ("nightly", oNightly->Label);
  EXPECT_EQ((ZELLib3::Date{2026, 1, 31, 23, 0, 0}), oNightly->Date);
  EXPECT_EQ(1, oNightly->Kind);
  EXPECT_EQ(0, oNightly->ReturnCode);
  EXPECT_EQ(m_oFolder / "copy.db", oNightly->Fields.at(0).Value);
  EXPECT_EQ("5 bytes", oNightly->Fields.at(1).Value);
  EXPECT_EQ("there", oNightly->Fields.at(2).Value);
  EXPECT_EQ(2025, oHistory->NextItem()->Date.Year);
  EXPECT_EQ(nullptr, oHistory->NextItem());

  WriteFile(m_oFolder / "copy.db", "1234567");
  ASSERT_TRUE(oHistory->Open());
  oHistory->NextItem();
  EXPECT_EQ("another size: 7 bytes", oHistory->NextItem()->Fields.at(2).Value);
  Run("CREATE TABLE t(v)", "b.db");
  EXPECT_TRUE(Open("b.db")->History()->IsEmpty()) << "of another file";
}
