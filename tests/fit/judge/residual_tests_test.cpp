#include "fit/judge/residual_tests.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <Eigen/LU>
#include <Eigen/QR>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

#include "fit/judge/curve_swing.h"
#include "fit/judge/distributions.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/open_parameters.h"
#include "fit/judge/residual_pattern.h"
#include "fitted_model.h"

namespace tarnwick::testing {
namespace {

double Parabola(double x) {
  return x * x;
}
double Sine(double x) {
  return std::sin(2 * std::numbers::pi * x / 3.7);
}

/// What is found after a fit of a straight line to points from 0 to 10.
ResidualFindings AfterLine(const Points& points) {
  const auto model = MakeModel("a*x+b", {{"a", 1}, {"b", 0}});
  ModelResiduals residuals(*model, points.View());
  return TestResiduals(residuals.Sample(Fit(residuals).outcome.p, kPatternPoints));
}

struct Shape {
  const char* name;
  std::size_t points;
  double noise;
  std::function<double(double)> f;
  bool follows;
};

// A line, ten points and more: exact or noisy, the parabola has to be seen, and nothing where there is nothing.
const Shape kShapes[] = {
    {"ten points of an exact parabola", 10, 0, Parabola, true},
    {"five of them", 5, 0, Parabola, true},
    {"ten of a noisy one", 10, 3, Parabola, true},
    {"a sine of few points a period", 30, 0.5, Sine, true},
    {"a weak bend in many points", 5000, 20, Parabola, true},
    {"a line", 10, 1, [](double x) { return 2 * x; }, false},
    {"a line of many points", 5000, 1, [](double x) { return 2 * x; }, false},
    {"a line of four points", 4, 1, Parabola, false},
};

TEST(ResidualTests, SeesAShapeBesideTheModel) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.name);
    const ResidualFindings found = AfterLine(MakePoints(shape.points, 0, 10, shape.noise, shape.f));
    EXPECT_EQ(FollowsShape(found), shape.follows) << found.shape << " " << found.alike;
    EXPECT_FALSE(Alternates(found));
  }
}

// Waves that no polynomial of those tried goes along with, up to one of two points each half period.
TEST(ResidualTests, AWaveOfAnyPeriodIsAShape) {
  for (const int half_periods : {11, 14, 17, 20, 23, 26}) {
    const ResidualFindings found = AfterLine(MakePoints(30, 0, 10, 0.1, [=](double x) {
      return std::cos(half_periods * std::numbers::pi / 2 * (x / 5 - 1) + 0.7);
    }));
    EXPECT_LT(found.shape, 1e-6) << half_periods;
  }
}

TEST(ResidualTests, ChanceAloneIsHardlyEverFound) {
  int found = 0;
  constexpr int kFits = 2000;
  std::uint64_t state = 1;
  for (int fit = 0; fit < kFits; ++fit) {
    ResidualSample sample;
    const int n = 6 + fit % 25;
    sample.jacobian.resize(n, 2);
    for (int i = 0; i < n; ++i) {
      double sum = -6;  // of twelve uniform numbers: normal enough
      for (int j = 0; j < 12; ++j) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        sum += static_cast<double>(state >> 11) * 0x1p-53;
      }
      sample.x.push_back(i);
      sample.curve.push_back(2.0 * i);
      sample.residuals.push_back(sum);
      sample.jacobian.row(i) << 1, i;
    }
    const ResidualFindings one = TestResiduals(sample);
    found += FollowsShape(one) || Alternates(one) || OnePointBends(one);
  }
  EXPECT_LE(found, kFits / 100);
  EXPECT_GE(found, 1);
}

/// e'Ae / e'e, A one half beside the diagonal at a lag, with its mean and variance for e = M u from the traces of whole matrices
/// (Durbin & Watson 1950): tr(MA) / k and 2 (k tr(MAMA) - tr(MA)^2) / (k^2 (k+2)), k = tr(M).
struct Lagged {
  double value, mean, variance;
};
Lagged LaggedBy(int lag, const Eigen::VectorXd& e, const Eigen::MatrixXd& m) {
  Eigen::MatrixXd a = Eigen::MatrixXd::Zero(e.size(), e.size());
  a.diagonal(lag).setConstant(0.5);
  a.diagonal(-lag).setConstant(0.5);
  const Eigen::MatrixXd ma = m * a;
  const double k = m.trace();
  const double first = ma.trace();
  return {e.dot(a * e) / e.squaredNorm(), first / k,
          2 * (k * (ma * ma).trace() - first * first) / (k * k * (k + 2))};
}

