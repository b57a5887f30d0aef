#include "tests/instances/AnalyzerRuns.h"
#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <cmath>
#include <fstream>

using namespace SQLiteFiles;
using ZELWbr3::Instances::ProtocolFolder;
namespace fs = std::filesystem;

namespace {

void Append(const ProtocolFolder& oFolder, const std::string& sTime, const std::string& sState = "Online") {
  oFolder.Append(sTime, {{"state", {"State"}, {{sState}}}, {"data", {"Used"}, {{"7"}}}});
}

}  // namespace

TEST(AnalyzerProtocols, ASetADayListedNewestFirst) {
  Folder oFolder;
  const std::string sFolder = oFolder / "new/protocols";
  const ProtocolFolder oProtocols(sFolder);
  EXPECT_TRUE(oProtocols.Sets().empty());
  for (const char* sTime : {"2026-03-02T23:59:58+01:00", "2026-03-02T23:59:59+01:00", "2026-03-03T00:00:05+01:00",
                            "2025-12-31T07:08:09+01:00"}) {
    Append(oProtocols, sTime);
  }
  WriteFile(sFolder + "/20260101", "a file");
  for (const char* sDay : {"/20260230", "/20260228", "/20260227"}) fs::create_directory(sFolder + sDay);
  WriteFile(sFolder + "/20260227/state.csv", "whatever\n");  // the 28th has no state: its disk was full
  std::string sSets;
  for (const auto& oSet : oProtocols.Sets()) {
    const auto& d = oSet.Date;
    for (const int i : {d.Year, d.Month, d.Day, d.Hour, d.Minute, d.Second}) sSets += std::to_string(i) + " ";
    for (const auto& sText : oSet.Texts) sSets += "| " + sText;
    sSets += "\n";
  }
  EXPECT_EQ(
      "2026 3 3 0 0 5 | 1 evaluation| until 00:00:05| 2 files, 1 KB\n"
      "2026 3 2 23 59 58 | 2 evaluations| until 23:59:59| 2 files, 1 KB\n"
      "2026 2 27 0 0 0 | state.csv is damaged| | 1 file, 1 KB\n"
      "2025 12 31 7 8 9 | 1 evaluation| until 07:08:09| 2 files, 1 KB\n",
      sSets);
}

TEST(AnalyzerProtocols, FiguresAreReadBackOverTheDays) {
  Folder oFolder;
  const ProtocolFolder oProtocols(oFolder.Path());
  const auto Add = [&](const char* sTime, const std::vector<std::string>& columns,
                       const std::vector<std::string>& fields) {
    oProtocols.Append(sTime, {{"state", {"State"}, {{"Online"}}},
                              {"io", columns, {fields}},
                              {"standby", {"Name", "LagBytes"}, {{"a", "1"}, {"b", "2"}}}});
  };
  Add("2026-03-01T12:00:00+00:00", {"Read"}, {"99"});
  Add("2026-03-02T23:59:59+01:00", {"Read", "Note"}, {"7", "nothing, so far"});
  Add("2026-03-03T00:00:05+01:00", {"HitRate", "Read"}, {"98.5", ""});
  std::ofstream(oFolder / "20260303/io.csv", std::ios::app) << "2,2026-03-03T00:00:06,1,1\n2,yesterday,1,1\n3,2026";
  WriteFile(oFolder / "20260303/notes.csv", "mine\n1\n");
  const auto protocols = oProtocols.Read("20260302");
  ASSERT_EQ(1u, protocols.size()) << "only kinds with one line for an evaluation";
  const auto& o = protocols[0];
  EXPECT_EQ("io", o.Name);
  EXPECT_EQ((std::vector<std::string>{"Read", "HitRate"}), o.Figures) << "only columns with numbers";
  EXPECT_EQ((std::vector<std::int64_t>{1772492399000, 1772492405000}), o.Times);
  std::string sValues;
  for (const double d : o.Values) sValues += std::isnan(d) ? "- " : std::to_string(d) + " ";
  EXPECT_EQ("7.000000 - - 98.500000 ", sValues);
}

