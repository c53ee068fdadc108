// The axis itself: setters and their side effects, rescaling, pixels, stored fields.
#include "graph/axes/axis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <variant>
#include <vector>

#include "base/day_number.h"
#include "base/error.h"
#include "base/undefined.h"
#include "graph/axes/axis_fields.h"
#include "graph/axes/tick_label.h"

namespace tarnwick {
namespace {

class FakeGraph : public AxisOwner {
 public:
  void AxisChanged() override { ++redraws; }
  void AxisRangeChanged() override { ++rescales; }
  bool AxisInUse(AxisId) const override { return in_use; }
  std::int32_t MinSteps() const override { return 5; }
  std::int32_t MaxSteps() const override { return 50; }
  int PixelLength(AxisId axis) const override { return axis == AxisId::X ? 400 : 200; }
  int PixelOrigin(AxisId axis) const override { return axis == AxisId::X ? 40 : 30; }
  double CurrentDay() const override { return 45000.5; }

  bool in_use = true;
  int redraws = 0;
  int rescales = 0;
};

class AxisTest : public ::testing::Test {
 protected:
  void SetRange(double min, double max) {
    AxisState state = axis.State();
    state.Min = min;
    state.Max = max;
    axis.SetState(state);
  }
  void ExpectRange(double min, double max) {
    EXPECT_DOUBLE_EQ(axis.Min(), min);
    EXPECT_DOUBLE_EQ(axis.Max(), max);
  }

