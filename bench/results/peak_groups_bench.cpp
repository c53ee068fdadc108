// Forty Voigt peaks on 1e5 points: found and measured, and fitted in groups.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include "base/progress.h"
#include "base/split_mix.h"
#include "expr/words/special_functions.h"
#include "graph/xy_graph.h"
#include "results/peak_fit.h"
#include "results/peak_groups.h"
#include "results/peak_table.h"

namespace tarnwick {
namespace {

constexpr int kPeaks = 40;
constexpr int kPoints = 100'000;

/// Peaks of unlike heights and widths, some of which run into each other, with noise of 0.2 % of the highest.
TSeries& AddSpectrum(TxyGraph& graph) {
  TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
  std::uint64_t noise_state = 1;
  for (int i = 0; i < kPoints; ++i) {
    const double x = 1000.0 * i / kPoints;
    double y = 2 + 0.001 * x;
    for (int k = 0; k < kPeaks; ++k) {
      const double centre = 15 + 24.5 * k + 4 * std::sin(5.0 * k);
      y += (100 + 80 * std::sin(3.0 * k)) * VoigtOf(x - centre, 1.5 + 0.5 * std::sin(k), 1.0);
    }
    double noise = -6;
    for (int n = 0; n < 12; ++n) noise += NextSplitMix(noise_state);
    series.AddPoint(x, y + 0.05 * noise);
  }
  return series;
}

void FindPeaks(benchmark::State& state) {
  TxyGraph graph;
  TSeries& series = AddSpectrum(graph);
  for (auto _ : state) benchmark::DoNotOptimize(MakePeakTable(graph, series, {.times_noise = 30}));
}
BENCHMARK(FindPeaks)->Unit(benchmark::kMillisecond);

void FitVoigtPeaks(benchmark::State& state) {
  TxyGraph graph;
  TSeries& series = AddSpectrum(graph);
  const PeakTable table = MakePeakTable(graph, series, {.times_noise = 30});
  series.Fit().SetSettings(PeakModel(table.peaks, PeakShape::Voigt, {}), true);
  const FitJob job = PrepareFit(series, {.points = FitPointChoice::All});
  NoProgress progress;
  for (auto _ : state) {
    const PeakGroupsFit fit = FitPeakGroups(job, progress);
    state.SetLabel(std::to_string(fit.peaks.size()) + " peaks. " + fit.told + fit.verdict.summary +
                   std::to_string(fit.peaks[3].x.error));
  }
}
BENCHMARK(FitVoigtPeaks)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tarnwick