TEST(AnalyzerProtocols, WhatACrashLeftIsRepairedAndStrangersAreNamed) {
  Folder oFolder;
  const ProtocolFolder oProtocols(oFolder.Path());
  const std::string sState = oFolder / "20260302/state.csv";
  const std::string sTime = "2026-03-02T07:00:00+01:00";
  Append(oProtocols, sTime, "say \"a,b\"\r\nand \x01");
  EXPECT_EQ("Number,Time,State\n1," + sTime + ",\"say \"\"a,b\"\"  and  \"\n", ReadFile(sState))
      << "a line stays a line";
  fs::remove_all(oFolder / "20260302");
  oProtocols.Append(sTime,
                    {{"state", {"State"}, {{"Online"}}}, {"nodes", {"Name"}, {{"a"}, {"b"}}}, {"none", {"Name"}, {}}});
  EXPECT_EQ("Number,Time,Name\n1," + sTime + ",a\n1," + sTime + ",b\n", ReadFile(oFolder / "20260302/nodes.csv"));
  EXPECT_FALSE(fs::exists(oFolder / "20260302/none.csv")) << "nothing was to be told";
  fs::remove_all(oFolder / "20260302");
  Append(oProtocols, sTime);
  const std::string sWhole = ReadFile(sState);
  for (const std::string& sLeft : {sWhole + "2,2026-03", sWhole + "2", sWhole.substr(0, 5), std::string()}) {
    WriteFile(sState, sLeft);
    Append(oProtocols, sTime);
    EXPECT_EQ(sLeft.size() > sWhole.size() ? sWhole + "2," + sTime + ",Online\n" : sWhole, ReadFile(sState));
  }

  const std::string sData = ReadFile(oFolder / "20260302/data.csv");
  const auto ExpectRefused = [&](const std::string& sWhy) {
    try {
      Append(oProtocols, sTime);
      ADD_FAILURE() << "appended";
    } catch (const std::exception& oError) {
      EXPECT_EQ(0u, std::string(oError.what()).find(sState + ": " + sWhy)) << oError.what();
    }
  };
  for (const std::string& sStranger : {std::string("Number,Time,Other\n"), std::string("my notes"),
                                       std::string("Number,Time,State\nx,y,z\n"), std::string(5, '\0')}) {
    WriteFile(sState, sStranger);
    ExpectRefused("");
    EXPECT_EQ(sStranger, ReadFile(sState));
  }
  fs::remove(sState);
  mkfifo(sState.c_str(), 0600);
  ExpectRefused("is not a regular file");
  EXPECT_EQ(sData, ReadFile(oFolder / "20260302/data.csv"));  // no evaluation without its state
}

TEST_F(AnalyzerRuns, DeletesUntilADayAndOnlyProtocolSets) {
  const std::string sFolder = Analyzer().Path();
  for (const std::string sDay : {"2026-01-01", "2026-02-28", "2026-03-01", "2026-03-02"}) {
    Append(Protocols(), sDay + "T07:00:00+01:00");
  }
  WriteFile(sFolder + "/20260101/notes.txt", "mine");
  fs::create_directory(Path("precious"));
  WriteFile(Path("precious/state.csv"), "mine");
  fs::create_directory_symlink(Path("precious"), sFolder + "/20260102");
  fs::create_directory(sFolder + "/2026");

  for (const std::string sDay :
       {"", "2026", "20260230", "2026-3-1", "../precious", "20260301/", " 2026030", "+2026301"}) {
    EXPECT_EQ("\"" + sDay + "\" is not a date YYYYMMDD", Delete(sDay));
  }
  // The one with the notes is left, and does not keep the others.
  EXPECT_EQ(sFolder + "/20260101/notes.txt: is not a protocol file", Delete("20260301"));
  EXPECT_EQ((std::set<std::string>{"2026", "20260101", "20260102", "20260302"}), Names(sFolder));
  EXPECT_EQ("mine", ReadFile(Path("precious/state.csv")));
  fs::remove(sFolder + "/20260101/notes.txt");
  EXPECT_EQ("ok", Delete("20260301"));
  EXPECT_EQ(1u, m_oDatabase->Analyzer()->ProtocolSets()->size());
  EXPECT_EQ((std::set<std::string>{"2026", "20260102", "20260302"}), Names(sFolder));
}

TEST_F(AnalyzerRuns, AFolderThatCannotBeReadIsAnError) {
  fs::create_directories(fs::path(Analyzer().Path()).parent_path());
  WriteFile(Analyzer().Path(), "a file");
  EXPECT_FALSE(m_oDatabase->Analyzer()->ProtocolSets().has_value());
  ExpectError(Analyzer().Path());
  EXPECT_THROW(m_oDatabase->Analyzer()->State(), ZELLib3::InstanceError);
  EXPECT_NE(std::string::npos, Start(Every(1)).find(Analyzer().Path()));
}

TEST(AnalyzerTimeStamp, IsLocalWithItsOffset) {
  const std::string sStamp = Process([] {
                               setenv("TZ", "XST-5:30", 1);
                               tzset();
                               return ZELWbr3::Instances::TimeStamp(1772400000);  // 2026-03-01 21:20:00 UTC
                             }).Result();
  EXPECT_EQ("2026-03-02T02:50:00+05:30", sStamp);
  EXPECT_EQ("20260302", ZELWbr3::Instances::DayOf(sStamp));
  EXPECT_EQ("2026-03-02 02:50:00", ZELWbr3::Instances::ReadableTime(sStamp));
  EXPECT_EQ("", ZELWbr3::Instances::ReadableTime("yesterday"));
}
