// zelreport as a user runs it: a process with arguments, files and an exit code.

#include "tests/host/Run.h"
#include "tests/support/Accepted.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/headless/HTMLParser.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>

namespace ZELWbr3 {

using Testing::Ended;

namespace {

using Testing::Lines;

Ended RunZelreport(const Lines& arguments, const Lines& environment = {}) {
  return Testing::RunProgram(ZELREPORT, arguments, environment);
}

std::string Recording(const std::string& sName) {
  return "recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/" + sName + ".json";
}

class ZelreportTest : public testing::Test {
 protected:
  void ExpectComplaint(const std::vector<std::string>& arguments, const std::string& sAbout,
                       const std::vector<std::string>& environment = {}) {
    const Ended oEnded = RunZelreport(arguments, environment);
    SCOPED_TRACE(oEnded.Err);
    EXPECT_EQ(oEnded.Exit, 1);
    EXPECT_EQ(oEnded.Out, "");
    EXPECT_TRUE(oEnded.Err.starts_with("zelreport: "));
    EXPECT_EQ(std::ranges::count(oEnded.Err, '\n'), 1);
    EXPECT_NE(oEnded.Err.find(sAbout), std::string::npos) << sAbout;
  }

  Testing::TempFolder Folder;
};

}  // namespace

TEST_F(ZelreportTest, ReadsOverATimeForCurves) {
  const Ended oEnded = RunZelreport({Recording("demo"), "--page", "InfoActivity", "--over", "2"});
  EXPECT_EQ(oEnded.Exit, 0) << oEnded.Err;
  const auto oPage = Headless::ParseHTML(oEnded.Out);
  const std::string sTimes = oPage->all().item("lstSeries")->getAttribute("data-times");
  EXPECT_EQ(std::ranges::count(sTimes, ' '), 1) << sTimes;  // two readings
  EXPECT_EQ(oPage->all().item("SERIEStabCommands.7")->getAttribute("data-values"), "8007 8007");
  ExpectComplaint({Recording("demo"), "--over", "0"}, "--over");
}

TEST_F(ZelreportTest, WritesThePageSoThatItNeedsNoOtherFile) {
  const Ended oEnded = RunZelreport({Recording("hostile")});
  EXPECT_EQ(oEnded.Exit, 0);
  EXPECT_EQ(oEnded.Err, "");
  EXPECT_TRUE(oEnded.Out.starts_with("<!DOCTYPE html>\n<html lang=\"en\">"));
  const auto oPage = Headless::ParseHTML(oEnded.Out);
  const auto Text = [&](const char* sID) { return oPage->all().item(sID)->innerText(); };
  EXPECT_EQ(Text("txtName"), "'; DROP TABLE CITY; --");
  EXPECT_EQ(Text("General.OS.Val"), "&lt;b&gt; &amp; (line one\nline two\ttab)");
  EXPECT_EQ(Text("General.RunDir.Val"), "nul\xEF\xBF\xBDinside");
  EXPECT_EQ(oPage->all().item("pbrData")->getAttribute("data-percent"), "-1");
  for (const char* sText : {"<link", "<script src", "customElements.define", ".zelTblProps"}) {
    EXPECT_EQ(oEnded.Out.find(sText) == std::string::npos, sText[0] == '<') << sText;
  }
}

TEST_F(ZelreportTest, SaysInOneLineWhatIsWrong) {
  const std::string sDemo = Recording("demo");
  const std::vector<std::pair<Lines, std::string>> complaints = {
      {{}, "INSTANCE"},
      {{"--bogus"}, "--bogus"},
      {{sDemo, "extra"}, "extra"},
      {{sDemo, "--page"}, "--page"},
      {{"demo.json"}, "demo.json"},
      {{"other:demo"}, "other:demo"},
      {{"recorded:"}, "recorded:"},
      {{"recorded:" + Folder.Path("missing\nfile.json")}, "file.json"},
      {{"recorded:" + Folder.Write("broken.json", "{\"Database\": {")}, "broken.json"},
      {{"sqlite:" + Folder.Path("missing.db")}, "missing.db"},
      {{sDemo, "--page", "main"}, "\"main\""},
      {{sDemo, "--page", ""}, "\"\""},
      {{sDemo, "--page", "SysInfo"}, "\"SysInfo\""},
      {{sDemo, "--out", "/nowhere/x.html"}, "/nowhere/x.html"},
      {{sDemo, "--events", "/nowhere/x"}, "/nowhere/x"},
      {{sDemo, "--record", "/nowhere/x"}, "/nowhere/x"},
      {{sDemo, "--do", "show Nope"}, "\"Nope\""},
      {{sDemo, "--do", "show SysInfo"}, "\"SysInfo\""},
      {{sDemo, "--do", "click no.such"}, "\"no.such\""},
      {{sDemo, "--do", "focus no.such"}, "\"no.such\""},
      {{sDemo, "--do", "item 99"}, "99"},
      {{sDemo, "--do", "item 5"}, "5"},  // a separator
      {{sDemo, "--page", "Default", "--do", "command 0"}, "Default"},
  };
  for (const auto& [arguments, sAbout] : complaints) ExpectComplaint(arguments, sAbout);
  ExpectComplaint({sDemo}, "/nowhere", {"ZELWBR3_HTML=/nowhere"});
  for (const std::string sStep : {"", "jump x", "click", "click ", "key x", "key 99999999999", "key 1 2", "item -",
                                  "print x", "answer", "answer maybe", "Click x", " click x"}) {
    ExpectComplaint({sDemo, "--do", sStep}, '"' + sStep + '"');
  }
}

TEST_F(ZelreportTest, AMissingPageFileIsNamedAlthoughThePageFillsNothing) {
  std::filesystem::copy_file(ZELWBR3_SOURCE_DIR "/html/Main.htm", Folder.Path() + "/Main.htm");
  const Ended oEnded = RunZelreport({Recording("demo"), "--page", "Sessions"}, {"ZELWBR3_HTML=" + Folder.Path()});
  EXPECT_EQ(oEnded.Exit, 1);
  EXPECT_EQ(oEnded.Err, "zelreport: the page reported an error: The page file " + Folder.Path() +
                            "\\Sessions.htm cannot be read\n");
  EXPECT_NE(oEnded.Out.find("Page not found"), std::string::npos);
}

TEST_F(ZelreportTest, AProgramElsewhereShowsThePagesNextToItself) {
  namespace fs = std::filesystem;
  fs::create_directories(Folder.Path("share/zelwbr3/html"));
  fs::create_directory(Folder.Path("bin"));
  fs::copy_file(ZELREPORT, Folder.Path("bin/zelreport"));
  Folder.Write("share/zelwbr3/html/Main.htm", "<p>Its own page</p>");
  const Ended oEnded = Testing::RunProgram(Folder.Path("bin/zelreport"), {Recording("demo")});
  EXPECT_NE(oEnded.Out.find("Its own page"), std::string::npos) << oEnded.Err;
}

TEST_F(ZelreportTest, OpensAFileByWhatItBeginsWith) {
  const std::string sRecording = std::string(ZELWBR3_SOURCE_DIR) + "/tests/recordings/demo.json";
  EXPECT_EQ(RunZelreport({sRecording}).Out, RunZelreport({"recorded:" + sRecording}).Out);
  const std::string sText = Folder.Write("a:b.txt", "neither");
  EXPECT_EQ(RunZelreport({sText}).Err,
            "zelreport: The file \"" + sText + "\" does not begin as a SQLite database or a recording does\n");
}

TEST_F(ZelreportTest, NoOutputIsWrittenOverTheInstanceOrAnotherOutput) {
  const std::string sFile = Folder.Write("r.json", R"({"Database":{"InstanceName":"R"}})");
  const std::string sBefore = Folder.Read("r.json");
  Folder.Write("x.db", "");
  std::filesystem::create_hard_link(sFile, Folder.Path("linked.json"));
  for (const char* sOption : {"--out", "--events", "--record"}) {
    ExpectComplaint({"recorded:" + sFile, sOption, Folder.Path("./r.json")}, sOption);
    ExpectComplaint({"recorded:" + sFile, sOption, Folder.Path("linked.json")}, "linked.json");
    ExpectComplaint({"sqlite:" + Folder.Path("x.db"), sOption, Folder.Path("x.db-wal")}, "x.db-wal");
    EXPECT_EQ(Folder.Read("r.json"), sBefore);
  }
  ExpectComplaint({"recorded:" + sFile, "--out", Folder.Path("same"), "--events", Folder.Path("same")}, "--events");
  // What another run has left stays when the instance cannot be opened.
  Folder.Write("events", "kept");
  ExpectComplaint({"recorded:" + Folder.Path("missing"), "--events", Folder.Path("events")}, "missing");
  EXPECT_EQ(Folder.Read("events"), "kept");
}

TEST_F(ZelreportTest, AnErrorDisplayIsToldAndFailsTheRun) {
  const std::string sFile = Folder.Write(
      "r.json", R"({"LastError":{"ErrorCode":-8888,"ErrorText":"connection\nbroken"},"raises":["StateInfo.LogTotal"],)"
                R"("Database":{"InstanceName":"R","StateInfo":{"Status":5,"InfoAvailable":true}}})");
  const Ended oEnded = RunZelreport({"recorded:" + sFile});
  EXPECT_EQ(oEnded.Exit, 1);
  EXPECT_EQ(oEnded.Err, "zelreport: the page reported an error: -8888 connection broken\n");
  EXPECT_NE(oEnded.Out.find("id=\"txtName\">R<"), std::string::npos);  // what could be shown is
}

// Each a recording, or an empty database file, with further arguments.
TEST_F(ZelreportTest, WritesTheEventsOfItsSteps) {
  Testing::ExpectAccepted(ZELWBR3_SOURCE_DIR "/tests/host/events.txt", [&](const std::string& s, const Lines& steps) {
    Lines arguments = Testing::LinesOf(std::istringstream(s), ' ');
    std::string& sInstance = arguments.at(0);
    sInstance = sInstance == "empty.db" ? "sqlite:" + Folder.Write(sInstance, "") : Recording(sInstance);
    for (const std::string& sStep : steps) arguments.insert(arguments.end(), {"--do", sStep});
    arguments.insert(arguments.end(), {"--events", Folder.Path("events"), "--out", Folder.Path("out.html")});
    const Ended oEnded = RunZelreport(arguments, {"LC_ALL=C"});
    Lines told = Testing::LinesOf(std::istringstream(Folder.Read("events") + oEnded.Err));
    for (std::string& sLine : told) sLine = std::regex_replace(sLine, std::regex(Folder.Path()), "DIR");
    told.push_back("exit " + std::to_string(oEnded.Exit));
    return told;
  });
}

TEST_F(ZelreportTest, PrintsTheDocumentAsItStandsAtEachStepEvenWhenALaterOneFails) {
  const Ended oEnded = RunZelreport(
      {Recording("full-data"), "--do", "print", "--do", "show Default", "--do", "print", "--do", "click no.such"});
  EXPECT_EQ(oEnded.Exit, 1);
  std::string sTitles;
  std::istringstream oOut(oEnded.Out);
  for (std::string sLine; std::getline(oOut, sLine);) {
    if (sLine.starts_with("<!-- step ") || sLine.find("<title>") != std::string::npos) sTitles += sLine + "\n";
  }
  EXPECT_EQ(
      sTitles,
      "<!-- step 1 -->\n  <title>Instance Overview</title>\n<!-- step 3 -->\n  <title>No Page Selected</title>\n");
}

TEST_F(ZelreportTest, ARecordingOfARecordingShowsTheSame) {
  for (const char* sName : {"demo", "full-log", "hot-standby", "disconnected"}) {
    SCOPED_TRACE(sName);
    const Ended oFirst = RunZelreport({Recording(sName), "--record", Folder.Path("1.json")});
    const Ended oSecond = RunZelreport({"recorded:" + Folder.Path("1.json"), "--record", Folder.Path("2.json")});
    EXPECT_EQ(oFirst.Exit, oSecond.Exit);
    EXPECT_FALSE(oFirst.Out.empty());
    EXPECT_EQ(oFirst.Out, oSecond.Out);
    EXPECT_EQ(nlohmann::json::parse(Folder.Read("1.json")), nlohmann::json::parse(Folder.Read("2.json")));
  }
}

TEST_F(ZelreportTest, WritesNumbersAndDatesAsTheUserDoes) {
  const auto Of = [](const char* sLocale, const char* sID) {
    const Ended oEnded =
        RunZelreport({Recording("demo")}, {std::string("LC_ALL=") + sLocale, "LOCPATH=" ZELWBR3_LOCALES});
    EXPECT_EQ(oEnded.Exit, 0) << oEnded.Err;
    return Headless::ParseHTML(oEnded.Out)->all().item(sID)->innerText();
  };
  const std::string sPlain = Of("C", "txtData");
  std::string sGerman = Of("de_DE.UTF-8", "txtData");
  EXPECT_EQ(sPlain.find_first_of(".,"), std::string::npos);
  EXPECT_NE(sGerman.find('.'), std::string::npos);
  std::erase(sGerman, '.');
  EXPECT_EQ(sGerman, sPlain);
  EXPECT_EQ(Of("tlh_QX", "txtData"), sPlain);
  EXPECT_NE(Of("de_DE.UTF-8", "General.StartOn.Val"), Of("en_US.UTF-8", "General.StartOn.Val"));
}

// What cron and monitoring plugins read.
TEST_F(ZelreportTest, ChecksAnInstanceInOneLineWithAnExitCode) {
  const Ended oFull = RunZelreport({Recording("full-data"), "--check"});
  EXPECT_EQ(2, oFull.Exit);
  EXPECT_EQ("CRITICAL - Data area is full | 'data'=100%;80;95 'log'=4%;80;95 'sessions'=0%;80;95\n", oFull.Out);
  const Ended oHostile = RunZelreport({Recording("hostile"), "--check"});
  EXPECT_EQ(1, std::ranges::count(oHostile.Out, '\n'));
  EXPECT_EQ(1, std::ranges::count(oHostile.Out, '|'));
  const Ended oMissing = RunZelreport({"recorded:/no/such/file", "--check", "--json"});
  EXPECT_EQ(3, oMissing.Exit);
  EXPECT_EQ("UNKNOWN", nlohmann::json::parse(oMissing.Out)["level"]);
  const auto oFindings = nlohmann::json::parse(RunZelreport({Recording("demo"), "--check", "--json"}).Out)["findings"];
  EXPECT_EQ("bad-volumes", oFindings[0]["name"]);
  EXPECT_EQ("DataArea", oFindings[0]["page"]);
}

TEST_F(ZelreportTest, WritesATableAsCSV) {
  const Ended oEnded = RunZelreport({Recording("demo"), "--page", "Parameters", "--csv", "tabGeneral"});
  EXPECT_EQ(0, oEnded.Exit) << oEnded.Err;
  EXPECT_TRUE(oEnded.Out.starts_with(",Parameter,Value,Description\r\n")) << oEnded.Out;
  EXPECT_TRUE(oEnded.Out.ends_with("\r\n"));
  ExpectComplaint({Recording("demo"), "--csv", "nothing"}, "nothing");
}

// Rows of a list are kept as texts with a separator between them, unless a text has it.
TEST_F(ZelreportTest, WritesRowsOfAnyTexts) {
  using namespace std::string_literals;
  const std::vector<std::string> hostile = {"sepa\x7frator", "</td>&<b>\"'\n,", "\xD7\xA9\xE2\x80\xAE nul\0"s,
                                            std::string(1'000'000, 'M')};
  std::vector<std::vector<std::string>> rows(300, {"1", "USER", "10.0.0.1", "x"});
  rows[1] = hostile;
  rows[250] = {hostile[1], hostile[2], hostile[3], ""};
  std::ifstream oDemo(ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json");
  auto oRecording = nlohmann::json::parse(oDemo);
  oRecording["Database"]["SysInfos"][0]["Rows"] = rows;
  oRecording["Database"]["SysInfos"][0]["BlockSize"] = rows.size();
  const std::string sInstance = "recorded:" + Folder.Write("rows.json", oRecording.dump());
  const Lines toView = {sInstance, "--page", "SysInfos", "--do", "click ITEM1"};

  std::string sHTML = RunZelreport(toView).Out;
  // The parser that reads it here takes this character, unlike a browser, for none.
  const auto iSeparator = sHTML.find(hostile[0]);
  ASSERT_NE(iSeparator, std::string::npos);
  sHTML.replace(iSeparator, hostile[0].size(), "separated");
  const auto oPage = Headless::ParseHTML(sHTML);
  Element* oRow = oPage->all().item("tabSysInfo")->tBodies(0)->rows(1);
  Lines toCSV = toView;
  toCSV.insert(toCSV.end(), {"--csv", "tabSysInfo"});
  std::string sCSV = "ID,USER,ADDRESS,APPLICATION\r\n";
  for (auto& row : rows) {
    oRow = oRow->nextElementSibling();
    ASSERT_NE(oRow, nullptr);
    for (std::size_t i = 0; i < row.size(); ++i) {
      row[i] = row[i].empty() ? " " : Text::Clean(row[i]);
      ASSERT_EQ(oRow->cells(i)->innerText(), row[i] == hostile[0] ? "separated" : row[i]);
      sCSV += (i == 0 ? "" : ",") + Text::CSVField(Text::Trim(row[i]));
    }
    sCSV += "\r\n";
  }
  EXPECT_EQ(oRow->nextElementSibling(), nullptr);
  EXPECT_EQ(RunZelreport(toCSV).Out, sCSV);
}

}  // namespace ZELWbr3
