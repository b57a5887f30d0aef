#include "tests/desktop/TestWindow.h"

#include <wx/app.h>
#include <wx/timer.h>

namespace ZELWbr3::Desktop {
namespace {

class DesktopPumpTest : public TestWindow {
 protected:
  /// Lets something happen out of the loop.
  void Later(std::function<void()> oTask) {
    wxTheApp->CallAfter([this, oTask = std::move(oTask)] { Platform->Pump().Deliver(oTask); });
  }
  void WaitUntil(const bool& bDone) {
    while (!bDone) Platform->Pump().Turn();
  }
};

TEST_F(DesktopPumpTest, WaitsNestAndEndInAnyOrder) {
  bool bInner = false;
  bool bOuter = false;
  std::string sOrder;
  Later([&] {
    Later([&] { bOuter = true; });
    Later([&] { bInner = true; });
    WaitUntil(bInner);
    sOrder += "inner ";
  });
  WaitUntil(bOuter);
  sOrder += "outer";
  EXPECT_EQ(sOrder, "inner outer");
  EXPECT_FALSE(Platform->Pump().Waiting());
}

TEST_F(DesktopPumpTest, AnErrorReachesWhoWaitsOnceAndIsTracedWhenNobodyDoes) {
  Later([] { throw std::invalid_argument("no such page"); });
  bool bDone = false;
  EXPECT_THROW(WaitUntil(bDone), std::invalid_argument);
  EXPECT_TRUE(Traces.empty());
  Later([&] { bDone = true; });
  WaitUntil(bDone);
  Platform->Pump().Deliver([] { throw std::runtime_error("lonely"); });
  ASSERT_EQ(Traces.size(), 1u);
  EXPECT_NE(Traces[0].find("lonely"), std::string::npos);
}

TEST_F(DesktopPumpTest, ClosingTheWindowEndsAllWaitsAndHappensAfterThem) {
  int iWaits = 0;
  const bool bNever = false;
  const auto Wait = [&] {
    ++iWaits;
    try {
      WaitUntil(bNever);
    } catch (const WaitError&) {
      --iWaits;
      EXPECT_TRUE(Frame->IsShown()) << "the window must be there while code waits in it";
      throw;
    }
  };
  bool bClosed = false;
  Frame->Bind(wxEVT_CLOSE_WINDOW, [&](wxCloseEvent&) {
    EXPECT_EQ(iWaits, 0);
    bClosed = true;
    Frame->Hide();
  });
  Later([&] {
    Later([&] { Frame->Close(); });
    Wait();
  });
  EXPECT_THROW(Wait(), WaitError);
  EXPECT_FALSE(bClosed);
  WaitFor("the close", [&] { return bClosed; });
}

TEST_F(DesktopPumpTest, PollingHandlesWhatIsThereAndWaitingBlocks) {
  bool bDone = false;
  wxTimer oTimer;
  oTimer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { bDone = true; });
  bool bPutOff = false;
  Later([&] { bPutOff = true; });
  Platform->Pump().Poll();
  EXPECT_TRUE(bPutOff) << "what was put off until the program is idle";
  oTimer.StartOnce(300);
  int iTurns = 0;
  for (; !bDone; ++iTurns) Platform->Pump().Turn();
  EXPECT_LT(iTurns, 100);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
