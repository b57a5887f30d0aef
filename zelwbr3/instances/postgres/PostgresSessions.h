#pragma once

#include "zelwbr3/ZELLib3/Sessions.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// A session: its name in the server's log, then process number, program and
/// client, user and database, since when, and what it does or waits for.
class PostgresSession : public ZELLib3::Session {
 public:
  using Texts = std::array<std::string, 6>;

  /// iIndex is its number in the list: a process number is too long for one.
  PostgresSession(ZELLib3::Integer iIndex, Texts oTexts) : m_iIndex(iIndex), m_oTexts(std::move(oTexts)) {}

  ZELLib3::Long Index() const override { return std::int16_t{m_iIndex}; }
  std::string Name() const override { return m_oTexts[0]; }
  std::string Field1() const override { return m_oTexts[1]; }
  std::string Field2() const override { return m_oTexts[2]; }
  std::string Field3() const override { return m_oTexts[3]; }
  std::string Field4() const override { return m_oTexts[4]; }
  std::string Field5() const override { return m_oTexts[5]; }

 private:
  ZELLib3::Integer m_iIndex;
  Texts m_oTexts;
};

/// The sessions of clients and standbys as of the last Refresh, the oldest first,
/// at most as many as an Integer can number. Without the right of pg_monitor,
/// others' sessions have number, user and database only.
class PostgresSessions : public ZELLib3::Sessions {
 public:
  explicit PostgresSessions(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  ZELLib3::Integer Count() const override { return Texts().size(); }
  std::shared_ptr<ZELLib3::Session> Item(ZELLib3::Integer iIndex) const override;
  bool Refresh() override;

 private:
  const std::vector<PostgresSession::Texts>& Texts() const;

  std::shared_ptr<Server> m_oServer;
  mutable std::optional<std::vector<PostgresSession::Texts>> m_oTexts;
};

}  // namespace ZELWbr3::Postgres
