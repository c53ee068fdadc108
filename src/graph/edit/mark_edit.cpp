#include "graph/edit/mark_edit.h"

#include <cmath>

#include "base/error.h"
#include "graph/all_series.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr const char* kNoMarkFound = "No Mark Found!";

double Moved(const AxisScale& scale, double value, double pixels) {
  const double moved = scale.ValueAt(scale.Position(value) + pixels);
  return std::isfinite(value) && std::isfinite(moved) ? moved : value;
}

void CheckSelection(const TxyGraph& graph) {
  if (graph.Marks().CurrentId() == 0) throw Error("No Mark Selected!");
  if (graph.CurrentSeries() == nullptr) throw Error("No DataSet Selected!");
}

void ShiftMark(Mark& mark, double shift) {
  if (mark.type == MarkType::Horizontal) return;
  mark.x1 += shift;
  if (HasEnd(mark.type)) mark.x2 += shift;
}

}  // namespace

const Mark* CurrentMark(const TxyGraph& graph) {
  return graph.Marks().FindMark(graph.Marks().CurrentId());
}

void SetCurrentMark(TxyGraph& graph, std::int32_t id) {
  if (graph.Marks().FindMark(id) == nullptr) return;
  graph.Marks().SetCurrentId(id);
  graph.MarksChanged();
}

std::int32_t AddMark(TxyGraph& graph, const Mark& mark) {
  const std::int32_t id = graph.Marks().AddMark(mark);
  graph.MarksChanged();
  return id;
}

void SetMark(TxyGraph& graph, const Mark& mark) {
  graph.Marks().SetMark(mark);
  graph.MarksChanged();
}

bool DeleteMark(TxyGraph& graph, std::int32_t id) {
  const bool deleted = graph.Marks().DeleteMark(id);
  graph.MarksChanged();
  return deleted;
}

void ClearMarks(TxyGraph& graph) {
  graph.Marks().ClearMarks();
  graph.MarksChanged();
}

Mark MovedMark(const TxyGraph& graph, const Mark& mark, const PixelWay& way, MarkPart part) {
  const AxisScale x = graph.Axis(AxisId::X).Scale();
  const AxisScale y =
      graph.Axis(mark.status == MarkStatus::XAndY2 ? AxisId::Y2 : AxisId::Y).Scale();
  const bool origin = !HasEnd(mark.type) || part != MarkPart::End;
  const bool end = HasEnd(mark.type) && part != MarkPart::Origin;
  Mark moved = mark;
  if (origin && mark.type != MarkType::Horizontal) moved.x1 = Moved(x, mark.x1, way.right);
  if (origin && mark.type != MarkType::Vertical) moved.y1 = Moved(y, mark.y1, way.down);
  if (end) {
    moved.x2 = Moved(x, mark.x2, way.right);
    moved.y2 = Moved(y, mark.y2, way.down);
  }
  return moved;
}

bool MoveMark(TxyGraph& graph, std::int32_t id, const PixelWay& way) {
  const Mark* mark = graph.Marks().FindMark(id);
  if (mark == nullptr) return false;
  SetMark(graph, MovedMark(graph, *mark, way));
  return true;
}

void SetBaseLine(TSeries& series, const BaseLine& line) {
  series.BeginUpdate();
  // Automatic zero would move the line away again with the next edit.
  series.SetAutoZero(false);
  series.SetBaseLineSlope(line.slope);
  series.SetZeroValue(line.offset);
  series.EndUpdate();
}

void SetBaseLine(TSeries& series, const Mark* mark) {
  if (mark == nullptr) throw Error(kNoMarkFound);
  BaseLine line{mark->y1, 0};
  if (mark->type == MarkType::Line) {
    line.slope = (mark->y2 - mark->y1) / (mark->x2 - mark->x1);
    line.offset = (mark->y1 * mark->x2 - mark->y2 * mark->x1) / (mark->x2 - mark->x1);
    if (!std::isfinite(line.slope) || !std::isfinite(line.offset)) {
      throw Error("Mark Can Not be a Vertical Line");
    }
  } else if (mark->type != MarkType::Horizontal) {
    throw Error("Mark must be Either Linier or Horizontal");
  }
  SetBaseLine(series, line);
}

void SetBaseLineFromCurrentMark(TxyGraph& graph) {
  CheckSelection(graph);
  TSeries& series = *graph.CurrentSeries();
  if (YAxisOf(series) != AxisId::Y) throw Error("DataSet must be Plotted in Main Axes!");
  SetBaseLine(series, CurrentMark(graph));
}

void ShiftGraphX(TxyGraph& graph, double shift) {
  if (shift == 0) return;
  graph.BeginUpdate();
  for (TSeries& series : AllSeries(graph)) series.ShiftX(shift);
  const std::vector<Mark> marks = graph.Marks().All();
  for (Mark moved : marks) {
    ShiftMark(moved, shift);
    graph.Marks().SetMark(moved);
  }
  graph.EndUpdate();
}

void MoveXOrigin(TxyGraph& graph, const Mark* mark) {
  if (mark == nullptr) throw Error(kNoMarkFound);
  if (mark->type != MarkType::Vertical || !std::isfinite(mark->x1)) {
    throw Error("Mark must be a Vertical Line");
  }
  ShiftGraphX(graph, -mark->x1);
}

void MoveXOriginToCurrentMark(TxyGraph& graph) {
  CheckSelection(graph);
  MoveXOrigin(graph, CurrentMark(graph));
}

}  // namespace tarnwick
