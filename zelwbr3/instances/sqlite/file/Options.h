#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace ZELWbr3::SQLite {

/// How a database file is opened. None of this is stored in the file.
struct Options {
  /// How long a read waits for a lock that another connection holds. Only the
  /// first read of a locked file waits, so a page never adds these up.
  std::chrono::milliseconds BusyTimeout{250};
  /// How long a reading of the figures is used. A page takes its figures one by
  /// one within a few milliseconds; figures of different moments could show more
  /// used than there is. 0 = each object reads for itself.
  std::chrono::milliseconds ReadingLifetime{100};
  /// How long one reading may take: what a page asks at a time, such as the rows
  /// of a block, with all its statements and their preparation.
  std::chrono::milliseconds ReadingTimeout{10000};
  /// The most pages the application lets the file grow to; 0 = SQLite's own
  /// limit.
  std::int64_t MaxPageCount = 0;
  /// Where the program zelanalyzer is, which the analyzer is started with.
  /// Empty = what $ZELWBR3_ANALYZER says, otherwise beside the running program.
  std::string AnalyzerProgram = {};
  /// Folder of what is remembered about database files; empty = the user's
  /// state folder. Made when it is needed.
  std::string StateFolder = {};
};

}  // namespace ZELWbr3::SQLite
