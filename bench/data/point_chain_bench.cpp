// Placing points in a DataSet, each road beside its limit in the same run: a single std::sort of the points for random order,
// an ordinary vector for rising order.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

#include "data/series/data_series.h"

namespace tarnwick {
namespace {

constexpr std::size_t kRandomPoints = 1'000'000;
constexpr std::size_t kRisingPoints = 10'000'000;

struct XY {
  double x;
  double y;
};

std::vector<double> RandomX() {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> uniform(0, 1000);
  std::vector<double> x(kRandomPoints);
  std::generate(x.begin(), x.end(), [&] { return uniform(random); });
  return x;
}

std::vector<double> RisingX() {
  std::vector<double> x(kRisingPoints);
  std::iota(x.begin(), x.end(), 0.0);
  return x;
}

void CountPoints(benchmark::State& state, std::size_t points) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points));
}

void RandomOrderLimitSort(benchmark::State& state) {
  const std::vector<double> x = RandomX();
  for (auto _ : state) {
    std::vector<XY> points(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) points[i] = {x[i], x[i]};
    std::sort(points.begin(), points.end(), [](const XY& a, const XY& b) { return a.x < b.x; });
    benchmark::DoNotOptimize(points.data());
  }
  CountPoints(state, x.size());
}

void RandomOrderOneByOne(benchmark::State& state) {
  const std::vector<double> x = RandomX();
  for (auto _ : state) {
    TDataSeries series;
    for (const double value : x) series.AddPoint(value, value);
    benchmark::DoNotOptimize(series.Points().Front());
  }
  CountPoints(state, x.size());
}

// Somebody looks at the points after every so many, which are merged by then.
void RandomOrderLookedAt(benchmark::State& state) {
  const std::vector<double> x = RandomX();
  const auto look_every = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    TDataSeries series;
    for (std::size_t i = 0; i < x.size(); ++i) {
      series.AddPoint(x[i], x[i]);
      if (i % look_every == 0) benchmark::DoNotOptimize(series.Points().At(i / 2));
    }
  }
  CountPoints(state, x.size());
}

// A part of the abscissae comes again and overwrites.
void RandomOrderSomeEqual(benchmark::State& state) {
  std::vector<double> x = RandomX();
  const auto repeat_every = static_cast<std::size_t>(state.range(0));
  for (std::size_t i = repeat_every; i < x.size(); i += repeat_every) x[i] = x[i / 2];
  for (auto _ : state) {
    TDataSeries series;
    for (const double value : x) series.AddPoint(value, value);
    benchmark::DoNotOptimize(series.Points().Front());
  }
  CountPoints(state, x.size());
}

void RandomOrderBatch(benchmark::State& state) {
  const std::vector<double> x = RandomX();
  for (auto _ : state) {
    TDataSeries series;
    series.AddPoints(x, x);
    benchmark::DoNotOptimize(series.PointCount());
  }
  CountPoints(state, x.size());
}

void RisingOrderLimitVector(benchmark::State& state) {
  const std::vector<double> x = RisingX();
  for (auto _ : state) {
    std::vector<XY> points;
    for (const double value : x) points.push_back({value, value});
    benchmark::DoNotOptimize(points.data());
  }
  CountPoints(state, x.size());
}

void RisingOrderOneByOne(benchmark::State& state) {
  const std::vector<double> x = RisingX();
  for (auto _ : state) {
    TDataSeries series;
    for (const double value : x) series.AddPoint(value, value);
    benchmark::DoNotOptimize(series.PointCount());
  }
  CountPoints(state, x.size());
}

void RisingOrderBatch(benchmark::State& state) {
  const std::vector<double> x = RisingX();
  for (auto _ : state) {
    TDataSeries series;
    series.AddPoints(x, x);
    benchmark::DoNotOptimize(series.PointCount());
  }
  CountPoints(state, x.size());
}

// What undo does around every edit: keep the state, change one point.
void CopyState(benchmark::State& state) {
  TDataSeries series;
  {
    const std::vector<double> x = RisingX();
    series.AddPoints(x, x);
  }
  for (auto _ : state) {
    const DataState copy = series.State();
    benchmark::DoNotOptimize(copy.points.Size());
  }
}

void CopyStateThenEditOnePoint(benchmark::State& state) {
  TDataSeries series;
  {
    const std::vector<double> x = RisingX();
    series.AddPoints(x, x);
  }
  double y = 0;
  for (auto _ : state) {
    const DataState copy = series.State();
    series.SetY(static_cast<std::int32_t>(kRisingPoints / 2), y += 1);
    benchmark::DoNotOptimize(copy.points.Size());
  }
}

BENCHMARK(RandomOrderLimitSort)->Unit(benchmark::kMillisecond);
BENCHMARK(RandomOrderOneByOne)->Unit(benchmark::kMillisecond);
BENCHMARK(RandomOrderLookedAt)->Arg(1)->Arg(1000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(RandomOrderSomeEqual)->Arg(2)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(RandomOrderBatch)->Unit(benchmark::kMillisecond);
BENCHMARK(RisingOrderLimitVector)->Unit(benchmark::kMillisecond);
BENCHMARK(RisingOrderOneByOne)->Unit(benchmark::kMillisecond);
BENCHMARK(RisingOrderBatch)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyState)->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyStateThenEditOnePoint)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarnwick
