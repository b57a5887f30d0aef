#pragma once

#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"
#include "zelwbr3/testing/TempFolder.h"

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
#include <memory>
#include <set>
#include <stdexcept>
#include <string>

/// Database files for tests, made and looked at without the code under test,
/// and the instances on them.
namespace SQLiteFiles {

inline void WriteFile(const std::string& sPath, const std::string& sBytes) {
  std::ofstream(sPath, std::ios::binary) << sBytes;
}
inline std::string ReadFile(const std::string& sPath) {
  std::ifstream oStream(sPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(oStream), {}};
}
inline std::set<std::string> Names(const std::string& sFolder) {
  std::set<std::string> names;
  for (const auto& oEntry : std::filesystem::directory_iterator(sFolder)) names.insert(oEntry.path().filename());
  return names;
}

/// A folder of one's own, readable by every user, gone at the end.
class Folder : public ZELWbr3::Testing::TempFolder {
 public:
  Folder() { chmod(Path().c_str(), 0755); }
  ~Folder() { chmod(Path().c_str(), 0755); }

  std::string operator/(const std::string& sName) const { return Path(sName); }

  /// Every file's name and bytes.
  std::map<std::string, std::string> Contents() const {
    std::map<std::string, std::string> contents;
    for (const std::string& sName : Names(Path())) contents[sName] = Read(sName);
    return contents;
  }
};

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
    std::pair<int, std::string> oValue(iColumn, "nothing");
    const auto Take = [](void* p, int, char** values, char**) {
      auto& [i, sText] = *static_cast<std::pair<int, std::string>*>(p);
      sText = values[i];
      return 0;
    };
    sqlite3_exec(m_pHandle, sSQL.c_str(), Take, &oValue, nullptr);
    return oValue.second;
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

/// A process of its own that answers orders, one after the other, and ends
/// without tidying up.
class Servant {
 public:
  explicit Servant(const std::function<std::string(const std::string& sOrder)>& oAnswer) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0 || (m_iProcess = fork()) < 0) {
      throw std::runtime_error("no process");
    }
    m_iEnd = ends[m_iProcess == 0];
    close(ends[m_iProcess != 0]);
    if (m_iProcess != 0) return;
    try {
      for (std::string sOrder; !(sOrder = Receive()).empty();) Send(oAnswer(sOrder));
    } catch (const std::exception& oError) {
      Send(std::string("raised: ") + oError.what());
    }
    _exit(0);
  }
  ~Servant() {
    shutdown(m_iEnd, SHUT_RDWR);  // those forked later have the descriptor, too
    close(m_iEnd);
    waitpid(m_iProcess, nullptr, 0);
  }
  Servant(const Servant&) = delete;
  Servant& operator=(const Servant&) = delete;

  void Send(const std::string& sText) const { (void)!write(m_iEnd, sText.data(), sText.size()); }
  /// Nothing when the other end has gone.
  std::string Receive() const {
    char buffer[4096];
    return {buffer, std::size_t(std::max<ssize_t>(0, read(m_iEnd, buffer, sizeof buffer)))};
  }
  std::string Ask(const std::string& sOrder) const {
    Send(sOrder);
    return Receive();
  }
  std::string Number() const { return std::to_string(m_iProcess); }

 private:
  int m_iEnd;
  pid_t m_iProcess;
};

/// A function that a process of its own runs at once.
class Process : Servant {
 public:
  explicit Process(const std::function<std::string()>& oFunction)
      : Servant([&](const std::string&) { return oFunction(); }) {
    Send("run");
  }
  /// What it returned, or the text of the exception that it raised.
  std::string Result() const { return Receive(); }
};

/// What the function returns when a user without any privilege runs it.
inline std::string AsOrdinaryUser(const std::function<std::string()>& oFunction) {
  return Process([&] {
           if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return std::string("cannot change user");
           return oFunction();
         })
      .Result();
}

/// The database file "a.db" in a folder of the test's own, an application that
/// has it open, and the instance of it.
class SQLiteTest : public testing::Test {
 protected:
  std::string Path(const std::string& sName = "a.db") const { return m_oFolder / sName; }
  /// Opens the file on first use.
  Application& App() {
    if (!m_oApplication) m_oApplication = std::make_unique<Application>(Path());
    return *m_oApplication;
  }
  void Run(const std::string& sSQL) { App().Run(sSQL); }
  int Number(const std::string& sSQL) { return App().Number(sSQL); }

  ZELLib3::Database& Open(const ZELWbr3::SQLite::Options& oOptions = {}) {
    m_oDatabase = SQLiteFiles::OpenDatabase(Path(), oOptions);
    return *m_oDatabase;
  }
  std::shared_ptr<ZELLib3::StateInfo> State() const { return m_oDatabase->StateInfo(); }
  std::string Error() const { return m_oDatabase->LastError().ErrorText; }
  void ExpectError(const std::string& sPart) const { EXPECT_NE(std::string::npos, Error().find(sPart)) << Error(); }

  Folder m_oFolder;
  std::unique_ptr<Application> m_oApplication;
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
};

/// The same for each of several kinds of file, made by the parameter's SQL.
class SQLiteTestWith : public SQLiteTest, public testing::WithParamInterface<const char*> {
 protected:
  SQLiteTestWith() { Run(GetParam()); }
};

}  // namespace SQLiteFiles
