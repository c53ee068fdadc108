// Tables of PostgreSQL and SQLite beside the data base's own client (psql, sqlite3), which only prints: all rows, and what a view
// of a tenth of them shows. Rows: TARNWICK_BENCH_ROWS, else 1e7. The server lies in a folder of its own, as for the tests.

#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "base/error.h"
#include "data/import/loader.h"
#include "data/packed/unpack.h"
#include "sources/database/database_supplier.h"
#include "sources/database/session_passwords.h"
#include "sources/database/thinned_view.h"
#include "tests/sources/database/postgres_server.h"

namespace tarnwick {
namespace {

std::int64_t Rows() {
  const char* const rows = std::getenv("TARNWICK_BENCH_ROWS");
  return rows != nullptr ? std::atoll(rows) : 10'000'000;
}

/// A data base that holds the table "run" with an index of X and Y.
struct Base {
  DatabasePlace place;
  std::string client;  ///< behind it a statement in quotes
};

void RunCommand(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw Error("failed: " + command);
}

std::string Made(const std::string& numbers) {
  return "CREATE TABLE run AS SELECT i * 0.001 AS x, (i % 997) * 0.001 + i * 0.000001 AS y FROM " +
         numbers;
}

constexpr const char* kIndex = "CREATE INDEX run_x_y ON run (x, y)";

const Base& Sqlite() {
  static const QTemporaryDir folder;
  static const Base base = [] {
    const std::string file = folder.filePath("run.db").toStdString();
    Base made{PlaceOfFile(file), "sqlite3 '" + file + "'"};
    made.place.table = "run";
    const std::string numbers =
        "(WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        std::to_string(Rows() - 1) + ") SELECT i FROM n)";
    RunCommand(made.client + " \"" + Made(numbers) + "; " + kIndex + "\"");
    return made;
  }();
  return base;
}

const Base& Postgres() {
  static const testing::PostgresServer server;
  static const Base base = [] {
    if (!server.WhyNot().empty()) throw Error(server.WhyNot());
    RememberPassword(server.Server(), testing::PostgresServer::kPassword);
    setenv("PGPASSWORD", testing::PostgresServer::kPassword, 1);
    Base made{ParseDatabaseUrl(server.Url()),
              "psql -X -q -A -t -h " + server.Server() + " -U owner postgres -c"};
    made.place.table = "run";
    const std::string numbers =
        "(SELECT i::float8 FROM generate_series(0, " + std::to_string(Rows() - 1) + ") AS i) AS n";
    std::string statement = Made(numbers);
    statement.replace(statement.find("(i % 997)"), 9, "(i - 997 * floor(i / 997))");
    server.Run({statement, kIndex, "VACUUM ANALYZE run"});
    return made;
  }();
  return base;
}

using BaseOf = const Base& (*)();

void Client(benchmark::State& state, BaseOf base, const std::string& statement) {
  const std::string command = base().client + " \"" + statement + "\" > /dev/null";
  for (auto _ : state) RunCommand(command);
}

/// Into a DataSet.
void AllRows(benchmark::State& state, BaseOf base) {
  NoProgress unseen;
  for (auto _ : state) {
    TDBSupplier supplier(base().place, unseen);
    supplier.GuessRows(unseen);
    TDataSeries series;
    series.Source().active = series.Source().AllRows = true;
    series.Source().XDataColumn = "x";
    series.Source().YDataColumn = "y";
    LoadDataSet(series, supplier);
    state.counters["points"] = static_cast<double>(series.PointCount());
  }
}

/// From the cancelling of a query that takes long to the end.
void Cancelled(benchmark::State& state, BaseOf base) {
  class Stopped final : public Progress {
   public:
    void Begin(std::string_view, std::string_view, std::int64_t) override {}
    bool Advance(std::int64_t) override { return !Cancelled(); }
    bool Cancelled() const override { return stopped; }
    std::atomic<bool> stopped = false;
  };
  DatabasePlace place = base().place;
  place.table.clear();
  place.query = "SELECT count(*) AS x, 1 AS y FROM run AS a, run AS b";
  for (auto _ : state) {
    Stopped progress;
    std::chrono::steady_clock::time_point ended;
    std::thread asking([&] {
      try {
        TDBSupplier supplier(place, progress);
      } catch (const UnpackingCancelled&) {
        // as wanted
      }
      ended = std::chrono::steady_clock::now();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const auto begun = std::chrono::steady_clock::now();
    progress.stopped = true;
    asking.join();
    state.SetIterationTime(std::chrono::duration<double>(ended - begun).count());
  }
}

double ViewFrom() {
  return static_cast<double>(Rows()) * 0.0003;
}
double ViewTo() {
  return static_cast<double>(Rows()) * 0.0004;
}

void View(benchmark::State& state, BaseOf base) {
  ThinnedView view;
  view.place = base().place;
  view.x.name = "x";
  view.y = {{"y"}};
  view.x_min = ViewFrom();
  view.x_max = ViewTo();
  NoProgress unseen;
  for (auto _ : state)
    state.counters["rows"] = static_cast<double>(FetchThinned(view, unseen).rows);
}

/// What a user would ask for, the extremes alone.
std::string StatementOfView() {
  const std::string from = std::to_string(ViewFrom()), to = std::to_string(ViewTo());
  return "SELECT floor((x - " + from + ") * 2048 / (" + to + " - " + from +
         ")), count(*), min(x), max(x), min(y), max(y) FROM run WHERE x >= " + from +
         " AND x <= " + to + " GROUP BY 1";
}

void Register(const std::string& name, BaseOf base) {
  const auto add = [](const std::string& what, auto run) {
    benchmark::RegisterBenchmark(what.c_str(), run)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->MeasureProcessCPUTime()
        ->Iterations(3);
  };
  benchmark::RegisterBenchmark((name + "/cancelled").c_str(),
                               [base](benchmark::State& state) { Cancelled(state, base); })
      ->Unit(benchmark::kMillisecond)
      ->UseManualTime()
      ->Iterations(5);
  add(name + "/all rows", [base](benchmark::State& state) { AllRows(state, base); });
  add(name + "/all rows, client", [base](benchmark::State& state) {
    Client(state, base, "SELECT x, y FROM run ORDER BY x, y");
  });
  add(name + "/view", [base](benchmark::State& state) { View(state, base); });
  add(name + "/view, client",
      [base](benchmark::State& state) { Client(state, base, StatementOfView()); });
}

const bool registered = [] {
  Register("PostgreSQL", &Postgres);
  Register("SQLite", &Sqlite);
  return true;
}();

}  // namespace
}  // namespace tarnwick
