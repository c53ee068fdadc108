#include "results/peak_table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "analysis/local_noise.h"
#include "base/error.h"
#include "base/number_text.h"
#include "data/series/point_errors.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

struct Columns {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> errors;  // of Y; NaN for none
  PeakCurve Curve() const { return {x, y}; }
};

/// Points between the margins, less the base line.
Columns ColumnsOf(const TSeries& series, const PeakOptions& search) {
  Columns columns;
  const BaseLine line = series.GetBaseLine();
  series.Points().ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      const Point point = chunk.chunk->At(i);
      if (search.left && point.x < *search.left) continue;
      if (search.right && point.x > *search.right) continue;
      const double above = line.CorrectedY(point.x, point.y);
      if (!std::isfinite(point.x) || !std::isfinite(above)) continue;
      columns.x.push_back(point.x);
      columns.y.push_back(above);
      columns.errors.push_back(YErrorAt(series, point));
    }
  });
  if (columns.x.size() < 3)
    throw Error("No Data Found in the Margins for DataSet " + series.SeriesName() + "!");
  return columns;
}

/// The summits among all of the curve's that stand at these peaks.
std::vector<Summit> SummitsAt(const PeakCurve& curve, const std::vector<Peak>& peaks) {
  std::vector<Summit> found;
  auto peak = peaks.begin();
  for (const Summit& summit : FindSummits(curve, 0)) {
    const double x = curve.x[summit.index];
    while (peak != peaks.end() && peak->x < x) ++peak;
    if (peak != peaks.end() && peak->x == x) found.push_back(summit);
  }
  return found;
}

/// What the noise is taken from, and how large it is as a whole and at the peaks that were found.
std::string NoiseText(const LocalNoise& noise, std::span<const Summit> summits) {
  double least = std::numeric_limits<double>::infinity();
  double most = 0;
  std::int64_t with_errors = 0;
  for (const Summit& summit : summits) {
    const double here = noise.At(summit.index);
    least = std::min(least, here);
    most = std::max(most, here);
    with_errors += noise.HasError(summit.index) ? 1 : 0;
  }
  const std::string scatter =
      noise.Lag() == 1 ? "neighbouring points scatter"
                       : "points " + std::to_string(noise.Lag()) +
                             " apart scatter (neighbours are alike, as smoothing makes them)";
  std::string text = "The noise, as " + scatter + ", has a standard deviation of " +
                     GeneralText(noise.Overall(), 3);
  if (!summits.empty())
    text += ", at the peaks of " + GeneralText(least, 3) + " to " + GeneralText(most, 3);
  if (with_errors > 0) {
    text += "; the errors of Y are taken for it at " + (with_errors == std::ssize(summits)
                                                            ? std::string("the peaks")
                                                            : Counted(with_errors, "peak"));
  }
  return text + ".";
}

}  // namespace

PeakTable MakePeakTable(const TxyGraph& graph, TSeries& series, const PeakTableOptions& options) {
  if (options.rule == PeakRule::Neighbours) {
    const std::vector<Peak> peaks = PeaksOn(graph, series, options.search);
    const Columns columns = ColumnsOf(series, options.search);
    PeakTable table{MeasurePeaks(columns.Curve(), SummitsAt(columns.Curve(), peaks)), {}};
    if (table.peaks.size() < peaks.size()) {
      table.told = Counted(static_cast<std::int64_t>(peaks.size() - table.peaks.size()), "peak") +
                   " of the regression not at a maximum of the points left out.";
    }
    return table;
  }
  const Columns columns = ColumnsOf(series, options.search);
  const PeakCurve curve = columns.Curve();
  const LocalNoise noise(curve, columns.errors);
  const std::vector<Summit> summits = SummitsAbove(curve, noise, options.times_noise);
  PeakTable table{MeasurePeaks(curve, summits), NoiseText(noise, summits)};
  table.told += " Peaks rise at least " + GeneralText(options.times_noise, 3) +
                " times the noise where they stand above the valleys beside them.";
  const BaseLine line = series.GetBaseLine();
  if (line.offset == 0 && line.slope == 0)
    table.told += " Heights and areas are counted from Y = 0: the DataSet has no base line.";
  return table;
}

}  // namespace tarnwick
