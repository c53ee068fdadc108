#include "graph/read_out.h"

#include "base/day_number.h"
#include "base/number_text.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 8;
constexpr const char* kNoMouse = "Mouse X,Y:   ; ";

/// The axis that the current DataSet's values are read on.
AxisId CurrentYAxis(const TxyGraph& graph) {
  const TSeries* series = graph.CurrentSeries();
  return series == nullptr ? AxisId::Y : YAxisOf(*series);
}

std::string PairText(const TxyGraph& graph, double x, double y) {
  return ValueText(graph.Axis(AxisId::X), x) + ", " + ValueText(graph.Axis(CurrentYAxis(graph)), y);
}

/// " ± 0.5"; nothing for a value without an error.
std::string ErrorText(double error) {
  return IsUndefined(error) ? std::string() : " \xC2\xB1 " + GeneralText(error, kDigits);
}

}  // namespace

std::string ValueText(const TAxis& axis, double value) {
  if (axis.ShowAsTime()) {
    std::string day = FormatDay(value, "yyyy-mm-dd hh:nn:ss");
    if (!day.empty()) return day;
  }
  return GeneralText(value, kDigits);
}

std::string MouseText(const TxyGraph& graph, double x, double y) {
  const char* caption = CurrentYAxis(graph) == AxisId::Y2 ? "Mouse X,Y2: " : "Mouse X,Y: ";
  if (graph.CurrentSeries() == nullptr) caption = "Mouse X,Y:   ";
  return caption + PairText(graph, x, y);
}

std::string PointText(const TxyGraph& graph, const std::optional<PickedPoint>& point) {
  if (!point) return "Point Not Found";
  const char* caption = CurrentYAxis(graph) == AxisId::Y2 ? "  X,Y2: " : "  X,Y: ";
  return "pnt#" + std::to_string(point->number) + caption +
         ValueText(graph.Axis(AxisId::X), point->x) + ErrorText(point->x_error) + ", " +
         ValueText(graph.Axis(CurrentYAxis(graph)), point->y) + ErrorText(point->y_error);
}

ReadOut ReadOutAt(const TxyGraph& graph, int px, int py) {
  const double x = graph.Axis(AxisId::X).Scale().ValueAt(px);
  const TSeries* series = graph.CurrentSeries();
  const AxisScale y_scale =
      series == nullptr ? graph.Axis(AxisId::Y).Scale() : YScaleOf(graph, *series);
  const double y = y_scale.ValueAt(py);
  ReadOut read_out;
  read_out.point = PickPoint(graph, x);
  read_out.text = MouseText(graph, x, y) + "; " + PointText(graph, read_out.point);
  return read_out;
}

std::string PickedReadOut(const TxyGraph& graph, const std::optional<PickedPoint>& point) {
  return kNoMouse + PointText(graph, point);
}

std::string IdleReadOut() {
  return std::string(kNoMouse) + "Point#   X,Y :        ";
}

}  // namespace tarnwick
