// What is computed from 1e7 points, each beside a plain loop over the same values in two vectors. The limit of what makes a
// DataSet puts its values into vectors; ours makes the DataSet.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <span>
#include <unsupported/Eigen/FFT>
#include <vector>

#include "analysis/derived.h"
#include "analysis/fourier.h"
#include "analysis/local_noise.h"
#include "analysis/peaks.h"
#include "analysis/smoothing.h"
#include "data/points/point_columns.h"

namespace tarnwick {
namespace {

constexpr std::size_t kPoints = 10'000'000;

struct Data {
  std::vector<double> x;
  std::vector<double> y;
  TDataSeries series;
};

Data& Measured() {
  static Data* const data = [] {
    auto* made = new Data;
    for (std::size_t i = 0; i < kPoints; ++i) {
      made->x.push_back(0.001 * static_cast<double>(i));
      made->y.push_back(std::sin(made->x.back()) + 1e-3 * static_cast<double>(i * 7919 % 1000));
    }
    made->series.AddPoints(made->x, made->y);
    made->series.SetZeroValue(0.1);
    made->series.SetBaseLineSlope(1e-6);
    return made;
  }();
  return *data;
}

void AreaLimit(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) {
    long double area = 0;
    for (std::size_t i = 1; i < kPoints; ++i) {
      const long double sum_x = static_cast<long double>(data.x[i - 1]) + data.x[i];
      const long double sum_y = static_cast<long double>(data.y[i - 1]) + data.y[i];
      area += (static_cast<long double>(data.x[i]) - data.x[i - 1]) * 0.5L *
              (sum_y - 0.2L - 1e-6L * sum_x);
    }
    benchmark::DoNotOptimize(area);
  }
}
void Area(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(AreaOf(Measured().series));
}

void SumLimit(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) {
    long double sum = 0;
    for (std::size_t i = 0; i < kPoints; ++i) sum += data.y[i] - 0.1 - 1e-6 * data.x[i];
    benchmark::DoNotOptimize(sum);
  }
}
void Sum(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(SumOf(Measured().series));
}

void IntegralLimit(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) {
    std::vector<double> x;
    std::vector<double> y;
    x.reserve(kPoints);
    y.reserve(kPoints);
    long double area = 0;
    for (std::size_t i = 1; i < kPoints; ++i) {
      const long double sum_x = static_cast<long double>(data.x[i - 1]) + data.x[i];
      const long double sum_y = static_cast<long double>(data.y[i - 1]) + data.y[i];
      area += (static_cast<long double>(data.x[i]) - data.x[i - 1]) * 0.5L *
              (sum_y - 0.2L - 1e-6L * sum_x);
      x.push_back(data.x[i]);
      y.push_back(static_cast<double>(area));
    }
    benchmark::DoNotOptimize(y.data());
  }
}
void MakeIntegral(benchmark::State& state) {
  for (auto _ : state) {
    TDataSeries target;
    Integral(Measured().series, target);
    benchmark::DoNotOptimize(target.PointCount());
  }
}

void DerivativeLimit(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) {
    std::vector<double> x;
    std::vector<double> y;
    x.reserve(kPoints);
    y.reserve(kPoints);
    for (std::size_t i = 1; i < kPoints; ++i) {
      const double run = data.x[i] - data.x[i - 1];
      if (!(run > 0)) continue;
      x.push_back((data.x[i - 1] + data.x[i]) * 0.5);
      y.push_back((data.y[i] - data.y[i - 1]) / run - 1e-6);
    }
    benchmark::DoNotOptimize(y.data());
  }
}
void MakeDerivative(benchmark::State& state) {
  for (auto _ : state) {
    TDataSeries target;
    Derivative(Measured().series, target);
    benchmark::DoNotOptimize(target.PointCount());
  }
}

void PeaksLimit(benchmark::State& state) {
  const Data& data = Measured();
  const auto above = [&](std::size_t i) { return data.y[i] - 0.1 - 1e-6 * data.x[i]; };
  for (auto _ : state) {
    std::vector<double> found;
    for (std::size_t i = 1; i + 1 < kPoints; ++i) {
      if (above(i - 1) + 0.9 < above(i) && above(i) - 0.9 > above(i + 1))
        found.push_back(data.x[i]);
    }
    benchmark::DoNotOptimize(found.data());
  }
}
void Peaks(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(FindPeaks(Measured().series, {.noise = 0.9}));
}

