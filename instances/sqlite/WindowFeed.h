#pragma once

#include "instances/sqlite/RowFeed.h"
#include "instances/sqlite/Spool.h"

#include <cstdint>
#include <optional>

namespace ZELWbr3::SQLite {

/// The rows of any query, where there is no key by which it could be continued.
///
/// To come back to a row means to step over all before it. So rows are fetched
/// in windows, each half as long as all before it together, and wait in a
/// temporary file until they are asked for: all in all three steps a row,
/// however many rows there are.
class WindowFeed : public RowFeed {
 public:
  /// sSQL is one SELECT without a limit; sAsked stands in errors. Raises
  /// ZELLib3::InstanceError when it cannot be prepared.
  WindowFeed(Connection& oConnection, const std::string& sSQL, std::string sAsked);

  bool Read(Connection& oConnection, RowBlock& oBlock) override;

 private:
  void Fetch(Connection& oConnection);

  std::string m_sSQL;
  std::string m_sAsked;
  std::optional<Spool> m_oWindow;
  std::int64_t m_lFetched = 0;  ///< rows, in all windows
  bool m_bMore = true;          ///< behind the last window
};

}  // namespace ZELWbr3::SQLite
