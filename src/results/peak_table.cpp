#include "results/peak_table.h"

#include <algorithm>
#include <cmath>

#include "base/error.h"
#include "base/number_text.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

struct Columns {
  std::vector<double> x;
  std::vector<double> y;
  PeakCurve Curve() const { return {x, y}; }
};

/// Points between the margins, less the base line.
Columns ColumnsOf(const TSeries& series, const PeakOptions& search) {
  Columns columns;
  const BaseLine line = series.GetBaseLine();
  series.Points().ForEachPoint([&](double x, double y) {
    if (search.left && x < *search.left) return;
    if (search.right && x > *search.right) return;
    const double above = line.CorrectedY(x, y);
    if (!std::isfinite(x) || !std::isfinite(above)) return;
    columns.x.push_back(x);
    columns.y.push_back(above);
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
  const double noise = NoiseOf(columns.Curve());
  const double least = options.times_noise * noise;
  PeakTable table{MeasurePeaks(columns.Curve(), FindSummits(columns.Curve(), least)), {}};
  table.told = "The noise, as neighbouring points scatter, has a standard deviation of " +
               GeneralText(noise, 3) + "; peaks rise at least " + GeneralText(least, 3) +
               " above the valleys beside them.";
  const BaseLine line = series.GetBaseLine();
  if (line.offset == 0 && line.slope == 0)
    table.told += " Heights and areas are counted from Y = 0: the DataSet has no base line.";
  return table;
}

}  // namespace tarnwick
