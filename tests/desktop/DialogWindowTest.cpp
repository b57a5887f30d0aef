#include "tests/desktop/TestWindow.h"
#include "zelwbr3/desktop/DateInput.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerDelete.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerStart.h"
#include "zelwbr3/pages/main/frmOnlineUntil.h"
#include "zelwbr3/pages/main/frmShutdown.h"

#include <tuple>

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/textctrl.h>

namespace ZELWbr3::Desktop {
namespace {

using Answer = MessageBox::Answer;
using Buttons = MessageBox::Buttons;

const Date Noon{2026, 2, 28, 12, 30, 45};

/// The button or input that has the keyboard, by its name in the dialog.
std::string Focused() {
  for (const wxWindow* o = wxWindow::FindFocus(); o != nullptr && !o->IsTopLevel(); o = o->GetParent()) {
    const std::string sName = o->GetName().utf8_string();
    for (const char* sKind : {"cmd", "inp", "txt", "chk"}) {
      if (sName.starts_with(sKind)) return sName;
    }
  }
  return "";
}

class DialogWindowTest : public TestBrowser {
 protected:
  static wxWindow& Item(const std::string& sName) { return *OpenDialog()->FindWindow(wxString(sName)); }
  static void Click(const std::string& sName) { ClickOn(Item(sName)); }
  void Focus(const std::string& sName) {
    Click(sName);
    WaitFor("the focus on " + sName, [&] { return Focused() == sName; });
  }
  /// Everything that Tab comes by until it is where it began.
  std::string TabOrder() {
    WaitFor("the focus", [] { return !Focused().empty(); });
    const std::string sFirst = Focused();
    std::string sOrder = sFirst;
    for (std::string sLast = sFirst;;) {
      Press("Tab");
      WaitFor("the next stop", [&] { return Focused() != sLast && !Focused().empty(); });
      if ((sLast = Focused()) == sFirst) return sOrder;
      sOrder += " " + sLast;
    }
  }

