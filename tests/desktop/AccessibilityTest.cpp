#include "host/HostPages.h"
#include "tests/desktop/TestWindow.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/framework/Samples.h"
#include "zelwbr3/pages/charts/PageCharts.h"
#include "zelwbr3/shell/Pages.h"

#include <cstdlib>

namespace ZELWbr3::Desktop {
namespace {

/// Every page on the real browser, looked at by axe-core, which scripts/accessibility
/// installs; without it there is nothing to look with.
class AccessibilityTest : public TestPanel {
 protected:
  void SetUp() override {
    const char* pScript = std::getenv("ZELWBR3_AXE");
    if (pScript == nullptr) GTEST_SKIP() << "ZELWBR3_AXE names no axe-core; scripts/accessibility does";
    Script = ReadFile(pScript);
  }

  /// Looks at the page in front in both themes, narrow and wide, and at all of its tabs.
  void Look(const std::string& sPage) {
    Count += 1;
    for (const int iWidth : {480, 1280}) {
      Frame->SetClientSize(iWidth, 900);
      WaitFor("the width", [&] { return Ask(Front(), "innerWidth") == std::to_string(iWidth); });
      for (const char* sTheme : {"light", "dark"}) {
        Ask(Front(), "document.documentElement.dataset.theme = '" + std::string(sTheme) + "'");
        const std::string sFound = Violations();
        EXPECT_EQ(sFound, "") << sPage << ", " << iWidth << " pixels, " << sTheme;
      }
    }
  }
  void LookAtTabs(const std::string& sPage) {
    const int iTabs = std::stoi(Ask(Front(), "document.querySelectorAll('.zelTbsLinkOff').length"));
    const std::string sStrip = iTabs == 0 ? "" : Ask(Front(), "document.querySelector('.zelTbs').id.slice(11)");
    for (int i = 1; i <= iTabs; ++i) {
      const std::string sTab = "tbsTab" + std::to_string(i) + sStrip;
      if (Ask(Front(), "document.getElementById('" + sTab + "').className") != "zelTbsLinkOff") continue;
      ClickOn(Front(), sTab);
      WaitFor(sTab, [&] { return ByID(Front(), sTab).className() == "zelTbsLinkOn" && Front().Settled(); });
      Look(sPage + " " + sTab);
    }
  }
  /// What is wrong with the page as it is seen now, a line each.
  std::string Violations() {
    Ask(Front(), "if (!globalThis.axe) {" + Script +
                     "}; globalThis.sFound = null; Promise.allSettled(document.getAnimations().map(o => o.finished))"
                     ".then(() => axe.run(document, { resultTypes: ['violations'] }))"
                     ".then(o => o.violations.flatMap(v => v.nodes.map(n => v.id + ': ' + n.html.slice(0, "
                     "200))).join('\\n'), String)"
                     ".then(s => { globalThis.sFound = s; }); 0");
    WaitFor("axe-core", [&] { return Ask(Front(), "String(globalThis.sFound === null)") == "false"; });
    return Ask(Front(), "globalThis.sFound");
  }

  std::string Script;
  int Count = 0;
};

TEST_F(AccessibilityTest, NothingIsFoundOnAnyPage) {
  for (const char* sRecording : {"demo", "hostile", "full-data", "disconnected"}) {
    SCOPED_TRACE(sRecording);
    Host::HostPages oPages(Control(), Recording(sRecording), nullptr);
    for (const auto& oEntry : Host::HostPages::All()) {
      if (sRecording == std::string("disconnected") && oEntry.Name != std::string("Main")) continue;
      InDialog([](wxDialog& oDialog) { oDialog.EndModal(wxID_OK); });
      oPages.Show(oEntry.Name);
      InDialog({});
      Look(oEntry.Name);
      LookAtTabs(oEntry.Name);
    }
  }
  const auto oInstance = Recording("demo");
  Control().PageParameter()->Show(oInstance, oInstance->Parameters()->Item("CACHE_SIZE"));
  Look("Parameter");
  Control().PageSysInfo()->Show(oInstance, oInstance->SysInfos()->Item(1));
  Look("SysInfo");
  Control().HTMLPath(ZELWBR3_PAGES);  // with what the build makes
  const auto oCharted = Recording("demo");
  for (const std::int64_t iTime : {0, 5000}) {
    Samples::Of(oCharted)->Add("State", {{.ID = "A", .Label = "A", .Unit = "%", .Value = 5, .Place = ""}}, iTime);
  }
  const auto oCharts = std::make_shared<PageCharts>();
  oCharts->Database(oCharted);
  Control().Show(oCharts, zelWebBrowserDetail);
  oCharts->Show(oCharted, "State", "A");
  Look("Charts");
  Control().PageMain()->Show(oCharted);
  Ask(Front(), "document.dispatchEvent(new KeyboardEvent('keydown', { key: 'F1', bubbles: true })); ''");
  WaitFor("an explanation", [&] { return Ask(Front(), "String(document.querySelector('.zelHint'))") != "null"; });
  Look("Main with an explanation");
  Control().HTMLPath(Folder.string());
  InDialog([](wxDialog& oDialog) { oDialog.EndModal(wxID_OK); });
  Control().PageDefault()->Show();
  EXPECT_TRUE(Front().Document()->IsErrorPage());
  InDialog({});
  Look("the page that is not there");
  EXPECT_GT(Count, 40);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
