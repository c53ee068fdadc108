#include "editors/data/histogram_view.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <memory>
#include <utility>

#include "graph/layout/finished_look.h"
#include "graph/layout/plot_layout.h"
#include "graph/paint/paint_plot.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

constexpr QSize kLeast(220, 150);
constexpr QSize kUsual(360, 200);
constexpr double kRoomAbove = 1.06;

Color ColorOf(const QColor& color) {
  return Color::FromRgb(color.red(), color.green(), color.blue());
}

/// The outline of the bars, from the ground up and back to it.
std::unique_ptr<TSeries> OutlineOf(const Histogram& histogram) {
  auto outline = std::make_unique<TSeries>();
  outline->SetDuplicatesAllowed(true);
  outline->BeginUpdate();
  double before = 0;
  for (std::size_t bin = 0; bin <= histogram.counts.size(); ++bin) {
    const double count =
        bin < histogram.counts.size() ? static_cast<double>(histogram.counts[bin]) : 0;
    outline->AddPoint(histogram.Edge(bin), before);
    outline->AddPoint(histogram.Edge(bin), count);
    before = count;
  }
  outline->EndUpdate();
  return outline;
}

void DrawAsOutline(TSeries& series) {
  SeriesStyle style = series.Style();
  style.show_symbols = false;
  style.connect_points = true;
  style.line_order = LineOrder::AsTheyCame;
  style.line_width = 2;
  series.SetStyle(style);
}

}  // namespace

HistogramView::HistogramView(QWidget* parent) : QWidget(parent) {
  setObjectName("Histogram");
  setMinimumSize(kLeast);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  DefaultAppearance(graph_, {});
}

void HistogramView::Show(const Histogram& histogram, const QString& title, Values values) {
  const std::size_t bins = histogram.counts.size();
  setAccessibleName(tr("Histogram of %1 in %2 bins").arg(title).arg(bins));
  setToolTip(bins == 0 ? tr("There are no values to count.")
                       : tr("%1 bins, each %2 wide").arg(bins).arg(histogram.width));
  graph_.BeginUpdate();
  while (graph_.SeriesCount() > 0) graph_.DeleteSeries(0);
  if (bins > 0) graph_.AddSeries(OutlineOf(histogram)).SetSeriesName(tr("Count").toStdString());
  TAxis& x = graph_.Axis(AxisId::X);
  AxisState x_state = x.State();
  x_state.EnableAutoTitle = false;
  x_state.Title = title.toStdString();
  x_state.ShowAsTime = values == Values::Moments;
  x.SetState(x_state);
  AxisState counted = graph_.Axis(AxisId::Y).State();
  counted.AutoSizing = false;  // which would leave room for less than nothing
  counted.Min = 0;
  counted.Max =
      bins == 0 ? 1 : kRoomAbove * static_cast<double>(*std::ranges::max_element(histogram.counts));
  graph_.Axis(AxisId::Y).SetState(counted);
  graph_.EndUpdate();
  update();
}

/// Those of the desktop, light or dark.
void HistogramView::TakeColors() {
  const QColor paper = palette().color(QPalette::Base);
  const QColor ink = palette().color(QPalette::Text);
  Appearance appearance = graph_.GetAppearance();
  appearance.color = appearance.margin_color = ColorOf(paper);
  appearance.axes_color = ColorOf(ink);
  appearance.grid_color = ColorOf(palette().color(QPalette::Mid));
  for (Font* const font : {&appearance.font_for_labels, &appearance.font_for_axes_titles}) {
    font->color = ColorOf(ink);
  }
  graph_.SetAppearance(appearance);
}

void HistogramView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) update();
  QWidget::changeEvent(event);
}

QSize HistogramView::sizeHint() const {
  return kUsual;
}

void HistogramView::paintEvent(QPaintEvent*) {
  const TextMetrics metrics;
  graph_.Resize(width(), height());
  ApplyFinishedLook(graph_, size(), metrics);
  TakeColors();  // fonts of another size are black
  if (graph_.SeriesCount() > 0) DrawAsOutline(graph_.Series(0));
  QPainter painter(this);
  PaintPlot(painter, graph_, LayoutPlot(graph_, size(), metrics), PaintTarget::Screen);
}

}  // namespace tarnwick
