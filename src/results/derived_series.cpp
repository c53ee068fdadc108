#include "results/derived_series.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/derived.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "data/series/point_errors.h"
#include "graph/graph_update.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// In the order of DerivedKind.
constexpr std::array kSuffixes = {"_INT", "_SUM", "_HIS", "_DIF"};

void Compute(DerivedKind kind, TDataSeries& source, std::int32_t bins, TDataSeries& target) {
  switch (kind) {
    case DerivedKind::Integral:
      return Integral(source, target);
    case DerivedKind::RunningSum:
      return RunningSum(source, target);
    case DerivedKind::Histogram:
      return ProbabilityDensity(source, target, bins);
    case DerivedKind::Derivative:
      return Derivative(source, target);
  }
}

}  // namespace

std::string DerivedName(const TxyGraph& graph, const TSeries& source, DerivedKind kind) {
  return FreeSeriesName(graph, source.SeriesName() + kSuffixes.at(static_cast<std::size_t>(kind)));
}

TSeries& AddDerived(TxyGraph& graph, TSeries& source, DerivedKind kind,
                    const DerivedOptions& options) {
  auto derived = std::make_unique<TSeries>();
  Compute(kind, source, options.bins, *derived);
  const NewSeries wanted = {options.name.empty() ? DerivedName(graph, source, kind) : options.name,
                            options.y_axis};
  const GraphUpdate update(graph);
  TSeries& added = AddNewSeries(graph, std::move(derived), source, wanted);
  if (options.source == SourceAfter::Hidden) {
    SeriesStyle hidden = source.Style();
    hidden.visible = false;
    source.SetStyle(hidden);
  }
  return added;
}

std::string DerivedErrorsText(const TSeries& source, DerivedKind kind, const TSeries& derived) {
  const PointErrors& errors = source.Errors();
  const std::string named = " of \"" + source.SeriesName() + "\"";
  std::string text;
  if (HasYErrors(derived.Errors())) {
    text = "The errors of Y" + named + " go on as those of values independent of each other";
    const std::vector<double> known = NumbersAlong(derived.Points(), derived.Errors().y_values);
    const auto without = std::ranges::count_if(known, &IsUndefined);
    if (without > 0)
      text += "; " + Counted(without, "point") + " without, as one that goes into them has none";
    text += '.';
  } else if (HasYErrors(errors)) {
    text = "The errors of Y" + named + " are left out: " +
           (kind == DerivedKind::Histogram ? "a histogram counts values."
                                           : "those of its regression are not known.");
  }
  if (HasXErrors(errors))
    text += (text.empty() ? "" : " ") + ("The errors of X" + named + " are left out.");
  return text;
}

}  // namespace tarnwick
