#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;
namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

class SQLiteParameters : public testing::Test {
 protected:
  std::shared_ptr<ZELLib3::Database> Open(const std::string& sName = "a.db") {
    return OpenDatabase(m_oFolder / sName, {.StateFolder = m_sState});
  }
  void Run(const std::string& sSQL, const std::string& sName = "a.db") { Application(m_oFolder / sName, sSQL); }

  static std::string Value(ZELLib3::Database& oDatabase, const std::string& sName) {
    return oDatabase.Parameters()->Item(sName)->Value();
  }
  /// "name: old -> new", newest first.
  static Texts Changes(ZELLib3::Database& oDatabase) {
    Texts oTexts;
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

}  // namespace

TEST_F(SQLiteParameters, AreWhatTheFileAndTheConnectionHave) {
  Run("PRAGMA page_size=8192; PRAGMA auto_vacuum=INCREMENTAL; PRAGMA encoding='UTF-16le'; PRAGMA journal_mode=WAL;"
      "PRAGMA user_version=42; PRAGMA application_id=-5; PRAGMA default_cache_size=500; CREATE TABLE t(v)");
  const auto oDatabase = Open();
  for (const auto& [sName, sValue] : {std::pair("page_size", "8192"),
                                      {"auto_vacuum", "INCREMENTAL"},
                                      {"encoding", "UTF-16le"},
                                      {"journal_mode", "wal"},
                                      {"user_version", "42"},
                                      {"application_id", "-5"},
                                      {"cache_size", "500"},
                                      {"query_only", "ON"},
                                      {"busy_timeout", "250"},
                                      {"locking_mode", "normal"}}) {
    EXPECT_EQ(sValue, Value(*oDatabase, sName)) << sName;
  }
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

  // A default that is read when the file is opened waits until then.
  Run("PRAGMA default_cache_size=700");
  const auto oWaits = oDatabase->Parameters()->Item("cache_size");
  EXPECT_EQ("500 700 700", oWaits->Value() + " " + oWaits->NewValue() + " " + oWaits->NewValueOnline());
  ASSERT_TRUE(oDatabase->Shutdown() && oDatabase->Online());
  EXPECT_EQ("700", Value(*oDatabase, "cache_size"));
  EXPECT_EQ("700", oDatabase->Parameters()->Item("cache_size")->NewValue());

  ASSERT_TRUE(oDatabase->Admin()) << oDatabase->LastError().ErrorText;
  EXPECT_EQ("exclusive", Value(*oDatabase, "locking_mode"));
  ASSERT_TRUE(oDatabase->Shutdown());
  EXPECT_FALSE(oDatabase->Parameters()->Load());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("offline"));
  EXPECT_EQ(0, oDatabase->Parameters()->Count());
}

TEST_F(SQLiteParameters, HistoryIsWhatWasObserved) {
  Run("PRAGMA user_version=1; CREATE TABLE t(v)");
  const auto oDatabase = Open();
  EXPECT_EQ(Texts{}, Changes(*oDatabase)) << "there is nothing to compare with";
  Run("PRAGMA user_version=2");
  EXPECT_EQ(Texts{"user_version: 1 -> 2"}, Changes(*oDatabase));
  Run("PRAGMA user_version=3");
  Run("PRAGMA user_version=4");  // nobody has looked in between
  ASSERT_TRUE(oDatabase->Parameters()->Load());
  Run("PRAGMA page_size=1024; VACUUM; PRAGMA journal_mode=WAL");
  Texts oSeen = Changes(*Open());  // another instance of the same file
  ASSERT_EQ(4u, oSeen.size());
  std::sort(oSeen.begin(), oSeen.begin() + 2, std::greater<>());  // noticed together
  EXPECT_EQ(
      (Texts{"page_size: 4096 -> 1024", "journal_mode: delete -> wal", "user_version: 2 -> 4", "user_version: 1 -> 2"}),
      oSeen);
  EXPECT_EQ(4u, Changes(*oDatabase).size()) << "what was noticed already is no change";

  const auto oParameter = oDatabase->Parameters()->Item("user_version");
  ASSERT_EQ(2, oParameter->HistoryCount());
  EXPECT_EQ("2 -> 4", oParameter->HistoryValue(1) + " -> " + oParameter->HistoryNewValue(1));
  EXPECT_EQ("1", oParameter->HistoryValue(2));
  EXPECT_GE(oParameter->HistoryDate(1), oParameter->HistoryDate(2));
  EXPECT_EQ(0, oDatabase->Parameters()->Item("cache_size")->HistoryCount());

  // The history is the file's, not that of its name.
  fs::rename(m_oFolder / "a.db", m_oFolder / "b.db");
  Run("PRAGMA user_version=9; CREATE TABLE t(v)");
  EXPECT_EQ(Texts{}, Changes(*Open())) << "another file under the old name";
  EXPECT_EQ(4u, Changes(*Open("b.db")).size()) << "the file under its new name";
}

TEST_F(SQLiteParameters, ABrokenStateStoreIsReportedOnceAndHidesNothing) {
  Run("PRAGMA user_version=7; CREATE TABLE t(v)");
  const std::string sStore = m_sState + "/history.db";
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

  fs::remove(m_sState);
  fs::create_directory(m_sState);
  Application(sStore, "CREATE TABLE later(v); PRAGMA user_version=99");
  ExpectReported("format 99");
  EXPECT_EQ(1, Application(sStore).Number("SELECT count(*) FROM sqlite_schema")) << "left alone";

  WriteFile(sStore, std::string(4096, 'x'));
  const auto oDatabase = ExpectReported(sStore);
  EXPECT_EQ(Texts{}, Changes(*oDatabase)) << "told already";
  EXPECT_FALSE(oDatabase->History()->Open());
  fs::remove(sStore);
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
  const auto Copies = [&] {
    std::string sCopies;
    const auto oHistory = oDatabase.History();
    EXPECT_TRUE(oHistory->Open());
    while (const auto oItem = oHistory->NextItem()) {
      sCopies += std::to_string(oItem->Date.Day) + " " + oItem->Label;
      for (const auto& oField : oItem->Fields) sCopies += " | " + oField.Value;
      sCopies += "\n";
    }
    return sCopies;
  };
  EXPECT_EQ("", Copies());
  EXPECT_FALSE(fs::exists(m_sState)) << "nothing is made for looking";

  const std::string sCopy = m_oFolder / "copy.db";
  WriteFile(sCopy, "12345");
  EXPECT_TRUE(oDatabase.RegisterCopy(sCopy, {2026, 1, 31, 23, 0, 0}, "nightly"));
  EXPECT_TRUE(oDatabase.RegisterCopy("/nowhere/tape.db", {2026, 2, 1, 0, 0, 0}, "it's on tape"));
  EXPECT_FALSE(oDatabase.RegisterCopy("", {2026, 1, 1}, "x") || oDatabase.RegisterCopy("x", {}, "x"));
  EXPECT_NE(std::string::npos, oDatabase.LastError().ErrorText.find("without a date"));
  const std::string sTape = "1 it's on tape | /nowhere/tape.db | not known | not there\n";
  EXPECT_EQ(sTape + "31 nightly | " + sCopy + " | 5 bytes | there\n", Copies());
  WriteFile(sCopy, "1234567");
  EXPECT_EQ(sTape + "31 nightly | " + sCopy + " | 5 bytes | another size: 7 bytes\n", Copies());
  Run("CREATE TABLE t(v)", "b.db");
  EXPECT_TRUE(Open("b.db")->History()->IsEmpty()) << "of another file";
}
