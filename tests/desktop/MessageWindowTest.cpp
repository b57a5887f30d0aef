#include "tests/desktop/Listener.h"
#include "tests/desktop/TestWindow.h"
#include "zelwbr3/chm/CompiledHelp.h"
#include "zelwbr3/desktop/HelpScheme.h"
#include "zelwbr3/desktop/HelpURL.h"
#include "zelwbr3/shell/Browser.h"

#include <fstream>

#include <wx/app.h>

namespace ZELWbr3::Desktop {
namespace {

constexpr char OwnHelp[] = ZELWBR3_HELP;

class MessageWindowTest : public TestBrowser {
 protected:
  /// Shows a message and does something in its window, which is closed then.
  void InMessage(const std::string& sCHMPath, const std::string& sHelpID, const std::function<void()>& oSteps) {
    InDialog([&](wxDialog& oDialog) {
      oSteps();
      oDialog.EndModal(wxID_CANCEL);
    });
    ZELWbr3::Browser oBrowser(*Platform);
    oBrowser.HTMLPath(std::string(ZELWBR3_SOURCE_DIR) + "/html");
    oBrowser.CHMPath(sCHMPath);
    oBrowser.ShowMessageHelpID(sHelpID);
  }

  /// Copies all text of the frame as a user does, until this is part of it.
  void ExpectText(const std::string& sText) {
    const wxRect oPlace = OpenDialog("Message")->GetScreenRect();
    WaitFor("the text " + sText, [&] {
      Do(ClickAt(oPlace.GetBottomRight() - oPlace.GetSize() / 8) + " 1");
      Press("ctrl+a");
      Press("ctrl+c");
      return Clipboard().find(sText) != std::string::npos;
    });
  }

  /// Compiles a help file of files in the test's folder.
  std::string HelpFileOf(const std::string& sName, const std::vector<std::string>& oFiles) {
    std::ofstream oProject(Folder / "test.hhp");
    oProject << "[OPTIONS]\nTitle=Test\nCompiled file=test.chm\n\n[FILES]\n";
    for (const std::string& sFile : oFiles) oProject << sFile << "\n";
    oProject.close();
    const std::string sCommand = "cd '" + Folder.string() + "' && " + CHMCMD + " --no-html-scan test.hhp >compiled.txt";
    if (std::system(sCommand.c_str()) != 0) throw std::runtime_error("The help file cannot be compiled");
    std::filesystem::rename(Folder / "test.chm", Folder / sName);
    return (Folder / sName).string();
  }