void StatisticsLimit(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) {
    std::vector<double> sorted = data.y;
    std::sort(sorted.begin(), sorted.end());
    long double sum = 0;
    for (const double value : sorted) sum += value;
    const long double mean = sum / kPoints;
    long double moments[3] = {};
    for (const double value : sorted) {
      const long double d = value - mean;
      moments[0] += d * d;
      moments[1] += d * d * d;
      moments[2] += d * d * d * d;
    }
    benchmark::DoNotOptimize(moments);
  }
}
void Statistics(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<double> sorted = YValues(Measured().series.Points());
    SortValues(sorted);
    benchmark::DoNotOptimize(ComputeStatistics(sorted, 1e-9));
  }
}

void SmoothLimit(benchmark::State& state) {
  const Data& data = Measured();
  const double weights[11] = {-36, 9, 44, 69, 84, 89, 84, 69, 44, 9, -36};
  for (auto _ : state) {
    std::vector<double> smooth(kPoints);
    for (std::size_t i = 5; i + 5 < kPoints; ++i) {
      double sum = 0;
      for (std::size_t k = 0; k < 11; ++k) sum += weights[k] * data.y[i - 5 + k];
      smooth[i] = sum / 429;
    }
    benchmark::DoNotOptimize(smooth.data());
  }
}
void Smooth(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) benchmark::DoNotOptimize(SmoothByPolynomials(data.x, data.y, {11, 2, 0}));
}

constexpr std::size_t kTransformed = 1'000'000;

void FftLimit(benchmark::State& state) {
  const Data& data = Measured();
  for (auto _ : state) {
    Eigen::FFT<double> library;
    library.SetFlag(Eigen::FFT<double>::HalfSpectrum);
    std::vector<std::complex<double>> terms(kTransformed);
    library.fwd(terms.data(), data.y.data(), static_cast<Eigen::DenseIndex>(kTransformed));
    benchmark::DoNotOptimize(terms.data());
  }
}
void Fft(benchmark::State& state) {
  const std::span<const double> y(Measured().y.data(), kTransformed);
  for (auto _ : state) benchmark::DoNotOptimize(FourierTerms(y));
}
/// A length that is a prime: no library call of that length ends in time.
void FftOfPrime(benchmark::State& state) {
  const std::span<const double> y(Measured().y.data(), 1'000'003);
  for (auto _ : state) benchmark::DoNotOptimize(FourierTerms(y));
}

/// 1e5 points, 40 peaks: found and measured, the noise estimated.
void Spectrum(benchmark::State& state) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 100'000; ++i) {
    x.push_back(i);
    const double from_peak = i % 2500 - 1250.0;
    y.push_back(100 * std::exp(-from_peak * from_peak / 4000) + 1e-3 * (i * 7919 % 1000));
  }
  for (auto _ : state) {
    const PeakCurve curve{x, y};
    const std::vector<Summit> summits = SummitsAbove(curve, LocalNoise(curve, {}), 6);
    benchmark::DoNotOptimize(MeasurePeaks(curve, summits));
  }
}

BENCHMARK(AreaLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Area)->Unit(benchmark::kMillisecond);
BENCHMARK(SumLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Sum)->Unit(benchmark::kMillisecond);
BENCHMARK(IntegralLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeIntegral)->Unit(benchmark::kMillisecond);
BENCHMARK(DerivativeLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeDerivative)->Unit(benchmark::kMillisecond);
BENCHMARK(PeaksLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Peaks)->Unit(benchmark::kMillisecond);
BENCHMARK(StatisticsLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Statistics)->Unit(benchmark::kMillisecond);
BENCHMARK(SmoothLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Smooth)->Unit(benchmark::kMillisecond);
BENCHMARK(FftLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Fft)->Unit(benchmark::kMillisecond);
BENCHMARK(FftOfPrime)->Unit(benchmark::kMillisecond);
BENCHMARK(Spectrum)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick
