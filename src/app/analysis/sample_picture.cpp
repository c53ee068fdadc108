#include "app/analysis/sample_picture.h"

#include <QPainter>
#include <algorithm>

#include "graph/graph_update.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/plot_layout.h"
#include "graph/paint/paint_plot.h"
#include "results/sample_report.h"

namespace tarnwick {
namespace {

constexpr int kTop = 36;         // pixels above the plot
constexpr int kBelowLegend = 6;  // pixels

}  // namespace

SamplePicture::SamplePicture(QWidget* parent) : QWidget(parent) {
  setObjectName("SamplePicture");
  setAccessibleName(tr("Boxes and histograms of both DataSets"));
  setMinimumSize(260, 180);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  DefaultAppearance(graph_, {});
  for (const AxisId id : {AxisId::X, AxisId::Y2}) {
    AxisState axis = graph_.Axis(id).State();
    axis.ShowAxis = false;
    graph_.Axis(id).SetState(axis);
  }
  AxisState values = graph_.Axis(AxisId::Y).State();
  values.EnableAutoTitle = false;
  values.Title.clear();
  graph_.Axis(AxisId::Y).SetState(values);
  Dimensions dimensions = graph_.GetDimensions();
  dimensions.left_margin = 50;
  dimensions.bottom_margin = dimensions.right_margin = 8;
  graph_.SetDimensions(dimensions);
  Legend legend = graph_.GetLegend();
  legend.layout_mode = LegendLayout::Horizontal;
  legend.top = 4;
  legend.left = dimensions.left_margin;
  graph_.SetLegend(legend);
}

void SamplePicture::Clear() {
  const GraphUpdate changes(graph_);
  while (graph_.SeriesCount() > 0) graph_.DeleteSeries(0);
  update();
}

void SamplePicture::Show(const TSeries& first, const TSeries& second) {
  const GraphUpdate changes(graph_);
  Clear();
  DrawSamples(graph_, first, second);
  update();
}

/// The plot begins below the legend, which long names give two lines.
void SamplePicture::MakeRoomForLegend(const TextMetrics& metrics) {
  Dimensions dimensions = graph_.GetDimensions();
  dimensions.top_margin = kTop;
  graph_.SetDimensions(dimensions);
  const PlotLayout layout = LayoutPlot(graph_, size(), metrics);
  if (!layout.legend) return;
  const int lowest = static_cast<int>(layout.legend->frame.bottom()) + kBelowLegend;
  dimensions.top_margin = std::max(kTop, lowest);
  graph_.SetDimensions(dimensions);
}

void SamplePicture::paintEvent(QPaintEvent*) {
  const TextMetrics metrics;
  graph_.Resize(width(), height());
  MakeRoomForLegend(metrics);
  graph_.UpdateScales();
  QPainter painter(this);
  PaintPlot(painter, graph_, LayoutPlot(graph_, size(), metrics), PaintTarget::Screen);
}

}  // namespace tarnwick
