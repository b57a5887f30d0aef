#pragma once

#include "zelwbr3/ZELLib3/Sessions.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <array>
#include <memory>
#include <vector>

namespace ZELWbr3::SQLite {

/// A process that holds the file open: its number in the list, then process
/// number, program, user, since when it runs, and what it has locked.
class SQLiteSession : public ZELLib3::Session {
 public:
  using Texts = std::array<std::string, 5>;

  SQLiteSession(ZELLib3::Integer iIndex, Texts oTexts) : m_iIndex(iIndex), m_oTexts(std::move(oTexts)) {}

  ZELLib3::Long Index() const override { return std::int16_t{m_iIndex}; }
  std::string Name() const override { return std::to_string(std::int16_t{m_iIndex}); }
  std::string Field1() const override { return m_oTexts[0]; }
  std::string Field2() const override { return m_oTexts[1]; }
  std::string Field3() const override { return m_oTexts[2]; }
  std::string Field4() const override { return m_oTexts[3]; }
  std::string Field5() const override { return m_oTexts[4]; }

 private:
  ZELLib3::Integer m_iIndex;
  Texts m_oTexts;
};

/// The processes that hold the file open, as of the last Refresh, in the order
/// of their numbers. Whether the instance is online makes no difference.
class SQLiteSessions : public ZELLib3::Sessions {
 public:
  explicit SQLiteSessions(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  ZELLib3::Integer Count() const override { return Texts().size(); }
  std::shared_ptr<ZELLib3::Session> Item(ZELLib3::Integer iIndex) const override;
  /// Fails when the file is not there.
  bool Refresh() override;

 private:
  const std::vector<SQLiteSession::Texts>& Texts() const;

  std::shared_ptr<InstanceFile> m_oFile;
  mutable std::shared_ptr<const std::vector<SQLiteSession::Texts>> m_oTexts;  ///< null before the first look
};

}  // namespace ZELWbr3::SQLite
