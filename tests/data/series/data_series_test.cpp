#include "data/series/data_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

enum class Repeats { Overwrite, Keep };

struct PlacedPoint {
  std::int32_t id;
  double x;
  double y;
  bool operator==(const PlacedPoint&) const = default;
};

void PrintTo(const PlacedPoint& point, std::ostream* out) {
  *out << point.id << ": (" << point.x << ", " << point.y << ")";
}

std::vector<PlacedPoint> PointsOf(const TDataSeries& series) {
  std::vector<PlacedPoint> points;
  for (std::size_t i = 0; i < series.Points().Size(); ++i) {
    const Point point = series.Points().At(i);
    points.push_back({point.id, point.x, point.y});
  }
  return points;
}

// Collects the codes that a DataSet raises.
class Codes {
 public:
  explicit Codes(TDataSeries& series) : series_(series) {
    series.Listeners().Set(
        kKey, [this](TDataSeries&, ChangeCode code) { seen_.push_back(static_cast<int>(code)); });
  }
  ~Codes() { series_.Listeners().Remove(kKey); }
  std::vector<int> Take() { return std::exchange(seen_, {}); }

 private:
  static constexpr int kKey = 77;
  TDataSeries& series_;
  std::vector<int> seen_;
};

void ExpectPlaced(const char* name, double tolerance, Repeats repeats,
                  const std::vector<std::pair<double, double>>& added,
                  const std::vector<PlacedPoint>& expected) {
  TDataSeries series;
  series.SetNumericalTolerance(tolerance);
  series.SetDuplicatesAllowed(repeats == Repeats::Keep);
  for (const auto& [x, y] : added) {
    const std::int32_t count = series.AddPoint(x, y);
    EXPECT_EQ(count, series.PointCount()) << name;
  }
  EXPECT_THAT(PointsOf(series), ElementsAreArray(expected)) << name;
}

TEST(DataSeries, PlacesPointsByToleranceAndDuplicates) {
  using enum Repeats;
  ExpectPlaced("same X overwrites, the id stays", 0, Overwrite, {{1, 5}, {1, 7}}, {{1, 1, 7}});
  ExpectPlaced("same X kept behind the last", 0, Keep, {{1, 5}, {1, 7}, {1, 8}},
               {{1, 1, 5}, {2, 1, 7}, {3, 1, 8}});
  ExpectPlaced("same X kept before all of that X once a later one stands", 0, Keep,
               {{1, 5}, {1, 7}, {3, 0}, {1, 8}}, {{4, 1, 8}, {1, 1, 5}, {2, 1, 7}, {3, 3, 0}});
  ExpectPlaced("within the tolerance of the last", 0.1, Overwrite, {{2, 1}, {2.05, 2}},
               {{1, 2.05, 2}});
  ExpectPlaced("within the tolerance of an earlier one", 0.1, Overwrite,
               {{1, 1}, {2, 2}, {3, 3}, {1.95, 9}}, {{1, 1, 1}, {2, 1.95, 9}, {3, 3, 3}});
  ExpectPlaced("a tolerance does not disturb the order where duplicates stay", 0.5, Keep,
               {{1, 1}, {1.4, 2}, {3, 3}, {1.2, 4}},
               {{1, 1, 1}, {4, 1.2, 4}, {2, 1.4, 2}, {3, 3, 3}});
  ExpectPlaced("an undefined X has no place", 0, Overwrite, {{1, 1}, {kUndefined, 2}, {2, 3}},
               {{1, 1, 1}, {2, 2, 3}});
  ExpectPlaced("infinite X are ordered", 0, Overwrite,
               {{HUGE_VAL, 1}, {0, 2}, {-HUGE_VAL, 3}, {HUGE_VAL, 4}},
               {{3, -HUGE_VAL, 3}, {2, 0, 2}, {1, HUGE_VAL, 4}});
}

// Also over the borders of the pieces in which points are kept, and for X that are exactly one tolerance apart.
TEST(DataSeries, ForbiddenDuplicatesLeaveTheFirstOfThoseWithinTheTolerance) {
  std::mt19937 random(3);
  for (const double tolerance : {0.0, 0.25, 0.5}) {
    TDataSeries series;
    series.SetDuplicatesAllowed(true);
    series.SetNumericalTolerance(tolerance);
    std::vector<PlacedPoint> kept;
    double x = 0;
    for (int id = 1; id <= 20000; ++id) {
      x += 0.25 * static_cast<double>(random() % 4);
      series.AddPoint(x, id);
      if (kept.empty() || x - kept.back().x > tolerance)
        kept.push_back({id, x, static_cast<double>(id)});
    }
    series.SetDuplicatesAllowed(false);
    EXPECT_TRUE(PointsOf(series) == kept) << tolerance;
  }
}

