#include "zelwbr3/instances/sqlite/file/Handle.h"

#include "zelwbr3/base/Text.h"

#include <sqlite3.h>

#include <string_view>

namespace ZELWbr3::SQLite {

namespace {

std::string EncodeURIPath(std::string_view sPath) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  static constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string sResult;
  for (const char c : sPath) {
    if (kPlain.find(c) != std::string_view::npos) {
      sResult += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      sResult += {'%', kHex[byte >> 4], kHex[byte & 15]};
    }
  }
  return sResult;
}

}  // namespace

void CloseHandle::operator()(sqlite3* pHandle) const { sqlite3_close_v2(pHandle); }

Handle OpenHandle(const std::string& sPath, int lFlags, const std::string& sQuery) {
  // Always a URI: a plain name would be taken for one when it begins with
  // "file:", and special names such as ":memory:" would not be files.
  const std::string sURI = "file://" + EncodeURIPath(sPath) + (sQuery.empty() ? "" : "?" + sQuery);
  sqlite3* pHandle = nullptr;
  const int rc = sqlite3_open_v2(sURI.c_str(), &pHandle, lFlags | SQLITE_OPEN_URI | SQLITE_OPEN_EXRESCODE, nullptr);
  Handle oHandle(pHandle);
  if (rc != SQLITE_OK) RaiseError(rc, sPath, "cannot be opened: " + std::string(sqlite3_errstr(rc)));
  return oHandle;
}

void Execute(sqlite3* pHandle, const std::string& sSQL, const std::string& sAsked) {
  if (sqlite3_exec(pHandle, sSQL.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) RaiseLastError(pHandle, sAsked);
}

void RaiseLastError(sqlite3* pHandle, const std::string& sAsked) {
  const char* sFile = sqlite3_db_filename(pHandle, "main");
  const int rc = sqlite3_extended_errcode(pHandle);
  // The watchdog's ways to end a statement.
  if ((rc & 0xff) == SQLITE_INTERRUPT || (rc & 0xff) == SQLITE_AUTH) {
    RaiseError(SQLITE_INTERRUPT, sFile ? sFile : "",
               sAsked + ": interrupted: it took too long, needed too much memory, or was stopped");
  }
  std::string sWhat = sAsked + ": " + sqlite3_errmsg(pHandle);
  if ((rc & 0xff) == SQLITE_NOTADB) sWhat += ", or it is encrypted";
  RaiseError(rc, sFile ? sFile : "", sWhat);
}

void RaiseError(int lCode, const std::string& sPath, const std::string& sWhat) {
  throw ZELLib3::InstanceError({lCode, Text::OneLine(sPath + ": " + sWhat)});
}

}  // namespace ZELWbr3::SQLite
