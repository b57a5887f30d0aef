#include "pages/analyzer/frmDBAnalyzerDelete.h"
#include "pages/analyzer/frmDBAnalyzerStart.h"
#include "pages/main/frmOnlineUntil.h"
#include "pages/main/frmShutdown.h"
#include "tests/desktop/TestWindow.h"

#include <algorithm>

#include <wx/utils.h>

namespace ZELWbr3::Desktop {
namespace {

class DialogWindowTest : public TestWindow {
 protected:
  /// Presses keys in the next window with this title, in order.
  static void Then(std::string sTitle, const std::string& sKeys) {
    std::ranges::replace(sTitle, ' ', '.');  // a pattern of one word
    wxExecute(InWindow(sTitle, "key --window 0 --delay 30 " + sKeys), wxEXEC_ASYNC);
  }
};

const Date Noon{2026, 2, 28, 12, 30, 45};

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

TEST_F(DialogWindowTest, NumbersTakeDigitsAndAreReadOnConfirmation) {
  Then("Start Database Analyzer", "alt+n 1 a 2 alt+i 6 0 BackSpace alt+r space Return");
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
}

}  // namespace
}  // namespace ZELWbr3::Desktop
