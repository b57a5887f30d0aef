// A page of one's own: its page file stands in a folder beside the installed ones,
// whose style sheet it uses. Writes the page of a database file as HTML.

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/headless/ReportWriter.h"
#include "zelwbr3/instances/sqlite/OpenDatabase.h"
#include "zelwbr3/shell/Browser.h"

#include <iostream>

namespace {

/// The volumes of the data area, without anything else: pages/Files.htm.
class PageFiles : public ZELWbr3::DataPage {
 public:
  std::string Name() const override { return "Files"; }
  ZELWbr3::Long PageType() const override { return 100; }  // 1 to 16 are the control's own
  ZELWbr3::Long WebBrowser() const override { return ZELWbr3::zelWebBrowserWork; }

 protected:
  void FillContent() override {
    const auto oVolumes = Database()->DataArea()->Volumes();
    SetText("txtCount", std::to_string(oVolumes->Count()));
    ZELWbr3::Element& oRow = RequiredRow("tabFiles", "rowFile");
    for (int i = 1; i <= oVolumes->Count(); ++i) {
      const auto oVolume = oVolumes->Item(i);
      const std::string texts[] = {oVolume->Name(), SizeText(oVolume->Size())};
      ZELWbr3::modCells::AddRow(oRow, texts);
    }
  }
};

}  // namespace

int main(int argc, char** argv) try {
  ZELWbr3::Headless::HeadlessPlatform oPlatform;
  ZELWbr3::Browser oBrowser(oPlatform);
  oBrowser.HTMLPaths({OWN_PAGES, ZELWBR3_HTML});
  const auto oPage = std::make_shared<PageFiles>();
  oPage->Database(ZELWbr3::SQLite::OpenDatabase(argc > 1 ? argv[1] : ""));
  oBrowser.Show(oPage, oPage->WebBrowser());
  std::cout << ZELWbr3::Headless::WriteReport(*oBrowser.VisibleDocument(), oBrowser.HTMLPaths());
  return 0;
} catch (const std::exception& oError) {
  std::cerr << "own-page: " << oError.what() << '\n';
  return 1;
}
