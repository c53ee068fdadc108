#include "app/modes/draw_mark_mode.h"

#include <QInputDialog>
#include <QMouseEvent>
#include <string>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "app/canvas/overlay.h"
#include "graph/edit/mark_edit.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

constexpr double kLeastDrag = 4;
constexpr double kPointWidth = 8;
constexpr double kCaret = 8;  // pixels above and below the place of a text

struct Words {
  ModeMaker maker;
  std::string_view hint;
  const char* step;  // the name of the edit
};

Words WordsOf(MarkType type) {
  switch (type) {
    case MarkType::Vertical:
      return {MakeDrawMarkMode<MarkType::Vertical>, "Click where the Vertical Mark is to be",
              "Draw Vertical Mark"};
    case MarkType::Horizontal:
      return {MakeDrawMarkMode<MarkType::Horizontal>, "Click where the Horizontal Mark is to be",
              "Draw Horizontal Mark"};
    case MarkType::Point:
      return {MakeDrawMarkMode<MarkType::Point>, "Click where the Point Mark is to be",
              "Draw Point Mark"};
    case MarkType::Text:
      return {MakeDrawMarkMode<MarkType::Text>, "Click where the Text is to begin", "Write Text"};
    case MarkType::Arrow:
      return {MakeDrawMarkMode<MarkType::Arrow>, "Drag from the Origin of the Arrow to its Tip",
              "Draw Arrow"};
    case MarkType::Rectangle:
      return {MakeDrawMarkMode<MarkType::Rectangle>,
              "Drag from one Corner of the Rectangle to the other", "Draw Rectangle"};
    case MarkType::Line:
      break;
  }
  return {MakeDrawMarkMode<MarkType::Line>, "Drag from the Origin of the Line Mark to its End",
          "Draw Linear Mark"};
}

/// Adds the mark so that it can be seen.
void AddShownMark(TxyGraph& graph, Mark mark) {
  graph.BeginUpdate();
  Appearance appearance = graph.GetAppearance();
  mark.color = appearance.axes_color;
  appearance.marks_are_shown = true;
  graph.SetAppearance(appearance);
  AddMark(graph, mark);
  graph.EndUpdate();
}

/// Empty when the user has nothing to write after all.
std::string AskForText(GraphCanvas& canvas) {
  return QInputDialog::getText(&canvas, QObject::tr("Text Mark"), QObject::tr("&Text:"))
      .simplified()
      .toStdString();
}

}  // namespace

ModeMaker DrawMarkMode::Maker() const {
  return WordsOf(type_).maker;
}

std::string_view DrawMarkMode::Hint() const {
  return WordsOf(type_).hint;
}

void DrawMarkMode::MousePress(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !IsInPlot(canvas, event.position())) return;
  if (!start_) start_ = event.position();
}

void DrawMarkMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  place_.reset();
  if (start_ || IsInPlot(canvas, event.position())) place_ = event.position();
}

void DrawMarkMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !start_) return;
  place_ = event.position();
  const bool only_begun = HasEnd(type_) && QLineF(*start_, *place_).length() < kLeastDrag;
  if (only_begun) return;
  const std::string text = type_ == MarkType::Text ? AskForText(canvas) : std::string();
  if (type_ != MarkType::Text || !text.empty()) Draw(canvas, text);
  canvas.EndMode();
}

void DrawMarkMode::Draw(GraphCanvas& canvas, const std::string& caption) const {
  Document& document = canvas.GetDocument();
  const TSeries* series = document.Graph().CurrentSeries();
  const bool second = series && YAxisOf(*series) == AxisId::Y2;
  const PlotPoint end = ValueAt(canvas, *place_);
  const PlotPoint begin = HasEnd(type_) ? ValueAt(canvas, *start_) : end;
  Mark mark;
  mark.type = type_;
  mark.caption = caption;
  mark.status = second ? MarkStatus::XAndY2 : MarkStatus::XAndY;
  if (type_ != MarkType::Horizontal) mark.x1 = begin.x;
  if (type_ != MarkType::Vertical) mark.y1 = begin.y;
  if (StandIn(type_) == MarkType::Point) mark.x2 = kPointWidth;
  if (HasEnd(type_)) mark.x2 = end.x, mark.y2 = end.y;
  document.Edit(WordsOf(type_).step, [&](TxyGraph& graph) { AddShownMark(graph, mark); });
}

void DrawMarkMode::PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const {
  if (!place_) return;
  const QRectF& plot = canvas.Layout().plot;
  const double x = place_->x();
  const double y = place_->y();
  painter.save();
  painter.setClipRect(plot);
  switch (type_) {
    case MarkType::Vertical:
      DrawOverlayLine(painter, {x, plot.top()}, {x, plot.bottom()}, kOverlayBlue);
      break;
    case MarkType::Horizontal:
      DrawOverlayLine(painter, {plot.left(), y}, {plot.right(), y}, kOverlayBlue);
      break;
    case MarkType::Point:
      DrawRing(painter, *place_, kOverlayBlue);
      break;
    case MarkType::Text:
      DrawOverlayLine(painter, {x, y - kCaret}, {x, y + kCaret}, kOverlayBlue);
      break;
    case MarkType::Rectangle:
      if (start_) {
        QPainterPath box;
        box.addRect(QRectF(*start_, *place_).normalized());
        DrawOverlay(painter, box, kOverlayBlue);
      }
      break;
    case MarkType::Line:
    case MarkType::Arrow:
      if (start_) DrawOverlayLine(painter, *start_, *place_, kOverlayBlue);
      break;
  }
  painter.restore();
}

QCursor DrawMarkMode::Cursor() const {
  return DrawnCursor(CanvasCursor::MarkBox);
}

}  // namespace tarnwick
