#include "graph/axes/axis_labels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tarnwick {
namespace {

struct Kept {
  AxisState axis;
  std::vector<int> strides;
  int stride;
  std::vector<double> values;
};

AxisState TimeAxis(DateTickType type, double min, double max) {
  AxisState axis;
  axis.ShowAsTime = true, axis.TickType = type;
  axis.Min = min, axis.Max = max;
  axis.DateTimeFormat = "yyyy-mm-dd hh:nn";
  return axis;
}

TEST(AxisLabels, EveryStrideKeepsRoundOnes) {
  AxisState linear;
  linear.Min = -0.3, linear.Max = 0.5, linear.StepSize = 0.1;
  AxisState far = linear;
  far.Min = 1e6 + 7e-6, far.Max = 1e6 + 2.1e-5, far.StepSize = 1e-6;
  AxisState decades;
  decades.LogScale = true, decades.Min = 1e-3, decades.Max = 999, decades.LogCycleDivisions = 0;
  const std::vector<int> decimal{1, 2, 5, 10, 20, 50, 100, 200};
  const Kept rows[] = {
      {linear, decimal, 1, {-0.3, -0.2, -0.1, 0, 0.1, 0.2, 0.3, 0.4, 0.5}},
      {linear, decimal, 2, {-0.2, 0, 0.2, 0.4}},
      {linear, decimal, 5, {0, 0.5}},
      {far, decimal, 5, {1e6 + 1e-5, 1e6 + 1.5e-5, 1e6 + 2e-5}},
      {TimeAxis(DateTickType::Hour, 45000.0 + 5 / 24.0, 45001),
       {1, 2, 3, 6, 12, 24, 48, 120, 240},
       6,
       {45000.25, 45000.5, 45000.75, 45001}},
      {TimeAxis(DateTickType::HalfHour, 45000.2, 45000.6),
       {1, 2, 4, 6, 12, 24, 48, 96},
       12,
       {45000.25, 45000.5}},
      {TimeAxis(DateTickType::Day, 45000, 45006), decimal, 2, {45000, 45002, 45004, 45006}},
      {TimeAxis(DateTickType::Month, 44927, 45291),
       {1, 2, 3, 6, 12, 24, 60, 120, 240},
       6,
       {44927, 45108}},
      {TimeAxis(DateTickType::Quarter, 44562, 45291), {1, 2, 4, 8, 20, 40, 80}, 4, {44562, 44927}},
  };
  for (const Kept& row : rows) {
    const std::vector<Tick> ticks = MakeTicks(row.axis, {});
    const std::span<const int> strides = LabelStrides(row.axis, ticks);
    EXPECT_EQ(std::vector<int>(strides.begin(), strides.end()), row.strides) << row.axis.Min;
    std::vector<double> values;
    for (const std::size_t i : KeptTicks(row.axis, ticks, row.stride))
      values.push_back(std::round(ticks[i].value * 1e6) / 1e6);
    EXPECT_EQ(values, row.values) << row.axis.Min << ' ' << row.stride;
  }
}

TEST(AxisLabels, WhatAllHaveInCommonStandsOnce) {
  struct Row {
    double min, max, step;
    const char* labels;  // the first and the last
    const char* common;
  };
  for (const Row& row : {Row{1e9, 1e9 + 50, 10, "0 50", "+1000000000"},
                         Row{1e9 - 1, 1e9 + 6, 1, "\u22121 6", "+1000000000"},
                         Row{-2000007, -2000003, 1, "\u22127 \u22123", "\u22122000000"},
                         Row{1e15, 1e15 + 8, 2, "0 8", "+1000000000000000"},
                         Row{123456.78, 123456.79, 0.002, "0.000 0.010", "+123456.78"},
                         Row{1e9, 1e9 + 1e-4, 2e-5, "0 100", "+1000000000  \u00d710^\u22126"},
                         Row{1e6, 1e6 + 1e4, 2000, "1.000 1.010", "\u00d710^6"},
                         Row{2000, 2024, 4, "2000 2024", ""}}) {
    AxisState axis;
    axis.LabelDecimals = 0, axis.Min = row.min, axis.Max = row.max, axis.StepSize = row.step;
    const LabelSet set = LabelSets(axis, MakeTicks(axis, {})).front();
    EXPECT_EQ((set.texts.front().text + ' ' + set.texts.back().text).toStdString(), row.labels);
    const QString raised = set.common.superscript.isEmpty() ? "" : '^' + set.common.superscript;
    EXPECT_EQ((set.common.text + raised).toStdString(), row.common) << row.labels;
  }
  struct Dated {
    double days;  // from noon of 31 December 2023 on
    const char* format;
    const char* common;
  };
  for (const Dated& row :
       {Dated{0.4, "hh:nn", "2023-12-31"}, Dated{0.5, "hh:nn", "2023-12-31"},
        Dated{0.6, "hh:nn", "2023-12-31 \u2013 2024-01-01"}, Dated{3, "dd-mmm", "2023\u20132024"},
        Dated{9, "ddd", "2024-01-01 \u2013 2024-01-08"}, Dated{9, "yyyy-mm-dd", ""},
        Dated{9, "d.m.yy", ""}}) {
    AxisState axis = TimeAxis(DateTickType::Hour, 45291.5, 45291.5 + row.days);
    axis.DateTimeFormat = row.format;
    EXPECT_EQ(LabelSets(axis, MakeTicks(axis, {})).front().common.text.toStdString(), row.common);
  }
}

TEST(AxisLabels, MinorTicksDivideAStepWithoutNewDigits) {
  struct Row {
    double step;
    int most, parts;
  };
  for (const Row& row : {Row{1, 9, 5}, Row{1, 5, 5}, Row{1, 4, 2}, Row{1, 2, 2}, Row{1, 1, 1},
                         Row{0.2, 4, 4}, Row{2e5, 3, 2}, Row{40, 9, 4}, Row{0.5, 5, 5},
                         Row{50, 4, 1}, Row{3, 9, 1}, Row{0, 9, 1}, Row{HUGE_VAL, 9, 1}}) {
    EXPECT_EQ(MinorParts(row.step, row.most), row.parts) << row.step << ' ' << row.most;
  }
}

}  // namespace
}  // namespace tarnwick
