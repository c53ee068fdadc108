#include "graph/edit/paste_edit.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "graph/all_series.h"
#include "graph/edit/child_edit.h"
#include "graph/edit/mark_edit.h"
#include "graph/series_names.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kAside = 20;  // pixels from a graph in the same place

void KeepPlace(Dimensions& dimensions, const Dimensions& place) {
  dimensions.hor_position = place.hor_position;
  dimensions.ver_position = place.ver_position;
  dimensions.hor_size = place.hor_size;
  dimensions.ver_size = place.ver_size;
}

bool HoldsNothing(const TxyGraph& graph) {
  return graph.SeriesCount() == 0 && graph.Children().empty() && graph.Marks().All().empty();
}

bool LooksLike(const SeriesStyle& left, const SeriesStyle& right) {
  return left.line_color == right.line_color && left.symbol == right.symbol;
}

bool IsTaken(const TxyGraph& graph, const SeriesStyle& style) {
  return std::ranges::any_of(
      AllSeries(graph), [&](const TSeries& series) { return LooksLike(series.Style(), style); });
}

void PasteSeries(TxyGraph& graph, const SeriesState& pasted) {
  // Beside one of its name it could not be told from that.
  const std::string name = FreeSeriesName(graph, pasted.data.settings.SeriesName);
  auto added = std::make_unique<TSeries>();
  const bool taken = IsTaken(graph, pasted.style);
  if (!taken) added->SetStyle(pasted.style);
  TSeries& series = graph.AddSeries(std::move(added));
  if (taken) {
    SeriesStyle style = pasted.style;
    style.line_color = series.Style().line_color;
    style.symbol_color = series.Style().symbol_color;
    style.symbol = series.Style().symbol;
    series.SetStyle(style);
  }
  series.SetState(pasted.data);
  series.SetSeriesName(name);
}

/// False when the graph has such a mark already, as when it is pasted into the graph that it came from.
bool PasteMark(TxyGraph& graph, Mark mark) {
  const std::string own_id = std::to_string(mark.id);
  const auto& all = graph.Marks().All();
  const bool there = std::any_of(all.begin(), all.end(), [&](Mark other) {
    other.id = mark.id;
    return other == mark;
  });
  if (there) return false;
  if (mark.caption == own_id) mark.caption.clear();  // it is called by the ID that it gets
  AddMark(graph, mark);
  return true;
}

bool SamePlace(const Dimensions& left, const Dimensions& right) {
  return left.hor_position == right.hor_position && left.ver_position == right.ver_position;
}

}  // namespace

GraphState StateOfCurrentDataSet(const TxyGraph& graph) {
  if (!graph.CurrentSeries()) throw Error("No DataSet found!");
  GraphState state = graph.State();
  const auto index = static_cast<std::size_t>(graph.CurrentSeriesIndex());
  state.series = {state.series.at(index)};
  state.appearance.current_series_index = 0;
  state.appearance.x_axis_series_index = -1;
  state.marks = {};
  state.children.clear();
  return state;
}

PastedParts PasteGraph(TxyGraph& graph, const GraphState& pasted) {
  const std::vector<Mark>& marks = pasted.marks.All();
  if (HoldsNothing(graph)) {
    GraphState state = pasted;
    KeepPlace(state.dimensions, graph.GetDimensions());
    graph.SetState(state);
    return {pasted.series.size(), marks.size(), pasted.children.size()};
  }
  if (pasted.series.empty() && marks.empty() && pasted.children.empty()) {
    throw Error("The graph on the clipboard is empty");
  }
  const auto first = static_cast<std::int32_t>(graph.SeriesCount());
  graph.BeginUpdate();
  for (const SeriesState& series : pasted.series) PasteSeries(graph, series);
  if (!pasted.series.empty()) graph.SetCurrentSeriesIndex(first);
  const auto added = std::count_if(marks.begin(), marks.end(),
                                   [&](const Mark& mark) { return PasteMark(graph, mark); });
  for (const auto& child : pasted.children) PasteChild(graph, *child);
  graph.EndUpdate();
  return {pasted.series.size(), static_cast<std::size_t>(added), pasted.children.size()};
}

std::size_t PasteChild(TxyGraph& graph, const GraphState& pasted) {
  int aside = 0;
  GraphState state = pasted;
  const auto& children = graph.Children();
  const bool taken = std::any_of(children.begin(), children.end(), [&](const auto& child) {
    return SamePlace(child->GetDimensions(), state.dimensions);
  });
  if (taken) aside = kAside;
  graph.BeginUpdate();
  TxyChildGr& child = graph.AddChild();
  child.SetState(state);
  const std::size_t index = graph.Children().size() - 1;
  // Brings what a stranger's file says within reach, too.
  MoveChild(graph, index, aside, aside);
  graph.EndUpdate();
  return index;
}

}  // namespace tarnwick
