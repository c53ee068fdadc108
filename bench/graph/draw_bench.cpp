// A line of many points in an 800 x 600 picture, beside its limit: per-pixel-column minimum and maximum over plain arrays and
// the drawing of the result. First: a fresh chain; Again: pan, zoom and resize of a chain drawn before.
#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "graph/paint/series_painter.h"
#include "graph/pictures/fast_png.h"
#include "graph/series.h"

namespace {

using namespace tarnwick;

constexpr int kWidth = 800;
constexpr int kHeight = 600;

enum Shape { Noise, Walk };

struct Data {
  std::vector<double> x, y;
};

const Data& DataOf(std::size_t points, Shape shape) {
  static std::vector<std::pair<std::pair<std::size_t, Shape>, std::unique_ptr<Data>>> cache;
  for (const auto& [key, data] : cache) {
    if (key == std::pair(points, shape)) return *data;
  }
  auto data = std::make_unique<Data>();
  std::mt19937_64 random(7);
  std::normal_distribution<double> normal(0, 1);
  double walk = 0;
  const double step = 1 / std::sqrt(static_cast<double>(points));
  for (std::size_t i = 0; i < points; ++i) {
    data->x.push_back(static_cast<double>(i));
    walk += normal(random) * step;
    data->y.push_back(shape == Noise ? normal(random) : walk);
  }
  cache.emplace_back(std::pair(points, shape), std::move(data));
  return *cache.back().second;
}

void Fill(TSeries& series, const Data& data, int line_width) {
  series.AddPoints(data.x, data.y);
  SeriesStyle style;
  style.show_symbols = false;
  style.line_width = line_width;
  style.line_color = Color::FromRgb(0, 0x5F, 0xA8);
  series.SetStyle(style);
}

// `shift` moves and widens the view a little, as pan, zoom and resize do.
SeriesFrame FrameOf(const Data& data, int shift) {
  const double x0 = data.x.front(), x1 = data.x.back();
  const auto [low, high] = std::minmax_element(data.y.begin(), data.y.end());
  SeriesFrame frame;
  const double width = kWidth - shift % 3;
  const double span = (x1 - x0) * (1 - 0.01 * (shift % 5));
  frame.x.min = x0 + (x1 - x0) * 0.001 * (shift % 7);
  frame.x.max = frame.x.min + span;
  frame.x.pixels_per_unit = width / span;
  frame.y.direction = PixelDirection::Upward;
  frame.y.min = *low;
  frame.y.max = *high;
  frame.y.pixels_per_unit = kHeight / (*high - *low);
  frame.plot = frame.clip = QRectF(0, 0, width, kHeight);
  return frame;
}

QImage NewPicture() {
  QImage image(kWidth, kHeight, QImage::Format_RGB32);
  image.fill(Qt::white);
  return image;
}

struct Column {
  double low = 1e300, high = -1e300;
  void Take(double y) {
    low = y < low ? y : low;
    high = y > high ? y : high;
  }
};

// Blocks of points that fall into one column are taken in lanes, without a look at their X: they rise.
std::vector<Column> LimitColumns(const Data& data, const SeriesFrame& frame) {
  constexpr std::size_t kBlock = 64, kLanes = 4;
  std::vector<Column> columns(kWidth);
  const auto factor = static_cast<double>(frame.x.pixels_per_unit);
  const double x0 = frame.x.min;
  const auto column_of = [&](std::size_t i) {
    return std::clamp(static_cast<int>((data.x[i] - x0) * factor), 0, kWidth - 1);
  };
  std::size_t i = 0;
  for (; i + kBlock <= data.x.size(); i += kBlock) {
    const int first = column_of(i);
    if (first != column_of(i + kBlock - 1)) {
      for (std::size_t k = i; k < i + kBlock; ++k) {
        columns[static_cast<std::size_t>(column_of(k))].Take(data.y[k]);
      }
      continue;
    }
    Column lanes[kLanes];
    for (std::size_t k = i; k < i + kBlock; k += kLanes) {
      for (std::size_t lane = 0; lane < kLanes; ++lane) lanes[lane].Take(data.y[k + lane]);
    }
    Column& column = columns[static_cast<std::size_t>(first)];
    for (const Column& lane : lanes) {
      column.Take(lane.low);
      column.Take(lane.high);
    }
  }
  for (; i < data.x.size(); ++i) {
    columns[static_cast<std::size_t>(column_of(i))].Take(data.y[i]);
  }
  return columns;
}

void DrawLimit(QPainter& painter, const Data& data, const SeriesFrame& frame) {
  QList<QPointF> line;
  double x = 0.5;
  for (const Column& column : LimitColumns(data, frame)) {
    if (column.low <= column.high) {
      line.append({x, frame.y.Position(column.low)});
      line.append({x, frame.y.Position(column.high)});
    }
    ++x;
  }
  painter.setPen(QPen(QColor(0, 0x5F, 0xA8), 1));
  painter.drawPolyline(QPolygonF(line));
}

Shape ShapeOf(const benchmark::State& state) {
  return state.range(1) == 0 ? Noise : Walk;
}
std::size_t PointsOf(const benchmark::State& state) {
  return static_cast<std::size_t>(state.range(0));
}

enum class Png { No, Yes };

void BM_Limit(benchmark::State& state, Png png) {
  const Data& data = DataOf(PointsOf(state), ShapeOf(state));
  const SeriesFrame frame = FrameOf(data, 0);
  for (auto _ : state) {
    QImage image = NewPicture();
    QPainter painter(&image);
    DrawLimit(painter, data, frame);
    painter.end();
    if (png == Png::Yes) {
      QByteArray bytes;
      QBuffer buffer(&bytes);
      buffer.open(QIODevice::WriteOnly);
      image.save(&buffer, "PNG");
      benchmark::DoNotOptimize(bytes.data());
    }
    benchmark::DoNotOptimize(image.bits());
  }
}

void BM_First(benchmark::State& state, int line_width, Png png) {
  const Data& data = DataOf(PointsOf(state), ShapeOf(state));
  const SeriesFrame frame = FrameOf(data, 0);
  for (auto _ : state) {
    state.PauseTiming();
    auto series = std::make_unique<TSeries>();
    Fill(*series, data, line_width);
    state.ResumeTiming();
    QImage image = NewPicture();
    QPainter painter(&image);
    PaintSeries(painter, *series, frame);
    painter.end();
    if (png == Png::Yes) {
      const std::string bytes = EncodePng(image);
      benchmark::DoNotOptimize(bytes.data());
      state.counters["png_bytes"] = static_cast<double>(bytes.size());
    }
    benchmark::DoNotOptimize(image.bits());
    state.PauseTiming();
    series.reset();
    state.ResumeTiming();
  }
}

/// Frames that move on a little from one to the next, into one picture.
void PaintShiftedFrames(benchmark::State& state, TSeries& series, const Data& data) {
  std::vector<SeriesFrame> frames;
  for (int shift = 0; shift < 105; ++shift) frames.push_back(FrameOf(data, shift));
  std::size_t shift = 0;
  QImage image = NewPicture();
  for (auto _ : state) {
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintSeries(painter, series, frames[shift++ % frames.size()]);
    painter.end();
    benchmark::DoNotOptimize(image.bits());
  }
}

void BM_Again(benchmark::State& state, int line_width) {
  const Data& data = DataOf(PointsOf(state), ShapeOf(state));
  TSeries series;
  Fill(series, data, line_width);
  PaintShiftedFrames(state, series, data);
}

void BM_Symbols(benchmark::State& state) {
  const Data& data = DataOf(PointsOf(state), ShapeOf(state));
  TSeries series;
  Fill(series, data, 1);
  SeriesStyle style = series.Style();
  style.show_symbols = true;
  style.connect_points = false;
  series.SetStyle(style);
  const SeriesFrame frame = FrameOf(data, 0);
  for (auto _ : state) {
    QImage image = NewPicture();
    QPainter painter(&image);
    PaintSeries(painter, series, frame);
    painter.end();
    benchmark::DoNotOptimize(image.bits());
  }
}

// A frame of a million points with bars of their errors, drawn before, takes less than 16 ms.
enum Bars { OfY, OfBoth };

void BM_ErrorBars(benchmark::State& state) {
  const Data& data = DataOf(PointsOf(state), Noise);
  TSeries series;
  Fill(series, data, 1);
  std::vector<double> errors;
  for (std::size_t i = 0; i < data.y.size(); ++i)
    errors.push_back(0.05 + 0.01 * static_cast<double>(i % 7));
  PointErrors given{{ErrorKind::Column, 0}, {}, {}, {}};
  given.y_values.SetRun(1, errors);
  if (state.range(1) == OfBoth) given.x = {ErrorKind::Constant, data.x.back() / 500};
  series.SetErrors(std::move(given));
  PaintShiftedFrames(state, series, data);
}

// A million points joined in the order in which they came take at most three times as long as the same points rising.
// A loop so noisy that it closes over itself is drawn as the area that it covers, which is kept from frame to frame.
enum Joined { Rising, RisingInPieces, Sweep, Loop, NoisyLoop };

Data SweepData(Joined kind) {
  constexpr std::size_t kPoints = 1'000'000;
  constexpr double kTurn = 6.283185307179586;
  std::mt19937_64 random(7);
  std::normal_distribution<double> normal(0, 1);
  Data data;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const double share = static_cast<double>(i) / kPoints;
    const double there = kind <= RisingInPieces ? share : 1 - std::abs(2 * share - 1);
    const double lag = kind >= Sweep && share > 0.5 ? 0.1 : -0.1;
    data.x.push_back(kind >= Loop ? std::cos(kTurn * share) : there);
    data.y.push_back(kind >= Loop ? std::sin(kTurn * share) : std::tanh(8 * (there - 0.5 + lag)));
    data.y.back() += 0.01 * normal(random);
    if (kind == NoisyLoop) data.x.back() += 0.01 * normal(random);
  }
  return data;
}

