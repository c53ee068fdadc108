// A view of a large table of SQLite: the whole, zoomed views, sampling by the data base, and how soon it stops; beside them the
// one scan by the library's own interface that no way through the rows can beat. Rows: TARNWICK_BENCH_ROWS, else 1e7, in a file
// that is made where TARNWICK_BENCH_DATABASE names none.

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "base/error.h"
#include "data/import/import_file.h"
#include "data/import/loader.h"
#include "data/packed/unpack.h"
#include "sources/database/database_source.h"
#include "sources/database/database_supplier.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {
namespace {

constexpr double kStep = 0.001;  // between neighbouring X

std::int64_t Rows() {
  const char* const rows = std::getenv("TARNWICK_BENCH_ROWS");
  return rows != nullptr ? std::atoll(rows) : 10'000'000;
}

void Run(sqlite3* base, const std::string& statement) {
  if (sqlite3_exec(base, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw Error(sqlite3_errmsg(base));
  }
}

/// "run" with an index that holds X and Y.
const DatabasePlace& Base() {
  static const DatabasePlace place = [] {
    const char* const named = std::getenv("TARNWICK_BENCH_DATABASE");
    const std::filesystem::path file =
        named != nullptr ? std::filesystem::path(named)
                         : std::filesystem::temp_directory_path() / "tarnwick_thinning_bench.db";
    DatabasePlace made = PlaceOfFile(file);
    made.table = "run";
    if (named != nullptr && std::filesystem::exists(file)) return made;
    std::filesystem::remove(file);
    sqlite3* base = nullptr;
    sqlite3_open(file.c_str(), &base);
    Run(base,
        "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; CREATE TABLE run (x REAL, y REAL)");
    Run(base,
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(Rows() - 1) +
            ") INSERT INTO run SELECT i * 0.001, sin(i * 0.000001) + (i % 997) * 0.001 + CASE "
            "WHEN i % 12345678 = 0 THEN 50 ELSE 0 END FROM n");
    Run(base, "CREATE INDEX run_x_y ON run (x, y)");
    sqlite3_close(base);
    return made;
  }();
  return place;
}

ThinnedView View(double from, double share) {
  ThinnedView view{.place = Base(), .x = {"x"}, .y = {{"y"}}};
  if (share < 1) {
    const double width = static_cast<double>(Rows()) * kStep;
    view.x_min = from * width;
    view.x_max = (from + share) * width;
  }
  return view;
}

/// One part in `state.range(0)` of the whole.
void ViewOf(benchmark::State& state) {
  const ThinnedView view = View(0.3, 1.0 / static_cast<double>(state.range(0)));
  NoProgress unseen;
  std::int64_t rows = 0;
  for (auto _ : state) rows = FetchThinned(view, unseen).rows;
  state.counters["rows"] = static_cast<double>(rows);
}
BENCHMARK(ViewOf)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Arg(1)
    ->Arg(11)  // the widest that a zoom asks for, with what lies beside it
    ->Arg(100)
    ->Arg(10'000)
    ->Iterations(2);

/// What a user sees first: the table opened, some rows from all over it as points.
void FirstPictureOf(benchmark::State& state) {
  for (auto _ : state) {
    NoProgress unseen;
    ImportOptions options;
    options.thinned_at_source = true;
    const ImportSource source = OpenDatabase(Base(), options, unseen, FirstPicture::Coarse);
    TDataSeries series;
    series.Source() = source.info;
    series.Source().XDataColumn = "x";
    series.Source().YDataColumn = "y";
    series.Source().AllRows = true;
    LoadDataSet(series, *source.supplier);
    state.counters["points"] = static_cast<double>(series.PointCount());
  }
}
BENCHMARK(FirstPictureOf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

/// From the cancelling to the end.
void Cancelled(benchmark::State& state) {
  class Stopped final : public Progress {
   public:
    void Begin(std::string_view, std::string_view, std::int64_t) override {}
    bool Advance(std::int64_t) override { return !Cancelled(); }
    bool Cancelled() const override { return stopped; }
    std::atomic<bool> stopped = false;
  };
  for (auto _ : state) {
    Stopped progress;
    std::chrono::steady_clock::time_point ended;
    std::thread asking([&] {
      try {
        FetchThinned(View(0, 1), progress);
      } catch (const UnpackingCancelled&) {
        // as wanted
      }
      ended = std::chrono::steady_clock::now();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    const auto begun = std::chrono::steady_clock::now();
    progress.stopped = true;
    asking.join();
    state.SetIterationTime(std::chrono::duration<double>(ended - begun).count());
  }
}
BENCHMARK(Cancelled)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

/// About 5000 points, picked by the data base or (1) read row by row.
void Sampled(benchmark::State& state) {
  for (auto _ : state) {
    NoProgress unseen;
    TDBSupplier supplier(Base(), unseen);
    TDataSeries series;
    series.Source().active = true;
    series.Source().XDataColumn = "x";
    series.Source().YDataColumn = "y";
    LoadOptions load;
    load.value_by_value = state.range(0) == 1;
    LoadDataSet(series, supplier, load);
    state.counters["points"] = static_cast<double>(series.PointCount());
  }
}
BENCHMARK(Sampled)->Unit(benchmark::kMillisecond)->Arg(0)->Arg(1)->Iterations(1);

/// The library's own way through all rows, doing nothing with them.
void BareScan(benchmark::State& state) {
  for (auto _ : state) {
    sqlite3* base = nullptr;
    sqlite3_open_v2(Base().address.c_str(), &base, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* rows = nullptr;
    sqlite3_prepare_v2(base, "SELECT x, y FROM run", -1, &rows, nullptr);
    double sum = 0;
    while (sqlite3_step(rows) == SQLITE_ROW) {
      sum += sqlite3_column_double(rows, 0) + sqlite3_column_double(rows, 1);
    }
    benchmark::DoNotOptimize(sum);
    sqlite3_finalize(rows);
    sqlite3_close(base);
  }
}
BENCHMARK(BareScan)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tarnwick
