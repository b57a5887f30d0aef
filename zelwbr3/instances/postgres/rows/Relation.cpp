#include "zelwbr3/instances/postgres/rows/Relation.h"

#include "zelwbr3/instances/postgres/connection/Queries.h"
#include "zelwbr3/instances/postgres/rows/CursorReader.h"
#include "zelwbr3/instances/postgres/rows/KeysetReader.h"

namespace ZELWbr3::Postgres {

namespace {

/// SQLSTATEs.
constexpr char kUndefinedTable[] = "42P01";
constexpr char kInsufficientPrivilege[] = "42501";

/// The first version that finds rows by where they are stored.
constexpr int kHasTidRanges = 140000;

}  // namespace

Relation Relation::Of(Connection& oConnection, const std::string& sServer, const std::string& sSchema,
                      const std::string& sName) {
  const std::string sShown = (sSchema.empty() ? "" : sSchema + ".") + sName;
  const Result o =
      oConnection.Execute(Queries::SQL("relation"), "looking up " + sShown, {sSchema, sName, oConnection.SearchPath()});
  if (o.Rows() == 0) throw ServerError(kUndefinedTable, sServer, "reading " + sShown, "there is no such table or view");
  return {o.Text(0, "oid"), o.Text(0, "name"), o.Text(0, "kind").at(0), o.Flag(0, "has_children"),
          o.Text(0, "foreign_code")};
}

std::unique_ptr<RowReader> Relation::MakeReader(Connection& oConnection, const std::string& sServer,
                                                const Rights& oRights) const {
  const std::string sAsked = "reading " + FullName;
  if (oRights.IsSuper && !ForeignCode.empty()) {
    throw ServerError(kInsufficientPrivilege, sServer, sAsked,
                      (ForeignCode == FullName ? "it" : "it reads " + ForeignCode + ", which") +
                          " belongs to a user who is no superuser, and its code would run with your rights; connect "
                          "as an ordinary user to read it");
  }
  CellColumns oCells = CellColumns::Of(oConnection, Number);
  const std::string sFrom = "FROM " + FullName + " AS r";
  // What rows of several tables have in common is no key of them all, unless they
  // are the parts of one.
  if (Kind == 'p' || !HasChildren) {
    if (auto key = TableKey::Of(oConnection, Number); !key.Columns.empty()) {
      return std::make_unique<KeysetReader>(std::move(oCells), sFrom, std::move(key), sAsked);
    }
  }
  if ((Kind == 'r' || Kind == 'm') && !HasChildren && oRights.Version >= kHasTidRanges) {
    return std::make_unique<KeysetReader>(std::move(oCells), sFrom, TableKey::Tid(), sAsked);
  }
  return std::make_unique<CursorReader>(std::move(oCells), sFrom, sAsked);
}

}  // namespace ZELWbr3::Postgres