// Two points at one place, wherever they stand among points of their own, are seen to be two.
TEST(DataSeries, ForbiddingDuplicatesSeesTheOnlyTwo) {
  for (const int count : {2, 3, 7, 600}) {
    for (const int first : {0, 1, count / 2, count - 3, count - 2}) {
      if (first < 0 || first > count - 2) continue;
      TDataSeries series;
      series.SetDuplicatesAllowed(true);
      for (int i = 0; i < count; ++i) series.AddPoint(i > first ? i - 1 : i, i);
      series.SetDuplicatesAllowed(false);
      EXPECT_EQ(series.PointCount(), static_cast<std::size_t>(count - 1)) << count << ' ' << first;
      EXPECT_EQ(series.Points().At(static_cast<std::size_t>(first)).y, first);
    }
  }
}

TEST(DataSeries, AnOverwriteWithAGrownToleranceKeepsTheOrder) {
  TDataSeries series;
  for (const double x : {1.0, 1.05, 1.07, 2.0}) series.AddPoint(x, x);
  series.SetNumericalTolerance(0.1);
  series.AddPoint(1.06, 9);
  EXPECT_THAT(PointsOf(series), ElementsAre(PlacedPoint{2, 1.05, 1.05}, PlacedPoint{1, 1.06, 9},
                                            PlacedPoint{3, 1.07, 1.07}, PlacedPoint{4, 2, 2}));
}

// Every way into the DataSet gives the same points, ids and extremes as one point after the other.
TEST(DataSeries, ABatchGivesWhatSinglePointsGive) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> fine(-3, 3);
  for (int round = 0; round < 300; ++round) {
    TDataSeries single;
    TDataSeries batch;
    const double tolerance = round % 5 == 4 ? 0.02 : 0;
    for (TDataSeries* series : {&single, &batch}) {
      series->SetDuplicatesAllowed(round % 2 == 0);
      series->SetAutoZero(round % 3 == 0);
      series->SetBaseLineSlope(round % 4 == 0 ? 0.5 : 0);
      if (tolerance != 0) series->SetNumericalTolerance(tolerance);
    }
    for (int part = 0; part < 3; ++part) {
      std::vector<double> x;
      std::vector<double> y;
      const std::size_t size = random() % (part == 1 ? 4000 : 30);
      for (std::size_t i = 0; i < size; ++i) {
        const double value = round % 7 == 0 ? fine(random)
                             : round % 7 == 1
                                 ? 1 + 1e-10 * fine(random)  // all but the last digits alike
                                 : std::round(50 * fine(random));
        x.push_back(random() % 40 == 0 ? kUndefined : value == 0 ? -0.0 : value);
        y.push_back(fine(random));
      }
      for (std::size_t i = 0; i < size; ++i) single.AddPoint(x[i], y[i]);
      batch.AddPoints(x, y);
    }
    ASSERT_EQ(PointsOf(batch), PointsOf(single)) << "round " << round;
    ASSERT_EQ(batch.State().id_counter, single.State().id_counter);
    ASSERT_EQ(batch.GetExtremes(), single.GetExtremes()) << "round " << round;
    ASSERT_EQ(batch.ZeroValue(), single.ZeroValue());
  }
}

TEST(DataSeries, ExtremesWidenByDoublesAndAreRecomputedInSinglePrecision) {
  TDataSeries series;
  series.AddPoint(1, 0.1);
  series.AddPoint(2, 0.3);
  EXPECT_EQ(series.GetExtremes(), (Extremes{1, 2, 0.1, 0.3}));
  series.AddPoint(2, 0.2);  // an overwrite never narrows
  EXPECT_EQ(series.GetExtremes().y_max, 0.3);
  series.ShiftX(0.1);
  EXPECT_EQ(series.GetExtremes(), (Extremes{1.1, 2.1, double{0.1F}, double{0.2F}}));
  series.SetBaseLineSlope(1);
  EXPECT_EQ(series.GetExtremes().y_min, double{static_cast<float>(0.2 - 2.1)});
  series.SetBaseLineSlope(0);
  series.AddPoint(3, 1e300);  // out of reach of single precision
  series.ShiftX(0);
  EXPECT_EQ(series.GetExtremes().y_max, 1e300);
  series.Clear();
  EXPECT_EQ(series.GetExtremes(), Extremes{});
  EXPECT_EQ(series.AddPoint(5, 6), 1);
  EXPECT_EQ(PointsOf(series).front().id, 1);
}

