#include "zelwbr3/instances/postgres/rows/SystemTable.h"

#include "zelwbr3/instances/postgres/connection/Queries.h"
#include "zelwbr3/instances/postgres/rows/CursorReader.h"

#include <algorithm>

namespace ZELWbr3::Postgres {

namespace {

std::string UpperCase(std::string sText) {
  for (char& c : sText) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return sText;
}

std::string WhyNot(const std::string& sName, const Rights& oRights) {
  if (sName == "SYNONYMS") return "PostgreSQL has no synonyms";
  if (sName == "SNAPSHOTS") return "PostgreSQL keeps no snapshots of an instance";
  const bool bElsewhere =
      std::ranges::any_of(Queries::All(), [&](const Query& o) { return o.Name == "table." + sName; });
  return bElsewhere ? oRights.VersionText + " has no such system table" : "there is no such system table";
}

}  // namespace

std::unique_ptr<RowReader> SystemTable::MakeReader(Connection& oConnection, const std::string& sServer,
                                                   const Rights& oRights, const std::string& sName) {
  const std::string sTable = UpperCase(sName);
  const std::string sAsked = "reading " + std::string(Owner) + "." + sTable;
  const Query* pQuery = Queries::Find("table." + sTable, oRights);
  if (pQuery == nullptr) throw ServerError({}, sServer, sAsked, WhyNot(sTable, oRights));
  return CursorReader::Of(oConnection, pQuery->For(oRights), sAsked);
}

}  // namespace ZELWbr3::Postgres
