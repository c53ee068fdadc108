#include "app/canvas/graph_canvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "app/canvas/axis_zoom.h"
#include "app/canvas/canvas_accessible.h"
#include "app/canvas/child_grip.h"
#include "app/canvas/current_mark.h"
#include "app/canvas/overlay.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/finish_look.h"
#include "desk/widgets/text.h"
#include "graph/axes/plot_metrics.h"
#include "graph/paint/paint_plot.h"
#include "graph/read_out.h"

namespace tarnwick {
namespace {

constexpr double kZoomPerNotch = 0.8;
constexpr double kUnitsPerNotch = 120;
constexpr qint64 kOneZoomMs = 700;
constexpr double kPickedRadius = 4;
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

GraphCanvas::GraphCanvas(Document& document, Prompt& prompt, ModeMaker rest, QWidget* parent)
    : QWidget(parent),
      document_(document),
      prompt_(prompt),
      rest_(rest),
      mode_(rest()),
      selection_(document) {
  InstallCanvasAccessible();
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setContextMenuPolicy(Qt::CustomContextMenu);
  setCursor(mode_->Cursor());
  NameForAssistance();
  connect(&document, &Document::graphChanged, this, &GraphCanvas::Redraw);
  connect(&document, &Document::pointPicked, this, &GraphCanvas::FollowPick);
  const auto finish_look = [this] {
    if (isVisible()) FinishLook(document_, size());
  };
  connect(&document, &Document::stateChanged, this, finish_look);
  look_timer_.setSingleShot(true);
  look_timer_.setInterval(kRestMs);
  connect(&look_timer_, &QTimer::timeout, this, finish_look);
}

GraphCanvas::~GraphCanvas() {
  // A mode may take back what it began, and the canvas hears of that.
  mode_.reset();
}

void GraphCanvas::SetMode(std::unique_ptr<CanvasMode> mode) {
  ended_modes_.push_back(std::move(mode_));
  mode_ = std::move(mode);
  setCursor(mode_->Cursor());
  update();
  emit modeChanged();
}

void GraphCanvas::EndMode() {
  SetMode(rest_());
}

void GraphCanvas::SwitchMode(ModeMaker maker) {
  SetMode(IsOn(maker) ? rest_() : maker());
  setFocus();
}

bool GraphCanvas::IsOn(ModeMaker maker) const {
  return mode_->Maker() == maker;
}

void GraphCanvas::BeginMode(std::unique_ptr<CanvasMode> mode, QMouseEvent& press) {
  SetMode(std::move(mode));
  mode_->MousePress(*this, press);
}

void GraphCanvas::AtTheEdge(const std::function<void()>& work) {
  ended_modes_.clear();
  try {
    work();
  } catch (const Error& error) {
    prompt_.Tell(error.what());
  }
}

void GraphCanvas::Redraw() {
  picture_stale_ = true;
  hovered_.reset();
  const std::optional<PickedPoint> picked = Picked();
  selection_.Refresh();
  if (picked && !Picked()) NameForAssistance();
  const TxyGraph& graph = document_.Graph();
  if (picked && Picked() && PointText(graph, picked) != PointText(graph, Picked())) {
    NameForAssistance();
    emit readOutChanged(ToQt(PickedReadOut(graph, Picked())));
  }
  update();
}

const PlotLayout& GraphCanvas::Layout() const {
  const ChildFrame* frame = FrameOf(document_.SelectedChild());
  return frame ? frame->layout : layout_;
}

QPointF GraphCanvas::Origin() const {
  const ChildFrame* frame = FrameOf(document_.SelectedChild());
  return frame ? frame->frame.topLeft() : QPointF();
}

const ChildFrame* GraphCanvas::FrameOf(std::optional<std::size_t> child) const {
  if (!child) return nullptr;
  const auto found = std::find_if(layout_.children.begin(), layout_.children.end(),
                                  [&](const ChildFrame& frame) { return frame.child == *child; });
  return found == layout_.children.end() ? nullptr : &*found;
}

std::optional<std::size_t> GraphCanvas::ChildAt(QPointF place) const {
  const auto found = std::find_if(layout_.children.rbegin(), layout_.children.rend(),
                                  [&](const ChildFrame& frame) {
                                    // What was deleted stays in the picture until it is drawn again.
                                    return frame.child < document_.WholeGraph().Children().size() &&
                                           frame.frame.contains(place);
                                  });
  return found == layout_.children.rend() ? std::nullopt : std::optional(found->child);
}

void GraphCanvas::SelectGraphAt(QPointF place) {
  const ChildFrame* selected = FrameOf(document_.SelectedChild());
  // Half of every handle lies outside the frame.
  if (selected && GripAt(selected->frame, place) != ChildGrip::None) return;
  document_.SelectChild(ChildAt(place));
}

QMouseEvent GraphCanvas::Shifted(const QMouseEvent& event) const {
  return {event.type(),          event.position() - Origin(),
          event.scenePosition(), event.globalPosition(),
          event.button(),        event.buttons(),
          event.modifiers(),     event.source(),
          event.pointingDevice()};
}

void GraphCanvas::RenderPicture() {
  const double ratio = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * ratio).toSize();
  if (picture_.size() != pixels) picture_ = QImage(pixels, QImage::Format_RGB32);
  picture_.setDevicePixelRatio(ratio);
  layout_ = LayoutPlot(document_.WholeGraph(), size(), TextMetrics());
  QPainter painter(&picture_);
  PaintPlot(painter, document_.WholeGraph(), layout_);
  picture_stale_ = false;
}

void GraphCanvas::paintEvent(QPaintEvent*) {
  if (picture_stale_ || picture_.devicePixelRatio() != devicePixelRatioF()) RenderPicture();
  QPainter painter(this);
  painter.drawImage(0, 0, picture_);
  if (const ChildFrame* selected = FrameOf(document_.SelectedChild())) {
    PaintGrips(painter, selected->frame);
  }
  PaintTraces(painter);
  painter.translate(Origin());
  PaintCurrentMark(painter, Layout(), document_.Graph().Marks().CurrentId());
  PaintPickedPoint(painter);
  if (mode_->ShowsNearestPoint()) PaintHoveredPoint(painter);
  mode_->PaintOverlay(painter, *this);
}

void GraphCanvas::PaintTraces(QPainter& painter) const {
  traces_.Paint(painter, layout_, std::nullopt);
  for (const ChildFrame& child : layout_.children) {
    painter.save();
    painter.translate(child.frame.topLeft());
    traces_.Paint(painter, child.layout, child.child);
    painter.restore();
  }
}

std::optional<QPointF> GraphCanvas::PlaceInPlot(const PickedPoint& point) const {
  const TSeries* series = document_.Graph().CurrentSeries();
  if (!series) return std::nullopt;
  const PlotLayout& layout = Layout();
  const QPointF place(layout.Axis(AxisId::X).scale.Position(point.x),
                      layout.YScaleOf(*series).Position(point.y));
  return layout.PlotOf(*series).contains(place) ? std::optional(place) : std::nullopt;
}

void GraphCanvas::PaintHoveredPoint(QPainter& painter) const {
  const auto place = hovered_ ? PlaceInPlot(*hovered_) : std::nullopt;
  if (!place) return;
  const Color line = document_.Graph().CurrentSeries()->Style().line_color;
  DrawRing(painter, *place, QColor(line.Red(), line.Green(), line.Blue()));
}

void GraphCanvas::PaintPickedPoint(QPainter& painter) const {
  const auto place = Picked() ? PlaceInPlot(*Picked()) : std::nullopt;
  if (!place) return;
  const QRectF& plot = Layout().plot;
  painter.setPen(QPen(QColor(0, 0, 0, 70), 1, Qt::DashLine));
  painter.drawLine(QPointF(place->x(), plot.top()), QPointF(place->x(), plot.bottom()));
  painter.drawLine(QPointF(plot.left(), place->y()), QPointF(plot.right(), place->y()));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::white, 2));
  painter.setBrush(kOverlayRed);
  painter.drawEllipse(*place, kPickedRadius + 1, kPickedRadius + 1);
  painter.setBrush(Qt::NoBrush);
}

