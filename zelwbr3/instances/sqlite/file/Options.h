#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace ZELWbr3::SQLite {

/// How a database file is opened. None of this is stored in the file, so an
/// instance can only be told.
struct Options {
  /// How long a read waits for a lock that another connection holds. Only the
  /// first read of a locked file waits, so a page never adds these up.
  std::chrono::milliseconds BusyTimeout{250};
  /// For how long a reading of the figures serves. A page takes its figures one
  /// by one within a few milliseconds; were they of different moments, more
  /// could be used than there is. 0 = each object reads for itself.
  std::chrono::milliseconds ReadingLifetime{100};
  /// How long a single statement may run.
  std::chrono::milliseconds StatementTimeout{10000};
  /// The most pages the application lets the file grow to; 0 = SQLite's own
  /// limit.
  std::int64_t MaxPageCount = 0;
  /// Where the program zelanalyzer is, which the analyzer is started with.
  /// Empty = what $ZELWBR3_ANALYZER says, otherwise beside the running program.
  std::string AnalyzerProgram = {};
  /// Where it is remembered what was observed about database files; empty =
  /// the user's state folder. Made when it is missing and something is to be
  /// remembered.
  std::string StateFolder = {};
};

}  // namespace ZELWbr3::SQLite
