#include "app/graph_canvas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "app/axis_zoom.h"
#include "app/rest_mode.h"
#include "app/text.h"
#include "graph/paint_plot.h"
#include "graph/plot_metrics.h"
#include "graph/read_out.h"

namespace tarnwick {
namespace {

constexpr double kZoomPerNotch = 0.8;
constexpr double kUnitsPerNotch = 120;
constexpr qint64 kOneZoomMs = 700;
constexpr double kHoverRadius = 6;
constexpr int kRestMs = 150;

/// The axes that the wheel moves: the one under the pointer, or those of the plot that the modifiers leave.
struct WheelAxes {
  bool x = true;
  bool y = true;
  bool y2 = true;
};

WheelAxes AxesAt(const PlotLayout& layout, QPointF position, Qt::KeyboardModifiers modifiers) {
  const QRectF& plot = layout.plot;
  if (!plot.contains(position)) {
    if (position.x() < plot.left()) return {false, true, false};
    if (position.x() > plot.right()) return {false, false, true};
    return {true, false, false};
  }
  if (modifiers & Qt::ControlModifier) return {true, false, false};
  if (modifiers & Qt::ShiftModifier) return {false, true, true};
  return {};
}

void ZoomAxis(TAxis& axis, double pixel, double factor) {
  const auto range = ZoomedRange(axis.Scale(), pixel, factor);
  if (!range) return;
  axis.SetMin(range->min);
  axis.SetMax(range->max);
}

}  // namespace

GraphCanvas::GraphCanvas(Document& document, QWidget* parent)
    : QWidget(parent), document_(document), mode_(std::make_unique<RestMode>()) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setCursor(mode_->Cursor());
  setAccessibleName(tr("Graph"));
  connect(&document, &Document::graphChanged, this, &GraphCanvas::Redraw);
  const auto finish_look = [this] {
    if (isVisible()) document_.FinishLook(size());
  };
  connect(&document, &Document::stateChanged, this, finish_look);
  look_timer_.setSingleShot(true);
  look_timer_.setInterval(kRestMs);
  connect(&look_timer_, &QTimer::timeout, this, finish_look);
}

GraphCanvas::~GraphCanvas() = default;

void GraphCanvas::SetMode(std::unique_ptr<CanvasMode> mode) {
  ended_mode_ = std::move(mode_);
  mode_ = std::move(mode);
  setCursor(mode_->Cursor());
  update();
}

void GraphCanvas::Redraw() {
  picture_stale_ = true;
  hovered_.reset();
  update();
}

void GraphCanvas::RenderPicture() {
  const double ratio = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * ratio).toSize();
  if (picture_.size() != pixels) picture_ = QImage(pixels, QImage::Format_RGB32);
  picture_.setDevicePixelRatio(ratio);
  layout_ = LayoutPlot(document_.Graph(), size(), TextMetrics());
  QPainter painter(&picture_);
  PaintPlot(painter, document_.Graph(), layout_);
  picture_stale_ = false;
}

void GraphCanvas::paintEvent(QPaintEvent*) {
  if (picture_stale_ || picture_.devicePixelRatio() != devicePixelRatioF()) RenderPicture();
  QPainter painter(this);
  painter.drawImage(0, 0, picture_);
  PaintHoveredPoint(painter);
  mode_->PaintOverlay(painter, *this);
}

void GraphCanvas::PaintHoveredPoint(QPainter& painter) const {
  const TSeries* series = document_.Graph().CurrentSeries();
  if (!hovered_ || !series) return;
  const AxisId y_axis = document_.Graph().YAxisOf(*series);
  const QPointF center(layout_.Axis(AxisId::X).scale.Position(hovered_->x),
                       layout_.Axis(y_axis).scale.Position(hovered_->y));
  if (!layout_.plot.contains(center)) return;
  const Color line = series->Style().line_color;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(255, 255, 255, 160), 4));
  painter.drawEllipse(center, kHoverRadius, kHoverRadius);
  painter.setPen(QPen(QColor(line.Red(), line.Green(), line.Blue()), 2));
  painter.drawEllipse(center, kHoverRadius, kHoverRadius);
}

void GraphCanvas::resizeEvent(QResizeEvent*) {
  document_.Graph().Resize(width(), height());
  Redraw();
  if (isVisible()) look_timer_.start();
}

void GraphCanvas::showEvent(QShowEvent*) {
  document_.FinishLook(size());
}

void GraphCanvas::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Redraw();
  QWidget::changeEvent(event);
}

void GraphCanvas::mousePressEvent(QMouseEvent* event) {
  ended_mode_.reset();
  mode_->MousePress(*this, *event);
}

void GraphCanvas::mouseMoveEvent(QMouseEvent* event) {
  ended_mode_.reset();
  mode_->MouseMove(*this, *event);
  FollowMouse(event->position());
}

void GraphCanvas::mouseReleaseEvent(QMouseEvent* event) {
  ended_mode_.reset();
  mode_->MouseRelease(*this, *event);
  emit mouseReleased();
}

void GraphCanvas::leaveEvent(QEvent*) {
  hovered_.reset();
  update();
  emit readOutChanged(ToQt(IdleReadOut()));
}

void GraphCanvas::FollowMouse(QPointF position) {
  const QPoint pixel = position.toPoint();
  const ReadOut read_out = ReadOutAt(document_.Graph(), pixel.x(), pixel.y());
  hovered_ = read_out.point;
  update();
  emit readOutChanged(ToQt(read_out.text));
}

void GraphCanvas::wheelEvent(QWheelEvent* event) {
  const QPoint turn = event->angleDelta();
  const int units = turn.y() != 0 ? turn.y() : turn.x();
  if (units == 0) return;
  ZoomAt(event->position(), event->modifiers(), std::pow(kZoomPerNotch, units / kUnitsPerNotch));
  FollowMouse(event->position());
  event->accept();
}

void GraphCanvas::ZoomAt(QPointF position, Qt::KeyboardModifiers modifiers, double factor) {
  TxyGraph& graph = document_.Graph();
  const bool same_zoom = last_zoom_.isValid() && last_zoom_.elapsed() < kOneZoomMs;
  if (!same_zoom || document_.Zoom().IsEmpty()) document_.Zoom().Remember(graph);
  last_zoom_.start();
  const WheelAxes axes = AxesAt(layout_, position, modifiers);
  graph.BeginUpdate();
  if (axes.x) ZoomAxis(graph.Axis(AxisId::X), position.x(), factor);
  if (axes.y) ZoomAxis(graph.Axis(AxisId::Y), position.y(), factor);
  if (axes.y2) ZoomAxis(graph.Axis(AxisId::Y2), position.y(), factor);
  graph.EndUpdate();
}

void GraphCanvas::keyPressEvent(QKeyEvent* event) {
  ended_mode_.reset();
  if (!mode_->KeyPress(*this, *event)) QWidget::keyPressEvent(event);
}

void GraphCanvas::keyReleaseEvent(QKeyEvent* event) {
  ended_mode_.reset();
  if (!mode_->KeyRelease(*this, *event)) QWidget::keyReleaseEvent(event);
}

}  // namespace tarnwick
