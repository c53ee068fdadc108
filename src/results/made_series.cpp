#include "results/made_series.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "graph/all_series.h"
#include "graph/belonging.h"
#include "graph/edit/mark_edit.h"
#include "graph/graph_update.h"
#include "graph/series_names.h"
#include "graph/xy_graph.h"
#include "results/tools/branchwise.h"
#include "results/tools/recipe.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

void Hide(TSeries& series) {
  SeriesStyle hidden = series.Style();
  hidden.visible = false;
  series.SetStyle(hidden);
}

void JoinInOrder(TSeries& series, LineOrder order) {
  SeriesStyle style = series.Style();
  style.line_order = order;
  series.SetStyle(style);
}

/// A DataSet with its recipe, read.
struct Pending {
  TSeries* series;
  Recipe recipe;
};

TSeries& InputNamed(TxyGraph& graph, const std::string& name, const TSeries& made) {
  TSeries* found = nullptr;
  for (TSeries& series : AllSeries(graph)) {
    if (series.SeriesName() != name || &series == &made) continue;
    if (found) throw Error("the graph has two DataSets \"" + name + "\".");
    found = &series;
  }
  if (!found) throw Error("the graph has no DataSet \"" + name + "\" any longer.");
  return *found;
}

/// Name, titles, look, base line and the model's settings stay.
void TakePoints(TSeries& series, const TSeries& computed) {
  const DataState before = series.State();
  DataState state = computed.State();
  state.settings = before.settings;
  // What its source has become since: a loop, or broken.
  if (computed.DuplicatesAllowed()) state.settings.DuplicatesAllowed = true;
  if (computed.Settings().BreakAtGaps) state.settings.BreakAtGaps = true;
  state.extremes_stale = true;
  state.fit = before.fit;
  series.SetState(state);
}

void Recompute(TxyGraph& graph, const Pending& one) {
  const Tool* tool = FindTool(one.recipe.tool);
  if (!tool) throw Error("there is no computation \"" + one.recipe.tool + "\".");
  ToolInput input{{}, SettingsOf(*tool, one.recipe)};
  for (const std::string& name : one.recipe.inputs)
    input.series.push_back(&InputNamed(graph, name, *one.series));
  const Computed made = ComputeAlongLine(*tool, input);
  TakePoints(*one.series, *made.series);
  if (made.line_order == LineOrder::AsTheyCame) JoinInOrder(*one.series, made.line_order);
}

bool WaitsForAnother(const Pending& one, const std::vector<Pending>& pending) {
  return std::ranges::any_of(pending, [&](const Pending& other) {
    return std::ranges::find(one.recipe.inputs, other.series->SeriesName()) !=
           one.recipe.inputs.end();
  });
}

/// Collects what stays as it is, and why.
class Outcome {
 public:
  template <class Work>
  void Try(const TSeries& series, Work&& work) {
    try {
      work();
    } catch (const Error& error) {
      Stays(series, error.what());
    }
  }
  void Stays(const TSeries& series, const std::string& why) {
    AddSentence(result_.told, "\"" + series.SeriesName() + "\" stays as it is: " + why);
  }
  void CountOne() { ++result_.count; }
  Recomputed Take() { return std::move(result_); }

 private:
  Recomputed result_;
};

MadeSeries WithOwnLine(TSeries& source, const Computed& made) {
  const BaseLine before = source.GetBaseLine();
  const BaseLine line{before.offset + made.own_line->offset, before.slope + made.own_line->slope};
  SetBaseLine(source, line);
  std::string told = made.told;
  AddSentence(told, "It is now the base line of \"" + source.SeriesName() + "\" itself: " +
                        GeneralText(line.offset, 6) + (line.slope < 0 ? " - " : " + ") +
                        GeneralText(std::abs(line.slope), 6) + " X.");
  return {source, std::move(told)};
}

}  // namespace

std::string MadeName(const TxyGraph& graph, const TSeries& source, const Tool& tool) {
  return FreeSeriesName(graph, source.SeriesName() + std::string(tool.suffix));
}

MadeSeries AddMade(TxyGraph& graph, const Tool& tool, ToolInput input, const NewSeries& wanted) {
  if (const std::string why = NameRefusal(graph, wanted.name); !why.empty()) throw Error(why);
  if (tool.suggest) tool.suggest(input.Source(), input.settings);
  if (graph.Axis(AxisId::X).ShowAsTime()) input.x = XMeans::Dates;
  Computed made = ComputeAlongLine(tool, input);
  if (made.own_line) return WithOwnLine(input.Source(), made);
  made.series->Source().Recipe = RecipeText(RecipeOf(tool, input));
  TSeries& added = AddNewSeries(graph, std::move(made.series), input.Source(), wanted);
  JoinInOrder(added, made.line_order);
  return {added, std::move(made.told)};
}

void HideSource(TxyGraph& graph, TSeries& source, const TSeries& made, ResultX x) {
  const GraphUpdate update(graph);
  Hide(source);
  if (x == ResultX::OfSource) return;
  for (TSeries& series : AllSeries(graph)) {
    if (BelongsToAnother(series) && &series != &made) Hide(series);
  }
  graph.Axis(AxisId::X).SetShowAsTime(false);
  graph.Axis(AxisId::X).SetAutoSizing(true);
  if (graph.PlotsAgainstXSource()) return;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (&graph.Series(i) != &made) continue;
    Appearance appearance = graph.GetAppearance();
    appearance.x_axis_series_index = static_cast<std::int32_t>(i);
    graph.SetAppearance(appearance);
  }
}

void NameInLegend(TxyGraph& graph) {
  const auto is_named = [](const TSeries& series) {
    return series.Style().visible && series.Style().show_in_legend != 0;
  };
  if (std::ranges::count_if(AllSeries(graph), is_named) != 2 || graph.GetLegend().visible) return;
  Legend legend = graph.GetLegend();
  legend.visible = true;
  graph.SetLegend(legend);
}

Recomputed RecomputeAll(TxyGraph& graph) {
  const GraphUpdate update(graph);
  Outcome outcome;
  std::vector<Pending> pending;
  for (TSeries& series : AllSeries(graph)) {
    if (series.Source().Recipe.empty()) continue;
    outcome.Try(series, [&] { pending.push_back({&series, ReadRecipe(series.Source().Recipe)}); });
  }
  while (!pending.empty()) {
    const auto ready = std::ranges::find_if(
        pending, [&](const Pending& one) { return !WaitsForAnother(one, pending); });
    if (ready == pending.end()) break;
    outcome.Try(*ready->series, [&] {
      Recompute(graph, *ready);
      outcome.CountOne();
    });
    pending.erase(ready);
  }
  for (const Pending& one : pending)
    outcome.Stays(*one.series, "it was computed from itself, or waits for one that was.");
  return outcome.Take();
}

bool HasMadeSeries(const TxyGraph& graph) {
  return std::ranges::any_of(AllSeries(graph),
                             [](const TSeries& series) { return !series.Source().Recipe.empty(); });
}

}  // namespace tarnwick
