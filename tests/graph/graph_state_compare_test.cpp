#include "graph/graph_state_compare.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/undefined.h"
#include "graph/edit/child_edit.h"
#include "graph/edit/mark_edit.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

void Fill(TxyGraph& graph) {
  auto series = std::make_unique<TSeries>();
  for (int i = 1; i <= 9; ++i) series->AddPoint(i, i * i);
  graph.AddSeries(std::move(series));
  AddMark(graph, {});
  InsertChild(graph, "Inset");
}

TEST(GraphStateCompare, EveryPartOfAGraphCounts) {
  const std::function<void(GraphState&)> changes[] = {
      [](GraphState& state) { state.appearance.title_of_graph = "other"; },
      [](GraphState& state) { state.dimensions.left_margin = 1; },
      [](GraphState& state) { state.axes[2].Gridlines = true; },
      [](GraphState& state) { state.legend.visible = false; },
      [](GraphState& state) { state.series[0].style.line_width = 3; },
      [](GraphState& state) { state.series[0].data.settings.SeriesName = "other"; },
      [](GraphState& state) { state.series[0].data.points.Append(10, 10, 10); },
      [](GraphState& state) { state.series.push_back(state.series[0]); },
      [](GraphState& state) { state.marks.AddMark({}); },
      [](GraphState& state) {
        Mark mark = state.marks.All()[0];
        mark.x1 = kUndefined;
        state.marks.SetMark(mark);
      },
      [](GraphState& state) { state.children.clear(); },
      [](GraphState& state) {
        GraphState child = *state.children[0];
        child.legend.top = 77;
        state.children[0] = std::make_shared<const GraphState>(child);
      },
  };
  TxyGraph graph;
  Fill(graph);
  const GraphState state = graph.State();
  EXPECT_TRUE(SameState(state, graph.State()));
  for (const auto& change : changes) {
    GraphState changed = state;
    change(changed);
    EXPECT_FALSE(SameState(state, changed)) << &change - changes;
    EXPECT_TRUE(SameState(changed, GraphState(changed))) << &change - changes;
  }
}

TEST(GraphStateCompare, TheLookIsAllButDataScalesAndSelection) {
  struct Row {
    std::function<void(GraphState&)> change;
    bool same;
  };
  const Row rows[] = {
      {[](GraphState& state) { state.appearance.title_of_graph = "other"; }, false},
      {[](GraphState& state) { state.dimensions.left_margin = 1; }, false},
      {[](GraphState& state) { state.legend.top = 1; }, false},
      {[](GraphState& state) { state.series[0].style.line_width = 3; }, false},
      {[](GraphState& state) { state.axes[2].ShowAxis = true; }, false},
      {[](GraphState& state) { state.appearance.current_series_index = -1; }, true},
      {[](GraphState& state) { state.dimensions.hor_size = 1; }, true},
      {[](GraphState& state) { state.axes[0].Max = 1e6; }, true},
      {[](GraphState& state) { state.series[0].data.points.Clear(); }, true},
      {[](GraphState& state) { state.series.emplace_back(); }, true},
  };
  TxyGraph graph;
  Fill(graph);
  const GraphState state = graph.State();
  for (const Row& row : rows) {
    GraphState changed = state;
    row.change(changed);
    EXPECT_EQ(SameLook(state, changed), row.same) << &row - rows;
  }
}

TEST(GraphStateCompare, ASharedDataSetIsLeftInPeace) {
  TxyGraph graph;
  Fill(graph);
  graph.AddSeries(std::make_unique<TSeries>());
  const GraphState before = graph.State();
  int told[2] = {0, 0};
  for (std::size_t i = 0; i < 2; ++i) {
    graph.Series(i).Listeners().Set(1, [&told, i](TDataSeries&, ChangeCode) { ++told[i]; });
  }
  graph.Series(1).AddPoint(1, 1);
  graph.SetState(before);
  EXPECT_EQ(told[0], 0);
  EXPECT_EQ(told[1], 2);
}

TEST(GraphStateCompare, TheViewStaysUnlessTheEditScaled) {
  struct Row {
    const char* name;
    std::function<void(AxisState&)> edit, zoom;
    double expected_min;
  };
  const auto zoom_in = [](AxisState& axis) { axis.AutoSizing = false, axis.Min = 3; };
  const auto title = [](AxisState& axis) { axis.Title = "other"; };
  const Row rows[] = {
      {"nobody zoomed", title, [](AxisState&) {}, 0},
      {"zoomed since", title, zoom_in, 3},
      {"autoscaled data", [](AxisState& axis) { axis.Min = 0.5; }, [](AxisState&) {}, 0},
      {"the edit set the range", zoom_in, [](AxisState& axis) { axis.Min = 4; }, 0},
      {"the edit made it logarithmic", [](AxisState& axis) { axis.LogScale = true; }, zoom_in, 0},
  };
  for (const Row& row : rows) {
    const GraphState before;
    GraphState after = before;
    row.edit(after.axes[0]);
    GraphState present = after;
    row.zoom(present.axes[0]);
    present.dimensions.hor_size = 0.5;
    GraphState target = before;
    KeepView(target, present, {before, after});
    EXPECT_EQ(target.axes[0].Min, row.expected_min) << row.name;
    EXPECT_EQ(target.axes[0].Title, before.axes[0].Title) << row.name;
    EXPECT_EQ(target.axes[0].AutoSizing, row.expected_min == 0) << row.name;
    EXPECT_EQ(target.dimensions.hor_size, 0.5) << row.name;
  }
}

}  // namespace
}  // namespace tarnwick
