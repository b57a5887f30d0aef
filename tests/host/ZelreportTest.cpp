// zelreport as a user runs it: a process with arguments, files and an exit code.

#include "tests/host/Run.h"
#include "tests/support/TempFolder.h"
#include "zelwbr3/dom/HTMLWriter.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace ZELWbr3 {

using Testing::Ended;

namespace {

using Lines = std::vector<std::string>;

Ended RunZelreport(const Lines& arguments, const Lines& environment = {}) {
  return Testing::RunProgram(ZELREPORT, arguments, environment);
}

std::string Recording(const std::string& sName) {
  return "recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/" + sName + ".json";
}

class ZelreportTest : public testing::Test {
 protected:
  /// Runs a story and answers the lines of its events file.
  Lines EventsOf(std::vector<std::string> arguments, int iExit = 0) {
    arguments.insert(arguments.end(), {"--events", Folder.Path("events"), "--out", Folder.Path("out.html")});
    const Ended oEnded = RunZelreport(arguments);
    EXPECT_EQ(oEnded.Exit, iExit) << oEnded.Err;
    EXPECT_EQ(oEnded.Out, "");
    Said = oEnded.Err;
    Lines lines;
    std::istringstream oEvents(Folder.Read("events"));
    for (std::string sLine; std::getline(oEvents, sLine);) lines.push_back(sLine);
    return lines;
  }

  static Lines Only(const std::string& sEvent, Lines lines) {
    std::erase_if(lines, [&](const std::string& s) { return !s.starts_with(R"({"event":")" + sEvent + '"'); });
    return lines;
  }

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
  std::string Said;  ///< on standard error by the last story
};

}  // namespace

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
  // To the blank: writing what was read gives the same text again, but for the
  // line end behind the document, which a parser takes into the body.
  const auto UpToItsEnd = [](std::string sHTML) {
    sHTML.erase(sHTML.find_last_not_of('\n', sHTML.rfind("</body>") - 1) + 1);
    return sHTML;
  };
  const std::string sAgain = "<!DOCTYPE html>\n" + HTMLWriter().Outer(*oPage->documentElement());
  EXPECT_TRUE(UpToItsEnd(sAgain) == UpToItsEnd(oEnded.Out));
}

TEST_F(ZelreportTest, SaysInOneLineWhatIsWrong) {
  const std::string sDemo = Recording("demo");
  const std::vector<std::pair<Lines, std::string>> complaints = {
      {{}, "INSTANCE"},
      {{"--bogus"}, "--bogus"},
      {{sDemo, "extra"}, "extra"},
      {{sDemo, "--page"}, "--page"},
      {{"demo.json"}, "demo.json"},
      {{"oracle:demo"}, "oracle:demo"},
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

TEST_F(ZelreportTest, TellsWhatHappenedInOrder) {
  const std::string sItems =
      R"({"event":"Commandlist","items":[{"key":2,"text":"&Offline","picture":41,"enabled":true},)"
      R"({"key":3,"text":"&Admin","picture":40,"enabled":true},{"key":4,"text":"&Online","picture":42,)"
      R"("enabled":false},{"key":5,"separator":true},{"key":6,"text":"Restart &Until","picture":109,"enabled":false}]})";
  EXPECT_EQ(EventsOf({Recording("full-data"), "--do", "click guicmd00065", "--do", "key 116", "--do", "answer no",
                      "--do", "item 2", "--do", "show DataArea", "--do", "key 27", "--do", "key 65"}),
            (Lines{
                R"({"event":"PageComplete","page":"Main"})",
                sItems,
                R"({"event":"Command","number":65})",
                R"({"event":"ActionBegin"})",
                R"({"event":"PageComplete","page":"Main"})",
                R"({"event":"ActionComplete","refresh":false})",
                R"({"event":"MessageBox","title":"Confirm Database Shut Down","text":"Are you sure you want to shut )"
                R"(down the database instance 'FULLDATA'?","buttons":"yesno","icon":"question","answer":"no"})",
                R"({"event":"PageComplete","page":"DataArea"})",
                R"({"event":"Commandlist","items":[]})",
                R"({"event":"PageComplete","page":"Main"})",
                sItems,
            }));
}

