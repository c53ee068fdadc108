#include <algorithm>

#include "graph/xy_graph.h"

namespace tarnwick {

GraphState TxyGraph::State() const {
  GraphState state;
  state.appearance = appearance_;
  state.dimensions = dimensions_;
  for (std::size_t i = 0; i < axes_.size(); ++i) state.axes[i] = axes_[i]->State();
  state.legend = legend_;
  state.series.reserve(series_.size());
  for (const auto& series : series_) state.series.push_back({series->Style(), series->State()});
  state.marks = marks_;
  for (const auto& child : children_) {
    state.children.push_back(std::make_shared<const GraphState>(child->State()));
  }
  return state;
}

void TxyGraph::SetState(const GraphState& state) {
  BeginUpdate();
  // A stored graph is judged by the limits that a new one has, not by those of the graph it replaces.
  appearance_.min_steps = Appearance().min_steps;
  appearance_.max_steps = Appearance().max_steps;
  while (series_.size() > state.series.size()) DeleteSeries(series_.size() - 1);
  for (std::size_t i = 0; i < state.series.size(); ++i) {
    if (i == series_.size()) {
      auto added = std::make_unique<TSeries>();
      added->SetStyle(state.series[i].style);
      AddSeries(std::move(added));
    }
    series_[i]->SetStyle(state.series[i].style);
    // A DataSet that shares its points with the state is left in peace, and so are its listeners.
    if (!SameState(series_[i]->State(), state.series[i].data)) {
      series_[i]->SetState(state.series[i].data);
    }
  }
  SetAppearance(state.appearance);
  dimensions_ = state.dimensions;
  legend_ = state.legend;
  for (std::size_t i = 0; i < axes_.size(); ++i) axes_[i]->SetState(state.axes[i]);
  marks_ = state.marks;
  while (children_.size() > state.children.size()) DeleteChild(children_.size() - 1);
  for (std::size_t i = 0; i < state.children.size(); ++i) {
    if (i == children_.size()) AddChild();
    children_[i]->SetState(*state.children[i]);
  }
  PlaceChildren();
  EndUpdate();
}

}  // namespace tarnwick
