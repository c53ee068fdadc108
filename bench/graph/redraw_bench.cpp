// A whole graph of ten million points with legend, grid and fit curve: one frame of panning and zooming, beside the sixteen
// milliseconds that a screen leaves for it, and the graph as a PDF file.
#include <cmath>
#include <filesystem>
#include <memory>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "graph/layout/plot_layout.h"
#include "graph/paint/paint_plot.h"
#include "graph/pictures/picture_export.h"
#include "graph/xy_graph.h"

namespace {

using namespace tarnwick;

constexpr std::size_t kPoints = 10'000'000;
constexpr std::size_t kCurvePoints = 100'000;

double Model(double x) {
  return 3 * std::exp(-x * x) + 0.2 * x;
}

template <class ValueAt>
void AddLine(TxyGraph& graph, const char* name, std::size_t points, ValueAt value_at) {
  std::vector<double> x, y;
  for (std::size_t i = 0; i < points; ++i) {
    x.push_back(static_cast<double>(i) / static_cast<double>(points) * 8 - 4);
    y.push_back(value_at(x.back()));
  }
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(name);
  series->AddPoints(x, y);
  TSeries& added = graph.AddSeries(std::move(series));
  SeriesStyle style = added.Style();
  style.show_symbols = false;
  added.SetStyle(style);
}

// Noise around a peak and the curve through it.
TxyGraph& Graph() {
  static TxyGraph graph;
  if (graph.SeriesCount() != 0) return graph;
  std::mt19937_64 random(7);
  std::normal_distribution<double> normal(0, 0.5);
  AddLine(graph, "counts", kPoints, [&](double x) { return Model(x) + normal(random); });
  AddLine(graph, "fit", kCurvePoints, Model);
  Legend legend;
  legend.visible = true;
  graph.SetLegend(legend);
  return graph;
}

void SetGrid(TxyGraph& graph) {
  for (const AxisId id : {AxisId::X, AxisId::Y}) graph.Axis(id).SetGridlines(true);
}

// As the canvas of the desktop program does it: scales, layout and picture anew.
void BM_Frame(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
  TxyGraph& graph = Graph();
  graph.Resize(width, height);
  SetGrid(graph);
  QImage picture(width, height, QImage::Format_RGB32);
  int shift = 0;
  for (auto _ : state) {
    const double span = 8 * (1 - 0.02 * (shift % 11));
    graph.Axis(AxisId::X).SetMin(-4 + 0.05 * (shift % 7));
    graph.Axis(AxisId::X).SetMax(-4 + 0.05 * (shift % 7) + span);
    ++shift;
    const PlotLayout layout = LayoutPlot(graph, QSizeF(width, height), TextMetrics());
    QPainter painter(&picture);
    PaintPlot(painter, graph, layout);
    painter.end();
    benchmark::DoNotOptimize(picture.bits());
  }
  state.counters["limit_ms"] = 16;
}
BENCHMARK(BM_Frame)
    ->ArgNames({"width", "height"})
    ->Args({800, 600})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

void BM_PdfFile(benchmark::State& state) {
  TxyGraph& graph = Graph();
  SetGrid(graph);
  const int dpi = static_cast<int>(state.range(0));
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "redraw_bench.pdf";
  const auto device = [dpi](double pixels) { return static_cast<int>(pixels * dpi / 96); };
  for (auto _ : state) WritePicture(graph, path, {device(800), device(600), dpi});
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  state.counters["limit_ms"] = 1000;
  state.counters["limit_bytes"] = 2e6;
  std::filesystem::remove(path);
}
BENCHMARK(BM_PdfFile)->ArgName("dpi")->Arg(96)->Arg(300)->Arg(1200)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