void GraphCanvas::resizeEvent(QResizeEvent*) {
  document_.WholeGraph().Resize(width(), height());
  Redraw();
  if (isVisible()) look_timer_.start();
}

void GraphCanvas::showEvent(QShowEvent*) {
  FinishLook(document_, size());
}

void GraphCanvas::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Redraw();
  QWidget::changeEvent(event);
}

void GraphCanvas::mousePressEvent(QMouseEvent* event) {
  if (event->buttons() == event->button()) SelectGraphAt(event->position());
  QMouseEvent shifted = Shifted(*event);
  AtTheEdge([&] { mode_->MousePress(*this, shifted); });
}

void GraphCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
  const int clicks = document_.LastClick().count;
  mousePressEvent(event);
  const Document::Click& click = document_.LastClick();
  if (click.count > clicks && click.part != GraphPart()) emit editWanted();
}

void GraphCanvas::mouseMoveEvent(QMouseEvent* event) {
  QMouseEvent shifted = Shifted(*event);
  AtTheEdge([&] { mode_->MouseMove(*this, shifted); });
  ShowReadOutAt(event->position() - Origin());
}

void GraphCanvas::mouseReleaseEvent(QMouseEvent* event) {
  QMouseEvent shifted = Shifted(*event);
  AtTheEdge([&] { mode_->MouseRelease(*this, shifted); });
  emit mouseReleased();
}

void GraphCanvas::leaveEvent(QEvent*) {
  hovered_.reset();
  update();
  emit readOutChanged(ReadOutAtRest());
}

QString GraphCanvas::ReadOutAtRest() const {
  return ToQt(Picked() ? PickedReadOut(document_.Graph(), Picked()) : IdleReadOut());
}

void GraphCanvas::ShowReadOutAt(QPointF place) {
  const QPoint pixel = place.toPoint();
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
  ShowReadOutAt(event->position() - Origin());
  event->accept();
}

void GraphCanvas::RememberScales(ZoomStack& zoom, const TxyGraph& graph) {
  const bool same_zoom = last_zoom_.isValid() && last_zoom_.elapsed() < kOneZoomMs;
  if (!same_zoom || zoom.IsEmpty()) zoom.Remember(graph);
  last_zoom_.start();
}

void GraphCanvas::ZoomAt(QPointF position, Qt::KeyboardModifiers modifiers, double factor) {
  const std::optional<std::size_t> child = ChildAt(position);
  const ChildFrame* frame = FrameOf(child);
  TxyGraph& graph = child ? *document_.WholeGraph().Children()[*child] : document_.WholeGraph();
  const QPointF at = frame ? position - frame->frame.topLeft() : position;
  RememberScales(document_.Zooms().Of(child), graph);
  const WheelAxes axes = AxesAt(frame ? frame->layout : layout_, at, modifiers);
  graph.BeginUpdate();
  if (axes.x) ZoomAxis(graph.Axis(AxisId::X), at.x(), factor);
  if (axes.y) ZoomAxis(graph.Axis(AxisId::Y), at.y(), factor);
  if (axes.y2) ZoomAxis(graph.Axis(AxisId::Y2), at.y(), factor);
  graph.EndUpdate();
}

}  // namespace tarnwick