TEST(ResidualTests, NeighboursAreJudgedByTheTracesOfTheModelsMatrix) {
  constexpr int kCount = 30;
  for (const double turn : {0.45, 0.9, 2.9}) {
    SCOPED_TRACE(turn);
    ResidualSample sample;
    sample.jacobian.resize(kCount, 3);
    Eigen::VectorXd e(kCount);
    for (int i = 0; i < kCount; ++i) {
      sample.x.push_back(i);
      sample.curve.push_back(i);
      sample.jacobian.row(i) << 1, i, std::sqrt(i + 1.0);
      e(i) = std::cos(turn * i) + std::cos(1234.5 * i * i);
    }
    const Eigen::MatrixXd& j = sample.jacobian;
    const Eigen::MatrixXd m = Eigen::MatrixXd::Identity(kCount, kCount) -
                              j * (j.transpose() * j).inverse() * j.transpose();
    e = m * e;
    sample.residuals.assign(e.begin(), e.end());
    const ResidualFindings found = TestResiduals(sample);
    double squares = 0;
    for (int lag = 1; lag <= kCount / 4; ++lag) {
      const Lagged one = LaggedBy(lag, e, m);
      squares += std::pow(one.value - one.mean, 2) / one.variance;
    }
    EXPECT_NEAR(found.lagged / ChiSquaredProbability(squares, kCount / 4), 1, 1e-6);
    const Lagged next = LaggedBy(1, e, m);
    const double limit = std::cos(std::numbers::pi / (kCount + 1));
    const bool alike = next.value > 0;
    const double chance = BoundedProbability(std::abs(next.value), limit,
                                             alike ? next.mean : -next.mean, next.variance);
    EXPECT_NEAR((alike ? found.alike : found.alternating) / chance, 1, 1e-6);
    EXPECT_EQ(alike ? found.alternating : found.alike, 1);
  }
}

// The share of two columns beside the model's in normal residuals has the tail (1 - share)^((k - 2) / 2), k the degrees of
// freedom: of two wavy residuals the greatest shares, from whole matrices, tell how much rarer one is.
TEST(ResidualTests, WavesAreJudgedByTheirShareBesideTheModel) {
  constexpr int kCount = 30, kFreedom = kCount - 3;
  const Eigen::VectorXd t = Eigen::VectorXd::LinSpaced(kCount, -1, 1);
  double shape[2], rest[2];
  for (const int which : {0, 1}) {
    ResidualSample sample;
    sample.jacobian.resize(kCount, 3);
    Eigen::VectorXd e(kCount);
    for (int i = 0; i < kCount; ++i) {
      sample.x.push_back(i);
      sample.curve.push_back(i);
      sample.jacobian.row(i) << 1, std::cos(1.5 * i), std::sqrt(i + 1.0);
      e(i) = std::cos((which == 0 ? 1.3 : 2.1) * i) + 0.4 * std::cos(1234.5 * i * i);
    }
    const Eigen::MatrixXd& j = sample.jacobian;
    const Eigen::MatrixXd m = Eigen::MatrixXd::Identity(kCount, kCount) -
                              j * (j.transpose() * j).inverse() * j.transpose();
    e = m * e;
    sample.residuals.assign(e.begin(), e.end());
    shape[which] = TestResiduals(sample).shape;
    rest[which] = 1;
    for (int half = 1; half < kCount - 1; ++half) {
      Eigen::MatrixXd wave(kCount, 2);
      wave << (half * std::numbers::pi / 2 * t.array()).cos(),
          (half * std::numbers::pi / 2 * t.array()).sin();
      wave = m * wave;
      const Eigen::VectorXd left = e - wave * wave.colPivHouseholderQr().solve(e);
      rest[which] = std::min(rest[which], left.squaredNorm() / e.squaredNorm());
    }
  }
  EXPECT_LT(std::max(shape[0], shape[1]), 0.1);
  EXPECT_NEAR(shape[0] / shape[1] / std::pow(rest[0] / rest[1], (kFreedom - 2) / 2.0), 1, 1e-6);
}

TEST(ResidualTests, NamesThePointThatStandsOut) {
  Points points = MakePoints(50, 0, 49, 1, [](double x) { return 2 * x; });
  points.y[3] += 30;
  const ResidualFindings found = AfterLine(points);
  EXPECT_TRUE(OnePointStandsOut(found));
  EXPECT_EQ(found.farthest.x, 3);
  EXPECT_GT(found.farthest.deviations, 12);
  EXPECT_TRUE(OnePointBends(found));
  points.y[3] -= 30;
  for (std::size_t i = 0; i < points.y.size(); ++i) points.y[i] += i % 2 == 0 ? 2 : -2;
  EXPECT_TRUE(Alternates(AfterLine(points)));
}

