#include "tests/instances/AnalyzerRuns.h"

#include <sys/resource.h>

#include <regex>

using namespace SQLiteFiles;
using Strings = std::vector<std::string>;

TEST_F(AnalyzerRuns, OutlivesItsHostAndIsStoppedByAnother) {
  EXPECT_EQ("2", State());
  EXPECT_EQ("the analyzer is not running", Stop());
  Process oHost([&] {
    signal(SIGTERM, SIG_IGN);  // what a host does to its signals is its own affair
    return Start(Every(kNever));
  });
  EXPECT_EQ("ok", oHost.Result());

  const auto oAnalyzer = m_oDatabase->Analyzer();
  EXPECT_EQ("1", State());
  const int lProcess = ProcessID();
  EXPECT_EQ(lProcess, getsid(lProcess));
  EXPECT_EQ(std::to_string(getsid(lProcess)), oAnalyzer->SessionID());
  const std::string sProcess = "/proc/" + std::to_string(lProcess) + "/";
  EXPECT_EQ("/", std::filesystem::read_symlink(sProcess + "cwd"));
  for (const char* sStream : {"fd/0", "fd/1", "fd/2"}) {
    EXPECT_EQ("/dev/null", std::filesystem::read_symlink(sProcess + sStream));
  }
  EXPECT_EQ(kNever, oAnalyzer->Interval());
  EXPECT_EQ("No", oAnalyzer->Reconnect());
  EXPECT_EQ("", oAnalyzer->ConfigFile());
  EXPECT_TRUE(std::regex_match(oAnalyzer->StartTime(), std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")));
  EXPECT_EQ("the analyzer is running already, as process " + std::to_string(lProcess), Start(Every(1)));

  EXPECT_EQ("ok", Stop());
  EXPECT_EQ("2", State());
  EXPECT_TRUE(HasEnded(lProcess));
  EXPECT_EQ("ok", Start({}));
  EXPECT_EQ(900, oAnalyzer->Interval());
}

TEST_F(AnalyzerRuns, WritesWhatTheInstanceSaysUntilTheNumberIsReached) {
  Application oApplication(Path());
  InsertRows(oApplication, 20);
  const int iPages = oApplication.Number("PRAGMA page_count");
  const auto oState = m_oDatabase->StateInfo();
  ASSERT_GT(oState->LogUsed(), 20);
  ASSERT_EQ("ok", Start(Every(1, 2)));
  AwaitEnd();

  EXPECT_EQ("2", State());
  EXPECT_EQ((Strings{"Number,Status,State,Error", "1,5,Online,", "2,5,Online,"}), Lines("state"));
  const std::string sPages = std::to_string(iPages) + "," + std::to_string(iPages) + ",100,4096";
  EXPECT_EQ((Strings{"Number,Total,Used,Percent,PageSize", "1," + sPages, "2," + sPages}), Lines("data"));
  EXPECT_EQ("2,1000," + std::to_string(oState->LogUsed()) + "," + std::to_string(oState->LogPercent()),
            Lines("log").back());
  // This program's two connections are one process, the analyzer is the other.
  EXPECT_EQ("2,2,", Lines("sessions").back().substr(0, 4));

  const auto oAnalyzer = m_oDatabase->Analyzer();
  EXPECT_EQ("2 of 2 evaluations, the last one at ", oAnalyzer->Info().substr(0, 36));
  const auto oSets = oAnalyzer->ProtocolSets();
  ASSERT_TRUE(oSets.has_value());
  ASSERT_FALSE(oSets->empty());
  EXPECT_EQ("4 files, 1 KB", oSets->front().Texts[2]);
}

TEST_F(AnalyzerRuns, KilledHardItIsFoundDeadAndStartsAgain) {
  ASSERT_EQ("ok", Start(Every(kNever)));
  const int lProcess = ProcessID();
  Kill(lProcess);
  EXPECT_EQ("2 The analyzer, process " + std::to_string(lProcess) + ", ended without a word",
            State().substr(0, State().find(" after")));
  EXPECT_EQ("the analyzer is not running", Stop());

  EXPECT_EQ("ok", Start(Every(kNever)));
  EXPECT_EQ("1", State());
  EXPECT_EQ((Strings{"Number,Status,State,Error", "1,5,Online,", "2,5,Online,"}), Lines("state"));
}

TEST_F(AnalyzerRuns, AnotherProcessWithItsNumberIsNotTakenForIt) {
  ZELWbr3::Instances::AnalyzerRecord oRecord;
  oRecord.Started = "2026-03-02T07:00:00+00:00";
  oRecord.ProcessID = getpid();
  std::filesystem::create_directories(Analyzer().Path());
  WriteFile(Analyzer().LockPath(), oRecord.Encode());
  EXPECT_EQ("2 The analyzer, process " + std::to_string(getpid()) +
                ", ended without a word: it was killed, or the system went down",
            State());
  EXPECT_EQ("the analyzer is not running", Stop());

  WriteFile(Analyzer().LockPath(), "process=1\n");
  EXPECT_EQ("2", State());
  EXPECT_EQ("ok", Start(Every(kNever)));
}

TEST_F(AnalyzerRuns, WithItsLockFileTakenAwayItEndsAndMakesNoOther) {
  EXPECT_EQ(Start(Every(1)), "ok");
  const RunningProcess oProcess(ProcessID());
  std::filesystem::remove_all(Analyzer().Path());
  EXPECT_TRUE(oProcess.WaitForEnd(kPatience));
  EXPECT_FALSE(std::filesystem::exists(Analyzer().Path()));
}

TEST_F(AnalyzerRuns, OfManyStartsAtOnceOneRuns) {
  std::vector<std::unique_ptr<Process>> hosts;
  for (int i = 0; i < 6; ++i) hosts.push_back(std::make_unique<Process>([&] { return Start(Every(kNever)); }));
  int iStarted = 0;
  for (const auto& oHost : hosts) {
    const std::string sResult = oHost->Result();
    iStarted += sResult == "ok";
    EXPECT_TRUE(sResult == "ok" || sResult.starts_with("the analyzer is running already")) << sResult;
  }
  EXPECT_EQ(1, iStarted);
  EXPECT_EQ(2u, Lines("state").size());
}

TEST_F(AnalyzerRuns, WithoutReconnectItEndsWhenTheDatabaseGoes) {
  ASSERT_EQ("ok", Start(Every(1)));
  std::filesystem::rename(Path(), Path("away.db"));
  AwaitEnd();
  EXPECT_EQ("2 " + Path() + ": no such file", State());
  EXPECT_EQ("0,Not connected," + Path() + ": no such file", Lines("state").back().substr(2));
  EXPECT_EQ("no such file", Start(Every(1)));
}

TEST_F(AnalyzerRuns, WithReconnectItWaitsForTheDatabase) {
  Options oOptions = Every(1);
  oOptions.Reconnect = true;
  ASSERT_EQ("ok", Start(oOptions));
  EXPECT_EQ("Yes", m_oDatabase->Analyzer()->Reconnect());
  const int lProcess = ProcessID();
  WriteFile(Path("new.db"), std::string(5000, 'x'));
  std::filesystem::copy_file(Path(), Path("copy.db"));
  std::filesystem::rename(Path("new.db"), Path());
  Await([&] { return State() == "1 " + Path() + ": is not a SQLite database, or it is encrypted"; });
  std::filesystem::rename(Path("copy.db"), Path());
  Await([&] { return State() == "1"; });
  EXPECT_EQ(lProcess, ProcessID());
  EXPECT_EQ("5,Online,", Lines("state").back().substr(2));
}

TEST_F(AnalyzerRuns, LeavesTheFileToOthersBetweenEvaluations) {
  ASSERT_EQ("ok", Start(Every(1)));
  ASSERT_EQ("ok", Done(m_oDatabase->Admin()));
  Await([&] { return Lines("state").back().find("locked by another") != std::string::npos; });
  EXPECT_EQ("1", State());
  const std::size_t iBefore = Lines("data").size();
  ASSERT_EQ("ok", Done(m_oDatabase->Online()));
  Await([&] { return Lines("data").size() > iBefore; });
  EXPECT_LT(Lines("data").size(), Lines("state").size());
}

TEST_F(AnalyzerRuns, TheFileIsKnownByAllItsNames) {
  ASSERT_EQ("ok", Start(Every(kNever)));
  std::filesystem::create_symlink("a.db", Path("link.db"));
  EXPECT_EQ(1, ZELWbr3::SQLite::OpenDatabase(Path("link.db"))->Analyzer()->State());
  const std::string sFolder = Analyzer().Path();
  std::filesystem::rename(Path(), Path("b.db"));
  EXPECT_EQ(sFolder, ZELWbr3::Instances::AnalyzerFolder(Path("link.db")).Path());
  EXPECT_NE(sFolder, ZELWbr3::Instances::AnalyzerFolder(Path("b.db")).Path());
}

TEST_F(AnalyzerRuns, TheConfigurationSwitchesGroupsOff) {
  Options oOptions = Every(kNever, 1);
  oOptions.Config = Path("-my config");
  WriteFile(oOptions.Config,
            "\xEF\xBB\xBF# what is not needed\r\n\r\nlog = no\r\n sessions=no # nor that\r\ndata = yes");
  ASSERT_EQ("ok", Start(oOptions));
  AwaitEnd();
  EXPECT_EQ(oOptions.Config, m_oDatabase->Analyzer()->ConfigFile());
  EXPECT_EQ(2u, Lines("data").size());
  EXPECT_EQ(0u, Lines("log").size() + Lines("sessions").size());
}

TEST_F(AnalyzerRuns, ABrokenConfigurationIsNamedAndNothingIsMade) {
  const struct {
    std::string Text;
    const char* Wrong;
  } cases[] = {
      {"data=yes\ndata", "line 2: expected GROUP = yes or GROUP = no, found \"data\""},
      {"cake = no", "line 1: there is no group \"cake\", only data, log, sessions"},
      {"state = no", "line 1: there is no group \"state\", only data, log, sessions"},
      {"log = maybe", "line 1: log: expected yes or no, found \"maybe\""},
      {std::string("\0\x1b=\xff", 4), "line 1: there is no group \"  \", only data, log, sessions"},
      {std::string(70000, '#'), "is larger than 65536 bytes"},
  };
  Options oOptions = Every(1);
  oOptions.Config = Path("config");
  for (const auto& c : cases) {
    WriteFile(oOptions.Config, c.Text);
    EXPECT_EQ(oOptions.Config + ": " + c.Wrong, Start(oOptions));
  }
  oOptions.Config = Path("pipe");
  mkfifo(oOptions.Config.c_str(), 0600);
  EXPECT_EQ(oOptions.Config + ": is not a regular file", Start(oOptions));
  oOptions.Config = "missing";
  EXPECT_EQ(std::filesystem::absolute("missing").string() + ": there is no such file", Start(oOptions));
  EXPECT_EQ("the interval -1 is negative", Start(Every(-1)));
  EXPECT_EQ("the number -5 is negative", Start(Every(1, -5)));
  EXPECT_FALSE(std::filesystem::exists(Path("state")));
}

TEST_F(AnalyzerRuns, NoMoreRoomEndsItWithAnErrorAndLeavesWholeLines) {
  // The system lets no file grow beyond the lock file's size, and "state" is
  // nearly as large: there is room for one more line, but not for two.
  ASSERT_EQ("ok", Start(Every(kNever, 1)));
  AwaitEnd();
  const std::string sSet = Analyzer().Path() + "/" + *Names(Analyzer().Path()).begin();  // its name is its day
  const std::size_t lLimit = ZELWbr3::Instances::AnalyzerRecord::Bytes;
  std::string sText = "Number,Time,Status,State,Error\n";
  while (sText.size() < lLimit - 100) sText += "1,2026-03-02T07:00:00+00:00,5,Online,\n";
  WriteFile(sSet + "/state.csv", sText);
  const std::size_t iBefore = Lines("state").size();
  EXPECT_EQ("ok", Process([&] {
                    const rlimit oLimit{lLimit, lLimit};
                    setrlimit(RLIMIT_FSIZE, &oLimit);
                    return Start(Every(1));
                  }).Result());
  AwaitEnd();
  EXPECT_EQ("2 " + sSet + "/state.csv: No space left on device", State());
  const std::size_t iAdded = Lines("state").size() - iBefore;
  EXPECT_EQ(iAdded, Lines("data").size() - 2);
  EXPECT_TRUE(Lines("state").back().ends_with(",5,Online,")) << Lines("state").back();
}

TEST_F(AnalyzerRuns, AProgramThatCannotBeStartedIsNamed) {
  const auto StartWith = [&](const std::string& sProgram) {
    ZELWbr3::SQLite::Options oOptions;
    oOptions.AnalyzerProgram = sProgram;
    m_oDatabase = ZELWbr3::SQLite::OpenDatabase(Path(), oOptions);
    return Start(Every(1));
  };
  EXPECT_EQ("/nowhere/zelanalyzer: No such file or directory", StartWith("/nowhere/zelanalyzer"));
  EXPECT_EQ("/bin/false: ended without a word", StartWith("/bin/false"));
  unsetenv("ZELWBR3_ANALYZER");
  EXPECT_NE(std::string::npos, StartWith("").find("/zelanalyzer does not exist"));
}

TEST_F(AnalyzerRuns, TheProgramSaysInOneLineWhatIsWrong) {
  const std::string sInstance = "sqlite:" + Path();
  const std::pair<Strings, std::string> cases[] = {
      {{}, "INSTANCE is required"},
      {{"a.db"}, "The instance \"a.db\" is not sqlite:FILE"},
      {{"sqlite:"}, "The instance \"sqlite:\" names no file"},
      {{"sqlite:/no such\nfile"}, "/no such file: no such file"},
      {{sInstance, "--number=x"}, "--number: Value x not in range 0 to 2147483647"},
      {{sInstance, "--number=3000000000"}, "--number: Value 3000000000 not in range 0 to 2147483647"},
      {{sInstance, "--fast"}, "The following argument was not expected: --fast"}};
  for (const auto& [arguments, sWrong] : cases) {
    Strings command = {ZELANALYZER};
    command.insert(command.end(), arguments.begin(), arguments.end());
    try {
      ZELWbr3::Instances::RunProgram(command, kPatience);
      ADD_FAILURE() << "nothing is wrong instead of " << sWrong;
    } catch (const std::exception& oError) {
      EXPECT_EQ("zelanalyzer: " + sWrong, oError.what());
    }
  }
  EXPECT_FALSE(std::filesystem::exists(Path("state")));
}

TEST_F(AnalyzerRuns, TodaysProtocolsAreDeletedFirstWhenAskedAndWhileItRuns) {
  ASSERT_EQ("ok", Start(Every(kNever, 1)));
  AwaitEnd();
  Options oOptions = Every(1);
  for (const bool bDelete : {false, true}) {
    oOptions.Delete = bDelete;
    ASSERT_EQ("ok", Start(oOptions));
    EXPECT_EQ(bDelete ? "1,5,Online," : "2,5,Online,", Lines("state").at(bDelete ? 1 : 2));
    if (bDelete) continue;
    ASSERT_EQ("ok", Stop());
  }
  EXPECT_EQ("ok", Delete("99991231"));
  Await([&] { return Lines("state").size() > 1; });
  EXPECT_EQ("1", State());
  EXPECT_EQ("1,5,Online,", Lines("state")[1]);
}
