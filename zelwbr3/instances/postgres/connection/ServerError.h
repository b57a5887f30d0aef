#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

#include <string>
#include <string_view>

namespace ZELWbr3::Postgres {

/// The five characters of an SQLSTATE as a base-36 number, which is the ErrorCode
/// of this kind of instance; 0 without one.
ZELWBR3_EXPORT ZELLib3::Long CodeOf(std::string_view sSQLState);

/// A server that answered with an error, or did not answer.
class ZELWBR3_EXPORT ServerError : public ZELLib3::InstanceError {
 public:
  /// The text names the server, what was asked of it, and what it said.
  ServerError(std::string_view sSQLState, const std::string& sServer, const std::string& sAsked,
              const std::string& sSaid)
      : InstanceError({CodeOf(sSQLState), sServer + ": " + sAsked + ": " + sSaid}),
        m_sSQLState(sSQLState),
        m_sSaid(sSaid) {}

  /// Empty when the error is not the server's.
  const std::string& SQLState() const { return m_sSQLState; }
  const std::string& Said() const { return m_sSaid; }

 private:
  std::string m_sSQLState;
  std::string m_sSaid;
};

/// The server has not answered in time.
class ZELWBR3_EXPORT NoAnswer : public ServerError {
 public:
  using ServerError::ServerError;
};

/// The server has taken the connection, but its login does not end.
class ZELWBR3_EXPORT LoginWaits : public NoAnswer {
 public:
  using NoAnswer::NoAnswer;
};

/// The connection has ended meanwhile.
class ZELWBR3_EXPORT ConnectionLost : public ServerError {
 public:
  using ServerError::ServerError;
};

/// The server wants a password that is neither given nor found where libpq looks
/// for one.
class ZELWBR3_EXPORT PasswordNeeded : public ServerError {
 public:
  using ServerError::ServerError;
};

}  // namespace ZELWbr3::Postgres
