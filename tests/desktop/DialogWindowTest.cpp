#include "tests/desktop/TestWindow.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerDelete.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerStart.h"
#include "zelwbr3/pages/main/frmOnlineUntil.h"
#include "zelwbr3/pages/main/frmShutdown.h"

#include <algorithm>

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/dialog.h>
#include <wx/textctrl.h>

namespace ZELWbr3::Desktop {
namespace {

const Date Noon{2026, 2, 28, 12, 30, 45};

/// The dialog that is open.
wxDialog* Open() {
  for (wxWindow* oEach : wxTopLevelWindows) {
    auto* oDialog = dynamic_cast<wxDialog*>(oEach);
    if (oDialog != nullptr && oDialog->IsModal() && oDialog->IsShownOnScreen()) return oDialog;
  }
  return nullptr;
}

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

class DialogWindowTest : public TestWindow {
 protected:
  /// Does something in the next dialog as soon as it is there.
  void InDialog(std::function<void()> oSteps) {
    wxTheApp->CallAfter([this, oSteps = std::move(oSteps)] {
      try {
        WaitFor("the dialog", [] { return Open() != nullptr; });
        Do(InWindow("." + Open()->GetTitle().utf8_string().substr(1, 6) + ".*", ""));
        oSteps();
      } catch (const std::exception& oError) {
        ADD_FAILURE() << oError.what();
        if (wxDialog* oDialog = Open()) oDialog->EndModal(wxID_CANCEL);
      }
    });
  }
  static void Click(const std::string& sName) { ClickOn(*Open()->FindWindow(wxString(sName))); }
  void Focus(const std::string& sName) {
    Click(sName);
    WaitFor(("the focus on " + sName).c_str(), [&] { return Focused() == sName; });
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
  static void Clipboard(const std::string& sText) {
    ASSERT_TRUE(wxTheClipboard->Open());
    wxTheClipboard->SetData(new wxTextDataObject(wxString::FromUTF8(sText)));
    wxTheClipboard->Close();
  }
  /// Presses keys in the next window with this title, in order.
  static void Then(std::string sTitle, const std::string& sKeys) {
    std::ranges::replace(sTitle, ' ', '.');  // a pattern of one word
    Begin(InWindow(sTitle, "key --window 0 --delay 30 " + sKeys));
  }
};

TEST_F(DialogWindowTest, ShutdownIsAnsweredByMnemonicsAndKeys) {
  const auto Ask = [this](const std::string& sKeys) {
    Then("Confirm Database Shut Down", sKeys);
    return frmShutdown(Platform->DialogBox()).Shutdown("R&D <b>");
  };
  EXPECT_FALSE(Ask("Return").Cancelled);
  EXPECT_TRUE(Ask("alt+q").Quick);
  EXPECT_TRUE(Ask("Escape").Cancelled);
  EXPECT_TRUE(Ask("Tab Tab space").Cancelled);
}

TEST_F(DialogWindowTest, EachButtonIsAnsweredByMouse) {
  const auto Shutdown = [this](const char* sButton) {
    InDialog([=] { Click(sButton); });
    return frmShutdown(Platform->DialogBox()).Shutdown("R&D <b>");
  };
  EXPECT_FALSE(Shutdown("cmdOK").Quick);
  EXPECT_TRUE(Shutdown("cmdQuick").Quick);
  EXPECT_TRUE(Shutdown("cmdCancel").Cancelled);

  InDialog([] { Click("cmdOK"); });
  EXPECT_EQ(frmOnlineUntil(Platform->DialogBox()).OnlineUntil("DEMO", Noon), Noon);
  InDialog([] { Click("cmdCancel"); });
  EXPECT_EQ(frmDBAnalyzerDelete(Platform->DialogBox()).DeleteProtSets(Noon), std::nullopt);

  InDialog([this] {
    Focus("chkDelete");
    Click("cmdOK");
  });
  const auto oOptions = frmDBAnalyzerStart(Platform->DialogBox()).StartIt();
  ASSERT_TRUE(oOptions.has_value());
  EXPECT_TRUE(oOptions->Delete);
}

TEST_F(DialogWindowTest, TabGoesThroughFieldsAndButtonsInTheirOrder) {
  const auto ExpectOrder = [this](const std::string& sOrder) {
    InDialog([this, sOrder] {
      EXPECT_EQ(TabOrder(), sOrder);
      Click("cmdCancel");
    });
  };
  ExpectOrder("cmdOK cmdQuick cmdCancel");
  frmShutdown(Platform->DialogBox()).Shutdown("DEMO");
  ExpectOrder("inpUntilDate inpUntilTime cmdOK cmdCancel");
  frmOnlineUntil(Platform->DialogBox()).OnlineUntil("DEMO", Noon);
  ExpectOrder("inpDate cmdOK cmdCancel");
  frmDBAnalyzerDelete(Platform->DialogBox()).DeleteProtSets(Noon);
  ExpectOrder("txtConfig txtNumber txtInterval chkDelete chkReconnect cmdOK cmdCancel");
  frmDBAnalyzerStart(Platform->DialogBox()).StartIt();
}

TEST_F(DialogWindowTest, PastedTextIsNotFilteredAndCountsByItsLeadingNumber) {
  const auto Pasted = [this](const std::string& sNumber) {
    InDialog([this, sNumber] {
      Clipboard(sNumber);
      Focus("txtNumber");
      Press("ctrl+v");
      WaitFor("the text", [&] {
        return dynamic_cast<wxTextCtrl&>(*Open()->FindWindow("txtNumber")).GetValue() == wxString(sNumber);
      });
      Click("cmdOK");
    });
    return frmDBAnalyzerStart(Platform->DialogBox()).StartIt().value().Number;
  };
  EXPECT_EQ(Pasted("12x"), 12);
  EXPECT_EQ(Pasted("twelve"), 0);
}

TEST_F(DialogWindowTest, NumbersTakeDigitsAndAreReadOnConfirmation) {
  Then("Start Database Analyzer", "alt+n 1 a 2 alt+i 6 0 BackSpace alt+r Return");
  const auto oOptions = frmDBAnalyzerStart(Platform->DialogBox()).StartIt();
  ASSERT_TRUE(oOptions.has_value());
  EXPECT_EQ(oOptions->Number, 12);
  EXPECT_EQ(oOptions->Interval, 6);
  EXPECT_TRUE(oOptions->Reconnect);
  EXPECT_FALSE(oOptions->Delete);

  Then("Start Database Analyzer", "alt+n 5 Escape");
  EXPECT_FALSE(frmDBAnalyzerStart(Platform->DialogBox()).StartIt().has_value());
}

TEST_F(DialogWindowTest, DateAndTimeStartAsOfferedAndKeepTheirSeconds) {
  Then("Restart Until", "Return");
  EXPECT_EQ(frmOnlineUntil(Platform->DialogBox()).OnlineUntil("<i>DEMO</i> & more", Noon), Noon);
  Then("Restart Until", "Escape");
  EXPECT_EQ(frmOnlineUntil(Platform->DialogBox()).OnlineUntil("DEMO", Noon), std::nullopt);

  Then("Delete Protocol Sets", "ctrl+a 0 3 slash 0 4 slash 2 0 2 5 Return");
  EXPECT_EQ(frmDBAnalyzerDelete(Platform->DialogBox()).DeleteProtSets(Noon), (Date{2025, 3, 4, 12, 30, 45}));
  Then("Delete Protocol Sets", "alt+c");
  EXPECT_EQ(frmDBAnalyzerDelete(Platform->DialogBox()).DeleteProtSets(Noon), std::nullopt);
}

TEST_F(DialogWindowTest, ATextOfAnyLengthLeavesTheButtonsOnTheScreen) {
  const std::string sName = "R_&_D <i>" + std::string(400, 'W');
  wxRect oPlace;
  const auto Look = [&] {
    oPlace = Open()->GetScreenRect();
    Click("cmdOK");
  };
  InDialog(Look);
  frmOnlineUntil(Platform->DialogBox()).OnlineUntil(sName, Noon);
  EXPECT_LT(oPlace.width, 640);
  EXPECT_GT(oPlace.height, 280) << "the name takes several lines";
  InDialog(Look);
  Platform->MessageBox().Show(std::string(1'000'000, '\n') + sName, "A long text", MessageBox::Buttons::OK,
                              MessageBox::Icon::Exclamation);
  EXPECT_LT(oPlace.height, 480);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
