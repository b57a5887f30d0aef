#include "zelwbr3/instances/sqlite/settings/Pragma.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"

#include <string_view>

namespace ZELWbr3::SQLite {

namespace {

using Group = Pragma::Group;
using Keeper = Pragma::Keeper;
using Words = Pragma::Words;

// Read through the schema "main", which a pragma of the whole connection
// ignores.
constexpr Pragma kPragmas[] = {
    {"application_id", Group::General, Keeper::File, Words::None, "Number of the application that the file belongs to",
     "Stands in the file's header, where other programs look for it. 0 when the application has none."},
    {"auto_vacuum", Group::General, Keeper::File, Words::Vacuum, "Whether free pages are given back to the file system",
     "NONE keeps them for reuse; FULL gives them back with every transaction; INCREMENTAL when it is asked for. A "
     "change "
     "between NONE and the others takes effect with the next VACUUM."},
    {"encoding", Group::General, Keeper::File, Words::None, "How texts are stored",
     "Chosen when the file is made; it cannot be changed later."},
    {"foreign_keys", Group::General, Keeper::Connection, Words::Switch,
     "Whether references between tables are enforced", "OFF means that rows can stay without the rows they refer to."},
    {"journal_mode", Group::General, Keeper::File, Words::None, "How transactions are made safe",
     "wal writes changes to a log beside the file first, and readers continue; this mode is kept in the file. "
     "Any other mode saves the old contents in a rollback journal, and each connection chooses what happens to it: "
     "delete, truncate, persist, memory, off."},
    {"max_page_count", Group::General, Keeper::Connection, Words::None, "Pages that the file may grow to",
     "A write that needs more pages fails. The application sets the limit for each of its connections."},
    {"page_size", Group::General, Keeper::File, Words::None, "Bytes of a page",
     "The unit in which the file is read and written: a power of two from 512 to 65536. A change takes effect with the "
     "next VACUUM outside WAL mode."},
    {"recursive_triggers", Group::General, Keeper::Connection, Words::Switch, "Whether a trigger may fire itself",
     "OFF stops a trigger from firing, directly or through others, while it runs."},
    {"user_version", Group::General, Keeper::File, Words::None, "Version of the schema, for the application's own use",
     "The library only stores it. Applications count their schema migrations with it."},

    {"analysis_limit", Group::Extended, Keeper::Connection, Words::None, "Rows that ANALYZE looks at in each index",
     "0 looks at all of them."},
    {"automatic_index", Group::Extended, Keeper::Connection, Words::Switch,
     "Whether an index is made for a single statement",
     "Helps a join without a suitable index; many such runs in the statement statistics mean that an index is "
     "missing."},
    {"busy_timeout", Group::Extended, Keeper::Connection, Words::None, "Milliseconds that a statement waits for a lock",
     "After that it fails because the database is locked."},
    {"cache_size", Group::Extended, Keeper::Connection, Words::None, "Size of the page cache",
     "Pages when positive, KB when negative. A connection begins with the default that may be stored in the file."},
    {"cache_spill", Group::Extended, Keeper::Connection, Words::None,
     "Changed pages in the cache from which on they may be written early",
     "0 keeps them in memory until the end of their transaction."},
    {"journal_size_limit", Group::Extended, Keeper::Connection, Words::None,
     "Bytes that a journal or log may keep when it is not needed",
     "A larger one is cut to this size after the transaction or checkpoint; -1 leaves it as it is."},
    {"locking_mode", Group::Extended, Keeper::Connection, Words::None,
     "Whether locks are given back after a transaction",
     "exclusive keeps them, and so keeps every other connection out."},
    {"mmap_size", Group::Extended, Keeper::Connection, Words::None, "Bytes of the file that are mapped into memory",
     "0 reads the file with system calls only."},
    {"secure_delete", Group::Extended, Keeper::Connection, Words::SecureDelete,
     "Whether deleted content is overwritten", "FAST overwrites it where that needs no additional writing."},
    {"synchronous", Group::Extended, Keeper::Connection, Words::Synchronous, "How often the disk is waited for",
     "With OFF a power failure can damage the file; in WAL mode NORMAL is safe but can lose the last transactions; "
     "FULL "
     "and EXTRA wait for every transaction."},
    {"temp_store", Group::Extended, Keeper::Connection, Words::TempStore, "Where temporary tables are kept",
     "DEFAULT is what the library was compiled for."},
    {"threads", Group::Extended, Keeper::Connection, Words::None, "Helping threads that a statement may use",
     "For large sorts."},
    {"wal_autocheckpoint", Group::Extended, Keeper::Connection, Words::None,
     "Frames of the log after which a writer copies them into the file", "0 leaves checkpoints to the application."},

    {"cell_size_check", Group::Support, Keeper::Connection, Words::Switch,
     "Whether pages are checked more closely when read", "Finds damage earlier and costs time."},
    {"checkpoint_fullfsync", Group::Support, Keeper::Connection, Words::Switch,
     "Whether a checkpoint waits for the disk itself", "Only for systems that make the difference."},
    {"defer_foreign_keys", Group::Support, Keeper::Connection, Words::Switch,
     "Whether references are checked at the end of the transaction", "Switches itself off when the transaction ends."},
    {"fullfsync", Group::Support, Keeper::Connection, Words::Switch, "Whether a transaction waits for the disk itself",
     "Only for systems that make the difference."},
    {"hard_heap_limit", Group::Support, Keeper::Process, Words::None, "Bytes of memory that the library may not exceed",
     "0 = no limit. Beyond it operations fail."},
    {"ignore_check_constraints", Group::Support, Keeper::Connection, Words::Switch,
     "Whether conditions on columns and tables are ignored", "ON accepts rows that the tables do not allow."},
    {"legacy_alter_table", Group::Support, Keeper::Connection, Words::Switch,
     "Whether renaming works as in old versions", "ON leaves references in triggers and views alone."},
    {"query_only", Group::Support, Keeper::Connection, Words::Switch, "Whether changes are refused",
     "ON for the connection of this program, which only looks."},
    {"read_uncommitted", Group::Support, Keeper::Connection, Words::Switch,
     "Whether changes of a shared cache are seen before their commit", "Without a shared cache it has no effect."},
    {"reverse_unordered_selects", Group::Support, Keeper::Connection, Words::Switch,
     "Whether rows without an order come backwards",
     "Helps to find statements that rely on an order they do not ask for."},
    {"soft_heap_limit", Group::Support, Keeper::Process, Words::None,
     "Bytes of memory that the library tries to stay below", "0 = no limit."},
    {"trusted_schema", Group::Support, Keeper::Connection, Words::Switch,
     "Whether the schema may call functions that can have effects",
     "OFF for the connection of this program: the schema of a file from elsewhere is data, not code."},
    {"writable_schema", Group::Support, Keeper::Connection, Words::Switch,
     "Whether the schema tables can be written directly", "ON can damage the file."},
};

constexpr std::string_view kSwitch[] = {"OFF", "ON"};
constexpr std::string_view kVacuum[] = {"NONE", "FULL", "INCREMENTAL"};
constexpr std::string_view kSynchronous[] = {"OFF", "NORMAL", "FULL", "EXTRA"};
constexpr std::string_view kTempStore[] = {"DEFAULT", "FILE", "MEMORY"};
constexpr std::string_view kSecureDelete[] = {"OFF", "ON", "FAST"};

std::span<const std::string_view> WordList(Words eWords) {
  switch (eWords) {
    case Words::Switch:
      return kSwitch;
    case Words::Vacuum:
      return kVacuum;
    case Words::Synchronous:
      return kSynchronous;
    case Words::TempStore:
      return kTempStore;
    case Words::SecureDelete:
      return kSecureDelete;
    case Words::None:
      break;
  }
  return {};
}

}  // namespace

std::span<const Pragma> Pragma::All() { return kPragmas; }

std::optional<std::string> Pragma::Read(Connection& oConnection) const {
  const std::string_view sName = Name;
  if (sName == "journal_mode") return oConnection.JournalMode();
  if (sName == "max_page_count") return std::to_string(oConnection.MaxPageCount());
  Statement oStatement = oConnection.Prepare("PRAGMA main." + std::string(Name), "reading " + std::string(Name));
  if (!oStatement.Step()) return std::nullopt;
  const auto oWords = WordList(SpelledAs);
  const std::int64_t lNumber = oStatement.Number(0);
  const bool bWord = lNumber >= 0 && lNumber < static_cast<std::int64_t>(oWords.size());
  return bWord ? std::string(oWords[static_cast<std::size_t>(lNumber)]) : oStatement.Text(0);
}

// Page size, vacuum mode and journal mode change for every connection when the
// file changes, and what another connection has set for its next VACUUM is known
// to that connection only. So one setting is left that waits: the default of the
// cache, which is read when a connection is opened.
std::string Pragma::ReadNext(Connection& oConnection, const std::string& sValue) const {
  if (std::string_view(Name) != "cache_size") return sValue;
  const std::string sStored = oConnection.Text("PRAGMA main.default_cache_size", "reading the cache's default");
  return sStored.empty() ? sValue : sStored;
}

std::string Pragma::FullExplanation() const {
  const std::string sText = Explanation;
  switch (KeptBy) {
    case Keeper::File:
      return sText + " Kept in the database file.";
    case Keeper::Connection:
      return sText + " Each connection has its own; this is the one of this program.";
    case Keeper::Process:
      break;
  }
  return sText + " Holds for the library in this process.";
}

}  // namespace ZELWbr3::SQLite
