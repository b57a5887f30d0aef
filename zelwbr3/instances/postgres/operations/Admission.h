#pragma once

#include "zelwbr3/instances/postgres/connection/Connection.h"

#include <string>

namespace ZELWbr3::Postgres {

/// Who may log in: everybody, or superusers only.
///
/// Others are kept out by a connection limit of 0 on every database, which
/// superusers are exempt from. Its old limit stands as a setting at the database
/// itself: it survives a restart, and every program finds it. Failures raise
/// ServerError.
class Admission {
 public:
  explicit Admission(Connection& oConnection) : m_oConnection(oConnection) {}

  /// All databases or none; those that are closed already stay as they are.
  void Close();
  /// Gives every database the limit back that it had.
  void Reopen();

  /// Ends the sessions of users who are no superusers and who are in no
  /// transaction.
  void EndIdleSessions();
  /// Sessions of others that are still there, the first five of them as a text: of
  /// users who are no superusers, or, with a transaction of theirs open, of all.
  /// Empty when there are none.
  std::string OrdinarySessions();
  std::string OpenTransactions();

 private:
  void ChangeLimits(const std::string& sCommands);
  std::string Sessions(const std::string& sWhich);

  Connection& m_oConnection;
};

}  // namespace ZELWbr3::Postgres