TEST(DataSeries, AutoZeroKeepsTheBaseLineAtTheSmallestY) {
  TDataSeries series;
  series.SetAutoZero(true);
  series.SetBaseLineSlope(3);
  series.AddPoint(1, 5);
  EXPECT_EQ(series.ZeroValue(), 5);
  EXPECT_EQ(series.BaseLineSlope(), 0);
  series.AddPoint(2, 4);
  series.AddPoint(3, kUndefined);
  EXPECT_EQ(series.ZeroValue(), 4);
  EXPECT_EQ(series.GetExtremes().y_max, 1);
  series.SetY(2, 7);
  series.SetY(1, 6);
  series.DeletePoint(2);
  EXPECT_EQ(series.ZeroValue(), 6);
  series.DeletePoint(3);
  EXPECT_EQ(series.GetBaseLine().CorrectedY(1, 6), 0);
}

TEST(DataSeries, SetYByIdRunsTheRestForAnUnknownId) {
  TDataSeries series;
  series.AddPoint(4, 1);
  series.SetBaseLineSlope(1);
  EXPECT_EQ(series.GetExtremes().y_max, -3);
  Codes codes(series);
  EXPECT_FALSE(series.SetY(9, 50));
  EXPECT_EQ(series.GetExtremes().y_max, 50);  // taken at X = 0
  EXPECT_THAT(codes.Take(), ElementsAre(1));
  EXPECT_TRUE(series.SetY(1, 2));
  EXPECT_EQ(GetY(series, 1), 2);
  EXPECT_EQ(GetY(series, 9), std::nullopt);
}

TEST(DataSeries, ForbiddingDuplicatesKeepsTheEarlierPoint) {
  TDataSeries series;
  series.SetDuplicatesAllowed(true);
  series.SetNumericalTolerance(0.1);
  for (const double x : {1.0, 1.05, 1.15, 2.0, 2.0}) series.AddPoint(x, 10 * x);
  Codes codes(series);
  series.SetDuplicatesAllowed(false);
  EXPECT_THAT(PointsOf(series), ElementsAre(PlacedPoint{1, 1, 10}, PlacedPoint{3, 1.15, 11.5},
                                            PlacedPoint{4, 2, 20}));
  EXPECT_THAT(codes.Take(), ElementsAre(1));
}

TEST(DataSeries, RaisesTheCodeOfEachChangeAndNoneWithoutAChange) {
  TDataSeries series;
  Codes codes(series);
  series.ShiftX(1);  // nothing to shift
  series.AddPoint(1, 2);
  series.AddPoint(kUndefined, 2);
  const double values[] = {3, 4};
  series.AddPoints(values, values);
  EXPECT_THAT(codes.Take(), ElementsAre(7, 7));
  series.SetZeroValue(0);
  series.SetZeroValue(1);
  series.SetBaseLineSlope(1);
  series.SetAutoZero(true);
  EXPECT_THAT(codes.Take(), ElementsAre(2, 2, 2));
  series.SetRegressionType(RegressionType::Line);
  series.SetRegressionSteps(5);
  series.SetRegressionAlpha(0.5);
  series.SetRegressionAlpha(0.5);
  EXPECT_THAT(codes.Take(), ElementsAre(4, 4, 4));
  series.Fit().SetExpression("x");
  series.Fit().SetExpression("x");
  EXPECT_THAT(codes.Take(), ElementsAre(5));
  series.ShiftX(1);
  series.ShiftX(kUndefined);
  EXPECT_TRUE(series.DeletePoint(1));
  EXPECT_FALSE(series.DeletePoint(1));
  series.Clear();
  EXPECT_THAT(codes.Take(), ElementsAre(1, 1, 1));
  series.BeginUpdate();
  series.BeginUpdate();
  series.AddPoint(1, 1);
  series.EndUpdate();
  EXPECT_THAT(codes.Take(), ElementsAre());
  series.EndUpdate();
  EXPECT_THAT(codes.Take(), ElementsAre(1));
}

