#include "host/OpenInstance.h"

#include "instances/recorded/OpenRecording.h"
#include "instances/sqlite/SQLiteDatabase.h"
#include "instances/sqlite/SampleDatabase.h"

#include <stdexcept>

namespace ZELWbr3::Host {

std::shared_ptr<ZELLib3::Database> OpenInstance(const std::string& sInstance, Recorded::CallObserver oObserver) {
  const auto iColon = sInstance.find(':');
  const std::string sKind = iColon == std::string::npos ? std::string() : sInstance.substr(0, iColon);
  const std::string sFile = sInstance.substr(iColon + 1);
  if ((sKind == "recorded" || sKind == "sqlite") && sFile.empty()) {
    throw std::invalid_argument("The instance \"" + sInstance + "\" names no file");
  }
  if (sKind == "recorded") return Recorded::OpenRecording(sFile, std::move(oObserver));
  if (sKind == "sqlite") return SQLite::OpenDatabase(sFile);
  throw std::invalid_argument("The instance \"" + sInstance + "\" is neither recorded:FILE nor sqlite:FILE");
}

std::shared_ptr<ZELLib3::Database> OpenSample() {
  const std::string sPath = SQLite::SamplePath();
  SQLite::MakeSample(sPath);
  return SQLite::OpenDatabase(sPath);
}

}  // namespace ZELWbr3::Host
