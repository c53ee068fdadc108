// Regressions over random points, compared with what their definitions say in other words.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "base/quantile.h"
#include "base/undefined.h"
#include "data/points/point_chain.h"
#include "data/regression/regression.h"

namespace tarnwick {
namespace {

struct Sample {
  std::vector<double> x, y;
};

Sample RandomSample(std::size_t count, std::mt19937& random) {
  std::uniform_real_distribution<double> any(-3, 7);
  Sample sample;
  for (std::size_t i = 0; i < count; ++i) sample.x.push_back(any(random));
  std::ranges::sort(sample.x);
  for (const double x : sample.x) sample.y.push_back(2 - x + 0.3 * x * x + any(random));
  return sample;
}

/// The points, and among them some that take no part.
PointChain ChainOf(const Sample& sample) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  PointChain chain;
  std::int32_t id = 1;
  for (std::size_t i = 0; i < sample.x.size(); ++i) {
    chain.Append(id++, sample.x[i], sample.y[i]);
    if (i % 4 == 1) chain.Append(id++, sample.x[i], i % 8 == 1 ? kUndefined : kInfinite);
  }
  return chain;
}

double Squares(const Sample& sample, const auto& curve) {
  double sum = 0;
  for (std::size_t i = 0; i < sample.x.size(); ++i) {
    const double residual = sample.y[i] - curve(sample.x[i]);
    sum += residual * residual;
  }
  return sum;
}

TEST(RegressionByHand, LeastSquaresLeaveResidualsWithoutSlope) {
  std::mt19937 random(17);
  for (const std::size_t count : {3u, 4u, 5u, 9u, 40u}) {
    const Sample sample = RandomSample(count, random);
    const PointChain chain = ChainOf(sample);
    for (const bool parabola : {false, true}) {
      const Quadratic fit = parabola ? FitParabola(chain) : FitLine(chain);
      std::array<double, 3> moments = {};
      for (std::size_t i = 0; i < count; ++i) {
        const double residual = sample.y[i] - fit(sample.x[i]);
        for (std::size_t power = 0; power < 3; ++power) {
          moments[power] += residual * std::pow(sample.x[i], static_cast<double>(power));
        }
      }
      EXPECT_NEAR(moments[0], 0, 1e-9) << count;
      EXPECT_NEAR(moments[1], 0, 1e-9) << count;
      if (parabola) {
        EXPECT_NEAR(moments[2], 0, 1e-8) << count;
      } else {
        EXPECT_EQ(fit.a, 0);
      }
    }
    EXPECT_LE(Squares(sample, FitParabola(chain)), Squares(sample, FitLine(chain)) + 1e-9);
  }
}

TEST(RegressionByHand, FewPointsHaveTheCurveTheyCanHave) {
  const auto fit = [](const Sample& sample) {
    const PointChain chain = ChainOf(sample);
    return std::array{FitLine(chain), FitParabola(chain), FitRobustLine(chain)};
  };
  for (const Quadratic& none : fit({})) EXPECT_TRUE(std::isnan(none(1)));
  for (const Quadratic& one : fit({{4}, {7}})) EXPECT_DOUBLE_EQ(one(-9), 7);
  for (const Quadratic& two : fit({{1, 3}, {5, 9}})) EXPECT_NEAR(two(10), 23, 1e-9);
  const auto same_x = fit({{2, 2, 2}, {1, 2, 9}});
  EXPECT_DOUBLE_EQ(same_x[0](5), 4);
  EXPECT_DOUBLE_EQ(same_x[1](5), 4);
  EXPECT_DOUBLE_EQ(same_x[2](5), 2) << "the median";
  const auto twice = fit({{1, 1, 3}, {4, 6, 9}});
  EXPECT_NEAR(twice[1](2), 7, 1e-9) << "two different X have no curvature";
  EXPECT_NEAR(fit({{0, 1, 2}, {1, 0, 3}})[1](3), 10, 1e-9);
}

/// Medians of the residuals in the outer thirds, right less left.
double DifferenceOfThirds(const Sample& sample, const Quadratic& line) {
  const std::size_t third = std::max<std::size_t>(1, sample.x.size() / 3);
  std::vector<double> left, right;
  for (std::size_t i = 0; i < third; ++i) {
    const std::size_t other = sample.x.size() - third + i;
    left.push_back(sample.y[i] - line(sample.x[i]));
    right.push_back(sample.y[other] - line(sample.x[other]));
  }
  return MedianOf(right) - MedianOf(left);
}

TEST(RegressionByHand, TheResistantLineBalancesTheOuterThirds) {
  std::mt19937 random(23);
  for (std::size_t count = 2; count < 60; ++count) {
    Sample sample = RandomSample(count, random);
    if (count > 12) sample.y[random() % count] += 1e4;
    const Quadratic line = FitRobustLine(ChainOf(sample));
    EXPECT_NEAR(DifferenceOfThirds(sample, line), 0, 1e-9) << count;
    std::vector<double> residuals;
    for (std::size_t i = 0; i < count; ++i) residuals.push_back(sample.y[i] - line(sample.x[i]));
    EXPECT_NEAR(MedianOf(residuals), 0, 1e-9) << count;
    EXPECT_LT(std::abs(line.b), 1000) << "a wild point does not turn it";
  }
}

std::vector<double> RegressionOf(const PointChain& chain) {
  std::vector<double> values;
  for (std::size_t i = 0; i < chain.Size(); ++i) values.push_back(chain.At(i).regression);
  return values;
}

TEST(RegressionByHand, SmoothersFollowTheirSums) {
  std::mt19937 random(29);
  for (const std::size_t count : {1u, 2u, 3u, 7u, 30u}) {
    const Sample sample = RandomSample(count, random);
    PointChain chain;
    for (std::size_t i = 0; i < count; ++i) {
      chain.Append(static_cast<std::int32_t>(i) + 1, sample.x[i], sample.y[i]);
    }
    SmoothExponentially(chain, 0.3);
    double value = sample.y[0];
    for (std::size_t i = 0; i < count; ++i) {
      if (i > 0) value = 0.3 * sample.y[i] + 0.7 * value;
      EXPECT_NEAR(RegressionOf(chain)[i], value, 1e-12) << i;
    }
    for (const double alpha : {0.5, 0.34, 0.33, 0.2}) {
      AverageRunning(chain, alpha);
      const auto window = static_cast<std::size_t>(1 / alpha);
      for (std::size_t i = 0; i < count; ++i) {
        double sum = 0;
        const std::size_t from = i + 1 > window ? i + 1 - window : 0;
        for (std::size_t k = from; k <= i; ++k) sum += sample.y[k];
        EXPECT_NEAR(RegressionOf(chain)[i], sum / static_cast<double>(i + 1 - from), 1e-12) << i;
      }
    }
    const CurveSampling sampling{sample.x.front() - 1, sample.x.back() + 1, 20};
    const PointChain curve = SmoothedCurve(chain, sampling);
    const std::vector<double> at = sampling.Abscissae();
    ASSERT_EQ(curve.Size(), at.size());
    const double h = sampling.Step();
    for (std::size_t i = 0; i < at.size(); ++i) {
      double weights = 0, sum = 0;
      for (std::size_t k = 0; k < count; ++k) {
        const double u = (at[i] - sample.x[k]) / h;
        const double weight = std::exp(-0.5 * u * u);
        weights += weight;
        sum += weight * sample.y[k];
      }
      EXPECT_EQ(curve.At(i).x, at[i]);
      // Far points are left out, which tells where all weights are tiny.
      if (weights > 1e-3) {
        EXPECT_NEAR(curve.At(i).y, sum / weights, 1e-4 * (1 + std::abs(sum / weights)));
      }
    }
  }
}

TEST(RegressionByHand, SamplingsReachBothEnds) {
  const CurveSampling sampling{1, 3, 4};
  EXPECT_EQ(sampling.Step(), 0.5);
  EXPECT_EQ(sampling.Abscissae(), (std::vector<double>{1, 1.5, 2, 2.5, 3}));
  EXPECT_EQ((CurveSampling{0, 0.3, 3}.Abscissae().size()), 4u) << "rounding costs no last one";
  for (const CurveSampling& none :
       {CurveSampling{1, 3, 0}, CurveSampling{3, 1, 4}, CurveSampling{1, 1, 4},
        CurveSampling{kUndefined, 1, 4}, CurveSampling{1, 3, -4}}) {
    EXPECT_TRUE(none.Abscissae().empty());
  }
  EXPECT_EQ(CurveSampling::MostSteps(0), 10000);
  EXPECT_EQ(CurveSampling::MostSteps(100), 11000);
  EXPECT_EQ(CurveSampling::MostSteps(99000), 1000000);
  EXPECT_EQ(CurveSampling::MostSteps(98999), 999990);
  EXPECT_EQ(CurveSampling::MostSteps(1000000000), 1000000);
}

}  // namespace
}  // namespace tarnwick
