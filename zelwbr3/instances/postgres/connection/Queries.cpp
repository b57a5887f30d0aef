#include "zelwbr3/instances/postgres/connection/Queries.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/postgres/connection/QueryFiles.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace ZELWbr3::Postgres {

namespace {

constexpr std::string_view kMark = "-- @name ";

int Number(std::string_view sText) {
  int lNumber = 0;
  std::from_chars(sText.data(), sText.data() + sText.size(), lNumber);
  return lNumber;
}

/// What follows sKey in the line, up to the next blank, or to the end of the line.
std::string Entry(std::string_view sLine, std::string_view sKey, bool bWholeLine = false) {
  const auto i = sLine.find(sKey);
  if (i == std::string_view::npos) return {};
  sLine.remove_prefix(i + sKey.size());
  const auto iEnd = bWholeLine ? std::min(sLine.find("  ("), sLine.size()) : std::min(sLine.find(' '), sLine.size());
  return std::string(sLine.substr(0, iEnd));
}

void SetNeeds(Query& oQuery, std::string sNeeds) {
  const std::string sExtension = "ext:";
  if (sNeeds.starts_with(sExtension)) {
    const auto iPlus = std::min(sNeeds.find('+'), sNeeds.size());
    oQuery.Extension = sNeeds.substr(sExtension.size(), iPlus - sExtension.size());
    sNeeds.erase(0, std::min(iPlus + 1, sNeeds.size()));
  }
  if (sNeeds != "any") oQuery.Right = sNeeds;
}

Query Parse(std::string_view sPart) {
  const auto iLine = std::min(sPart.find('\n'), sPart.size());
  const std::string_view sLine = sPart.substr(0, iLine);
  Query oQuery;
  oQuery.Name = Entry(sLine, kMark);
  oQuery.From = Number(Entry(sLine, " from="));
  oQuery.Below = Number(Entry(sLine, " below="));
  SetNeeds(oQuery, Entry(sLine, " needs="));
  oQuery.IsRecord = sLine.find(" record ") != std::string_view::npos;
  oQuery.Title = Entry(sLine, " title=", true);
  oQuery.SQL = Text::Trim(sPart.substr(iLine), " \n");
  // One that the next file begins after.
  if (const auto iComment = oQuery.SQL.find("\n\n--"); iComment != std::string::npos) oQuery.SQL.erase(iComment);
  oQuery.SQL = Text::Trim(oQuery.SQL, ";");
  return oQuery;
}

std::vector<Query> ParseAll() {
  std::vector<Query> queries;
  auto i = QueryFiles.find(kMark);
  while (i != std::string_view::npos) {
    const auto iNext = QueryFiles.find(kMark, i + 1);
    queries.push_back(Parse(QueryFiles.substr(i, iNext == std::string_view::npos ? iNext : iNext - i)));
    i = iNext;
  }
  return queries;
}

}  // namespace

bool Query::IsUsable(const Rights& oRights) const {
  if (oRights.Version < From || (Below != 0 && oRights.Version >= Below)) return false;
  if (!Extension.empty() && !oRights.Extensions.contains(Extension)) return false;
  if (Right == "super") return oRights.IsSuper;
  return Right.empty() || (Right == "stats" && oRights.ReadsStats);
}

std::string Query::For(const Rights& oRights) const {
  std::string sSQL = SQL;
  if (Extension.empty()) return sSQL;
  const std::string& sSchema = oRights.Extensions.at(Extension);
  for (std::size_t i = 0; (i = sSQL.find("@S.", i)) != std::string::npos;) sSQL.replace(i, 2, sSchema);
  return sSQL;
}

const std::vector<Query>& Queries::All() {
  static const std::vector<Query> queries = ParseAll();
  return queries;
}

const Query* Queries::Find(std::string_view sName, const Rights& oRights) {
  const auto it = std::ranges::find_if(All(), [&](const Query& o) { return o.Name == sName && o.IsUsable(oRights); });
  return it == All().end() ? nullptr : &*it;
}

std::vector<const Query*> Queries::Usable(std::string_view sPrefix, const Rights& oRights) {
  std::vector<const Query*> usable;
  for (const Query& oQuery : All()) {
    if (oQuery.Name.starts_with(sPrefix) && oQuery.IsUsable(oRights)) usable.push_back(&oQuery);
  }
  return usable;
}

const std::string& Queries::SQL(std::string_view sName) {
  const auto it = std::ranges::find(All(), sName, &Query::Name);
  if (it == All().end()) throw std::logic_error("There is no query " + std::string(sName));
  return it->SQL;
}

}  // namespace ZELWbr3::Postgres
