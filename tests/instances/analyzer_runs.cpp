#include "tests/instances/AnalyzerRuns.h"

#include <sys/resource.h>

#include <regex>

using namespace SQLiteFiles;
using Strings = std::vector<std::string>;
namespace fs = std::filesystem;

TEST_F(AnalyzerRuns, OutlivesItsHostAndIsStoppedByAnother) {
  EXPECT_EQ("2", State());
  EXPECT_EQ("the analyzer is not running", Stop());
  EXPECT_EQ("ok", Process([&] {
                    signal(SIGTERM, SIG_IGN);  // what a host does to its signals is its own affair
                    return Start(Every(kNever));
                  }).Result());
  const auto oAnalyzer = m_oDatabase->Analyzer();
  EXPECT_EQ("1", State());
  const int lProcess = ProcessID();
  EXPECT_EQ(lProcess, getsid(lProcess));
  EXPECT_EQ(std::to_string(getsid(lProcess)), oAnalyzer->SessionID());
  for (const auto& [sLink, sTarget] :
       {std::pair("/cwd", "/"), {"/fd/0", "/dev/null"}, {"/fd/1", "/dev/null"}, {"/fd/2", "/dev/null"}}) {
    EXPECT_EQ(sTarget, fs::read_symlink("/proc/" + std::to_string(lProcess) + sLink));
  }
  EXPECT_EQ(kNever, oAnalyzer->Interval());
  EXPECT_EQ("No", oAnalyzer->Reconnect() + oAnalyzer->ConfigFile());
  EXPECT_TRUE(std::regex_match(oAnalyzer->StartTime(), std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")));
  EXPECT_EQ("the analyzer is running already, as process " + std::to_string(lProcess), Start(Every(1)));

  EXPECT_EQ("ok", Stop());
  EXPECT_EQ("2", State());
  EXPECT_TRUE(HasEnded(lProcess));
  EXPECT_EQ("ok", Start({}));
  EXPECT_EQ(900, oAnalyzer->Interval());
}

TEST_F(AnalyzerRuns, WritesWhatTheInstanceSaysUntilTheNumberIsReached) {
  InsertRows(App(), 20);
  const auto oState = m_oDatabase->StateInfo();
  ASSERT_GT(oState->LogUsed(), 20);
  ASSERT_EQ("ok", Start(Every(1, 2)));
  AwaitEnd();

  EXPECT_EQ("2", State());
  EXPECT_EQ((Strings{"Number,Status,State,Error", "1,5,Online,", "2,5,Online,"}), Lines("state"));
  const std::string sPages = App().Text("PRAGMA page_count");
  EXPECT_EQ((Strings{"Number,Total,Used,Percent,PageSize", "1," + sPages + "," + sPages + ",100,4096",
                     "2," + sPages + "," + sPages + ",100,4096"}),
            Lines("data"));
  EXPECT_EQ("2,1000," + std::to_string(oState->LogUsed()) + "," + std::to_string(oState->LogPercent()),
            Lines("log").back());
  // This program's two connections are one process, the analyzer is the other.
  EXPECT_EQ("2,2,", Lines("sessions").back().substr(0, 4));
  const auto oAnalyzer = m_oDatabase->Analyzer();
  EXPECT_EQ("2 of 2 evaluations, the last one at ", oAnalyzer->Info().substr(0, 36));
  EXPECT_EQ("4 files, 1 KB", oAnalyzer->ProtocolSets().value().at(0).Texts[2]);
}

TEST_F(AnalyzerRuns, KilledHardItIsFoundDeadAndStartsAgain) {
  ASSERT_EQ("ok", Start(Every(kNever)));
  const std::string sProcess = std::to_string(ProcessID());
  Kill(ProcessID());
  EXPECT_EQ(0u, State().find("2 The analyzer, process " + sProcess + ", ended unexpectedly")) << State();
  EXPECT_EQ("the analyzer is not running", Stop());
  EXPECT_EQ("ok", Start(Every(kNever)));
  EXPECT_EQ("1", State());
  EXPECT_EQ((Strings{"Number,Status,State,Error", "1,5,Online,", "2,5,Online,"}), Lines("state"));
}

TEST_F(AnalyzerRuns, AnotherProcessWithItsNumberIsNotTakenForIt) {
  ZELWbr3::Instances::AnalyzerRecord oRecord;
  oRecord.Started = "2026-03-02T07:00:00+00:00";
  oRecord.ProcessID = getpid();
  fs::create_directories(Analyzer().Path());
  WriteFile(Analyzer().LockPath(), oRecord.Encode());
  EXPECT_EQ("2 The analyzer, process " + std::to_string(getpid()) +
                ", ended unexpectedly: it was killed, or the system went down",
            State());
  EXPECT_EQ("the analyzer is not running", Stop());
  WriteFile(Analyzer().LockPath(), "process=1\n");
  EXPECT_EQ("2", State());
  EXPECT_EQ("ok", Start(Every(kNever)));
}

TEST_F(AnalyzerRuns, ALinkInPlaceOfItsLockFileIsNotFollowed) {
  fs::create_directories(Analyzer().Path());
  WriteFile(Path("precious"), "mine");
  fs::create_symlink(Path("precious"), Analyzer().LockPath());
  EXPECT_EQ(Analyzer().LockPath() + ": is a symbolic link, not a lock file", Start(Every(kNever)));
  EXPECT_EQ("mine", ReadFile(Path("precious")));
  EXPECT_THROW(m_oDatabase->Analyzer()->State(), ZELLib3::InstanceError);
  fs::remove(Analyzer().LockPath());
}

TEST_F(AnalyzerRuns, WithItsLockFileTakenAwayItEndsAndMakesNoOther) {
  EXPECT_EQ(Start(Every(1)), "ok");
  const RunningProcess oProcess(ProcessID());
  fs::remove_all(Analyzer().Path());
  EXPECT_TRUE(oProcess.WaitForEnd(kPatience));
  EXPECT_FALSE(fs::exists(Analyzer().Path()));
}

TEST_F(AnalyzerRuns, OfManyStartsAtOnceOneRuns) {
  std::vector<std::unique_ptr<Process>> hosts;
  for (int i = 0; i < 6; ++i) hosts.push_back(std::make_unique<Process>([&] { return Start(Every(kNever)); }));
  int iRefused = 0;
  for (const auto& oHost : hosts) iRefused += oHost->Result().starts_with("the analyzer is running already");
  EXPECT_EQ(5, iRefused);
  EXPECT_EQ("1", State());
  EXPECT_EQ(2u, Lines("state").size());
}

TEST_F(AnalyzerRuns, WithoutReconnectItEndsWhenTheDatabaseGoes) {
  ASSERT_EQ("ok", Start(Every(1)));
  fs::rename(Path(), Path("away.db"));
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
  fs::copy_file(Path(), Path("copy.db"));
  fs::rename(Path("new.db"), Path());
  Await([&] { return State() == "1 " + Path() + ": is not a SQLite database, or it is encrypted"; });
  fs::rename(Path("copy.db"), Path());
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
  const auto FolderOf = [&](const char* sName) { return ZELWbr3::Instances::AnalyzerFolder(Path(sName)).Path(); };
  const std::string sFolder = FolderOf("a.db");
  fs::create_symlink("a.db", Path("link.db"));
  EXPECT_EQ(sFolder, FolderOf("link.db"));
  fs::rename(Path(), Path("b.db"));
  EXPECT_EQ(sFolder, FolderOf("link.db"));
  EXPECT_NE(sFolder, FolderOf("b.db"));
}

TEST_F(AnalyzerRuns, TheConfigurationSwitchesGroupsOff) {
  Options oOptions = Every(kNever, 1);
  oOptions.Config = Path("-my config");
  WriteFile(oOptions.Config, "\xEF\xBB\xBF# not needed\r\n\r\nlog = no\r\n sessions=no # nor that\r\ndata = yes");
  ASSERT_EQ("ok", Start(oOptions));
  AwaitEnd();
  EXPECT_EQ(oOptions.Config, m_oDatabase->Analyzer()->ConfigFile());
  EXPECT_EQ(2u, Lines("data").size());
  EXPECT_EQ(0u, Lines("log").size() + Lines("sessions").size());
}

TEST_F(AnalyzerRuns, WhatCannotBeStartedIsNamedAndNothingIsMade) {
  Options oOptions = Every(1);
  oOptions.Config = Path("config");
  for (const auto& [sText, sWrong] :
       {std::pair<std::string, const char*>("data=yes\ndata",
                                            "line 2: expected GROUP = yes or GROUP = no, found \"data\""),
        {"cake = no", "line 1: there is no group \"cake\", only data, log, sessions"},
        {"state = no", "line 1: there is no group \"state\", only data, log, sessions"},
        {"log = maybe", "line 1: log: expected yes or no, found \"maybe\""},
        {std::string("\0\x1b=\xff", 4), "line 1: there is no group \"  \", only data, log, sessions"},
        {std::string(70000, '#'), "is larger than 65536 bytes"}}) {
    WriteFile(oOptions.Config, sText);
    EXPECT_EQ(oOptions.Config + ": " + sWrong, Start(oOptions));
  }
  oOptions.Config = Path("pipe");
  mkfifo(oOptions.Config.c_str(), 0600);
  EXPECT_EQ(oOptions.Config + ": is not a regular file", Start(oOptions));
  oOptions.Config = "missing";
  EXPECT_EQ(fs::absolute("missing").string() + ": there is no such file", Start(oOptions));
  EXPECT_EQ("the interval -1 is negative", Start(Every(-1)));
  EXPECT_EQ("the number -5 is negative", Start(Every(1, -5)));

  unsetenv("ZELWBR3_ANALYZER");
  for (const auto& [sProgram, sWrong] : {std::pair("/nowhere/zelanalyzer", "/nowhere/zelanalyzer: No such file"),
                                         {"/bin/false", "/bin/false: failed without a message"},
                                         {"", "/zelanalyzer does not exist"}}) {
    Open({.AnalyzerProgram = sProgram});
    EXPECT_NE("ok", Start(Every(1)));
    ExpectError(sWrong);
  }
  const std::string sInstance = "sqlite:" + Path();
  for (const auto& [arguments, sWrong] :
       {std::pair<Strings, const char*>({}, "INSTANCE is required"),
        {{"a.db"}, "The instance \"a.db\" is neither sqlite:FILE nor postgresql://…"},
        {{"sqlite:"}, "The instance \"sqlite:\" names no file"},
        {{"sqlite:/no such\nfile"}, "/no such file: no such file"},
        {{sInstance, "--number=3000000000"}, "--number: Value 3000000000 not in range 0 to 2147483647"},
        {{sInstance, "--fast"}, "The following argument was not expected: --fast"}}) {
    Strings command = {ZELANALYZER};
    command.insert(command.end(), arguments.begin(), arguments.end());
    try {
      ZELWbr3::Instances::RunProgram({command, {}}, kPatience);
      ADD_FAILURE() << "nothing is wrong instead of " << sWrong;
    } catch (const std::exception& oError) {
      EXPECT_EQ(std::string("zelanalyzer: ") + sWrong, oError.what());
    }
  }
  EXPECT_FALSE(fs::exists(Path("state")));
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
  EXPECT_EQ(Lines("state").size() - iBefore, Lines("data").size() - 2);
  EXPECT_TRUE(Lines("state").back().ends_with(",5,Online,")) << Lines("state").back();
}

TEST_F(AnalyzerRuns, TodaysProtocolsAreDeletedFirstWhenAskedAndWhileItRuns) {
  ASSERT_EQ("ok", Start(Every(kNever, 1)));
  AwaitEnd();
  Options oOptions = Every(1);
  ASSERT_EQ("ok", Start(oOptions));
  EXPECT_EQ("2,5,Online,", Lines("state").at(2));
  ASSERT_EQ("ok", Stop());
  oOptions.Delete = true;
  ASSERT_EQ("ok", Start(oOptions));
  EXPECT_NE("3,5,Online,", Lines("state").back());
  EXPECT_EQ("ok", Delete("99991231"));
  Await([&] { return Lines("state").size() > 1; });
  EXPECT_EQ("1", State());
  EXPECT_EQ("1,5,Online,", Lines("state")[1]);
}
