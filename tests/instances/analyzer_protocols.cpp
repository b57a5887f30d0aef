#include "tests/instances/AnalyzerRuns.h"
#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

using namespace SQLiteFiles;
using ZELWbr3::Instances::ProtocolFolder;
using ZELWbr3::Instances::ProtocolLine;
namespace fs = std::filesystem;

namespace {

void Append(const ProtocolFolder& oFolder, const std::string& sTime, const std::string& sState = "Online") {
  oFolder.Append(sTime, {{"state", {"State"}, {sState}}, {"data", {"Used"}, {"7"}}});
}

std::string ErrorOf(const std::function<void()>& oOperation) {
  try {
    oOperation();
    return "none";
  } catch (const std::exception& oError) {
    return oError.what();
  }
}

/// "date texts" of each set.
std::vector<std::string> Sets(const ProtocolFolder& oFolder) {
  std::vector<std::string> sets;
  for (const auto& oSet : oFolder.Sets()) {
    const auto& d = oSet.Date;
    std::string sSet;
    for (const int i : {d.Year, d.Month, d.Day, d.Hour, d.Minute, d.Second}) sSet += std::to_string(i) + " ";
    for (const auto& sText : oSet.Texts) sSet += "| " + sText;
    sets.push_back(sSet);
  }
  return sets;
}

}  // namespace

TEST(AnalyzerProtocols, ASetADayListedNewestFirst) {
  Folder oFolder;
  const ProtocolFolder oProtocols(oFolder / "new/protocols");
  EXPECT_TRUE(Sets(oProtocols).empty());
  Append(oProtocols, "2026-03-02T23:59:58+01:00");
  Append(oProtocols, "2026-03-02T23:59:59+01:00");
  Append(oProtocols, "2026-03-03T00:00:05+01:00");
  Append(oProtocols, "2025-12-31T07:08:09+01:00");
  WriteFile(oFolder / "new/protocols/20260101", "a file");
  fs::create_directory(oFolder / "new/protocols/20260230");
  fs::create_directory(oFolder / "new/protocols/20260228");  // no state: its disk was full
  fs::create_directory(oFolder / "new/protocols/20260227");
  WriteFile(oFolder / "new/protocols/20260227/state.csv", "whatever\n");
  EXPECT_EQ((std::vector<std::string>{"2026 3 3 0 0 5 | 1 evaluation| until 00:00:05| 2 files, 1 KB",
                                      "2026 3 2 23 59 58 | 2 evaluations| until 23:59:59| 2 files, 1 KB",
                                      "2026 2 27 0 0 0 | state.csv is damaged| | 1 file, 1 KB",
                                      "2025 12 31 7 8 9 | 1 evaluation| until 07:08:09| 2 files, 1 KB"}),
            Sets(oProtocols));
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
  Append(oProtocols, sTime);
  const std::string sWhole = ReadFile(sState);
  for (const std::string& sLeft : {sWhole + "2,2026-03", sWhole + "2", sWhole.substr(0, 5), std::string()}) {
    WriteFile(sState, sLeft);
    Append(oProtocols, sTime);
    EXPECT_EQ(sLeft.size() > sWhole.size() ? sWhole + "2," + sTime + ",Online\n" : sWhole, ReadFile(sState));
  }

  const std::string sData = ReadFile(oFolder / "20260302/data.csv");
  for (const std::string& sStranger : {std::string("Number,Time,Other\n"), std::string("my notes"),
                                       std::string("Number,Time,State\nx,y,z\n"), std::string(5, '\0')}) {
    WriteFile(sState, sStranger);
    EXPECT_EQ(0u, ErrorOf([&] { Append(oProtocols, sTime); }).find(sState + ": ")) << sStranger;
    EXPECT_EQ(sStranger, ReadFile(sState));
  }
  fs::remove(sState);
  mkfifo(sState.c_str(), 0600);
  EXPECT_EQ(sState + ": is not a regular file", ErrorOf([&] { Append(oProtocols, sTime); }));
  EXPECT_EQ(sData, ReadFile(oFolder / "20260302/data.csv"));  // no evaluation without its state
}

TEST_F(AnalyzerRuns, DeletesUntilADayAndOnlyProtocolSets) {
  const std::string sFolder = Analyzer().Path();
  for (const char* sDay : {"2026-02-28", "2026-03-01", "2026-03-02"}) {
    Append(Protocols(), std::string(sDay) + "T07:00:00+01:00");
  }
  Append(Protocols(), "2026-01-01T07:00:00+01:00");
  WriteFile(sFolder + "/20260101/notes.txt", "mine");
  fs::create_directory(m_oFolder / "precious");
  WriteFile(m_oFolder / "precious/state.csv", "mine");
  fs::create_directory_symlink(m_oFolder / "precious", sFolder + "/20260102");
  fs::create_directory(sFolder + "/2026");

  for (const char* sDay : {"", "2026", "20260230", "2026-3-1", "../precious", "20260301/", " 2026030", "+2026301"}) {
    EXPECT_EQ("\"" + std::string(sDay) + "\" is not a date YYYYMMDD", Delete(sDay));
  }
  EXPECT_EQ(4u, m_oDatabase->Analyzer()->ProtocolSets()->size());

  // The one with the notes is left, and does not keep the others.
  EXPECT_EQ(sFolder + "/20260101/notes.txt: is not a protocol file", Delete("20260301"));
  const auto oSets = *m_oDatabase->Analyzer()->ProtocolSets();
  ASSERT_EQ(2u, oSets.size());
  EXPECT_EQ(2, oSets[0].Date.Day);
  EXPECT_EQ(1, oSets[1].Date.Month);
  EXPECT_EQ("mine", ReadFile(m_oFolder / "precious/state.csv"));
  fs::remove(sFolder + "/20260101/notes.txt");
  EXPECT_EQ("ok", Delete("20260301"));
  EXPECT_EQ(1u, m_oDatabase->Analyzer()->ProtocolSets()->size());
  EXPECT_EQ((std::set<std::string>{"2026", "20260102", "20260302"}), Names(sFolder));
}

TEST_F(AnalyzerRuns, AFolderThatCannotBeReadIsAnError) {
  fs::create_directories(fs::path(Analyzer().Path()).parent_path());
  WriteFile(Analyzer().Path(), "a file");
  EXPECT_FALSE(m_oDatabase->Analyzer()->ProtocolSets().has_value());
  EXPECT_NE(std::string::npos, m_oDatabase->LastError().ErrorText.find(Analyzer().Path()));
  EXPECT_THROW(m_oDatabase->Analyzer()->State(), ZELLib3::InstanceError);
}

TEST(AnalyzerTimeStamp, IsLocalWithItsOffset) {
  const auto Stamp = [] {
    setenv("TZ", "XST-5:30", 1);
    tzset();
    return ZELWbr3::Instances::TimeStamp(1772400000);  // 2026-03-01 21:20:00 UTC
  };
  const std::string sStamp = Process(Stamp).Result();
  EXPECT_EQ("2026-03-02T02:50:00+05:30", sStamp);
  EXPECT_EQ("20260302", ZELWbr3::Instances::DayOf(sStamp));
  EXPECT_EQ("2026-03-02 02:50:00", ZELWbr3::Instances::ReadableTime(sStamp));
  EXPECT_EQ("", ZELWbr3::Instances::ReadableTime("yesterday"));
}
