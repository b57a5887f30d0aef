#include "tests/desktop/TestWindow.h"
#include "zelwbr3/desktop/DesktopCommandlist.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/pages/storage/PageDataArea.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <future>
#include <semaphore>

#include <wx/app.h>
#include <wx/control.h>
#include <wx/timer.h>
#include <wx/utils.h>

namespace ZELWbr3::Desktop {
namespace {

/// An instance that takes until LetGo to go online, 20 seconds at most, and must
/// not be asked anything until then.
class SlowDatabase : public ZELLib3::Database {
 public:
  /// Called in the window when the operation has begun.
  std::function<void()> OnOnline;
  std::promise<void> LetGo;

  bool Online() override {
    AtWork = true;
    wxTheApp->CallAfter(OnOnline);
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

/// An instance whose state, if asked to, waits until LetGo or an interruption, 20
/// seconds at most.
class WaitingDatabase : public ZELLib3::Database {
 public:
  /// Called in the window while it waits; empty = it does not wait.
  std::function<void()> OnWait;
  std::counting_semaphore<> LetGo{0};
  int Readings = 0;

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override {
    ++Readings;
    if (OnWait) {
      m_fnRun([&] {
        wxTheApp->CallAfter(std::exchange(OnWait, {}));
        EXPECT_TRUE(LetGo.try_acquire_for(std::chrono::seconds(20)));
        if (m_bInterrupted) throw ZELLib3::InstanceError({9, "The state was not to be had"});
      });
    }
    return Database::StateInfo();
  }
  void Interrupt() override {
    m_bInterrupted = true;
    LetGo.release();
  }
  void WaitRunner(Runner fnRun) override { m_fnRun = std::move(fnRun); }

 private:
  Runner m_fnRun;
  std::atomic<bool> m_bInterrupted = false;
};

class LongReadingTest : public TestPanel {
 protected:
  LongReadingTest() {
    Control().PageMain()->Show(Database);
    Front().View()->Focus();
    ActivateFrame();
    Frame->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { bClosed = true; });
  }

  void Refill() { Control().PageMain()->Show(); }

  std::shared_ptr<WaitingDatabase> Database = std::make_shared<WaitingDatabase>();
  bool bClosed = false;
};

TEST_F(LongReadingTest, TheWindowIsPaintedAndEscapeEndsIt) {
  bool bPainted = false;
  Database->OnWait = [&] {
    EXPECT_TRUE(wxIsBusy());
    Front().View()->AfterPaint([&] {
      bPainted = true;
      Begin("xdotool key F5 key Escape");
    });
  };
  std::string sError;
  InDialog([&](wxDialog& oError) {
    for (const wxWindow* o : oError.GetChildren()) sError += o->GetLabel().utf8_string();
    Begin("xdotool key Return");
  });
  Refill();
  EXPECT_TRUE(bPainted);
  EXPECT_NE(sError.find("not to be had"), std::string::npos) << sError;
  EXPECT_FALSE(wxIsBusy());
  const int iReadings = Database->Readings;
  Press("F5");
  WaitFor("the page as it is now", [&] { return Database->Readings > iReadings && Text("txtFormTitle") != ""; });
}

TEST_F(LongReadingTest, WhatIsPressedMeanwhileComesAfterwards) {
  int iActions = 0;
  const ScopedConnection oCount = Control().ActionBegin.Connect([&] { ++iActions; });
  Database->OnWait = [&] {
    Do("xdotool key F5");
    EXPECT_EQ(iActions, 0);
    Database->LetGo.release();
  };
  Refill();
  WaitFor("the refresh", [&] { return iActions == 1; });
}

TEST_F(LongReadingTest, ItsTaskEndsWithItWhenThePageWasLeft) {
  Database->Readings = 0;
  Database->OnWait = [&] {
    Control().PageMain()->Hide();
    Database->LetGo.release();
  };
  Refill();
  EXPECT_EQ(Database->Readings, 1);
}

TEST_F(LongReadingTest, ClosingTheWindowEndsIt) {
  Database->OnWait = [&] { Frame->Close(); };
  EXPECT_THROW(Refill(), ClosingError);
  WaitFor("the close", [&] { return bClosed; });
  EXPECT_EQ(OpenDialog(), nullptr);
}

class LongOperationTest : public TestPanel {
 protected:
  LongOperationTest() {
    Control().PageMain()->Commandlist(Commands);
    Control().PageMain()->Show(Database);
    Front().View()->Focus();
    Frame->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { bClosed = true; });
  }

