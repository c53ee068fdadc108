#include "graph/files/import_into_graph.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "graph/axes/calendar_scale.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

struct Range {
  double min = 0;
  double max = 0;
};

/// The extremes over all DataSets with points, of X or of Y as `low` and `high` pick them.
Range RangeOf(const ImportResult& result, double Extremes::*low, double Extremes::*high) {
  Range range;
  bool first = true;
  for (const auto& series : result.series) {
    if (series->PointCount() == 0) continue;
    const Extremes extremes = series->GetExtremes();
    range.min = first ? extremes.*low : std::min(range.min, extremes.*low);
    range.max = first ? extremes.*high : std::max(range.max, extremes.*high);
    first = false;
  }
  return range;
}

void MakeTimeAxis(TAxis& axis, const Range& range) {
  axis.SetShowAsTime(true);
  axis.SetDateTickType(SuggestDateTickType(range.min, range.max));
  SetLook(axis, &AxisLook::DateTimeFormat, SuggestDateFormat(range.min, range.max));
}

std::unique_ptr<TDataSeries> MakeSeries() {
  return std::make_unique<TSeries>();
}

ImportTold Told(const ImportResult& result) {
  std::vector<std::string> names;
  for (const auto& series : result.series) names.push_back(series->SeriesName());
  return TellImport(result.reports, names, result.notes);
}

ImportedData AddToGraph(TxyGraph& graph, ImportResult result) {
  if (result.cancelled) return {std::move(result.reports), {}};
  ImportTold told = Told(result);
  graph.BeginUpdate();
  if (result.x_is_date) {
    MakeTimeAxis(graph.Axis(AxisId::X), RangeOf(result, &Extremes::x_min, &Extremes::x_max));
  }
  if (result.y_is_date) {
    MakeTimeAxis(graph.Axis(AxisId::Y), RangeOf(result, &Extremes::y_min, &Extremes::y_max));
  }
  for (auto& series : result.series) {
    // MakeSeries made nothing but TSeries.
    graph.AddSeries(std::unique_ptr<TSeries>(static_cast<TSeries*>(series.release())));
  }
  graph.EndUpdate();
  return {std::move(result.reports), std::move(told)};
}

}  // namespace

ImportedData ImportIntoGraph(TxyGraph& graph, const std::filesystem::path& path,
                             const ImportOptions& options, const LoadOptions& load) {
  return AddToGraph(graph, ImportFile(path, options, load, MakeSeries));
}

ImportedData ImportTextIntoGraph(TxyGraph& graph, std::string text, const std::string& name,
                                 const LoadOptions& load) {
  return AddToGraph(graph, ImportText(std::move(text), name, {}, load, MakeSeries));
}

}  // namespace tarnwick
