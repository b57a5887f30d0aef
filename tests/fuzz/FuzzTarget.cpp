#include "tests/fuzz/FuzzTarget.h"

#include "host/HostPages.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/headless/ReportWriter.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"

#include <unistd.h>

#include <fstream>

namespace Fuzz {

namespace {

using namespace ZELWbr3;

class OwnFolder {
 public:
  OwnFolder() { std::filesystem::create_directories(Path); }
  ~OwnFolder() {
    std::error_code oIgnored;
    std::filesystem::remove_all(Path, oIgnored);
  }
  const std::filesystem::path Path = "/dev/shm/zelwbr3-fuzz-" + std::to_string(getpid());
};

}  // namespace

const std::filesystem::path& Folder() {
  static const OwnFolder oFolder;
  return oFolder.Path;
}

std::string Write(const std::string& sName, std::string_view sBytes) {
  const std::string sPath = Folder() / sName;
  std::ofstream(sPath, std::ios::binary | std::ios::trunc) << sBytes;
  return sPath;
}

void Exercise(const std::shared_ptr<ZELLib3::Database>& oInstance, std::size_t lChoice) {
  // Which costs more than all the rest.
  if (lChoice % 5 == 0) Recorded::WriteRecording(*oInstance, Folder() / "again.json", {.Tables = {}, .MaxRows = 100});
  Headless::HeadlessPlatform oPlatform;
  Browser oBrowser(oPlatform);
  oBrowser.HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  Host::HostPages oPages(oBrowser, oInstance, std::make_shared<Headless::HeadlessCommandlist>());
  const auto Look = [&] {
    oPlatform.MessagePump().Poll();
    Headless::WriteReport(*oBrowser.VisibleDocument(), oPlatform.FrontFrame().Folder());
  };
  oPages.Show("Main");
  Look();
  const auto all = Host::HostPages::All();
  oPages.Show(all[lChoice % all.size()].Name);
  Look();
  // One that most pages have, or one of those that are made for an entry.
  constexpr const char* kElements[] = {"ITEM1",  "ITEM2", "btnReadAll", "tbsTab2DataArea", "tbsTab3Parameters",
                                       "btnSort"};
  const std::string sElement = kElements[lChoice / all.size() % std::size(kElements)];
  if (oBrowser.VisibleDocument()->all().item(sElement) == nullptr) return;
  oPlatform.FrontFrame().Click(sElement);
  Look();
}

}  // namespace Fuzz
