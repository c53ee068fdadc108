#include "analysis/local_noise.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "analysis/smoothing.h"

namespace tarnwick {
namespace {

TEST(LocalNoise, IsThatOfTheScatterWhateverTheCurveAndItsX) {
  std::mt19937 random(1);
  std::normal_distribution<double> scatter(0, 0.25);
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 20'000; ++i) {
    x.push_back(i + 0.4 * std::sin(7.0 * i));
    y.push_back(50 * std::sin(x.back() / 400) + scatter(random));
  }
  EXPECT_NEAR(NoiseOf({x, y}), 0.25, 0.01);
  EXPECT_EQ(NoiseOf({std::span(x).first(2), std::span(y).first(2)}), 0);
}

/// Eight peaks of 3000 counts, 100 points wide, on 50 counts.
std::vector<double> Counts() {
  std::mt19937 random(5);
  std::vector<double> y;
  for (int i = 0; i < 16'000; ++i) {
    const double off = (i % 2000 - 1000) / 42.0;
    const double mean = 50 + 3000 * std::exp(-off * off / 2);
    y.push_back(std::poisson_distribution<int>(mean)(random));
  }
  return y;
}

/// Twelve lines of three points each, side by side; no noise but that of rounding.
std::vector<double> Lines() {
  std::mt19937 random(7);
  std::vector<double> y(1000);
  for (double& value : y) value = 1 + 0.01 * std::uniform_int_distribution<int>(0, 9)(random);
  for (std::size_t line = 0; line < 12; ++line) {
    const std::size_t top = 500 + 7 * line;
    y[top - 1] = y[top + 1] = 20;
    y[top] = 40;
  }
  return y;
}

std::vector<double> Smooth(std::vector<double> y) {
  std::vector<double> x(y.size());
  std::iota(x.begin(), x.end(), 0.0);
  return SmoothByPolynomials(x, y, {.window = 41, .order = 2}).y;
}

std::vector<double> Waves() {
  std::vector<double> y(8000);
  for (std::size_t i = 0; i < y.size(); ++i)
    y[i] = std::sin(static_cast<double>(i) / 160.0 * 2 * 3.14159265358979);
  return y;
}

struct PeaksRow {
  const char* name;
  std::vector<double> y;
  double error;  // of each point; NaN for none
  std::size_t peaks;
  bool neighbours_alike = false;
};

TEST(LocalNoise, FindsThePeaksThatAreThere) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const PeaksRow& row :
       {PeaksRow{"noise of counts on the peaks", Counts(), none, 8},
        PeaksRow{"neighbours made alike by smoothing", Smooth(Counts()), none, 8, true},
        PeaksRow{"errors above every peak", Counts(), 1000, 0},
        PeaksRow{"narrow lines side by side", Lines(), none, 12},
        PeaksRow{"a curve without noise", Waves(), none, 50}}) {
    SCOPED_TRACE(row.name);
    std::vector<double> x(row.y.size());
    std::iota(x.begin(), x.end(), 0.0);
    const std::vector<double> errors(x.size(), row.error);
    const PeakCurve curve{x, row.y};
    const LocalNoise noise(curve, errors);
    EXPECT_EQ(SummitsAbove(curve, noise, 8).size(), row.peaks);
    EXPECT_EQ(noise.Lag() > 1, row.neighbours_alike);
  }
}

}  // namespace
}  // namespace tarnwick