  FakeGraph graph;
  TAxis axis{graph, AxisId::X};
  TAxis y{graph, AxisId::Y};
};

TEST_F(AxisTest, TodayIsTheDayOfTheClock) {
  const std::time_t now = std::time(nullptr);  // seconds since day 25569
  std::tm local{};
  localtime_r(&now, &local);
  const double day = 25569 + static_cast<double>(now + local.tm_gmtoff) / 86400;
  EXPECT_NEAR(graph.AxisOwner::CurrentDay(), day, 10.0 / 86400);
}

TEST_F(AxisTest, BoundsSwitchAutoSizingOff) {
  axis.SetMin(0);
  EXPECT_FALSE(axis.AutoSizing());
  EXPECT_EQ(graph.rescales, 0) << "an equal value is ignored";
  axis.SetMin(-3);
  axis.SetMax(kUndefined);
  EXPECT_EQ(graph.rescales, 1);
  ExpectRange(-3, 1);
  EXPECT_EQ(axis.State().oMin, 0) << "only a time axis without data passes its bounds on";
  axis.SetStepSize(0.5);
  EXPECT_FALSE(axis.AutoStepping());
  axis.SetAutoSizing(true);
  EXPECT_TRUE(axis.AutoStepping());
}

TEST_F(AxisTest, BoundsOfAnEmptyTimeAxisStandForItsData) {
  graph.in_use = false;
  axis.SetShowAsTime(true);
  axis.SetMin(40000);
  axis.SetMax(40010);
  EXPECT_EQ(axis.State().oMin, 40000);
  EXPECT_EQ(axis.State().oMax, 40010);
  axis.UpdateScale();
  ExpectRange(40000, 40010);
}

TEST_F(AxisTest, LogScaleNeedsARangeAboveZero) {
  struct Row {
    double min, max, min_after, max_after;
  };
  for (const Row& row :
       {Row{0, 50, 0.05, 50}, Row{0, 0, 0.01, 10}, Row{-5, -1, 0.01, 10}, Row{2, 50, 2, 50}}) {
    SetRange(row.min, row.max);
    axis.SetLogScale(true);
    ExpectRange(row.min_after, row.max_after);
  }
}

TEST_F(AxisTest, FitsItsDataOnlyWhenAutomatic) {
  axis.SetDataExtremes(0.13, 0.87);
  EXPECT_TRUE(axis.UpdateScale());
  ExpectRange(0, 0.9);
  EXPECT_EQ(axis.StepSize(), 0.1);
  EXPECT_EQ(axis.Look().LabelDecimals, 1);
  axis.SetDataExtremes(130, 870);
  axis.UpdateScale();
  EXPECT_EQ(axis.Look().LabelDecimals, 0);
  axis.SetAutoSizing(false);
  axis.SetDataExtremes(5, 6);
  EXPECT_FALSE(axis.UpdateScale());
  ExpectRange(0, 900);
}

TEST_F(AxisTest, WidensToTheSmallestRange) {
  axis.SetMinScaleLength(10);
  axis.SetDataExtremes(100.5, 101);
  axis.UpdateScale();
  EXPECT_EQ(axis.State().oMax, 110.5);
  ExpectRange(100, 112);
}

TEST_F(AxisTest, LeavesWhatCannotBeFitted) {
  SetRange(1, 100);
  axis.SetLogScale(true);
  axis.SetDataExtremes(0, 7);
  EXPECT_FALSE(axis.UpdateScale());
  ExpectRange(1, 100);
  axis.SetLogScale(false);
  axis.SetDataExtremes(kUndefined, 7);
  EXPECT_FALSE(axis.UpdateScale());
  axis.SetDataExtremes(0, std::numeric_limits<double>::infinity());
  EXPECT_FALSE(axis.UpdateScale());
  ExpectRange(1, 100);
}

TEST_F(AxisTest, RepairsAManualRangeWithoutData) {
  graph.in_use = false;
  struct Row {
    bool log;
    double min, max, min_after, max_after;
  };
  constexpr Row kRows[] = {{true, 50, 2, 2, 50},
                           {true, -5, -1, 1, 10},
                           {true, 20, 0, 2, 20},
                           {false, -5, 20, -5, 20},
                           {false, 20, 5, 20, 5}};
  for (const Row& row : kRows) {
    AxisState state = axis.State();
    state.LogScale = row.log;
    state.Min = row.min;
    state.Max = row.max;
    axis.SetState(state);
    EXPECT_EQ(axis.UpdateScale(), row.min != row.min_after || row.max != row.max_after);
    ExpectRange(row.min_after, row.max_after);
  }
  axis.SetLogScale(false);
  axis.SetShowAsTime(true);
  axis.SetDateTickType(DateTickType::Day);
  EXPECT_TRUE(axis.UpdateScale());
  ExpectRange(44995.5, 45000.5);
  axis.SetDateTickType(DateTickType::Hour);
  EXPECT_TRUE(axis.UpdateScale());
  ExpectRange(45000.5 - 5.0 / 24, 45000.5);
}

TEST_F(AxisTest, TimeAxisStepsByItsUnit) {
  axis.SetShowAsTime(true);
  axis.SetDateTickType(DateTickType::TwoMonths);
  axis.SetDataExtremes(*ParseDay("2024-02-10"), *ParseDay("2024-09-03"));
  axis.UpdateScale();
  EXPECT_EQ(axis.StepSize(), 61);
  ExpectRange(*ParseDay("2024-01-01"), *ParseDay("2024-11-01"));
  axis.SetDataExtremes(0.2, 0.75);
  axis.UpdateScale();
  ExpectRange(*ParseDay("2024-01-01"), *ParseDay("2024-11-01"));
  axis.SetDateTickType(DateTickType::Automatic);
  axis.UpdateScale();
  ExpectRange(0.1, 0.8);
}

TEST_F(AxisTest, ReportsARangeThatCannotBeDrawn) {
  struct Row {
    bool log;
    double min, max;
  };
  for (const Row& row :
       {Row{false, 5, 4}, Row{false, 5, 5}, Row{false, kUndefined, 4}, Row{true, 0, 4}}) {
    AxisState state = axis.State();
    state.LogScale = row.log;
    state.Min = row.min;
    state.Max = row.max;
    axis.SetState(state);
    try {
      axis.CalcScale();
      ADD_FAILURE() << row.min;
    } catch (const Error& error) {
      EXPECT_STREQ(error.what(), "X axisAxis MIN exceeds axis MAX");
    }
  }
}

TEST_F(AxisTest, MapsValuesToPixels) {
  struct Row {
    AxisId id;
    bool log;
    double value;
    int pixel;
    double position;
  };
  // X spans 400 pixels from 40, Y 200 pixels from 30; the axes run from 1 to 101 or, in decades, from 1 to 100.
  constexpr Row kRows[] = {
      {AxisId::X, false, 1, 40, 40},           {AxisId::X, false, 26.1, 140, 140.4},
      {AxisId::X, false, 1e9, 20040, 20040},   {AxisId::X, false, -1e9, -19960, -19960},
      {AxisId::X, true, 10, 240, 240},         {AxisId::X, true, 0, -19959, kUndefined},
      {AxisId::Y, false, 101, 30, 30},         {AxisId::Y, false, 50.8, 130, 130.4},
      {AxisId::Y, false, -1e9, -19970, 20030}, {AxisId::Y, false, 1e9, 20030, -19970},
      {AxisId::Y, true, 10, 130, 130},         {AxisId::Y, true, -3, 20029, kUndefined},
      {AxisId::Y, true, 1e300, 20030, -19970}, {AxisId::X, false, kUndefined, -19959, kUndefined}};
  for (const Row& row : kRows) {
    TAxis& tested = row.id == AxisId::X ? axis : y;
    AxisState state = tested.State();
    state.LogScale = row.log;
    state.Min = 1;
    state.Max = row.log ? 100 : 101;
    tested.SetState(state);
    tested.CalcScale();
    EXPECT_EQ(tested.Scale().PixelOf(row.value), row.pixel) << row.value;
    EXPECT_EQ(IsUndefined(tested.Scale().Position(row.value)), IsUndefined(row.position));
    if (IsUndefined(row.position)) continue;
    EXPECT_NEAR(tested.Scale().Position(row.value), row.position, 1e-9) << row.value;
    if (std::abs(row.value) > 1e6) continue;
    EXPECT_NEAR(tested.Scale().ValueAt(row.position), row.value, 1e-9);
  }
}

TEST_F(AxisTest, DrawsOrRefusesAnyStoredState) {
  constexpr double kAny[] = {0,    -1,      1,     1e300, -1e308,     1.7e308, 5e-324,
                             0.01, 45000.3, 2.9e6, 7,     kUndefined, HUGE_VAL};
  constexpr std::int32_t kIntegers[] = {std::numeric_limits<std::int32_t>::min(), 0, 3,
                                        std::numeric_limits<std::int32_t>::max()};
  std::mt19937 engine{3};
  int drawn = 0;
  for (int i = 0; i < 20000; ++i) {
    AxisState state;
    for (const Field<AxisState>& field : AxisFields()) {
      FieldValue value = GetField(field, state);
      if (auto* number = std::get_if<double>(&value)) *number = kAny[engine() % std::size(kAny)];
      if (auto* flag = std::get_if<bool>(&value)) *flag = engine() % 2 == 0;
      if (auto* integer = std::get_if<std::int32_t>(&value)) {
        *integer = engine() % 2 == 0 ? kIntegers[engine() % 4] : static_cast<int>(engine() % 13);
      }
      SetField(field, state, value);
    }
    axis.SetState(state);
    axis.SetDataExtremes(kAny[engine() % std::size(kAny)], kAny[engine() % std::size(kAny)]);
    graph.in_use = engine() % 4 != 0;
    try {
      axis.UpdateScale();
      axis.CalcScale();
    } catch (const Error&) {
      continue;
    }
    ++drawn;
    const std::vector<Tick> ticks = axis.Ticks();
    ASSERT_LE(ticks.size(), 500U) << i;
    ASSERT_EQ(CompactLabels(axis.State(), ticks).labels.size(), ticks.size());
    ASSERT_FALSE(std::isnan(axis.Scale().Position(axis.Max()))) << i;
  }
  EXPECT_GT(drawn, 5000);
}

TEST_F(AxisTest, StoredNumbersBeyondTheirChoicesBecomeTheLastOne) {
  AxisState state;
  SetField(*FindField<AxisState>(AxisFields(), 15, state), state, FieldValue{std::int32_t{2}});
  EXPECT_EQ(state.Offset_type, OffsetType::Percent);
  SetField(*FindField<AxisState>(AxisFields(), 15, state), state, FieldValue{std::int32_t{77}});
  EXPECT_EQ(state.Offset_type, OffsetType::OtherMin);
  SetField(*FindField<AxisState>(AxisFields(), 4, state), state, FieldValue{std::int32_t{400}});
  EXPECT_EQ(state.LogCycleDivisions, 9);
  SetField(*FindField<AxisState>(AxisFields(), 12, state), state, FieldValue{std::int32_t{13}});
  EXPECT_EQ(state.TickType, DateTickType::Minute);
}

TEST_F(AxisTest, CrossesTheOtherAxisByItsOffset) {
  AxisState other;
  other.Min = 10;
  other.Max = 30;
  AxisState crossing;
  crossing.Offset = 25;
  const double expected[] = {10, 30, 15, 25};
  for (int type = 0; type < 4; ++type) {
    crossing.Offset_type = static_cast<OffsetType>(type);
    EXPECT_EQ(CrossingValue(crossing, other), expected[type]);
  }
}

}  // namespace
}  // namespace tarnwick
