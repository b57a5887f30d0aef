#include "tests/desktop/TestWindow.h"

#include <tuple>

namespace ZELWbr3::Desktop {
namespace {

using Buttons = MessageBox::Buttons;
using Answer = MessageBox::Answer;

class DesktopMessageBoxTest : public TestBrowser {
 protected:
  /// Shows a box and presses a key in it as soon as it is there.
  Answer Ask(Buttons eButtons, const std::string& sKey) {
    Begin(InWindow("Question", "key --window 0 " + sKey));
    return Platform->MessageBox().Show("Really take it offline? <b>&amp;", "Question", eButtons,
                                       MessageBox::Icon::Question);
  }
};

TEST_F(DesktopMessageBoxTest, IsAnsweredByEscapeAndMnemonics) {
  for (const auto& [eButtons, sKey, eAnswer] : {std::tuple(Buttons::OK, "Escape", Answer::OK),
                                                {Buttons::OKCancel, "Escape", Answer::Cancel},
                                                {Buttons::YesNo, "Escape", Answer::No},
                                                {Buttons::YesNo, "alt+y", Answer::Yes},
                                                {Buttons::YesNo, "alt+n", Answer::No},
                                                {Buttons::OKCancel, "alt+o", Answer::OK},
                                                {Buttons::OKCancel, "alt+c", Answer::Cancel}}) {
    EXPECT_EQ(Ask(eButtons, sKey), eAnswer) << sKey;
  }
}

TEST_F(DesktopMessageBoxTest, HelpLeavesTheBoxOpen) {
  int iHelp = 0;
  const auto Press = [](const std::string& sKey) { Begin(InWindow("Error", "key --window 0 " + sKey)); };
  Press("alt+h");
  Platform->MessageBox().ShowWithHelp("The database is locked", "Error", MessageBox::Icon::Exclamation,
                                      [&] { Press(++iHelp < 2 ? "alt+h" : "alt+o"); });
  EXPECT_EQ(iHelp, 2);
  Press("Escape");
  Platform->MessageBox().ShowWithHelp("The database is locked", "Error", MessageBox::Icon::Exclamation, {});
  Press("alt+h");
  EXPECT_THROW(Platform->MessageBox().ShowWithHelp("The database is locked", "Error", MessageBox::Icon::Exclamation,
                                                   [] { throw std::runtime_error("no page"); }),
               std::runtime_error);
}

TEST_F(DesktopMessageBoxTest, WorksFromWithinAClickAndAKeyOfThePage) {
  ShowBody("<a id=\"link\" href=\"#\">link</a>");
  std::vector<Answer> oAnswers;
  Events.OnClick = [&] { oAnswers.push_back(Ask(Buttons::OKCancel, "Return")); };
  Events.OnKey = [&] {
    oAnswers.push_back(Ask(Buttons::YesNo, "Escape"));
    return true;
  };
  ClickOn(*Browser, "link");
  WaitFor("the first answer", [&] { return oAnswers.size() == 1; });
  Browser->Focus();
  WaitFor("the window", [&] { return Browser->View()->HasFocus(); });
  Press("F5");
  WaitFor("the second answer", [&] { return oAnswers.size() == 2; });
  EXPECT_EQ(oAnswers, (std::vector{Answer::OK, Answer::No}));
  // The page goes on as before.
  ByID(*Browser, "link").innerText("changed");
  ExpectLiveEqualsReplica(*Browser);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
