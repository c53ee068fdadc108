#include "graph/files/scale_suggestion.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr std::int64_t kFewestPoints = 8;
constexpr double kDecades = 1e3;
constexpr double kUneven = 0.2;  // how far a quarter's share of the points may be from a quarter

/// The share of points below `x`.
double ShareBelow(const PointChain& points, double x) {
  std::int64_t below = 0;
  points.ForEachChunk([&](const ChunkView& chunk) {
    below += std::lower_bound(chunk.x.begin(), chunk.x.end(), x) - chunk.x.begin();
  });
  return static_cast<double>(below) / static_cast<double>(points.Size());
}

bool StepsThroughDecades(const TSeries& series) {
  const PointChain& points = series.Points();
  if (series.PointCount() < kFewestPoints) return false;
  const Extremes extremes = series.GetExtremes();
  if (!(extremes.x_min > 0) || extremes.x_max / extremes.x_min < kDecades) return false;
  const double decades = std::log(extremes.x_max / extremes.x_min);
  return std::ranges::all_of(std::initializer_list<double>{0.25, 0.5, 0.75}, [&](double quarter) {
    const double x = extremes.x_min * std::exp(quarter * decades);
    return std::abs(ShareBelow(points, x) - quarter) < kUneven;
  });
}

}  // namespace

bool SuggestsLogX(std::span<TSeries* const> all) {
  return !all.empty() && std::ranges::all_of(all, [](const TSeries* const series) {
    return StepsThroughDecades(*series);
  });
}

}  // namespace tarnwick
