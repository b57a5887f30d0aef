#include "tests/desktop/TestWindow.h"

namespace ZELWbr3::Desktop {
namespace {

class DesktopWebBrowserTest : public TestBrowser {};

TEST_F(DesktopWebBrowserTest, ReportsANavigationInOrderAndReadsTheDocument) {
  ShowBody("<p id=\"p\">one &amp; <b>two</b> three</p><script>document.getElementById('p').title = 'set'</script>");
  EXPECT_EQ(Events.Log, (std::vector<std::string>{"before", "navigated", "complete"}));
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "one & two three");
  EXPECT_EQ(ByID(*Browser, "p").title(), "set");
  ExpectLiveEqualsReplica(*Browser);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
