// Sums over points as they stand in books, one product after the other, beside the ways that take less time.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "analysis/convolution.h"
#include "analysis/correlation.h"
#include "analysis/derived.h"
#include "analysis/fourier.h"
#include "analysis/histogram.h"
#include "analysis/interpolation.h"
#include "analysis/outliers.h"
#include "analysis/polynomial_line.h"
#include "analysis/resampling.h"
#include "analysis/sample_comparison.h"
#include "analysis/smoothing.h"
#include "base/error.h"
#include "base/number_text.h"
#include "support/told.h"

namespace tarnwick {
namespace {

using Numbers = std::vector<double>;
using Lines = std::vector<std::string>;

std::string Text(double number) {
  return GeneralText(std::abs(number) < 1e-11 ? 0 : number, 6);
}

std::string Texts(const Numbers& numbers) {
  std::string text;
  for (const double number : numbers) text += ' ' + Text(number);
  return text;
}

/// What `act` answers, or why it refuses.
std::string Answer(const std::function<std::string()>& act) {
  try {
    return act();
  } catch (const Error& error) {
    return std::string(" ! ") + error.what();
  }
}

/// `count` numbers between -1 and 1 that are the same in every run.
Numbers Draws(std::size_t count, std::uint64_t seed = 5) {
  Numbers draws;
  std::uint64_t state = seed;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    draws.push_back(static_cast<double>(state >> 11) * 0x1p-52 - 1);
  }
  return draws;
}

TEST(SecondWays, FourierTermsAreTheirSums) {
  for (std::size_t n = 1; n <= 70; n = n < 20 ? n + 1 : n + 7) {
    const Numbers y = Draws(n);
    const auto terms = FourierTerms(y);
    Numbers phase;
    for (std::size_t i = 0; i < n; ++i)
      phase.push_back(2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(n));
    const auto uneven = UnevenFourierTerms(phase, y, terms.size());
    ASSERT_EQ(terms.size(), n / 2 + 1);
    for (std::size_t k = 0; k < terms.size(); ++k) {
      std::complex<double> sum = 0;
      for (std::size_t i = 0; i < n; ++i)
        sum += y[i] * std::polar(1.0, -phase[i] * static_cast<double>(k));
      EXPECT_LT(std::abs(terms[k] - sum), 1e-11) << n << ' ' << k;
      EXPECT_LT(std::abs(uneven[k] - sum), 1e-9) << n << ' ' << k;
    }
  }
}

TEST(SecondWays, ProductsAtLagsAreTheirSums) {
  for (const std::size_t n : {1U, 2U, 3U, 7U, 16U, 33U}) {
    const Numbers a = Draws(n), b = Draws(n, 9);
    const Numbers products = LaggedProducts(a, b, n);
    const Numbers sums = Correlation(a, b, n - 1, CorrelationOf::Sum);
    ASSERT_EQ(sums.size(), 2 * n - 1);
    for (std::size_t lag = 0; lag < n; ++lag) {
      double later = 0, earlier = 0;
      for (std::size_t i = 0; i + lag < n; ++i) {
        later += a[i] * b[i + lag];
        earlier += a[i + lag] * b[i];
      }
      EXPECT_NEAR(products[lag], later, 1e-12) << n << ' ' << lag;
      EXPECT_NEAR(sums[n - 1 + lag], later, 1e-12);
      EXPECT_NEAR(sums[n - 1 - lag], earlier, 1e-12);
    }
    for (const std::size_t width : {1U, 2U, 3U, 7U}) {
      if (width > n) continue;
      const Numbers weights = Draws(width, 3);
      Numbers made(n - width + 1);
      Convolve(a, weights, made);
      for (std::size_t i = 0; i < made.size(); ++i) {
        double sum = 0;
        for (std::size_t j = 0; j < width; ++j) sum += weights[j] * a[i + j];
        EXPECT_NEAR(made[i], sum, 1e-12);
      }
    }
  }
}

double MedianOf(Numbers values) {
  std::ranges::sort(values);
  const std::size_t n = values.size();
  return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

/// The values from `i` less `before` to `i` and `behind`, as far as there are such.
Numbers Around(const Numbers& y, std::size_t i, std::size_t before, std::size_t behind) {
  const auto begin = y.begin() + static_cast<std::ptrdiff_t>(i - std::min(i, before));
  const auto end = y.begin() + static_cast<std::ptrdiff_t>(std::min(i + behind + 1, y.size()));
  return {begin, end};
}

TEST(SecondWays, WindowsHoldWhatLiesAround) {
  const Numbers y = Draws(23);
  for (const int window : {3, 5, 9, 23}) {
    const auto half = static_cast<std::size_t>(window) / 2;
    const std::vector<Expected> expected = HampelOutliers(y, window, 2);
    const Numbers medians = RunningMedian(y, window);
    for (std::size_t i = 0; i < y.size(); ++i) {
      const Numbers around = Around(y, i, half, half);
      const double median = MedianOf(around);
      Numbers off;
      for (const double one : around) off.push_back(std::abs(one - median));
      EXPECT_EQ(expected[i].is_outlier,
                std::abs(y[i] - median) > 2 * 1.482602218505602 * MedianOf(off))
          << window << ' ' << i;
      EXPECT_DOUBLE_EQ(expected[i].y, median);
      // The running median's windows reach as far on either side.
      const std::size_t reach = std::min({half, i, y.size() - 1 - i});
      EXPECT_DOUBLE_EQ(medians[i], MedianOf(Around(y, i, reach, reach))) << window << ' ' << i;
    }
  }
}

// Longer than what the integral hands on at once.
TEST(SecondWays, LongIntegralsAreTheirSums) {
  for (const std::size_t n : {2U, 255U, 256U, 257U, 1024U, 4097U, 9000U}) {
    const Numbers y = Draws(n);
    TDataSeries series;
    Numbers x;
    for (std::size_t i = 0; i < n; ++i) x.push_back(0.5 * static_cast<double>(i));
    series.AddPoints(x, y);
    TDataSeries integral, sums, slopes;
    Integral(series, integral);
    RunningSum(series, sums);
    Derivative(series, slopes);
    ASSERT_EQ(integral.Points().Size(), n - 1);
    ASSERT_EQ(sums.Points().Size(), n);
    ASSERT_EQ(slopes.Points().Size(), n - 1);
    double area = 0, sum = y[0];
    for (std::size_t i = 1; i < n; ++i) {
      area += 0.25 * (y[i] + y[i - 1]);
      sum += y[i];
      EXPECT_NEAR(integral.Points().At(i - 1).y, area, 1e-10) << n << ' ' << i;
      EXPECT_EQ(integral.Points().At(i - 1).x, x[i]);
      EXPECT_NEAR(sums.Points().At(i).y, sum, 1e-10);
      EXPECT_NEAR(slopes.Points().At(i - 1).y, 2 * (y[i] - y[i - 1]), 1e-10);
      EXPECT_EQ(slopes.Points().At(i - 1).x, (x[i] + x[i - 1]) / 2);
    }
    double below = 0;
    for (std::size_t i = 1; i < n; ++i) below += 0.25 * (y[i] + y[i - 1]);
    EXPECT_NEAR(AreaBelow(x, y), below, 1e-10);
  }
}

TEST(AnalysisEdges, OfSmoothing) {
  Lines told;
  const Numbers y = {1, 4, 2, 8, 5, 7, 1, 3, 9, 6, 2, 4};
  Numbers even, uneven;
  for (std::size_t i = 0; i < y.size(); ++i) {
    even.push_back(0.5 * static_cast<double>(i));
    uneven.push_back(even.back() + (i > 5 ? 0.4 : 0));
  }
  for (const LocalPolynomial local : std::vector<LocalPolynomial>{
           {-1, 0, 0}, {0, 0, 0},   {1, 0, 0},  {2, 0, 0},  {3, 0, 0},  {3, 2, 0}, {3, 3, 0},
           {5, 2, 0},  {5, 4, 1},   {5, 2, 2},  {5, 1, 2},  {5, 2, -1}, {5, 3, 3}, {5, -1, 0},
           {11, 9, 0}, {11, 10, 0}, {11, 2, 0}, {12, 2, 0}, {13, 2, 0}, {5, 0, 1}, {1, 1, 0}}) {
    const auto smoothed = [&](const Numbers& x) {
      return Answer([&] {
        const Smoothed made = SmoothByPolynomials(x, y, local);
        return Texts(made.y) + " gain " + Text(made.noise_gain);
      });
    };
    told.push_back(Text(local.window) + "/" + Text(local.order) + "/" + Text(local.derivative) +
                   ":" + smoothed(even));
    if (local.window == 5) told.push_back("uneven:" + smoothed(uneven));
  }
  for (const int window : {-1, 0, 1, 2, 3, 11, 12, 13})
    told.push_back("median " + Text(window) + ":" +
                   Answer([&] { return Texts(RunningMedian(y, window)); }));
  for (const double share : {0.0, 0.19, 0.2, 0.21, 0.8, 0.81})
    told.push_back(
        "even within " + Text(share) + ": " + Text(IsEvenlySpaced(Numbers{0, 1, 2.2, 3.2}, share)) +
        Text(IsEvenlySpaced(Numbers{0, 1, 1.2, 2.2}, share)) +
        Text(IsEvenlySpaced(Numbers{0, 1}, share)) + Text(IsEvenlySpaced(Numbers{0, 0, 0}, share)));
  testing::ExpectTold("analysis/edges.txt", "smoothing", told);
}

TEST(AnalysisEdges, OfLinesThroughRegions) {
  Lines told;
  const Numbers x = {0, 1, 2, 3, 4, 5, 6, 7}, y = {1, 3, 2, 9, 8, 4, 6, 5};
  const std::vector<std::vector<XRegion>> regions = {
      {}, {{0, 2}}, {{0, 1}, {6, 7}}, {{0, 0}, {7, 7}}, {{2, 1}}, {{20, 30}}, {{-5, 50}}};
  for (const auto& within : regions) {
    for (const int degree : {0, 1, 2, 3, 7}) {
      std::string line = std::to_string(within.size());
      for (const XRegion& one : within) line += " " + Text(one.begin) + ":" + Text(one.end);
      told.push_back(line + " degree " + Text(degree) + ":" + Answer([&] {
                       const PolynomialLine made = FitPolynomialLine(x, y, within, degree);
                       return Texts(made.y) + " of " + std::to_string(made.points) + " off " +
                              Text(made.deviation) + " line " + Text(made.offset) + " " +
                              Text(made.slope);
                     }));
    }
  }
  testing::ExpectTold("analysis/edges.txt", "lines through regions", told);
}

TEST(AnalysisEdges, OfValuesBetweenPoints) {
  Lines told;
  const Numbers x = {0, 1, 1, 2, 4, 5, 5.5, 9}, y = {1, 3, 5, 5, 5, -2, -2, 4};
  for (const ResampleMethod method :
       {ResampleMethod::Linear, ResampleMethod::Akima, ResampleMethod::Mean}) {
    for (const double step : {0.5, 1.0, 3.0, 9.0, 10.0}) {
      told.push_back(Text(static_cast<int>(method)) + " by " + Text(step) + ":" + Answer([&] {
                       const Resampled made = Resample(x, y, step, method);
                       return Texts(made.x) + " |" + Texts(made.y) + " | " +
                              std::to_string(made.empty);
                     }));
    }
  }
  for (const Numbers& few : {Numbers{1}, Numbers{1, 2}, Numbers{1, 2, 3}})
    told.push_back("of " + std::to_string(few.size()) + ":" +
                   Answer([&] { return Texts(Resample(few, few, 0.5, ResampleMethod::Akima).y); }));
  TDataSeries series;
  series.SetDuplicatesAllowed(true);
  series.AddPoints(x, y);
  const Interpolation between(series.Points());
  for (const double at : {-0.1, -0.09, -0.05, 0.0, 0.5, 1.0, 1.5, 4.5, 5.25, 9.0, 9.05, 9.09, 9.1})
    told.push_back("at " + Text(at) + ": " +
                   (between.At(at) ? Text(*between.At(at)) : std::string("none")) +
                   (between.Around(at) ? " share " + Text(between.Around(at)->share) : ""));
  for (const double level : {-3.0, -2.0, 0.0, 3.0, 4.0, 5.0, 6.0}) {
    for (const std::size_t most : {0U, 1U, 2U, 9U})
      told.push_back("where " + Text(level) + ", " + std::to_string(most) + " at most:" +
                     Texts(CrossingsOf(series.Points(), PointValue::Y, {level, 0, 0}, most)));
    told.push_back("above 1 + X / 2:" +
                   Texts(CrossingsOf(series.Points(), PointValue::Y, {level, 1, 0.5}, 9)));
  }
  testing::ExpectTold("analysis/edges.txt", "values between points", told);
}

TEST(AnalysisEdges, OfBinsAndSamples) {
  Lines told;
  const std::vector<Numbers> samples = {{},
                                        {2},
                                        {2, 2, 2},
                                        {1, 2},
                                        {1, 2, 3, 4},
                                        {0, 0, 0, 10},
                                        {1, 2, 3, 4, 5, 6, 7, 8, 100},
                                        {-1, 0.5, HUGE_VAL, 2, NAN, 3}};
  for (const Numbers& values : samples) {
    std::string line = std::to_string(values.size()) + ":";
    for (const std::size_t bins : {0U, 1U, 3U, 4U}) {
      line += Answer([&] {
        const Histogram made = CountInBins(values, bins);
        std::string text = " from " + Text(made.first) + " by " + Text(made.width) + ":";
        for (const std::size_t count : made.counts) text += " " + std::to_string(count);
        return text + (made.left_out > 0 ? " out " + std::to_string(made.left_out) : "");
      });
    }
    told.push_back(line);
    const SampleFigures f = FiguresOf(FiniteOf(values));
    told.push_back("figures" + Texts({f.mean, f.deviation, f.least, f.lower_quartile, f.median,
                                      f.upper_quartile, f.greatest}));
  }
  for (const Numbers& first : samples) {
    for (const Numbers& second :
         {Numbers{1, 2, 3, 4}, Numbers{2}, Numbers{2, 2}, Numbers{9, 11, 30}}) {
      told.push_back(std::to_string(first.size()) + " and " + std::to_string(second.size()) + ":" +
                     Answer([&] {
                       const SampleComparison c = CompareSamples(FiniteOf(first), second);
                       return Texts({c.difference, c.difference_error, c.t, c.t_freedom,
                                     c.t_probability, c.f, c.f_probability, c.distance,
                                     c.distance_probability}) +
                              (c.has_ties ? " ties" : "");
                     }));
    }
  }
  for (const double times : {0.0, 1.0, 1.5, 30.0}) {
    std::string line = "beyond " + Text(times) + ":";
    for (const Expected& one : TukeyOutliers(Numbers{1, 2, 3, 4, 5, 6, 7, 8, 100}, times))
      line += one.is_outlier ? " " + Text(one.y) : " -";
    told.push_back(line);
  }
  testing::ExpectTold("analysis/edges.txt", "bins and samples", told);
}

}  // namespace
}  // namespace tarnwick
