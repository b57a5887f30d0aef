// An instance of your own: override what you know; the rest reads as "not
// available". Prints a main page about the root file system as HTML.

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/headless/ReportWriter.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"

#include <filesystem>
#include <iostream>

namespace {

/// The figures at one moment. Sizes are pages of Database::PageSize bytes.
class DiskState : public ZELLib3::StateInfo {
 public:
  explicit DiskState(const std::filesystem::space_info& oSpace) : m_oSpace(oSpace) {}

  ZELLib3::Long Status() const override { return ZELLib3::Status::Online; }
  std::string StateText() const override { return "Mounted"; }
  bool InfoAvailable() const override { return true; }
  ZELLib3::Long DataTotal() const override { return m_oSpace.capacity / MiB; }
  ZELLib3::Long DataUsed() const override { return (m_oSpace.capacity - m_oSpace.available) / MiB; }
  ZELLib3::Long DataPercent() const override { return 100 - 100 * m_oSpace.available / m_oSpace.capacity; }
  Thresholds BarThresholds() const override { return {70, 80, 95, 70, 80, 95, 70, 80, 95}; }

  static constexpr int MiB = 1024 * 1024;

 private:
  std::filesystem::space_info m_oSpace;
};

class Disk : public ZELLib3::Database {
 public:
  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override {
    return std::make_shared<DiskState>(std::filesystem::space("/"));
  }
  std::string InstanceName() override { return "The root file system"; }
  bool Connected() override { return true; }
  ZELLib3::Long PageSize() override { return DiskState::MiB; }
};

}  // namespace

int main() {
  ZELWbr3::Headless::HeadlessPlatform oPlatform;
  ZELWbr3::Browser oBrowser(oPlatform);
  oBrowser.HTMLPath(ZELWBR3_HTML);
  oBrowser.PageMain()->Show(std::make_shared<Disk>());
  std::cout << ZELWbr3::Headless::WriteReport(*oBrowser.VisibleDocument(), oBrowser.HTMLPaths());
}
