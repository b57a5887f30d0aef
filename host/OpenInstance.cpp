#include "host/OpenInstance.h"

#include "host/WatchedDatabase.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"
#include "zelwbr3/instances/sqlite/sample/SampleDatabase.h"

#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

/// What stands in front of the file.
constexpr char RecordedKind[] = "recorded";
constexpr char SQLiteKind[] = "sqlite";

struct Argument {
  std::string Kind;
  std::string File;
};

Argument Parse(const std::string& sInstance) {
  const auto iColon = sInstance.find(':');
  Argument oArgument;
  if (iColon != std::string::npos) oArgument = {sInstance.substr(0, iColon), sInstance.substr(iColon + 1)};
  if (oArgument.Kind != RecordedKind && oArgument.Kind != SQLiteKind) {
    throw std::invalid_argument("The instance \"" + sInstance + "\" is neither recorded:FILE nor sqlite:FILE");
  }
  if (oArgument.File.empty()) throw std::invalid_argument("The instance \"" + sInstance + "\" names no file");
  return oArgument;
}

}  // namespace

std::shared_ptr<ZELLib3::Database> OpenInstance(const std::string& sInstance, Recorded::CallObserver oObserver) {
  const Argument oArgument = Parse(sInstance);
  if (oArgument.Kind == RecordedKind) return Recorded::OpenRecording(oArgument.File, std::move(oObserver));
  if (oObserver != nullptr) return std::make_shared<WatchedDatabase>(oArgument.File, std::move(oObserver));
  return SQLite::OpenDatabase(oArgument.File);
}

std::vector<std::string> FilesOf(const std::string& sInstance) {
  const auto [sKind, sFile] = Parse(sInstance);
  if (sKind == RecordedKind) return {sFile};
  return {sFile, sFile + "-wal", sFile + "-shm", sFile + "-journal"};
}

std::string SampleInstance() {
  const std::string sPath = SQLite::SamplePath();
  SQLite::MakeSample(sPath);
  return "sqlite:" + sPath;
}

}  // namespace ZELWbr3::Host
