// What a user sets of an axis holds against what the axis would work out, and what cannot be drawn is said why.
#include "graph/edit/axis_edit.h"

#include <gtest/gtest.h>

#include <array>

#include "graph/edit/series_edit.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

TxyGraph& WithSeries(TxyGraph& graph, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
    series.SetSeriesName(name);
    series.AddPoint(0, 0.5);
    series.AddPoint(10, 20);
  }
  return graph;
}

TEST(AxisEdit, WhatIsGivenByHandStays) {
  struct Row {
    const char* what;
    void (*set)(AxisState&);
    bool AxisState::*goes_off;
  };
  const Row rows[] = {
      {"minimum", [](AxisState& a) { a.Min = -3; }, &AxisState::AutoSizing},
      {"maximum", [](AxisState& a) { a.Max = 33; }, &AxisState::AutoSizing},
      {"step",
       [](AxisState& a) {
         a.StepSize = 1;
         a.AutoSizing = false;  // else the range follows the step
       },
       &AxisState::AutoStepping},
      {"title", [](AxisState& a) { a.Title = "given"; }, &AxisState::EnableAutoTitle},
      {"decimals", [](AxisState& a) { a.LabelDecimals = 4; }, &AxisState::AdjustDecPlaces},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    TxyGraph graph;
    TAxis& axis = WithSeries(graph, {"a"}).Axis(AxisId::X);
    AxisState wanted = axis.State();
    row.set(wanted);
    ChangeAxis(axis, wanted);
    graph.UpdateScales();
    wanted.*row.goes_off = false;
    EXPECT_TRUE(axis.State() == wanted);
  }
}

TEST(AxisEdit, ScaleAndSwitchesFollowTheAxisOwnRules) {
  TxyGraph graph;
  TAxis& axis = WithSeries(graph, {"a"}).Axis(AxisId::Y);
  AxisState wanted = axis.State();
  wanted.LogScale = true;
  ChangeAxis(axis, wanted);
  EXPECT_EQ(axis.Min(), 0.1);
  EXPECT_EQ(axis.Max(), 100);
  wanted = axis.State();
  wanted.LogCycleDivisions = 9;
  ChangeAxis(axis, wanted);
  graph.UpdateScales();
  EXPECT_EQ(axis.LogCycleDivisions(), 9);
  EXPECT_FALSE(axis.AutoStepping());
  wanted = axis.State();
  wanted.Max = 1000;
  ChangeAxis(axis, wanted);
  wanted = axis.State();
  wanted.AutoSizing = true;
  ChangeAxis(axis, wanted);
  EXPECT_EQ(axis.Max(), 100);
  EXPECT_TRUE(axis.AutoStepping());
}

TEST(AxisEdit, TellsWhyAnAxisCannotBeDrawn) {
  struct Row {
    void (*set)(AxisState&);
    const char* why;  // how the sentence begins
  };
  const Row rows[] = {
      {[](AxisState&) {}, ""},
      {[](AxisState& a) { a.Min = a.Max; }, "The minimum"},
      {[](AxisState& a) { a.LogScale = true; }, "A logarithmic"},
      {[](AxisState& a) { a.LogScale = true, a.Min = 1e-300; }, ""},
      {[](AxisState& a) { a.StepSize = 0; }, "A step"},
      {[](AxisState& a) {
         a.StepSize = 0.02;
         a.AutoStepping = false;
       },
       ""},
      {[](AxisState& a) {
         a.StepSize = 0.019;
         a.AutoStepping = false;
       },
       "That would be more than 50 steps"},
      {[](AxisState& a) { a.StepSize = 0.019; }, ""},
      {[](AxisState& a) {
         a.StepSize = 0.019;
         a.AutoStepping = false;
         a.ShowAsTime = true;
       },
       ""},
  };
  for (const Row& row : rows) {
    AxisState axis;
    row.set(axis);
    const std::string why = AxisObjection(axis, {});
    EXPECT_EQ(why.empty(), *row.why == '\0') << why;
    EXPECT_TRUE(why.starts_with(row.why)) << why;
  }
}

TEST(SeriesEdit, AnotherOrderKeepsTheCurrentDataSet) {
  TxyGraph graph;
  WithSeries(graph, {"a", "b", "c"}).SetCurrentSeriesIndex(2);
  ReorderSeries(graph, std::array<std::size_t, 3>{2, 0, 1});
  EXPECT_EQ(graph.Series(0).SeriesName() + graph.Series(1).SeriesName(), "ca");
  EXPECT_EQ(graph.CurrentSeriesIndex(), 0);
  EXPECT_EQ(graph.GetAppearance().x_axis_series_index, 1);
}

}  // namespace
}  // namespace tarnwick
