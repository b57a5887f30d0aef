#include "host/OpenInstance.h"

#include "host/OpenServer.h"
#include "host/WatchedDatabase.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Passwords.h"
#include "zelwbr3/instances/common/ResolveLinks.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"
#include "zelwbr3/instances/sqlite/sample/SampleDatabase.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

/// Bytes for all database files that a program opens; their caches take some MB.
constexpr std::int64_t kMostMemory = std::int64_t{512} << 20;

/// What stands in front of the file.
constexpr char RecordedKind[] = "recorded";
constexpr char SQLiteKind[] = "sqlite";
constexpr char ServerKind[] = "postgresql";

struct Argument {
  std::string Kind;
  std::string File;
};

/// What kind of instance a file is, by its first bytes.
const char* KindOf(const std::string& sFile) {
  std::string sStart(16, '\0');
  std::ifstream oFile(sFile, std::ios::binary);
  oFile.read(sStart.data(), static_cast<std::streamsize>(sStart.size()));
  sStart.resize(static_cast<std::size_t>(oFile.gcount()));
  if (sStart == std::string_view("SQLite format 3", 16)) return SQLiteKind;
  const std::string_view sMark = "\xEF\xBB\xBF";  // of an editor
  const std::string sText = Text::Trim(sStart.starts_with(sMark) ? sStart.substr(sMark.size()) : sStart, " \t\r\n");
  if (sText.starts_with('{')) return RecordedKind;
  throw std::invalid_argument("The file \"" + sFile + "\" does not begin as a SQLite database or a recording does");
}

Argument Parse(const std::string& sInstance) {
  const auto iColon = sInstance.find(':');
  Argument oArgument;
  if (iColon != std::string::npos) oArgument = {sInstance.substr(0, iColon), sInstance.substr(iColon + 1)};
  if (IsServer(sInstance)) return {ServerKind, sInstance};
  if (oArgument.Kind != RecordedKind && oArgument.Kind != SQLiteKind) {
    std::error_code eIgnored;
    if (std::filesystem::is_regular_file(sInstance, eIgnored)) return {KindOf(sInstance), sInstance};
    throw std::invalid_argument("The instance \"" + ShownInstance(sInstance) +
                                "\" is neither recorded:FILE nor sqlite:FILE nor postgresql://… nor an existing file");
  }
  if (oArgument.File.empty()) throw std::invalid_argument("The instance \"" + sInstance + "\" names no file");
  return oArgument;
}

}  // namespace

std::shared_ptr<ZELLib3::Database> OpenInstance(const std::string& sInstance, Recorded::CallObserver oObserver,
                                                const std::string& sPassword) {
  const Argument oArgument = Parse(sInstance);
  if (oArgument.Kind == RecordedKind) return Recorded::OpenRecording(oArgument.File, std::move(oObserver));
  if (oArgument.Kind == ServerKind) return OpenServer(sInstance, std::move(oObserver), sPassword);
  SQLite::LimitMemory(kMostMemory);
  if (oObserver != nullptr) {
    return std::make_shared<WatchedDatabase<SQLite::SQLiteDatabase>>(std::move(oObserver), oArgument.File);
  }
  return SQLite::OpenDatabase(oArgument.File);
}

std::string ShownInstance(const std::string& sInstance) { return Instances::WithoutPasswords(sInstance); }

void HidePasswords(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    for (const auto& [iBegin, iEnd] : Instances::PasswordsIn(argv[i])) std::fill(argv[i] + iBegin, argv[i] + iEnd, '*');
  }
}

std::vector<std::string> FilesOf(const std::string& sInstance) {
  const auto [sKind, sFile] = Parse(sInstance);
  if (sKind == RecordedKind) return {sFile};
  if (sKind == ServerKind) return {};
  // The library keeps its files beside the database itself, not beside a link.
  const std::string sDatabase = Instances::ResolveLinks(sFile);
  return {sDatabase, sDatabase + "-wal", sDatabase + "-shm", sDatabase + "-journal"};
}

std::string SampleInstance() {
  const std::string sPath = SQLite::SamplePath();
  SQLite::MakeSample(sPath);
  return "sqlite:" + sPath;
}

}  // namespace ZELWbr3::Host
