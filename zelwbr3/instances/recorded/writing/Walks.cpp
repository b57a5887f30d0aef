#include "zelwbr3/instances/recorded/writing/Walks.h"

#include "zelwbr3/instances/recorded/objects/SQLTables.h"

#include <new>
#include <set>
#include <utility>

namespace ZELWbr3::Recorded {

namespace Z = ZELLib3;

namespace {

constexpr const char* DictionaryOwner = "SYSDD";

/// The tables of the data dictionary that the system tables pages link to.
constexpr const char* DictionaryTables[] = {
    "TABLES",
    "COLUMNS",
    "VIEWS",
    "SYNONYMS",
    "SEQUENCES",
    "DOMAINS",
    "SCHEMAS",
    "INDEXES",
    "INDEXCOLUMNS",
    "CONSTRAINTS",
    "FOREIGNKEYS",
    "FOREIGNKEYCOLUMNS",
    "TRIGGERS",
    "PROCEDURES",
    "PROCEDUREPARAMETERS",
    "FUNCTIONS",
    "FUNCTIONPARAMETERS",
    "USERS",
    "ROLES",
    "ROLEUSERS",
    "TABLEPRIVILEGES",
    "COLUMNPRIVILEGES",
    "TABLESTATISTICS",
    "INDEXSTATISTICS",
    "COLUMNSTATISTICS",
    "SNAPSHOTS",
};

std::shared_ptr<Z::SQLTable> Named(Z::SQLTables& oTables, const RecordOptions::Table& oName) {
  auto oTable = oTables.NewTable();
  oTable->Owner(oName.Owner);
  oTable->Name(oName.Name);
  return oTable;
}

/// An instance has the tables of some releases only: that one cannot be opened
/// is no failure to be recorded.
bool CanBeOpened(Z::SQLTables& oTables, const RecordOptions::Table& oName) {
  try {
    return Named(oTables, oName)->Open();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

void WriteHistory(Z::History& oHistory, Writer& oWriter) {
  std::vector<Z::HistoryItem> oItems;
  WalkBlocks(oHistory, oWriter, "History", [&]() -> std::optional<std::size_t> {
    const auto oItem = oWriter.Read("NextItem", [&] { return oHistory.NextItem(); });
    if (!oItem || !*oItem) return std::nullopt;
    oItems.push_back(**oItem);
    return sizeof oItems.back();
  });
  oWriter.Put("Items", oItems);
}

void WriteParameterChanges(Z::Parameter& oParameter, Writer& oWriter) {
  const auto oCount = oWriter.Read("HistoryCount", [&] { return oParameter.HistoryCount(); });
  if (!oCount) return;
  std::vector<ParameterChange> oChanges;
  for (int lChange = 1; lChange <= *oCount; ++lChange) {
    const auto oDate = oWriter.Read("HistoryDate", [&] { return oParameter.HistoryDate(lChange); });
    const auto oValue = oWriter.Read("HistoryValue", [&] { return oParameter.HistoryValue(lChange); });
    const auto oNewValue = oWriter.Read("HistoryNewValue", [&] { return oParameter.HistoryNewValue(lChange); });
    if (!oDate && !oValue && !oNewValue) break;
    oChanges.push_back({oDate.value_or(Date{}), oValue.value_or(""), oNewValue.value_or("")});
  }
  if (static_cast<std::int64_t>(oChanges.size()) != *oCount) oWriter.Put("HistoryCount", *oCount);
  oWriter.Put("History", oChanges);
}

void WriteListedChanges(Z::ParameterHistory& oHistory, Writer& oWriter) {
  std::vector<ListedChange> oChanges;
  bool bEntry = oWriter.Do("Open", [&] { return oHistory.Open(); });
  while (bEntry && oWriter.Read("HasEntry", [&] { return oHistory.HasEntry(); }).value_or(false)) {
    if (oChanges.size() == oWriter.Options().MaxRows) {
      oWriter.Note("ParameterHistory: only the first " + std::to_string(oChanges.size()) + " entries are recorded");
      break;
    }
    const auto fnText = [&](const char* sName, std::string (Z::ParameterHistory::*fnGet)() const) {
      return oWriter.Read(sName, [&] { return (oHistory.*fnGet)(); }).value_or("");
    };
    oChanges.push_back(
        {oWriter.Read("Date", [&] { return oHistory.Date(); }).value_or(Date{}),
         fnText("Parameter", &Z::ParameterHistory::Parameter), fnText("Value", &Z::ParameterHistory::Value),
         fnText("NewValue", &Z::ParameterHistory::NewValue), fnText("Text", &Z::ParameterHistory::Text)});
    bEntry = oWriter.Read("MoveNext", [&] { return oHistory.MoveNext(); }).value_or(false);
  }
  oWriter.Put("Items", oChanges);
}

void WriteTables(Z::SQLTables& oTables, Writer& oWriter) {
  std::vector<RecordOptions::Table> oNames = oWriter.Options().Tables;
  // A recording of a recording keeps what that one holds.
  if (const auto* const pRecorded = dynamic_cast<const Recorded::SQLTables*>(&oTables)) {
    for (const Json& oTable : pRecorded->Held()) {
      oNames.push_back({oTable.value("Owner", ""), oTable.value("Name", "")});
    }
  } else {
    for (const char* const sName : DictionaryTables) {
      const RecordOptions::Table oName{DictionaryOwner, sName};
      if (CanBeOpened(oTables, oName)) oNames.push_back(oName);
    }
  }
  Writer::Output oItems = Writer::Output::array();
  std::set<std::pair<std::string, std::string>> oWritten;
  for (const RecordOptions::Table& oNamed : oNames) {
    if (!oWritten.emplace(oNamed.Owner, oNamed.Name).second) continue;
    const auto oTable = oWriter.Read("NewTable", [&] { return Named(oTables, oNamed); });
    if (!oTable) return;
    oItems.push_back(oWriter.Object(**oTable, InterfaceOf<Z::SQLTable>().sClass));
  }
  oWriter.PutOutput("Items", std::move(oItems));
}

}  // namespace ZELWbr3::Recorded