// Whether the values are in volts or in nanovolts, their errors grow threefold or not.
TEST(ResidualTests, FindTheSameInEveryUnit) {
  Points points = MakePoints(80, 0, 79, 1, [](double) { return 0.0; });
  for (std::size_t i = 0; i < points.y.size(); ++i)
    points.y[i] *= 1 + static_cast<double>(i * i) / 20;
  const auto in_unit = [&](double of_x, double of_y) {
    Points scaled = points;
    for (double& x : scaled.x) x *= of_x;
    for (double& y : scaled.y) y *= of_y;
    return AfterLine(scaled);
  };
  const ResidualFindings plain = in_unit(1, 1);
  EXPECT_TRUE(ScattersUnequally(plain));
  for (const double of_x : {0x1p-20, 1.0, 0x1p20}) {
    for (const double of_y : {0x1p-40, 0x1p40}) {
      const ResidualFindings found = in_unit(of_x, of_y);
      EXPECT_NEAR(found.shape / plain.shape, 1, 1e-6);
      EXPECT_NEAR(found.alike / plain.alike, 1, 1e-6);
      EXPECT_NEAR(found.unequal_scatter / plain.unequal_scatter, 1, 1e-6);
      EXPECT_NEAR(found.farthest.deviations / plain.farthest.deviations, 1, 1e-6);
      EXPECT_NEAR(found.farthest.chance / plain.farthest.chance, 1, 1e-6);
      EXPECT_EQ(found.farthest.x, of_x * plain.farthest.x);
    }
  }
}

// A spoiled point bends the line, so that the residuals of all grow towards it: that is no unequal scatter.
TEST(ResidualTests, OnePointIsNoUnequalScatter) {
  Points points = MakePoints(30, 0, 29, 1, [](double x) { return 2 * x; });
  points.y[29] += 30;
  EXPECT_TRUE(OnePointBends(AfterLine(points)));
  EXPECT_EQ(AfterLine(points).unequal_scatter, 1);
}

struct Wave {
  double period;
  bool free;
};

TEST(CurveSwing, FindsWavesAndPeaksThatNoPointHolds) {
  Points points = MakePoints(40, 0, 39, 0, [](double) { return 0.0; });
  for (const auto& [period, free] :
       {Wave{0.999, true}, Wave{1.9, true}, Wave{2.6, false}, Wave{4, false}, Wave{47, false}}) {
    SCOPED_TRACE(period);
    const auto model = MakeModel("sin(2*pi*x/P+0.3)", {{"P", period}});
    ModelResiduals residuals(*model, points.View());
    EXPECT_EQ(SwingsFreely(GreatestSwing(residuals, points.x, residuals.Start())), free);
  }
  const auto peak = MakeModel("exp(0-((x-10.5)/c)^2)", {{"c", 0.3}});
  ModelResiduals residuals(*peak, points.View());
  EXPECT_EQ(GreatestSwing(residuals, points.x, residuals.Start()).from, 10);
  EXPECT_TRUE(SwingsFreely(GreatestSwing(residuals, points.x, residuals.Start())));
  EXPECT_FALSE(SwingsFreely(GreatestSwing(residuals, points.x, std::vector<double>{1.5})));
}

// At even distances the frequencies f and 1 - f per point agree in every point, whatever phase and decay.
TEST(CurveSwing, OfTwoPeriodsThroughTheSamePointsTheShorterOutrunsThem) {
  for (int trial = 0; trial < 60; ++trial) {
    const int count = 8 + trial % 9;
    const Points points =
        MakePoints(static_cast<std::size_t>(count), 0, count - 1, 0, [](double) { return 0.0; });
    const double frequency = 0.3 + 0.19 * trial / 60;
    const auto model =
        MakeModel("exp(-x/9)*sin(2*pi*f*x+g)", {{"f", frequency}, {"g", 0.11 * trial}});
    ModelResiduals residuals(*model, points.View());
    const std::vector<double> slower = residuals.Start();
    const std::vector<double> faster = {1 - slower[0], std::numbers::pi - slower[1]};
    EXPECT_THAT(
        residuals.Curve(faster, points.x),
        ::testing::Pointwise(::testing::DoubleNear(1e-12), residuals.Curve(slower, points.x)));
    EXPECT_FALSE(OutrunsPoints(GreatestSwing(residuals, points.x, slower))) << trial;
    EXPECT_TRUE(OutrunsPoints(GreatestSwing(residuals, points.x, faster))) << trial;
    for (const std::size_t late : {0U, 3U}) {
      Points uneven = points;
      uneven.x[late] += 0.1;
      EXPECT_FALSE(OutrunsPoints(GreatestSwing(residuals, uneven.x, faster))) << late;
    }
  }
}