TEST(DataSeries, ListenersAreCalledInOrderAndMayComeAndGoMeanwhile) {
  std::vector<std::string> calls;
  {
    TDataSeries series;
    const auto says = [&calls](const std::string& text) {
      return [&calls, text](TDataSeries&, ChangeCode) { calls.push_back(text); };
    };
    series.Listeners().Set(1, says("one"));
    series.Listeners().Set(2, says("two"));
    series.Listeners().Set(3, says("three"));
    series.Listeners().Set(2, [&](TDataSeries& self, ChangeCode) {
      calls.push_back("two leaves");
      self.Listeners().Remove(2);
      self.Listeners().Remove(3);
      self.Listeners().Set(4, says("four"));
    });
    series.AddPoint(1, 1);
    EXPECT_THAT(calls, ElementsAre("one", "two leaves"));
    series.AddPoint(2, 1);
    EXPECT_THAT(calls, ElementsAre("one", "two leaves", "one", "four"));
    calls.clear();
    series.Listeners().Set(1, [&calls](TDataSeries&, ChangeCode code) {
      calls.push_back(code == ChangeCode::Destroyed ? "destroyed" : "?");
    });
  }
  EXPECT_THAT(calls, ElementsAre("destroyed", "four"));
}

TEST(DataSeries, AModelsResultHoldsUntilPointsOrBaseLineChange) {
  struct Row {
    const char* name;
    void (*edit)(TDataSeries&);
    bool keeps;
  };
  const Row rows[] = {
      {"add", [](TDataSeries& s) { s.AddPoint(3, 1); }, false},
      {"batch", [](TDataSeries& s) { s.AddPoints(std::vector{3.0}, std::vector{1.0}); }, false},
      {"set", [](TDataSeries& s) { s.SetY(1, 7); }, false},
      {"delete", [](TDataSeries& s) { s.DeletePoint(1); }, false},
      {"shift", [](TDataSeries& s) { s.ShiftX(1); }, false},
      {"clear", [](TDataSeries& s) { s.Clear(); }, false},
      {"zero", [](TDataSeries& s) { s.SetZeroValue(1); }, false},
      {"slope", [](TDataSeries& s) { s.SetBaseLineSlope(1); }, false},
      {"steps", [](TDataSeries& s) { s.SetRegressionSteps(7); }, false},
      {"model", [](TDataSeries& s) { s.Fit().SetExpression("x"); }, false},
      {"name", [](TDataSeries& s) { s.SetSeriesName("x"); }, true},
      {"regression", [](TDataSeries& s) { s.SetRegressionType(RegressionType::Line); }, true},
      {"spline", [](TDataSeries& s) { s.SetRegressionType(RegressionType::Spline); }, false},
      {"status", [](TDataSeries& s) { s.Fit().SetStatus(FitStatus::cf_Function); }, true},
  };
  for (const Row& row : rows) {
    TDataSeries series;
    series.AddPoint(1, 2);
    series.AddPoint(2, 3);
    const auto result = std::make_shared<const FitResult>();
    series.Fit().SetResult(result);
    const DataState state = series.State();
    row.edit(series);
    EXPECT_EQ(series.Fit().Result() != nullptr, row.keeps) << row.name;
    EXPECT_EQ(series.Fit().Last().record->result, result) << row.name;
    EXPECT_FALSE(SameState(state, series.State())) << row.name;
    series.SetState(state);
    EXPECT_EQ(series.Fit().Result(), result) << row.name;
    EXPECT_TRUE(SameState(state, series.State())) << row.name;
  }
}

TEST(DataSeries, AStateBringsEverythingBack) {
  TDataSeries series;
  series.SetSeriesName("Decay");
  series.AddPoint(1, 2);
  const DataState state = series.State();
  series.AddPoint(2, 0.1);
  series.SetSeriesName("Other");
  EXPECT_FALSE(SameState(state, series.State()));
  Codes codes(series);
  series.SetState(state);
  EXPECT_THAT(codes.Take(), ElementsAre(1));
  EXPECT_TRUE(SameState(state, series.State()));
  EXPECT_EQ(series.SeriesName(), "Decay");
  EXPECT_EQ(series.GetExtremes(), (Extremes{1, 1, 2, 2}));
  series.AddPoint(3, 3);
  EXPECT_EQ(PointsOf(series).back().id, 2);
}

}  // namespace
}  // namespace tarnwick
