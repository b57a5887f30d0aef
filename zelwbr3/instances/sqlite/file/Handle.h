#pragma once

#include "zelwbr3/ZELLib3/Error.h"

#include <memory>
#include <string>

struct sqlite3;

namespace ZELWbr3::SQLite {

struct CloseHandle {
  void operator()(sqlite3* pHandle) const;
};

/// An owned connection handle of the library.
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// Opens a file that exists. sPath is absolute and taken literally, whatever
/// characters it holds; lFlags are the library's open flags, sQuery is a URI
/// query such as "immutable=1" or empty. Raises ZELLib3::InstanceError.
Handle OpenHandle(const std::string& sPath, int lFlags, const std::string& sQuery = {});

/// Runs one statement for its effect. sAsked says in a few words what it is
/// for; it stands in the error.
void Execute(sqlite3* pHandle, const std::string& sSQL, const std::string& sAsked);

/// Raises ZELLib3::InstanceError with the library's extended code and a text of
/// one line: file, what was asked, the library's message.
[[noreturn]] void RaiseLastError(sqlite3* pHandle, const std::string& sAsked);

/// The same for an error that the library does not know of.
[[noreturn]] void RaiseError(int lCode, const std::string& sPath, const std::string& sWhat);

}  // namespace ZELWbr3::SQLite
