#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::Instances {
class ObservationStore;
}

namespace ZELWbr3::Postgres {

struct Statement;

/// How a server is shown. None of this is stored on the server.
struct Options {
  /// For a server that wants one, and finds none in the address nor where libpq
  /// looks. Kept in memory only.
  std::string Password = {};
  /// Where a server of this machine keeps its files, for a server that cannot be
  /// asked because it is stopped. Empty = as it was when it could be asked last,
  /// or $PGDATA.
  std::string DataDirectory = {};
  /// How long a reading of the figures is used. A page takes its figures one by
  /// one within a few milliseconds; figures of different moments could show more
  /// used than there is. 0 = each object reads for itself.
  std::chrono::milliseconds ReadingLifetime{100};
  /// How long one reading may take: what a page asks at a time, with all its
  /// statements. The server itself ends a statement after 10 s.
  std::chrono::milliseconds ReadingTimeout{12000};
  /// How long Admin waits for the sessions of others to end; Shutdown waits twice
  /// as long for their transactions.
  std::chrono::milliseconds Patience{30000};
  /// What is remembered about servers: changes of parameters, backups that the
  /// host has registered, and where a server of this machine keeps its files.
  /// Null = nothing.
  std::shared_ptr<Instances::ObservationStore> Observations = {};
  /// Where the program zelanalyzer is, which the analyzer is started with.
  /// Empty = what $ZELWBR3_ANALYZER says, otherwise beside the running program.
  std::string AnalyzerProgram = {};
  /// Told of every statement before it is sent; for tests and tracing.
  std::function<void(const Statement&)> Sending = {};
};

}  // namespace ZELWbr3::Postgres
