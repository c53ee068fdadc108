#include "results/fit_print.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/error.h"
#include "graph/edit/mark_edit.h"
#include "graph/graph_update.h"
#include "graph/layout/plot_layout.h"
#include "graph/layout/quiet_corner.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "results/fit_texts.h"
#include "results/joint_fit.h"

namespace tarnwick {
namespace {

constexpr double kInset = 12;         // pixels between plot edge and printed parameters
constexpr double kWidth = 0.42;       // of the plot, that printed parameters may cover
constexpr double kLineSpacing = 1.8;  // of the label font's height

/// Marks the varied parameters for printing where none is marked.
void MarkPrinted(TCurFit& model) {
  bool any = false;
  for (std::int32_t i = 1; i <= model.NParams(); ++i) any = any || model.Param(i).Printed();
  for (std::int32_t i = 1; !any && i <= model.NParams(); ++i) {
    model.Param(i).SetPrinted(model.Param(i).Vary());
  }
}

std::vector<FittedParameter> PrintedParameters(const TxyGraph& graph, const TSeries& series) {
  const TCurFit& model = series.Fit();
  const FitResult none;
  const FitResult* result = FitChangedText(graph, series).empty() ? model.Result().get() : nullptr;
  std::vector<FittedParameter> printed =
      FittedParameters(model.Settings(), result != nullptr ? *result : none);
  std::erase_if(printed, [](const FittedParameter& one) { return !one.settings.Printed; });
  return printed;
}

std::size_t PointsWithin(const TSeries& series, const AxisScale& x, const AxisScale& y,
                         const QRectF& area) {
  const PointChain& points = series.Points();
  std::size_t count = 0;
  for (std::size_t i = points.LowerBound(x.ValueAt(area.left()));
       i < points.Size() && points.At(i).x <= x.ValueAt(area.right()); ++i) {
    const Point point = points.At(i);
    const double at = y.Position(series.GetBaseLine().CorrectedY(point.x, point.y));
    count += at >= area.top() && at <= area.bottom();
  }
  return count;
}

/// The corner of the plot where a text of this size covers fewest points, and nothing else that is to be read.
QPointF QuietCorner(const PlotLayout& layout, const TSeries& series, const AxisScale& y,
                    QSizeF size) {
  const QRectF plot = layout.plot.adjusted(kInset, kInset, -kInset, -kInset);
  const double right = std::max(plot.left(), plot.right() - size.width());
  const double bottom = std::max(plot.top(), plot.bottom() - size.height());
  const std::array<QRectF, 4> corners = {
      QRectF({right, plot.top()}, size), QRectF({right, bottom}, size),
      QRectF({plot.left(), bottom}, size), QRectF(plot.topLeft(), size)};
  PictureContents contents{CaptionBoxes(layout), {}};
  for (const QRectF& child : ChildBoxes(layout)) contents.boxes.push_back(child);
  if (layout.legend) contents.boxes.push_back(layout.legend->frame);
  contents.points_in = [&](const QRectF& area) {
    return PointsWithin(series, layout.Axis(AxisId::X).scale, y, area);
  };
  return corners.at(FindQuietPlace(corners, contents).index).topLeft();
}

/// What the line of a parameter begins with. Of several fitted DataSets each line names its own.
std::string BeginningOf(const std::string& parameter, const TSeries& series,
                        const TxyGraph& graph) {
  int fitted = 0;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    fitted += graph.Series(i).Fit().Expression().empty() ? 0 : 1;
  }
  return (fitted > 1 ? series.SeriesName() + ": " : std::string()) + parameter + " = ";
}

std::string LineOf(const FittedParameter& one, const std::string& beginning) {
  return beginning + PlusMinusText(one.settings.Value, one.error, one.settings.Units);
}

/// Where a line of an earlier printing stands.
const Mark* EarlierLine(const TxyGraph& graph, const std::string& beginning) {
  for (const Mark& mark : graph.Marks().All()) {
    if (mark.type == MarkType::Line && mark.caption.starts_with(beginning)) return &mark;
  }
  return nullptr;
}

/// A line of text that stands nowhere yet, from `place` on: a mark without extent, of which only the caption is seen.
Mark NewLine(const PlotLayout& layout, AxisId y_axis, QPointF place) {
  const AxisScale& x = layout.Axis(AxisId::X).scale;
  Mark mark;
  mark.type = MarkType::Line;
  mark.status = y_axis == AxisId::Y ? MarkStatus::XAndY : MarkStatus::XAndY2;
  mark.x1 = mark.x2 = x.ValueAt(place.x());
  mark.y1 = mark.y2 = layout.Axis(y_axis).scale.ValueAt(place.y());
  return mark;
}

void PutMark(TxyGraph& graph, const Mark& mark) {
  if (mark.id != 0) {
    SetMark(graph, mark);
  } else {
    AddMark(graph, mark);
  }
}

}  // namespace

void RenewPrinted(TxyGraph& graph, const TSeries& series) {
  const GraphUpdate update(graph);
  for (const FittedParameter& one : PrintedParameters(graph, series)) {
    const std::string beginning = BeginningOf(one.settings.Name, series, graph);
    const Mark* const earlier = EarlierLine(graph, beginning);
    if (earlier == nullptr) continue;
    Mark mark = *earlier;
    mark.caption = LineOf(one, beginning);
    SetMark(graph, mark);
  }
}

bool IsPrinted(const TxyGraph& graph, const TSeries& series) {
  const TCurFit& model = series.Fit();
  for (std::int32_t i = 1; i <= model.NParams(); ++i) {
    const TDBLParameter& one = model.Param(i);
    if (one.Printed() && EarlierLine(graph, BeginningOf(one.Name(), series, graph)) != nullptr)
      return true;
  }
  return false;
}

void PrintFitOnGraph(TxyGraph& graph, TSeries& series) {
  const GraphUpdate update(graph);
  MarkPrinted(series.Fit());
  const std::vector<FittedParameter> printed = PrintedParameters(graph, series);
  if (printed.empty()) {
    throw Error("DataSet \"" + series.SeriesName() + "\" has no parameters to print.");
  }
  const QSizeF size(graph.ClientWidth(), graph.ClientHeight());
  const PlotLayout layout = LayoutPlot(graph, size, TextMetrics());
  const AxisId y_axis = YAxisOf(series);
  const double height =
      kLineSpacing * TextMetrics().LineHeight(graph.GetAppearance().font_for_labels);
  QPointF place =
      QuietCorner(layout, series, layout.Axis(y_axis).scale,
                  {layout.plot.width() * kWidth, height * static_cast<double>(printed.size())});
  for (const FittedParameter& one : printed) {
    const std::string beginning = BeginningOf(one.settings.Name, series, graph);
    place.ry() += height;
    const Mark* earlier = EarlierLine(graph, beginning);
    Mark mark =
        earlier != nullptr ? *earlier : NewLine(layout, y_axis, place - QPointF(0, height / 2));
    mark.color = series.ModelCurveColor();
    mark.caption = LineOf(one, beginning);
    PutMark(graph, mark);
  }
  Appearance appearance = graph.GetAppearance();
  appearance.marks_are_shown = true;
  graph.SetAppearance(appearance);
}

}  // namespace tarnwick