  auto Shutdown() { return frmShutdown(Platform->DialogBox()).Shutdown("R&D <b>"); }
  auto Until() { return frmOnlineUntil(Platform->DialogBox()).OnlineUntil("<i>DEMO</i> & more", Noon); }
  auto Delete() { return frmDBAnalyzerDelete(Platform->DialogBox()).DeleteProtSets(Noon); }
  auto Start() { return frmDBAnalyzerStart(Platform->DialogBox()).StartIt(); }
  /// Shows a box and presses a key in it as soon as it is there.
  Answer Ask(Buttons eButtons, const std::string& sKey) {
    PressIn("Question", sKey);
    return Platform->MessageBox().Show("Take it offline? <b>&amp;", "Question", eButtons, MessageBox::Icon::Question);
  }
};

TEST_F(DialogWindowTest, ButtonsAreAnsweredByMnemonicsKeysAndMouse) {
  const auto ByKeys = [this](const std::string& sKeys) {
    PressIn("Confirm Database Shut Down", sKeys);
    return Shutdown();
  };
  EXPECT_TRUE(ByKeys("Return").Cancelled);
  EXPECT_TRUE(ByKeys("alt+q").Quick);
  EXPECT_TRUE(ByKeys("Escape").Cancelled);
  EXPECT_FALSE(ByKeys("Tab space").Cancelled);
  const auto ByMouse = [this](const char* sButton) { InDialog([=](wxDialog&) { Click(sButton); }); };
  ByMouse("cmdOK");
  EXPECT_FALSE(Shutdown().Quick);
  ByMouse("cmdQuick");
  EXPECT_TRUE(Shutdown().Quick);
  ByMouse("cmdCancel");
  EXPECT_TRUE(Shutdown().Cancelled);
  ByMouse("cmdCancel");
  EXPECT_EQ(Delete(), std::nullopt);
}

TEST_F(DialogWindowTest, TabGoesThroughFieldsAndButtonsInTheirOrder) {
  const auto ExpectOrder = [this](const std::string& sOrder) {
    InDialog([this, sOrder](wxDialog&) {
      EXPECT_EQ(TabOrder(), sOrder);
      Click("cmdCancel");
    });
  };
  ExpectOrder("cmdCancel cmdOK cmdQuick");
  Shutdown();
  ExpectOrder("inpUntilDate inpUntilTime cmdOK cmdCancel");
  Until();
  ExpectOrder("txtConfig txtNumber txtInterval chkDelete chkReconnect cmdOK cmdCancel");
  Start();
}

TEST_F(DialogWindowTest, NumbersTakeDigitsAndWhatIsPasted) {
  PressIn("Start Database Analyzer", "alt+n 1 a 2 alt+i 6 0 BackSpace alt+r Return");
  const auto oOptions = Start();
  ASSERT_TRUE(oOptions.has_value());
  EXPECT_EQ(oOptions->Number, 12);
  EXPECT_EQ(oOptions->Interval, 6);
  EXPECT_TRUE(oOptions->Reconnect);
  EXPECT_FALSE(oOptions->Delete);

  InDialog([this](wxDialog&) {
    ASSERT_TRUE(wxTheClipboard->Open());
    wxTheClipboard->SetData(new wxTextDataObject("12x"));
    wxTheClipboard->Close();
    Focus("txtNumber");
    Press("ctrl+v");
    WaitFor("the text", [&] { return dynamic_cast<wxTextCtrl&>(Item("txtNumber")).GetValue() == "12x"; });
    Focus("chkDelete");
    Click("cmdOK");
  });
  const auto oPasted = Start();
  EXPECT_EQ(oPasted.value().Number, 12);
  EXPECT_TRUE(oPasted.value().Delete);
}

TEST_F(DialogWindowTest, DateAndTimeStartAsOfferedAndKeepTheirSeconds) {
  PressIn("Restart Until", "Return");
  EXPECT_EQ(Until(), Noon);
  PressIn("Restart Until", "Escape");
  EXPECT_EQ(Until(), std::nullopt);
  PressIn("Delete Protocol Sets", "ctrl+a 0 3 slash 0 4 slash 2 5 Return");
  EXPECT_EQ(Delete(), (Date{2025, 3, 4, 12, 30, 45}));
}

TEST_F(DialogWindowTest, ADateThatIsNoneKeepsTheDialogOpenAndSaysSo) {
  std::string sComplaint;
  InDialog([&](wxDialog& oDialog) {
    InDialog([&](wxDialog& oComplaint) {
      for (const wxWindow* o : oComplaint.GetChildren()) sComplaint += o->GetLabel().utf8_string();
      Begin("xdotool key Return && xdotool key ctrl+a 2 0 2 5 minus 0 3 minus 0 4 Return");
    });
    Begin("xdotool key ctrl+a 0 1 period 1 2 period 2 0 2 5 Return");
    WaitFor("the second answer", [&] { return !sComplaint.empty() && !oDialog.IsModal(); });
  });
  EXPECT_EQ(Delete(), (Date{2025, 3, 4, 12, 30, 45}));
  EXPECT_NE(sComplaint.find("\"01.12.2025\" is not a date in full"), std::string::npos) << sComplaint;
}

TEST(DayFormatTest, OnlyDatesAndTimesInFullAreRead) {
  for (const char* sText : {"", "13/45/2025", "2/29/2025", "12/31", "12/31/202", "12/31/2025x", "01.12.2025",
                            "2025-12-1", "25-12-01", "today"}) {
    Date dDay = Noon;
    EXPECT_NE(DayFormat(SystemLocale(std::locale::classic())).Read(sText, dDay), "") << sText;
    EXPECT_EQ(dDay, Noon) << sText;
  }
  for (const char* sText : {"3/4/2025", " 03/04/25 ", "2025-03-04"}) {
    Date dDay = Noon;
    EXPECT_EQ(DayFormat(SystemLocale(std::locale::classic())).Read(sText, dDay), "");
    EXPECT_EQ(dDay, (Date{2025, 3, 4, 12, 30, 45})) << sText;
  }
  struct German : SystemLocale {
    std::string ShortDate(const Date& d) const override {
      return std::to_string(d.Day) + "." + std::to_string(d.Month) + "." + std::to_string(d.Year % 100);
    }
  };
  Date dDay = Noon;
  EXPECT_EQ(DayFormat(German()).Write(Noon), "28.02.2026");
  EXPECT_EQ(DayFormat(German()).Read("1.12.25", dDay), "");
  EXPECT_EQ(dDay, (Date{2025, 12, 1, 12, 30, 45}));
  EXPECT_NE(DayFormat(German()).Read("12/01/2025", dDay), "");
  Date dTime = Noon;
  for (const char* sText : {"", "24:00:00", "1:2:3", "12:30", "12:30:45 PM"}) {
    EXPECT_NE(TimeFormat::Read(sText, dTime), "") << sText;
  }
  EXPECT_EQ(TimeFormat::Read("01:02:03", dTime), "");
  EXPECT_EQ(dTime, (Date{2026, 2, 28, 1, 2, 3}));
}

TEST_F(DialogWindowTest, ATextOfAnyLengthLeavesTheButtonsOnTheScreen) {
  const std::string sName = "R_&_D <i>" + std::string(400, 'W');
  wxRect oPlace;
  const auto Look = [&](wxDialog& oDialog) {
    oPlace = oDialog.GetScreenRect();
    Click("cmdOK");
  };
  InDialog(Look);
  frmOnlineUntil(Platform->DialogBox()).OnlineUntil(sName, Noon);
  EXPECT_LT(oPlace.width, 640);
  EXPECT_GT(oPlace.height, 280) << "the name takes several lines";
  InDialog(Look);
  Platform->MessageBox().Show(std::string(1'000'000, '\n') + sName, "A long text", Buttons::OK,
                              MessageBox::Icon::Exclamation);
  EXPECT_LT(oPlace.height, 480);
}

TEST_F(DialogWindowTest, ABoxIsAnsweredByEscapeAndMnemonics) {
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

TEST_F(DialogWindowTest, HelpLeavesABoxOpen) {
  const auto Show = [this](const std::string& sKey, const std::function<void()>& oHelp) {
    PressIn("Error", sKey);
    Platform->MessageBox().ShowWithHelp("The database is locked", "Error", MessageBox::Icon::Exclamation, oHelp);
  };
  int iHelp = 0;
  Show("alt+h", [&] { PressIn("Error", ++iHelp < 2 ? "alt+h" : "alt+o"); });
  EXPECT_EQ(iHelp, 2);
  Show("Escape", {});
  EXPECT_THROW(Show("alt+h", [] { throw std::runtime_error("no page"); }), std::runtime_error);
}

TEST_F(DialogWindowTest, ABoxWorksFromWithinAClickAndAKeyOfThePage) {
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
