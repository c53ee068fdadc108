#include "scene.h"

#include <memory>

#include "graph/axes/plot_metrics.h"
#include "graph/layout/finished_look.h"

namespace tarnwick::gallery {

TSeries& AddData(TxyGraph& graph, const std::string& name, std::span<const double> x,
                 std::span<const double> y) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(name);
  series->AddPoints(x, y);
  return graph.AddSeries(std::move(series));
}

TSeries& AddFunction(TxyGraph& graph, const std::string& name, double from, double to, int count,
                     const std::function<double(double)>& function) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < count; ++i) {
    x.push_back(from + (to - from) * i / (count - 1));
    y.push_back(function(x.back()));
  }
  return AddData(graph, name, x, y);
}

void ShowLines(TSeries& series, int width) {
  SeriesStyle style = series.Style();
  style.show_symbols = false;
  style.connect_points = true;
  style.line_width = width;
  series.SetStyle(style);
}

void ShowSymbols(TSeries& series, int size) {
  SeriesStyle style = series.Style();
  style.show_symbols = true;
  style.connect_points = false;
  style.symbol_size = size;
  series.SetStyle(style);
}

void SetTitles(TxyGraph& graph, const std::string& x, const std::string& y, const std::string& y2) {
  const auto set = [&](AxisId id, const std::string& title) {
    if (title.empty()) return;
    SetLook(graph.Axis(id), &AxisLook::EnableAutoTitle, false);
    SetLook(graph.Axis(id), &AxisLook::Title, title);
  };
  set(AxisId::X, x);
  set(AxisId::Y, y);
  set(AxisId::Y2, y2);
}

void Finish(TxyGraph& graph, const std::string& title) {
  ApplyFinishedLook(graph, kSceneSize, TextMetrics(), {title});
}

}  // namespace tarnwick::gallery