  void GoOnline() { Control().PageMain()->Command(4); }
  /// What a user who closes the window at work does.
  void Close() {
    Frame->Close();
    EXPECT_FALSE(bClosed);
    Database->LetGo.set_value();
  }

  std::shared_ptr<DesktopCommandlist> Commands = std::make_shared<DesktopCommandlist>(*Frame, Panel->Platform().Pump());
  std::shared_ptr<SlowDatabase> Database = std::make_shared<SlowDatabase>();
  bool bClosed = false;
};

TEST_F(LongOperationTest, ACommandListTakesMnemonicsAndAClickMayReplaceIt) {
  DesktopCommandlist oList(*Frame, Panel->Platform().Pump());
  const auto WaitForList = [&](const std::string& sList) {
    WaitFor(sList, [&] {
      std::string sShown;  // disabled ones in brackets
      for (const wxWindow* oWindow : oList.Window()->GetChildren()) {
        const std::string sText = wxControl::RemoveMnemonics(oWindow->GetLabel()).utf8_string();
        sShown += (oWindow->IsThisEnabled() ? sText : "(" + sText + ")") + "|";
      }
      return sShown == sList;
    });
  };
  const ScopedConnection oConnected = oList.ItemClick.Connect([&](Long lPageType, const ZELCmd3::CommandItem& oItem) {
    EXPECT_EQ(std::pair(int{lPageType}, int{oItem.Key}), std::pair(7, 4));
    oList.Reset(7);
    oList.Add(7, {9, "&New", 0});
    WaitForList("New|");
  });
  oList.Add(7, {4, "Ol&d", 0});
  oList.Add(7, ZELCmd3::CommandItem::MakeSeparator(3));
  oList.Add(7, {8, "O&ffline \xC3\xBC", 0, false});
  oList.BringToFront(7);
  WaitForList("Old||(Offline \xC3\xBC)|");
  Press("alt+f alt+d");
  WaitForList("New|");
}

TEST_F(LongOperationTest, TheWindowIsRepaintedAndTakesNoInput) {
  ActivateFrame();
  int iActions = 0;
  const ScopedConnection oCount = Control().ActionBegin.Connect([&] { ++iActions; });
  bool bWaitCursor = false;
  Database->OnOnline = [&] {
    bWaitCursor = wxIsBusy();
    Do("xdotool key F5 key Escape");
    Front().View()->AfterPaint([&] { Database->LetGo.set_value(); });
  };
  GoOnline();
  EXPECT_TRUE(bWaitCursor);
  EXPECT_FALSE(wxIsBusy());
  EXPECT_EQ(iActions, 1) << "F5 reached the page";
}

TEST_F(LongOperationTest, APageShownDuringItWaitsForTheInstance) {
  bool bShown = false;
  wxTimer oTurn;
  oTurn.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
    const auto oBrowsers = Panel->Platform().Browsers();
    if (std::ranges::count_if(oBrowsers, [](const auto* o) { return o->Document() != nullptr; }) < 2) return;
    oTurn.Stop();  // loaded, and not filled as long as the instance is at work
    Database->LetGo.set_value();
  });
  Database->OnOnline = [&] {
    oTurn.Start(1);
    Control().PageDataArea()->Show(Database);
    bShown = true;
  };
  GoOnline();
  EXPECT_TRUE(bShown);
  EXPECT_EQ(Text("txtCurrentCount"), "0");
}

TEST_F(LongOperationTest, ClosingTheWindowWaitsForWhatTheCommandListHasStarted) {
  Database->OnOnline = [&] { Close(); };
  const wxWindowList& oButtons = Commands->Window()->GetChildren();
  WaitFor("the commands", [&] { return !oButtons.empty(); });
  const auto it = std::ranges::find(oButtons, "&Online", &wxWindow::GetLabel);
  wxCommandEvent oClick(wxEVT_BUTTON, (*it)->GetId());
  (*it)->GetEventHandler()->ProcessEvent(oClick);
  WaitFor("the close", [&] { return bClosed; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
