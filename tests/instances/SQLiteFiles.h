#pragma once

#include "tests/support/TempFolder.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

/// Database files for tests, made and looked at without the code under test,
/// and the instances on them.
namespace SQLiteFiles {

/// A folder of one's own, readable by every user, gone at the end.
class Folder : public ZELWbr3::Testing::TempFolder {
 public:
  Folder() { chmod(Path().c_str(), 0755); }
  ~Folder() { chmod(Path().c_str(), 0755); }

  std::string operator/(const std::string& sName) const { return Path(sName); }

  /// Every file's name and bytes.
  std::map<std::string, std::string> Contents() const {
    std::map<std::string, std::string> contents;
    for (const auto& oEntry : std::filesystem::directory_iterator(Path())) {
      const std::string sName = oEntry.path().filename();
      contents[sName] = Read(sName);
    }
    return contents;
  }
};

inline void WriteFile(const std::string& sPath, const std::string& sBytes) {
  std::ofstream(sPath, std::ios::binary) << sBytes;
}

inline std::set<std::string> Names(const std::string& sFolder) {
  std::set<std::string> names;
  for (const auto& oEntry : std::filesystem::directory_iterator(sFolder)) names.insert(oEntry.path().filename());
  return names;
}

inline std::string ReadFile(const std::string& sPath) {
  std::ifstream oStream(sPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(oStream), {}};
}

/// The names that the newest page of system tables links to.
inline std::vector<std::string> SystemTables() {
  const std::string sPage = ReadFile(std::string(ZELWBR3_SOURCE_DIR) + "/html/SysDD76.htm");
  const std::regex oName("id=\"ITEM_([^\"]*)\"");
  std::vector<std::string> names;
  for (std::sregex_iterator it(sPage.begin(), sPage.end(), oName), end; it != end; ++it) names.push_back(it->str(1));
  if (names.size() < 20) throw std::runtime_error("the page of system tables has no links");
  return names;
}

/// A connection as any application has one. Makes the file when it is missing.
class Application {
 public:
  explicit Application(const std::string& sPath, const std::string& sSQL = {}) {
    if (sqlite3_open(sPath.c_str(), &m_pHandle) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(m_pHandle));
    Try("PRAGMA synchronous=OFF");  // a test's file need not outlive the power
    if (!sSQL.empty()) Run(sSQL);
  }
  ~Application() { sqlite3_close_v2(m_pHandle); }
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  int Try(const std::string& sSQL) { return sqlite3_exec(m_pHandle, sSQL.c_str(), nullptr, nullptr, nullptr); }
  void Run(const std::string& sSQL) {
    if (Try(sSQL) != SQLITE_OK) throw std::runtime_error(sSQL + ": " + sqlite3_errmsg(m_pHandle));
  }
  /// Column iColumn of the first row.
  std::string Text(const std::string& sSQL, int iColumn = 0) {
    sqlite3_stmt* pStatement = nullptr;
    if (sqlite3_prepare_v2(m_pHandle, sSQL.c_str(), -1, &pStatement, nullptr) != SQLITE_OK ||
        sqlite3_step(pStatement) != SQLITE_ROW) {
      throw std::runtime_error(sSQL + ": " + sqlite3_errmsg(m_pHandle));
    }
    const std::string sText = reinterpret_cast<const char*>(sqlite3_column_text(pStatement, iColumn));
    sqlite3_finalize(pStatement);
    return sText;
  }
  int Number(const std::string& sSQL, int iColumn = 0) { return std::stoi(Text(sSQL, iColumn)); }
  /// A program that ends here leaves its log behind.
  void LeaveLogBehind() { sqlite3_db_config(m_pHandle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr); }

 private:
  sqlite3* m_pHandle = nullptr;
};

/// Opened so that each look reads afresh: for tests that change the file
/// between two looks.
inline auto OpenDatabase(const std::string& sPath, ZELWbr3::SQLite::Options oOptions = {}) {
  oOptions.ReadingLifetime = {};
  return ZELWbr3::SQLite::OpenDatabase(sPath, oOptions);
}

/// Adds rows of about 1 KB to table t, each in a transaction of its own.
inline void InsertRows(Application& oApplication, int iCount) {
  oApplication.Run("CREATE TABLE IF NOT EXISTS t(id INTEGER PRIMARY KEY, v BLOB)");
  for (int i = 0; i < iCount; ++i) oApplication.Run("INSERT INTO t(v) VALUES(randomblob(1000))");
}

/// Runs a function in a process of its own, which ends without tidying up, and
/// answers what it returned; an exception's text when it raised one.
class Process {
 public:
  explicit Process(const std::function<std::string()>& oFunction) {
    int iPipe[2];
    if (pipe(iPipe) != 0 || (m_iProcess = fork()) < 0) throw std::runtime_error("no process");
    if (m_iProcess == 0) {
      std::string sResult;
      try {
        sResult = oFunction();
      } catch (const std::exception& oError) {
        sResult = std::string("raised: ") + oError.what();
      }
      (void)!write(iPipe[1], sResult.data(), sResult.size());
      _exit(0);
    }
    close(iPipe[1]);
    m_iResult = iPipe[0];
  }
  ~Process() {
    if (m_iProcess > 0) Result();
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// Waits for the end.
  std::string Result() {
    std::string sResult;
    char buffer[4096];
    for (ssize_t n; (n = read(m_iResult, buffer, sizeof buffer)) > 0;) sResult.append(buffer, std::size_t(n));
    close(m_iResult);
    int iStatus = 0;
    waitpid(std::exchange(m_iProcess, 0), &iStatus, 0);
    return WIFEXITED(iStatus) && WEXITSTATUS(iStatus) == 0 ? sResult : sResult + " (died)";
  }

 private:
  pid_t m_iProcess = 0;
  int m_iResult = -1;
};

/// A process of its own that answers orders, one after the other.
class Servant {
 public:
  explicit Servant(const std::function<std::string(const std::string&)>& oAnswer) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0 || (m_iProcess = fork()) < 0) {
      throw std::runtime_error("no process");
    }
    m_iEnd = ends[m_iProcess == 0];
    close(ends[m_iProcess != 0]);
    if (m_iProcess != 0) return;
    for (std::string sOrder; !(sOrder = Receive()).empty();) Send(oAnswer(sOrder));
    _exit(0);
  }
  ~Servant() {
    close(m_iEnd);
    waitpid(m_iProcess, nullptr, 0);
  }
  Servant(const Servant&) = delete;
  Servant& operator=(const Servant&) = delete;

  std::string Ask(const std::string& sOrder) const {
    Send(sOrder);
    return Receive();
  }
  std::string Number() const { return std::to_string(m_iProcess); }

 private:
  void Send(const std::string& sText) const { (void)!write(m_iEnd, sText.data(), sText.size()); }
  /// Nothing when the other end has gone.
  std::string Receive() const {
    char buffer[4096];
    return {buffer, std::size_t(std::max<ssize_t>(0, read(m_iEnd, buffer, sizeof buffer)))};
  }

  int m_iEnd;
  pid_t m_iProcess;
};

/// What the function returns when a user without any privilege runs it.
inline std::string AsOrdinaryUser(const std::function<std::string()>& oFunction) {
  return Process([&] {
           if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return std::string("cannot change user");
           return oFunction();
         })
      .Result();
}

}  // namespace SQLiteFiles
