// The instance for PostgreSQL servers, beside the same statements sent by hand.

#include "bench/Figures.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/postgres/connection/Statement.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"

#include <CLI/CLI.hpp>

#include <libpq-fe.h>

#include <filesystem>
#include <memory>
#include <thread>

namespace {

using namespace ZELWbr3;
using namespace ZELWbr3::Bench;
using Postgres::Statement;

constexpr int Repetitions = 9;
constexpr int Rows = 100000;

/// A connection as any program has one.
class ByHand {
 public:
  explicit ByHand(const std::string& sAddress) : m_oHandle(PQconnectdb(sAddress.c_str()), PQfinish) {
    if (PQstatus(m_oHandle.get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(m_oHandle.get()));
    Run(Statement{"SET search_path = pg_catalog; SET jit = off", {}});
  }
  void Run(const Statement& oStatement) {
    std::vector<const char*> values;
    for (const auto& oValue : oStatement.Values) values.push_back(oValue ? oValue->c_str() : nullptr);
    const std::unique_ptr<PGresult, void (*)(PGresult*)> oResult(
        values.empty() ? PQexec(m_oHandle.get(), oStatement.SQL.c_str())
                       : PQexecParams(m_oHandle.get(), oStatement.SQL.c_str(), static_cast<int>(values.size()), nullptr,
                                      values.data(), nullptr, nullptr, 0),
        PQclear);
    const auto eStatus = PQresultStatus(oResult.get());
    if (eStatus != PGRES_COMMAND_OK && eStatus != PGRES_TUPLES_OK) {
      throw std::runtime_error(PQerrorMessage(m_oHandle.get()));
    }
  }
  void Run(const std::vector<Statement>& statements) {
    for (const Statement& oStatement : statements) Run(oStatement);
  }

 private:
  std::unique_ptr<PGconn, void (*)(PGconn*)> m_oHandle;
};

/// A server's instance that tells its statements.
struct Watched {
  explicit Watched(const std::string& sAddress) {
    Postgres::Options oOptions;
    oOptions.Sending = [this](const Statement& oStatement) { Sent.push_back(oStatement); };
    Database = Postgres::OpenDatabase(sAddress, oOptions);
  }
  std::vector<Statement> Sent;
  std::shared_ptr<ZELLib3::Database> Database;
};

/// What both cost, in turn, when nothing read before serves any more.
std::pair<double, double> InTurn(Watched& oWatched, ByHand& oByHand, const std::function<void()>& oWork) {
  std::vector<double> ours;
  std::vector<double> bare;
  for (int i = 0; i < Repetitions; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    oWatched.Sent.clear();
    ours.push_back(Milliseconds(oWork));
    const auto statements = oWatched.Sent;
    bare.push_back(Milliseconds([&] { oByHand.Run(statements); }));
  }
  return {Median(ours), Median(bare)};
}

double ReadAll(Browser& oBrowser, const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  const auto oTable = oDatabase->SQLTables()->NewTable();
  oTable->Owner("public");
  oTable->Name("bench");
  const auto oPage = oBrowser.PageSQLTable();
  oPage->Show(oDatabase, oTable);
  const double dTime = Milliseconds([&] { oPage->Command(BlockPage::CommandReadAll); });
  if (oTable->RowCount() != Rows) throw std::runtime_error("the table was not read to its end");
  oPage->Hide();
  return dTime;
}

void Measure(const std::string& sAddress, Figures& oFigures) {
  Headless::HeadlessPlatform oPlatform;
  Browser oBrowser(oPlatform);
  oBrowser.HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  ByHand oByHand(sAddress);
  Watched oWatched(sAddress);

  const auto [dShow, dShowByHand] = InTurn(oWatched, oByHand, [&] { oBrowser.PageMain()->Show(oWatched.Database); });
  oFigures.Add("pg_show_main_ms", dShow, "ms to show the main page on a server");
  oFigures.Add("pg_show_main_ratio", dShow / dShowByHand, "of that and its statements sent by hand");

  const auto oFolder = std::filesystem::temp_directory_path() / ("zelwbr3-bench-" + std::to_string(getpid()));
  std::filesystem::create_directory(oFolder);
  const std::string sRecording = oFolder / "server.json";
  const auto [dRecord, dRecordByHand] =
      InTurn(oWatched, oByHand, [&] { Recorded::WriteRecording(*oWatched.Database, sRecording); });
  oFigures.Add("pg_record_ms", dRecord, "ms to record a server");
  oFigures.Add("pg_record_ms_per_query_ratio", dRecord / dRecordByHand, "of that and its statements sent by hand");

  oByHand.Run(Statement{
      "CREATE TABLE public.bench AS SELECT i AS id, 'value ' || i AS a, 'value ' || i AS b, 'value ' || i AS c,"
      " 'value ' || i AS d, 'value ' || i AS e FROM generate_series(1, " +
          std::to_string(Rows) + ") AS i; ALTER TABLE public.bench ADD PRIMARY KEY(id)",
      {}});
  Recorded::RecordOptions oOptions;
  oOptions.Tables = {{"public", "bench"}};
  oOptions.MaxRows = Rows;
  Recorded::WriteRecording(*oWatched.Database, sRecording, oOptions);
  const auto oRecording = Recorded::OpenRecording(sRecording);
  std::vector<double> ours;
  std::vector<double> recorded;
  for (int i = 0; i < 5; ++i) {
    ours.push_back(ReadAll(oBrowser, oWatched.Database));
    recorded.push_back(ReadAll(oBrowser, oRecording));
  }
  oBrowser.CleanUp();
  std::filesystem::remove_all(oFolder);
  oFigures.Add("pg_readall_100k_ms", Median(ours), "ms to read all of 100,000 rows of a table");
  oFigures.Add("pg_readall_100k_ratio", Median(ours) / Median(recorded), "of that and the same from a recording");
}

}  // namespace

int main(int argc, char** argv) {
  std::string sAddress;
  std::string sFile;
  CLI::App oArguments("Measures the instance for PostgreSQL servers.", "bench-server");
  oArguments.add_option("ADDRESS", sAddress, "Of a server that may be changed, as a superuser")->required();
  oArguments.add_option("--json", sFile, "File to add the figures to");
  CLI11_PARSE(oArguments, argc, argv);
  try {
    Figures oFigures;
    Measure(sAddress, oFigures);
    if (!sFile.empty()) oFigures.AddTo(sFile);
  } catch (const std::exception& oError) {
    std::fprintf(stderr, "bench: %s\n", oError.what());
    return 1;
  }
  return 0;
}
