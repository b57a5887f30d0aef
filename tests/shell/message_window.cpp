// The message window: which page and topic it shows, and when help is offered.

#include "tests/support/ChangedRecording.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/platform/HelpFile.h"
#include "zelwbr3/shell/Browser.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

/// A platform that knows help topics, with a message box that has Help.
class HelpPlatform : public Headless::HeadlessPlatform {
 public:
  struct Topics : ZELWbr3::HelpFile {
    std::string Known;
    std::vector<std::string> Asked;
    bool HasTopic(const std::string& sCHMPath, const std::string& sHelpID) override {
      Asked.push_back(sCHMPath + "|" + sHelpID);
      return sHelpID == Known;
    }
  };
  struct HelpBox : Headless::ScriptedAnswers {
    std::string Offered;
    void ShowWithHelp(const std::string& sText, const std::string&, Icon, const std::function<void()>& oHelp) override {
      Offered = sText;
      oHelp();
    }
  };

  Topics& HelpFile() override { return m_oTopics; }
  HelpBox& MessageBox() override { return m_oBox; }

 private:
  Topics m_oTopics;
  HelpBox m_oBox;
};

/// What message windows showed: the page's URL and the topic's.
struct MessageWindows {
  explicit MessageWindows(Headless::HeadlessPlatform& oPlatform)
      : Handler(oPlatform.MessageWindowShown.Connect([this](const Headless::HeadlessWebBrowser& oBrowser) {
          const Element* oTopic = oBrowser.Document()->all().item("Message1.Txt");
          Windows.push_back(oBrowser.URL() + " " + (oTopic == nullptr ? "no frame" : oTopic->getAttribute("src")));
        })) {}
  std::vector<std::string> Windows;
  ScopedConnection Handler;
};

std::string HTML() { return std::string(ZELWBR3_SOURCE_DIR) + "/html"; }

TEST(MessageWindow, IsClosedBeforeTheCallReturnsAndMayBeTheControlsEnd) {
  Headless::HeadlessPlatform oPlatform;
  auto oBrowser = std::make_unique<Browser>(oPlatform);
  oBrowser->HTMLPath(HTML());
  const ScopedConnection oHandler = oPlatform.MessageWindowShown.Connect([&](const auto&) { oBrowser.reset(); });
  oBrowser->ShowMessageHelpID("1");
  EXPECT_EQ(oBrowser, nullptr);
}

TEST(ErrorDisplay, OffersHelpWhereThereIsATopicForTheError) {
  const auto oDatabase = std::make_shared<ChangedRecording>("", Changes{R"(raises = ["Version"])"});

  const auto Run = [&](const std::string& sCHMPath, const std::string& sKnown, HelpPlatform& oPlatform) {
    oPlatform.HelpFile().Known = sKnown;
    Browser oBrowser(oPlatform);
    oBrowser.HTMLPath(HTML());
    oBrowser.CHMPath(sCHMPath);
    oBrowser.PageMain()->Show(oDatabase);
  };

  HelpPlatform oKnown;
  MessageWindows oShown(oKnown);
  Run("/help.chm", "-24988", oKnown);
  EXPECT_EQ(oKnown.MessageBox().Offered, "-24988 SQL error");
  EXPECT_EQ(oKnown.HelpFile().Asked, std::vector<std::string>{"/help.chm|-24988"});
  EXPECT_EQ(oShown.Windows, std::vector<std::string>{HTML() + "\\Message.htm mk:@MSITStore:/help.chm::/-24988.htm"});

  HelpPlatform oOther;
  Run("/help.chm", "-999", oOther);
  EXPECT_EQ(oOther.MessageBox().Offered, "");

  HelpPlatform oNoFile;
  Run("", "-24988", oNoFile);
  EXPECT_EQ(oNoFile.MessageBox().Offered, "");
  EXPECT_TRUE(oNoFile.HelpFile().Asked.empty());
}

}  // namespace
}  // namespace ZELWbr3::Testing
