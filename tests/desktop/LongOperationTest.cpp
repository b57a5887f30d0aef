#include "tests/desktop/TestWindow.h"
#include "zelwbr3/desktop/DesktopCommandlist.h"
#include "zelwbr3/pages/main/StateCommands.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <future>

#include <wx/app.h>
#include <wx/timer.h>
#include <wx/utils.h>

namespace ZELWbr3::Desktop {
namespace {

/// An instance that does not go online before somebody lets it, or 20 seconds
/// have gone by, and that must not be asked anything meanwhile.
class SlowDatabase : public ZELLib3::Database {
 public:
  std::function<void()> OnOnline;
  std::promise<void> LetGo;

  bool Online() override {
    AtWork = true;
    OnOnline();
    const bool bLetGo = LetGo.get_future().wait_for(std::chrono::seconds(20)) == std::future_status::ready;
    AtWork = false;
    return bLetGo;
  }
  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override {
    EXPECT_FALSE(AtWork);
    return Database::StateInfo();
  }

 private:
  std::atomic<bool> AtWork = false;
};

class LongOperationTest : public TestPanel {
 protected:
  LongOperationTest() {
    Control().PageMain()->Show(Database);
    Front().View()->Focus();
  }

  ZELWbr3::Browser& Control() { return Panel->Browser(); }
  void GoOnline() { Control().PageMain()->Command(StateCommands::KeyOnline); }

  std::shared_ptr<SlowDatabase> Database = std::make_shared<SlowDatabase>();
};

TEST_F(LongOperationTest, TheWindowIsRepaintedAndTakesNoInput) {
  ActivateFrame();
  int iActions = 0;
  const auto oCount = Control().ActionBegin.Connect([&] { ++iActions; });
  bool bWaitCursor = false;
  Database->OnOnline = [&] {
    EXPECT_EQ(std::system("xdotool key F5 key Escape"), 0);
    wxTheApp->CallAfter([&] {
      bWaitCursor = wxIsBusy();
      Front().View()->AfterPaint([&] { Database->LetGo.set_value(); });
    });
  };
  GoOnline();
  EXPECT_TRUE(bWaitCursor);
  EXPECT_FALSE(wxIsBusy());
  EXPECT_EQ(iActions, 1) << "F5 reached the page";
}

TEST_F(LongOperationTest, WhatTheHostShowsMeanwhileWaitsForTheInstance) {
  bool bShown = false;
  wxTimer oTurn;
  oTurn.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
    const auto oBrowsers = Panel->Platform().Browsers();
    if (std::ranges::count_if(oBrowsers, [](const auto* o) { return o->Document() != nullptr; }) < 2) return;
    oTurn.Stop();  // loaded, and not filled as long as the instance is at work
    Database->LetGo.set_value();
  });
  Database->OnOnline = [&] {
    wxTheApp->CallAfter([&] {
      oTurn.Start(1);
      Control().PageDataArea()->Show(Database);
      bShown = true;
    });
  };
  GoOnline();
  EXPECT_TRUE(bShown);
  EXPECT_EQ(ByID(*Panel->Platform().Browsers()[1], "txtCurrentCount").innerText(), "0");
}

TEST_F(LongOperationTest, ClosingTheWindowWaitsForItsEnd) {
  bool bClosed = false;
  Frame->Bind(wxEVT_CLOSE_WINDOW, [&](wxCloseEvent&) { bClosed = true; });
  Database->OnOnline = [&] {
    wxTheApp->CallAfter([&] {
      Frame->Close();
      EXPECT_FALSE(bClosed);
      Database->LetGo.set_value();
    });
  };
  EXPECT_THROW(GoOnline(), WaitError);
  WaitFor("the close", [&] { return bClosed; });
}

TEST_F(LongOperationTest, AnItemOfTheCommandListEndsWithItsWorkWhenTheWindowIsClosed) {
  const auto oCommands = std::make_shared<DesktopCommandlist>(*Frame, Panel->Platform().Pump());
  Control().PageMain()->Commandlist(oCommands);
  Control().PageMain()->Show(Database);
  bool bClosed = false;
  Frame->Bind(wxEVT_CLOSE_WINDOW, [&](wxCloseEvent&) { bClosed = true; });
  Database->OnOnline = [&] {
    wxTheApp->CallAfter([&] {
      Frame->Close();
      EXPECT_FALSE(bClosed);
      Database->LetGo.set_value();
    });
  };
  WaitFor("the commands", [&] { return !oCommands->Window()->GetChildren().empty(); });
  for (wxWindow* oButton : oCommands->Window()->GetChildren()) {
    wxCommandEvent oClick(wxEVT_BUTTON, oButton->GetId());
    if (oButton->GetLabel() == "&Online") oButton->GetEventHandler()->ProcessEvent(oClick);
  }
  WaitFor("the close", [&] { return bClosed; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
