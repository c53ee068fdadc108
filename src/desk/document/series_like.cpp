#include "desk/document/series_like.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "data/import/split_runs.h"
#include "graph/series_of_whole.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// A DataSet like another for a later run of its table; without points yet.
TDataSeries& AddRun(TxyGraph& graph, const TSeries& last, std::int32_t run) {
  TSeries& added = AddLike(graph, last, last.Source().YDataColumn);
  added.Source() = last.Source();
  added.Source().Run = run;
  added.SetErrors({last.Errors().y, last.Errors().x, {}, {}});
  added.SetBreakAtGaps(last.Settings().BreakAtGaps);
  added.SetSeriesName(NameOfRun(NameWithoutRun(last.SeriesName(), last.Source().Run), run));
  return added;
}

}  // namespace

TxyGraph* GraphOf(TxyGraph& graph, const TSeries& series) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (&graph.Series(i) == &series) return &graph;
  }
  for (const auto& child : graph.Children()) {
    if (TxyGraph* const found = GraphOf(*child, series)) return found;
  }
  return nullptr;
}

TSeries& AddLike(TxyGraph& graph, const TSeries& first, const std::string& column) {
  TSeries& added = graph.AddSeries(std::make_unique<TSeries>());
  SeriesStyle style = first.Style();
  style.line_color = added.Style().line_color;
  style.symbol_color = added.Style().symbol_color;
  style.symbol = added.Style().symbol;
  added.SetStyle(style);
  added.SetDuplicatesAllowed(first.DuplicatesAllowed());
  added.SetNumericalTolerance(first.NumericalTolerance());
  added.Source() = first.Source();
  added.Source().YDataColumn = column;
  added.Source().YColExpr = TDSInfo().YColExpr;
  added.Source().YErrorColumn.clear();
  added.SetSeriesName(column);
  return added;
}

std::vector<TDataSeries*> AddNewRuns(std::span<const std::unique_ptr<TxyGraph>> graphs,
                                     std::span<TDataSeries* const> source,
                                     std::span<const LoadReport> read) {
  std::int32_t last = 0, runs = 0;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (!read[i].loaded) continue;
    last = std::max(last, source[i]->Source().Run);
    runs = std::max(runs, read[i].runs);
  }
  std::vector<TDataSeries*> added;
  if (last == 0 || std::cmp_greater(runs, kMostRuns)) return added;
  for (const auto& graph : graphs) {
    for (const TSeries* const series : SeriesOfWhole(*graph)) {
      const bool of_last =
          std::ranges::find(source, series) != source.end() && series->Source().Run == last;
      for (std::int32_t run = last + 1; of_last && run <= runs; ++run)
        added.push_back(&AddRun(*GraphOf(*graph, *series), *series, run));
    }
  }
  return added;
}

}  // namespace tarnwick
