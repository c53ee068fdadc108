#include "graph/files/import_into_graph.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "data/guess/format_notes.h"
#include "data/import/load_source.h"
#include "graph/axes/calendar_scale.h"
#include "graph/files/line_suggestion.h"
#include "graph/files/scale_suggestion.h"
#include "graph/files/x_meaning.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

struct Range {
  double min = std::numeric_limits<double>::infinity();
  double max = -std::numeric_limits<double>::infinity();
};

/// The extremes over all DataSets with points, of X or of Y as `low` and `high` pick them.
Range RangeOf(const ImportResult& result, double Extremes::*low, double Extremes::*high) {
  Range range;
  for (const auto& series : result.series) {
    if (series->PointCount() == 0) continue;
    const Extremes extremes = series->GetExtremes();
    range.min = std::min(range.min, extremes.*low);
    range.max = std::max(range.max, extremes.*high);
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

ImportTold Told(const ImportResult& result, std::span<TSeries* const> all) {
  std::vector<std::string> names;
  for (const TSeries* const series : all) names.push_back(series->SeriesName());
  ImportTold told = TellImport(result.reports, names, result.notes);
  if (result.other_table) {
    const std::string option = OptionToRead(*result.other_table);
    const auto clause = std::ranges::find(told, option, &ToldClause::option);
    if (clause != told.end()) clause->other_table = result.other_table;
  }
  std::ranges::move(TellGaps(all), std::back_inserter(told));
  if (!result.errors_note.empty()) told.push_back({ToldAbout::Errors, result.errors_note});
  if (!result.thinning_note.empty()) told.push_back({ToldAbout::Thinning, result.thinning_note});
  return told;
}

/// Lines as the data asks for them, and what there is to tell of it.
void ShapeLines(std::span<TSeries* const> all, std::vector<std::string>& notes) {
  std::vector<LineSuggestion> suggestions;
  for (TSeries* const series : all) {
    suggestions.push_back(SuggestLineOrder(*series));
    if (suggestions.back() != LineSuggestion::ByX)
      series->SetStyle(FollowSuggestion(series->Style(), suggestions.back()));
    series->SetBreakAtGaps(!series->Gaps().Empty());
  }
  std::string told = TellSuggestions(suggestions);
  if (!told.empty()) notes.push_back(std::move(told));
}

ImportedData AddToGraph(TxyGraph& graph, ImportResult result) {
  if (result.cancelled) return {std::move(result.reports), {}};
  if (std::string note =
          NoteOfMixedX(graph, result.x_is_date ? XMeaning::Moments : XMeaning::Numbers);
      !note.empty()) {
    result.notes.push_back(std::move(note));
  }
  graph.BeginUpdate();
  if (result.x_is_date) {
    MakeTimeAxis(graph.Axis(AxisId::X), RangeOf(result, &Extremes::x_min, &Extremes::x_max));
  }
  if (result.y_is_date) {
    MakeTimeAxis(graph.Axis(AxisId::Y), RangeOf(result, &Extremes::y_min, &Extremes::y_max));
  }
  std::vector<TSeries*> added;
  for (auto& series : result.series) {
    // MakeSeries made nothing but TSeries.
    added.push_back(
        &graph.AddSeries(std::unique_ptr<TSeries>(static_cast<TSeries*>(series.release()))));
  }
  ShapeLines(added, result.notes);
  // Beside DataSets that are there already the axis stays what it is.
  if (!result.x_is_date && graph.SeriesCount() == added.size() && SuggestsLogX(added)) {
    graph.Axis(AxisId::X).SetLogScale(true);
    result.notes.emplace_back(kLogScaleNote);
  }
  graph.EndUpdate();
  ImportTold told = Told(result, added);
  return {std::move(result.reports), std::move(told)};
}

}  // namespace

ImportedData ImportIntoGraph(TxyGraph& graph, const std::filesystem::path& path,
                             const ImportOptions& options, const LoadOptions& load) {
  return AddToGraph(graph, ImportFile(path, options, load, MakeSeries));
}

ImportedData ImportIntoGraph(TxyGraph& graph, ImportSource source, const ImportOptions& options,
                             const LoadOptions& load) {
  return AddToGraph(graph, ImportOpened(std::move(source), options, load, MakeSeries));
}

ImportedData ImportTextIntoGraph(TxyGraph& graph, std::string text, const std::string& name,
                                 const LoadOptions& load) {
  return AddToGraph(graph, ImportText(std::move(text), name, {}, load, MakeSeries));
}

ImportTold TellGaps(std::span<TSeries* const> all) {
  std::size_t gaps = 0;
  for (const TSeries* const series : all) {
    if (series->Settings().BreakAtGaps) gaps = std::max(gaps, series->Gaps().Begins().size());
  }
  if (gaps == 0) return {};
  return {
      {ToldAbout::Gaps, "lines are broken at " + Counted(static_cast<std::int64_t>(gaps), "gap")}};
}

}  // namespace tarnwick
