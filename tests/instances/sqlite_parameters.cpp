#include "tests/instances/SQLiteFiles.h"

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
  const std::pair<const char*, const char*> values[] = {
      {"page_size", "8192"},   {"auto_vacuum", "INCREMENTAL"}, {"encoding", "UTF-16le"},
      {"journal_mode", "wal"}, {"user_version", "42"},         {"application_id", "-5"},
      {"query_only", "ON"},    {"busy_timeout", "250"},        {"locking_mode", "normal"}};
  for (const auto& [sName, sValue] : values) EXPECT_EQ(sValue, Value(*oDatabase, sName)) << sName;
  for (const char* sName : {"PAGE_SIZE", "integrity_check", "", "page_size; --"}) {
    EXPECT_FALSE(oDatabase->Parameters()->Item(sName)->Exists()) << sName;
  }
  const auto oParameters = oDatabase->Parameters();
  ASSERT_TRUE(oParameters->Load() && oParameters->Read());
  for (int i = 1; i <= oParameters->Count(); ++i) {
    const auto oParameter = oParameters->Item(i);
    EXPECT_FALSE(oParameter->Description().empty() || oParameter->Explanation().empty()) << oParameter->Name();
    EXPECT_EQ(oParameter->Value(), oParameter->NewValue()) << oParameter->Name() << ": nothing waits";
  }

  ASSERT_TRUE(oDatabase->Admin()) << oDatabase->LastError().ErrorText;
  EXPECT_EQ("exclusive", Value(*oDatabase, "locking_mode"));
  ASSERT_TRUE(oDatabase->Shutdown());
  EXPECT_FALSE(oDatabase->Parameters()->Load());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("offline"));
  EXPECT_EQ(0, oDatabase->Parameters()->Count());
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

TEST_F(SQLiteParameters, ABrokenStateStoreIsReportedOnceAndHidesNothing) {
  Run("PRAGMA user_version=7; CREATE TABLE t(v)");
  const std::string sSide = m_sState + "/history.db";
  const auto ExpectReported = [&](const std::string& sWrong) {
    const auto oDatabase = Open();
    EXPECT_TRUE(oDatabase->Parameters()->Load());
    EXPECT_EQ("7", Value(*oDatabase, "user_version"));
    EXPECT_FALSE(oDatabase->ParameterHistory()->Open());
    EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find(sWrong)) << oDatabase->LastError().ErrorText;
    return oDatabase;
  };
  WriteFile(m_sState, "a file where the folder should be");
  ExpectReported("history.db");

  std::filesystem::remove(m_sState);
  std::filesystem::create_directory(m_sState);
  Application(sSide, "CREATE TABLE later(v); PRAGMA user_version=99");
  ExpectReported("format 99");
  EXPECT_EQ(1, Application(sSide).Number("SELECT count(*) FROM sqlite_schema")) << "left alone";

  WriteFile(sSide, std::string(4096, 'x'));
  const auto oDatabase = ExpectReported(sSide);
  EXPECT_EQ(Texts{}, Changes(*oDatabase)) << "told already";
  EXPECT_FALSE(oDatabase->History()->Open());
  std::filesystem::remove(sSide);
  EXPECT_EQ(Texts{}, Changes(*oDatabase));
  Run("PRAGMA user_version=8");
  EXPECT_EQ(Texts{"user_version: 7 -> 8"}, Changes(*oDatabase)) << "mended without being opened again";
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
  const auto oInstance = Open();
  auto& oDatabase = dynamic_cast<ZELWbr3::SQLite::SQLiteDatabase&>(*oInstance);
  auto oHistory = oDatabase.History();
  EXPECT_TRUE(oHistory->Open() && oHistory->IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(m_sState)) << "nothing is made for looking";

  WriteFile(m_oFolder / "copy.db", "12345");
  EXPECT_TRUE(oDatabase.RegisterCopy(m_oFolder / "copy.db", {2026, 1, 31, 23, 0, 0}, "nightly"));
  EXPECT_TRUE(oDatabase.RegisterCopy("/nowhere/tape.db", {2026, 2, 1, 0, 0, 0}, "it's on tape"));
  EXPECT_FALSE(oDatabase.RegisterCopy("", {2026, 1, 1}, "x"));
  EXPECT_FALSE(oDatabase.RegisterCopy("x", {}, "x"));
  EXPECT_NE(std::string::npos, oDatabase.LastError().ErrorText.find("without a date"));

  oHistory = oDatabase.History();
  const auto Next = [&] {
    const auto oItem = oHistory->NextItem();
    std::string sItem = std::to_string(oItem->Date.Day) + " " + oItem->Label;
    for (const auto& oField : oItem->Fields) sItem += " | " + oField.Value;
    return sItem;
  };
  ASSERT_TRUE(oHistory->Open());
  EXPECT_EQ("1 it's on tape | /nowhere/tape.db | not known | not there", Next());
  EXPECT_EQ("31 nightly | " + m_oFolder / "copy.db" + " | 5 bytes | there", Next());
  EXPECT_EQ(nullptr, oHistory->NextItem());

  WriteFile(m_oFolder / "copy.db", "1234567");
  ASSERT_TRUE(oHistory->Open());
  oHistory->NextItem();
  EXPECT_EQ("31 nightly | " + m_oFolder / "copy.db" + " | 5 bytes | another size: 7 bytes", Next());
  Run("CREATE TABLE t(v)", "b.db");
  EXPECT_TRUE(Open("b.db")->History()->IsEmpty()) << "of another file";
}