void BM_Joined(benchmark::State& state) {
  const auto kind = static_cast<Joined>(state.range(0));
  const Data data = SweepData(kind);
  TSeries series;
  series.SetDuplicatesAllowed(true);
  Fill(series, data, 1);
  SeriesStyle style = series.Style();
  if (kind >= Sweep) style.line_order = LineOrder::AsTheyCame;
  series.SetStyle(style);
  if (kind == RisingInPieces) {
    series.SetGaps(PointGaps({250'000, 500'000, 750'000}, series.LastId()));
    series.SetBreakAtGaps(true);
  }
  std::vector<double> x = data.x;
  std::ranges::sort(x);
  std::vector<SeriesFrame> frames;
  for (int shift = 0; shift < 105; ++shift) frames.push_back(FrameOf({x, data.y}, shift));
  std::size_t shift = 0;
  QImage image = NewPicture();
  for (auto _ : state) {
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintSeries(painter, series, frames[shift++ % frames.size()]);
    painter.end();
    benchmark::DoNotOptimize(image.bits());
  }
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"points", "walk"})->Unit(benchmark::kMillisecond);
  for (const int points : {100'000, 1'000'000, 10'000'000})
    bench->Args({points, 0})->Args({points, 1});
}

BENCHMARK_CAPTURE(BM_Limit, line, Png::No)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_First, thin, 1, Png::No)->Apply(Sizes)->Iterations(10);
BENCHMARK_CAPTURE(BM_First, two_wide, 2, Png::No)->Apply(Sizes)->Iterations(10);
BENCHMARK_CAPTURE(BM_Again, thin, 1)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_Again, two_wide, 2)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_Limit, png, Png::Yes)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_First, png, 1, Png::Yes)->Apply(Sizes)->Iterations(10);
BENCHMARK(BM_Symbols)->Apply(Sizes);
BENCHMARK(BM_ErrorBars)
    ->ArgNames({"points", "both"})
    ->Args({1'000'000, OfY})
    ->Args({1'000'000, OfBoth})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Joined)
    ->ArgNames({"order"})
    ->DenseRange(Rising, NoisyLoop)
    ->Unit(benchmark::kMillisecond);

}  // namespace

// Painting needs Qt's platform, but no display.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
