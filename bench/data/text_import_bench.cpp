// Import of a large text file beside its limit: a bare loop over the mapped file that reads the same numbers with the same
// parser, and "wc -l" for automatic sampling. Figures to compare: import / limit (at most 1.5 on one thread, 0.9 on two),
// sampled / wc (at most 3), and bytes_per_point (at most 30, beyond the mapped file). Guessing: at most 3 ms a file.
#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/mapped_file.h"
#include "base/progress.h"
#include "data/guess/format_guess.h"
#include "data/import/import_file.h"

namespace {

using namespace tarnwick;

/// A file of `rows` rows of two columns, about 19 bytes each, made once and removed at the end.
class TableFile {
 public:
  explicit TableFile(int rows)
      : path_(std::filesystem::temp_directory_path() /
              ("tarnwick_bench_" + std::to_string(rows) + ".csv")) {
    std::FILE* const file = std::fopen(path_.c_str(), "w");
    if (file == nullptr) std::abort();
    std::fputs("time,signal\n", file);
    for (int i = 0; i < rows; ++i) {
      std::fprintf(file, "%.3f,%.6f\n", i * 0.001, 2 + std::sin(i * 1e-4));
    }
    std::fclose(file);
  }
  ~TableFile() { std::filesystem::remove(path_); }
  TableFile(const TableFile&) = delete;
  TableFile& operator=(const TableFile&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

const std::filesystem::path& Large() {
  static const TableFile file(10'000'000);
  return file.Path();
}

const std::filesystem::path& Small() {
  static const TableFile file(100'000);
  return file.Path();
}

/// 100000 rows of 200 columns, made once and removed at the end.
const std::filesystem::path& Wide() {
  struct WideFile {
    WideFile() {
      std::ofstream file(path);
      for (int row = 0; row < 100'000; ++row) {
        file << row;
        for (int column = 1; column < 200; ++column) file << ',' << (row % 97) * column << ".25";
        file << '\n';
      }
    }
    ~WideFile() { std::filesystem::remove(path); }
    std::filesystem::path path = std::filesystem::temp_directory_path() / "tarnwick_bench_wide.csv";
  };
  static const WideFile file;
  return file.path;
}

/// Memory of the process that is no mapped file, in bytes.
std::int64_t AnonymousBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word != "RssAnon:") continue;
    std::int64_t kilobytes = 0;
    status >> kilobytes;
    return kilobytes * 1024;
  }
  return 0;
}

/// Notes the most memory used at any step.
class MemoryWatch final : public Progress {
 public:
  MemoryWatch() : before_(AnonymousBytes()) {}
  void Begin(std::string_view, std::string_view, std::int64_t) override {}
  bool Advance(std::int64_t) override {
    if (++steps_ % 16 == 0) Note();
    return true;
  }
  bool Cancelled() const override { return false; }
  void Note() { most_ = std::max(most_, AnonymousBytes()); }
  std::int64_t Most() const { return most_ - before_; }

 private:
  std::int64_t before_;
  std::int64_t most_ = 0;
  int steps_ = 0;
};

// Runs first: memory that an earlier run gave back to the allocator would not be counted.
void ImportMemory(benchmark::State& state) {
  const std::filesystem::path& path = Large();
  ImportOptions options;
  options.every = 1;
  double bytes = 0;
  for (auto _ : state) {
    MemoryWatch watch;
    LoadOptions load;
    load.progress = &watch;
    const ImportResult result = ImportFile(path, options, load);
    watch.Note();
    bytes = static_cast<double>(watch.Most()) / static_cast<double>(result.reports.front().points);
  }
  state.counters["bytes_per_point"] = bytes;
}
BENCHMARK(ImportMemory)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void LimitLoop(benchmark::State& state) {
  const std::filesystem::path& path = Large();
  for (auto _ : state) {
    const MappedFile file(path);
    const char* at = file.Bytes().data();
    const char* const end = at + file.Bytes().size();
    at = std::find(at, end, '\n') + 1;
    std::vector<double> x;
    std::vector<double> y;
    x.reserve(10'000'000);
    y.reserve(10'000'000);
    while (at < end) {
      double value = 0;
      at = fast_float::from_chars(at, end, value).ptr + 1;
      x.push_back(value);
      at = fast_float::from_chars(at, end, value).ptr + 1;
      y.push_back(value);
    }
    benchmark::DoNotOptimize(x.data());
    benchmark::DoNotOptimize(y.data());
  }
}
BENCHMARK(LimitLoop)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();

void ImportEveryRow(benchmark::State& state) {
  const std::filesystem::path& path = Large();
  std::int64_t points = 0;
  for (auto _ : state) {
    LoadOptions load;
    load.threads = static_cast<int>(state.range(0));
    const ImportResult result = ImportFile(path, {}, load);
    points = result.reports.front().points;
  }
  if (points != 10'000'000) state.SkipWithError("points are missing");
}
BENCHMARK(ImportEveryRow)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();

/// The same with Y computed from the columns of the row, one of them or several, on one thread.
void ImportWithExpression(benchmark::State& state) {
  const std::filesystem::path& path = Large();
  ImportOptions options;
  options.every = 1;
  options.y_expression = state.range(0) == 1 ? "ln(Y)/ln(10)" : "(signal - 0.5)*X + time^2";
  LoadOptions load;
  load.threads = 1;
  for (auto _ : state) {
    const ImportResult result = ImportFile(path, options, load);
    if (result.reports.front().points != 10'000'000) state.SkipWithError("points are missing");
  }
}
BENCHMARK(ImportWithExpression)
    ->ArgName("columns")
    ->Arg(1)
    ->Arg(4)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2)
    ->UseRealTime();

void CountLinesWithWc(benchmark::State& state) {
  const std::string command = "wc -l " + Large().string() + " > /dev/null";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("wc failed");
  }
}
BENCHMARK(CountLinesWithWc)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();

ImportOptions Sampled() {
  ImportOptions options;
  options.automatic_sampling = true;
  return options;
}

void ImportSampled(benchmark::State& state) {
  const std::filesystem::path& path = Large();
  for (auto _ : state) {
    const ImportResult result = ImportFile(path, Sampled());
    benchmark::DoNotOptimize(result.series.front()->PointCount());
  }
}
BENCHMARK(ImportSampled)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();

/// Sampled (0) beside whole (1), which must not be faster.
void ImportWide(benchmark::State& state) {
  const std::filesystem::path& path = Wide();
  const ImportOptions options = state.range(0) == 0 ? Sampled() : ImportOptions();
  for (auto _ : state) {
    const ImportResult result = ImportFile(path, options);
    benchmark::DoNotOptimize(result.series.front()->PointCount());
  }
}
BENCHMARK(ImportWide)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void ImportHundredThousandRows(benchmark::State& state) {
  const std::filesystem::path& path = Small();
  const ImportOptions options = state.range(0) == 0 ? Sampled() : ImportOptions();
  for (auto _ : state) {
    const ImportResult result = ImportFile(path, options);
    benchmark::DoNotOptimize(result.series.front()->PointCount());
  }
}
BENCHMARK(ImportHundredThousandRows)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// What instruments write: 300 rows of 48 columns between blanks, and 400 lines of settings before 100 rows.
std::string InstrumentText(bool wide) {
  std::string text;
  for (int line = 0; line < 400 && !wide; ++line)
    text += "  Potential-DC " + std::to_string(line) + ": 0.02 V\n";
  if (!wide) text += "Freq(Hz)\tZ'(a)\tZ''(b)\n";
  for (int row = 0; row < (wide ? 300 : 100); ++row) {
    for (int column = 0; column < (wide ? 48 : 3); ++column) {
      text += std::to_string(row * 0.37 + column) + (wide ? "  " : "\t");
    }
    text += '\n';
  }
  return text;
}

void GuessFormat(benchmark::State& state) {
  const MappedFile file(Small());
  for (auto _ : state) benchmark::DoNotOptimize(GuessTextFormat(file.Bytes()).columns.data());
}
BENCHMARK(GuessFormat)->Unit(benchmark::kMillisecond);

void GuessInstrument(benchmark::State& state) {
  const std::string text = InstrumentText(state.range(0) != 0);
  for (auto _ : state) benchmark::DoNotOptimize(GuessTextFormat(text).columns.data());
}
BENCHMARK(GuessInstrument)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
