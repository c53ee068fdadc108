// Whatever is computed goes along with the units of X and Y: values in nanovolts over hours are those in volts over seconds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "analysis/background.h"
#include "analysis/correlation.h"
#include "analysis/derived.h"
#include "analysis/histogram.h"
#include "analysis/interpolation.h"
#include "analysis/local_noise.h"
#include "analysis/outliers.h"
#include "analysis/peak_figures.h"
#include "analysis/peaks.h"
#include "analysis/polynomial_line.h"
#include "analysis/resampling.h"
#include "analysis/sample_comparison.h"
#include "analysis/smoothing.h"
#include "analysis/spectrum.h"
#include "data/points/point_columns.h"

namespace tarnwick {
namespace {

using Values = std::vector<double>;

/// A curve with peaks, noise and one value that lies far off; how large its units are.
struct Curve {
  Values x, y;
  double of_x = 1, of_y = 1;
};

Curve MakeCurve(double uneven, double of_x, double of_y) {
  std::mt19937 random(17);
  Curve curve;
  curve.of_x = of_x, curve.of_y = of_y;
  for (int i = 0; i < 240; ++i) {
    const double x = 0.5 * i + uneven * std::sin(5.0 * i);
    double y = 3 + 0.01 * x + 0.001 * static_cast<double>(random() % 100);
    for (const double center : {20.0, 55.0, 90.0})
      y += 8 * std::exp(-0.1 * (x - center) * (x - center));
    if (i == 151) y += 4;
    curve.x.push_back(of_x * x);
    curve.y.push_back(of_y * y);
  }
  return curve;
}

template <typename Fill>
Values YOf(const Curve& curve, Fill fill) {
  TDataSeries source;
  TDataSeries target;
  source.AddPoints(curve.x, curve.y);
  fill(source, target, LineWay());
  return YValues(target.Points());
}

template <typename Member>
Values OfPeaks(const Curve& curve, Member member) {
  const PeakCurve peaks{curve.x, curve.y};
  Values values;
  for (const PeakFigures& figures : MeasurePeaks(peaks, FindSummits(peaks, 2 * curve.of_y)))
    values.push_back(figures.*member);
  return values;
}

Values Ys(const std::vector<Expected>& expected) {
  Values values;
  for (const Expected& one : expected) {
    values.push_back(one.y);
    values.push_back(one.is_outlier ? one.y : 0);
  }
  return values;
}

SpectrumOptions Of(SpectrumOf of) {
  return {.of = of, .window = SpectrumWindow::Blackman, .taken_off = Trend::Line, .finer = 2};
}

struct Figure {
  const char* name;
  int of_x, of_y;  // its unit: the powers of those of X and Y
  std::function<Values(const Curve&)> of;
};

const Figure kFigures[] = {
    {"smooth", 0, 1,
     [](const Curve& c) {
       return SmoothByPolynomials(c.x, c.y, {7, 2, 0}).y;
     }},
    {"smooth slope", -1, 1,
     [](const Curve& c) {
       return SmoothByPolynomials(c.x, c.y, {9, 3, 1}).y;
     }},
    {"smooth bend", -2, 1,
     [](const Curve& c) {
       return SmoothByPolynomials(c.x, c.y, {9, 3, 2}).y;
     }},
    {"running median", 0, 1, [](const Curve& c) { return RunningMedian(c.y, 5); }},
    {"rubber band", 0, 1, [](const Curve& c) { return RubberBand(c.x, c.y); }},
    {"stiff base line", 0, 1, [](const Curve& c) { return AsymmetricBaseLine(c.y, {}); }},
    {"polynomial", 0, 1, [](const Curve& c) { return FitPolynomialLine(c.x, c.y, {}, 3).y; }},
    {"deviation from a line", 0, 1,
     [](const Curve& c) { return Values{FitPolynomialLine(c.x, c.y, {}, 1).deviation}; }},
    {"slope of a line", -1, 1,
     [](const Curve& c) { return Values{FitPolynomialLine(c.x, c.y, {}, 1).slope}; }},
    {"linear steps", 1, 0,
     [](const Curve& c) { return Resample(c.x, c.y, 0.3 * c.of_x, ResampleMethod::Linear).x; }},
    {"values on Akima's curve", 0, 1,
     [](const Curve& c) { return Resample(c.x, c.y, 0.3 * c.of_x, ResampleMethod::Akima).y; }},
    {"means of steps", 0, 1,
     [](const Curve& c) { return Resample(c.x, c.y, 2.5 * c.of_x, ResampleMethod::Mean).y; }},
    {"amplitudes", 0, 1,
     [](const Curve& c) { return EvenSpectrum(c.y, 0.5 * c.of_x, Of(SpectrumOf::Amplitude)).y; }},
    {"density", 1, 2,
     [](const Curve& c) { return EvenSpectrum(c.y, 0.5 * c.of_x, Of(SpectrumOf::Density)).y; }},
    {"frequencies", -1, 0, [](const Curve& c) { return LombScargle(c.x, c.y, {}).frequency; }},
    {"power at uneven X", 0, 2,
     [](const Curve& c) { return LombScargle(c.x, c.y, Of(SpectrumOf::Power)).y; }},
    {"density at uneven X", 1, 2,
     [](const Curve& c) { return LombScargle(c.x, c.y, Of(SpectrumOf::Density)).y; }},
    {"places of peaks", 1, 0, [](const Curve& c) { return OfPeaks(c, &PeakFigures::x); }},
    {"heights", 0, 1, [](const Curve& c) { return OfPeaks(c, &PeakFigures::height); }},
    {"prominences", 0, 1, [](const Curve& c) { return OfPeaks(c, &PeakFigures::prominence); }},
    {"widths", 1, 0, [](const Curve& c) { return OfPeaks(c, &PeakFigures::width); }},
    {"areas of peaks", 1, 1, [](const Curve& c) { return OfPeaks(c, &PeakFigures::area); }},
    {"asymmetries", 0, 0, [](const Curve& c) { return OfPeaks(c, &PeakFigures::asymmetry); }},
    {"valleys", 1, 0, [](const Curve& c) { return OfPeaks(c, &PeakFigures::right_valley); }},
    {"outliers beside neighbours", 0, 1,
     [](const Curve& c) { return Ys(HampelOutliers(c.y, 7, 3)); }},
    {"outliers of all", 0, 1, [](const Curve& c) { return Ys(TukeyOutliers(c.y, 1.5)); }},
    {"coefficients of correlation", 0, 0,
     [](const Curve& c) { return Correlation(c.y, c.x, 20, CorrelationOf::Coefficient); }},
    {"covariances", 1, 1,
     [](const Curve& c) { return Correlation(c.y, c.x, 20, CorrelationOf::Covariance); }},
    {"noise", 0, 1,
     [](const Curve& c) {
       return Values{NoiseOf({c.x, c.y}), NoiseOf({c.x, c.y}, 3)};
     }},
    {"local noise", 0, 1,
     [](const Curve& c) {
       const LocalNoise noise({c.x, c.y}, {});
       return Values{noise.At(5), noise.At(40), noise.At(151), noise.Overall()};
     }},
    {"bins", 0, 1,
     [](const Curve& c) {
       const Histogram bins = CountInBins(c.y);
       return Values{bins.first, bins.width};
     }},
    {"counts", 0, 0,
     [](const Curve& c) {
       const Histogram bins = CountInBins(c.y, 12);
       return Values(bins.counts.begin(), bins.counts.end());
     }},
    {"differences of samples", 0, 1,
     [](const Curve& c) {
       const std::span<const double> y = c.y;
       const SampleComparison found = CompareSamples(y.first(100), y.last(130));
       return Values{found.difference, found.difference_error, found.second.deviation};
     }},
    {"tests of samples", 0, 0,
     [](const Curve& c) {
       const std::span<const double> y = c.y;
       const SampleComparison found = CompareSamples(y.first(100), y.last(130));
       return Values{found.t, found.t_freedom, found.f, found.distance, found.t_probability};
     }},
    {"area", 1, 1,
     [](const Curve& c) {
       TDataSeries series;
       series.AddPoints(c.x, c.y);
       return Values{AreaBelow(c.x, c.y), AreaOf(series)};
     }},
    {"integral", 1, 1, [](const Curve& c) { return YOf(c, &Integral); }},
    {"running sum", 0, 1, [](const Curve& c) { return YOf(c, &RunningSum); }},
    {"derivative", -1, 1, [](const Curve& c) { return YOf(c, &Derivative); }},
    {"probability density", 0, -1,
     [](const Curve& c) {
       return YOf(c, [](TDataSeries& from, TDataSeries& to, const LineWay& /*way*/) {
         ProbabilityDensity(from, to, 20);
       });
     }},
};

TEST(Units, OfXAndYAreThoseOfWhatIsComputed) {
  for (const double uneven : {0.0, 0.2}) {
    const Curve plain = MakeCurve(uneven, 1, 1);
    for (const auto& [of_x, of_y] : {std::pair{0x1p-30, 0x1p20}, {0x1p20, 0x1p-30}}) {
      const Curve scaled = MakeCurve(uneven, of_x, of_y);
      for (const Figure& figure : kFigures) {
        const double unit = std::pow(of_x, figure.of_x) * std::pow(of_y, figure.of_y);
        Values expected = figure.of(plain);
        Values found = figure.of(scaled);
        for (double& value : found) value /= unit;
        ASSERT_FALSE(expected.empty()) << figure.name;
        const double most = std::abs(*std::ranges::max_element(
            expected, {}, [](double value) { return std::isnan(value) ? 0 : std::abs(value); }));
        EXPECT_THAT(found,
                    ::testing::Pointwise(::testing::NanSensitiveDoubleNear(1e-9 * most), expected))
            << figure.name << ", X " << of_x << ", uneven " << uneven;
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
