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

#include "graph/files/file_kinds.h"
#include "graph/layout/plot_layout.h"
#include "graph/paint/paint_plot.h"
#include "graph/xy_graph.h"

namespace {

using namespace tarnwick;

constexpr std::size_t kPoints = 10'000'000;

// What the points are drawn as.
enum Look { Line, Symbols };

FitSettings Peak() {
  FitSettings model;
  model.Expression = "a*exp(-x*x)+b*x";
  model.Status = FitStatus::cf_Function;
  model.NPoints = 1'000;
  model.parameters.resize(2);
  model.parameters[0].Name = "a";
  model.parameters[0].Value = 3;
  model.parameters[1].Name = "b";
  model.parameters[1].Value = 0.2;
  return model;
}

// Noise around a peak, and the peak as a fitted model's curve.
TxyGraph& Graph(Look look) {
  static TxyGraph graph;
  if (graph.SeriesCount() == 0) {
    std::mt19937_64 random(7);
    std::normal_distribution<double> normal(0, 0.5);
    std::vector<double> x, y;
    for (std::size_t i = 0; i < kPoints; ++i) {
      x.push_back(static_cast<double>(i) / static_cast<double>(kPoints) * 8 - 4);
      y.push_back(3 * std::exp(-x.back() * x.back()) + 0.2 * x.back() + normal(random));
    }
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName("counts");
    series->AddPoints(x, y);
    graph.AddSeries(std::move(series)).Fit().SetSettings(Peak(), true);
    Legend legend;
    legend.visible = true;
    graph.SetLegend(legend);
  }
  SeriesStyle style = graph.Series(0).Style();
  style.connect_points = look == Line;
  style.show_symbols = look == Symbols;
  graph.Series(0).SetStyle(style);
  return graph;
}

void SetGrid(TxyGraph& graph) {
  for (const AxisId id : {AxisId::X, AxisId::Y})
    SetLook(graph.Axis(id), &AxisLook::Gridlines, true);
}

// As the canvas of the desktop program does it: scales, layout and picture anew.
void BM_Frame(benchmark::State& state) {
  const int width = static_cast<int>(state.range(1)), height = static_cast<int>(state.range(2));
  TxyGraph& graph = Graph(static_cast<Look>(state.range(0)));
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
  if (graph.Series(0).Curve().Points().Empty()) state.SkipWithError("no fit curve");
  state.counters["limit_ms"] = 16;
}
BENCHMARK(BM_Frame)
    ->ArgNames({"symbols", "width", "height"})
    ->ArgsProduct({{Line, Symbols}, {800}, {600}})
    ->ArgsProduct({{Line, Symbols}, {1920}, {1080}})
    ->ArgsProduct({{Line, Symbols}, {3840}, {2160}})
    ->Unit(benchmark::kMillisecond);

void BM_PdfFile(benchmark::State& state) {
  TxyGraph& graph = Graph(static_cast<Look>(state.range(0)));
  SetGrid(graph);
  const int dpi = static_cast<int>(state.range(1));
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "redraw_bench.pdf";
  const auto device = [dpi](double pixels) { return static_cast<int>(pixels * dpi / 96); };
  for (auto _ : state) WritePicture(graph, path, {device(800), device(600), dpi});
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  state.counters["limit_ms"] = 1000;
  state.counters["limit_bytes"] = 2e6;
  std::filesystem::remove(path);
}
BENCHMARK(BM_PdfFile)
    ->ArgNames({"symbols", "dpi"})
    ->ArgsProduct({{Line, Symbols}, {96, 300, 1200}})
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