struct OpenRow {
  const char* expression;
  NamedValue parameter;
  double error;
  bool open;
};

// Of these errors the decay time says nothing, a place, an offset and a rate of zero do.
TEST(OpenParameters, AreThoseThatTheCurveDoesNotFollow) {
  const Points points = MakePoints(100, 0, 100, 1, [](double) { return 1.0; });
  for (const OpenRow& row :
       {OpenRow{"exp(-x/t)", {"t", 1e7}, 3e8, true}, OpenRow{"exp(-x/t)", {"t", 30}, 4, false},
        OpenRow{"exp(0-k*x)", {"k", 1e-4}, 3e-3, false},
        OpenRow{"exp(0-((x-b)/20)^2)", {"b", 0}, 0.5, false},
        OpenRow{"exp(-x/30)+c", {"c", 0}, 0.05, false},
        OpenRow{"x/(k+x)", {"k", 1e6}, 1e7, true}}) {
    SCOPED_TRACE(row.expression);
    const auto model = MakeModel(row.expression, {row.parameter});
    ModelResiduals residuals(*model, points.View());
    FitStatistics statistics;
    statistics.standard_errors = {row.error};
    statistics.determined_covariance = {row.error * row.error};
    const std::vector<double> values = residuals.Start();
    const ResidualSample sample = residuals.Sample(values, kPatternPoints);
    EXPECT_EQ(OpenParameters(residuals, values, statistics, sample).size(), row.open ? 1U : 0U);
  }
}

// Any decay time far below the distance of the points fits alike; of a place or an offset of 0 the error holds.
TEST(LimitParameters, AreThoseOfCurvesFasterThanThePoints) {
  const Points points = MakePoints(40, 0, 39, 0.1, [](double x) { return x < 1 ? 0.0 : 4.0; });
  for (const OpenRow& row :
       {OpenRow{"4*(1-exp(-x/t))", {"t", 0.03}, 7e9, true},
        OpenRow{"4/(1+exp((0.5-x)/w))", {"w", 0.03}, 0.7, true},
        OpenRow{"4*x^n/(0.5^n+x^n)", {"n", 300}, 4e11, true},
        OpenRow{"4*(1-exp(-x/t))", {"t", 0.25}, 0.08, true},
        OpenRow{"4*(1-exp(-x/t))", {"t", 1.5}, 0.2, false}, OpenRow{"4+c", {"c", 0}, 0.02, false},
        OpenRow{"4*exp(0-((x-b)/20)^2)", {"b", 0}, 0.2, false}}) {
    SCOPED_TRACE(row.expression);
    const auto model = MakeModel(row.expression, {row.parameter});
    ModelResiduals residuals(*model, points.View());
    FitStatistics statistics;
    statistics.standard_errors = {row.error};
    statistics.determined_covariance = {row.error * row.error};
    const std::vector<double> values = residuals.Start();
    const ResidualSample sample = residuals.Sample(values, kPatternPoints);
    EXPECT_EQ(LimitParameters(residuals, values, statistics, sample).size(), row.open ? 1U : 0U);
  }
}

// An amplitude that goes along hides from the curve that it does not follow the decay time at all.
TEST(OpenParameters, AreNotHeldByOthersThatGoAlong) {
  const Points points = MakePoints(100, 0, 100, 1, [](double) { return 1.0; });
  const auto model = MakeModel("a*exp(-x/t)", {{"a", 1}, {"t", 1e13}});
  ModelResiduals residuals(*model, points.View());
  const std::vector<double> values = residuals.Start();
  const FitFigures figures =
      ComputeFitFigures(residuals.Reduce(values, Reduction::Orthogonal), {.count = 100});
  const ResidualSample sample = residuals.Sample(values, kPatternPoints);
  EXPECT_EQ(OpenParameters(residuals, values, figures.statistics, sample), std::vector{1});
  // Without a derivative anywhere there is nothing to measure by.
  EXPECT_TRUE(TradedParameters(figures.statistics, values, {}).empty());
}

}  // namespace
}  // namespace tarnwick::testing