  void Write(const std::string& sName, std::string_view sContent) {
    std::ofstream(Folder / sName, std::ios::binary) << sContent;
  }
};

TEST_F(MessageWindowTest, ShowsATopicThatCanBeCopied) {
  InMessage(OwnHelp, "5", [&] {
    ExpectText("The database is busy");
    EXPECT_NE(Clipboard().find("Wait a moment and refresh the page."), std::string::npos) << Clipboard();
  });
}

TEST_F(MessageWindowTest, SaysWhichTopicOrFileIsMissing) {
  Write("1.htm", "<html><body><p>Found it</p></body></html>");
  const std::string sHelp = HelpFileOf("100% a #1 ?x=ü.chm", {"1.htm"});
  InMessage(sHelp, "1", [&] { ExpectText("Found it"); });
  InMessage(sHelp, "no-such", [&] { ExpectText("has no topic \"no-such.htm\""); });
  const std::string sMissing = (Folder / "None.chm").string();
  InMessage(sMissing, "5", [&] { ExpectText("The help file \"" + sMissing + "\" does not exist."); });
}

TEST_F(MessageWindowTest, ATopicUsesItsFileAndNothingElse) {
  Write("Secret.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>");
  Write("own.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"7\" height=\"7\"/>");
  Write("style.css", "p { letter-spacing: 3px }");
  const Listener oListener;
  const std::string sSecret = "file://" + (Folder / "Secret.svg").string();
  Write("1.htm",
        "<html><head><title>Quiet</title><link rel=\"stylesheet\" href=\"style.css\">"
        "<meta http-equiv=\"refresh\" content=\"0;url=" +
            sSecret +
            "\"></head><body>"
            "<p id=\"p\">Text</p><img id=\"own\" src=\"own.svg\"><img id=\"secret\" src=\"" +
            sSecret + "\"><img id=\"above\" src=\"../../../../../../../.." + (Folder / "Secret.svg").string() +
            "\"><img id=\"network\" src=\"" + oListener.URL() + "9.svg\"><link rel=\"stylesheet\" href=\"" +
            oListener.URL() +
            "9.css\"><a id=\"link\" href=\"own.svg\">link</a>"
            "<script>document.title = 'Script'</script></body></html>");
  const std::string sHelp = HelpFileOf("Own.chm", {"1.htm", "own.svg", "style.css"});

  Browser->HelpFile(sHelp);
  Show(HelpURL(sHelp, "1.htm"));
  EXPECT_EQ(Ask(*Browser, "getComputedStyle(p).letterSpacing"), "3px");
  EXPECT_EQ(Ask(*Browser, "[own, secret, above, network].map(o => o.naturalWidth).join(' ')"), "7 0 0 0");
  EXPECT_FALSE(oListener.Visited());
  EXPECT_EQ(Ask(*Browser, "document.title"), "Quiet");
  ClickOn(*Browser, "link");
  WaitFor("the click", [&] { return Events.Clicks == 1; });
  EXPECT_EQ(Events.Documents, 1);
}

TEST(HelpContent, OnlyTopicsOfTheFileCanBeNamed) {
  const std::string sHelp = OwnHelp;
  const std::string sOther = sHelp.substr(0, sHelp.rfind('/')) + "/1.htm";
  const auto IsShown = [&](const std::string& sURL) {
    return HelpContentOf(sURL, sHelp).Bytes.find("This page cannot be shown") == std::string::npos;
  };
  EXPECT_TRUE(IsShown(HelpURL(sHelp, "5.htm")));
  EXPECT_TRUE(IsShown("mk:@MSITStore:" + sHelp + "::/5.htm?zelwbr3=3#top"));
  for (const std::string& sURL : std::vector<std::string>{
           "mk:@MSITStore:" + sOther + "::/5.htm", "mk:@MSITStore:" + sHelp + "x::/5.htm", "mk:@MSITStore:::/5.htm",
           "mk:@MSITStore:" + sHelp + "::/../1.htm", "mk:@MSITStore:" + sHelp + "::/%2e%2e/%2e%2e/1.htm",
           "mk:@MSITStore:" + sHelp + "::/" + sOther, "mk:@MSITStore:" + sHelp + "::/5.htm%00.css",
           "mk:@MSITStore:" + sHelp + "::/", "mk:@MSITStore:" + sHelp + "::/" + std::string(5000, 'a'), "mk:" + sOther,
           std::string("mk:///1.htm"), std::string("mk:%zz"), std::string("mk:")}) {
    EXPECT_FALSE(IsShown(sURL)) << sURL;
  }
  EXPECT_NE(HelpContentOf("mk:@MSITStore:::/5.htm", "").Bytes.find("cannot be shown"), std::string::npos);
  CHM::CompiledHelp oHelp;
  EXPECT_TRUE(oHelp.HasTopic(OwnHelp, "5"));
  EXPECT_TRUE(oHelp.HasTopic(OwnHelp, "1544"));
  EXPECT_FALSE(oHelp.HasTopic(OwnHelp, "4711"));
  EXPECT_FALSE(oHelp.HasTopic("", "5"));
  EXPECT_FALSE(oHelp.HasTopic("/dev/zero", "5"));
  EXPECT_FALSE(oHelp.HasTopic(std::string(ZELWBR3_SOURCE_DIR) + "/html/Main.htm", "5"));
}

/// A file cut off or overwritten anywhere is refused or read in part.
TEST(HelpContent, DamagedFilesAreSurvived) {
  std::ifstream oIn(OwnHelp, std::ios::binary);
  const std::string sGood((std::istreambuf_iterator<char>(oIn)), {});
  const auto oPath = std::filesystem::temp_directory_path() / ("zelwbr3-damaged-" + std::to_string(wxGetProcessId()));
  for (std::size_t iAt = 0; iAt < sGood.size(); iAt += sGood.size() / 97) {
    std::string sBad = sGood;
    iAt % 2 == 0 ? sBad.resize(iAt) : void(sBad.replace(iAt, 8, 8, '\xff'));
    std::ofstream(oPath, std::ios::binary) << sBad;
    HelpContentOf(HelpURL(oPath.string(), "5.htm"), oPath.string());
  }
  std::filesystem::remove(oPath);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