TEST_F(ZelreportTest, AnErrorDisplayIsToldAndFailsTheRun) {
  const std::string sFile = Folder.Write(
      "r.json", R"({"LastError":{"ErrorCode":-8888,"ErrorText":"connection\nbroken"},"raises":["StateInfo.LogTotal"],)"
                R"("Database":{"InstanceName":"R","StateInfo":{"Status":5,"InfoAvailable":true}}})");
  EXPECT_EQ(EventsOf({"recorded:" + sFile}, 1).front(),
            R"({"event":"MessageBox","title":"Error","text":"-8888 connection\nbroken","buttons":"ok",)"
            R"("icon":"exclamation","answer":"ok"})");
  EXPECT_NE(Folder.Read("out.html").find("id=\"txtName\">R<"), std::string::npos);  // what could be shown is
  const Ended oEnded = RunZelreport({"recorded:" + sFile});
  EXPECT_EQ(oEnded.Err, "zelreport: the page reported an error: -8888 connection broken\n");
}

TEST_F(ZelreportTest, ADialogIsToldWithItsFullTextAndAnswer) {
  EXPECT_EQ(Only("Dialog", EventsOf({Recording("old-7.1"), "--do", "answer quick", "--do", "item 2"})),
            Lines{R"({"event":"Dialog","name":"frmShutdown","text":"Are you sure you want to shut down the database )"
                  R"(instance 'OLD'?\n\nTo wait until all running transactions are finished choose 'OK'. \n)"
                  R"(To break off all running transactions choose 'Quick'.","answer":"quick"})"});

  EventsOf({Recording("new-7.6"), "--do", "answer yes", "--do", "item 3", "--do",
            "answer ok date=2026-02-30 time=01:02:03", "--do", "item 6"},
           1);
  EXPECT_NE(Said.find("the dialog frmOnlineUntil cannot be confirmed: There is no 2026-02-30 01:02:03."),
            std::string::npos);
}

TEST_F(ZelreportTest, AnswersAreGivenInTheirOrderAndDialogsHandOverWhatWasTyped) {
  const Lines events = EventsOf({Recording("demo"), "--page", "DBAnalyzer", "--do", "item 3", "--do",
                                 "answer ok config=my file.cfg number=1a2 delete=yes", "--do",
                                 "answer ok date=2026-03-01", "--do", "item 2", "--do", "item 5"});
  EXPECT_EQ(Only("Instance", events),
            (Lines{
                R"({"event":"Instance","call":"Analyzer.Stop","arguments":[]})",
                R"({"event":"Instance","call":"Analyzer.Start","arguments":["my file.cfg",12,0,true,false]})",
                R"({"event":"Instance","call":"Analyzer.DeleteProtocols","arguments":["20260301"]})",
            }));
  EXPECT_EQ(
      Only("Instance", EventsOf({"sqlite:" + Folder.Write("a.db", ""), "--do", "answer yes", "--do", "item 3", "--do",
                                 "answer yes", "--do", "item 2", "--do", "answer ok date=2026-03-01 time=04:05:06",
                                 "--do", "answer yes", "--do", "item 6"},
                                1)),
      (Lines{
          R"({"event":"Instance","call":"Admin","arguments":[]})",
          R"({"event":"Instance","call":"Shutdown","arguments":[]})",
          R"({"event":"Instance","call":"RestartUntil","arguments":["2026-03-01T04:05:06"]})",
      }));
  // The last step leaves the list as it was, although it disables it meanwhile.
  EXPECT_EQ(Only("Commandlist", events).size(), 4U);
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

}  // namespace ZELWbr3
