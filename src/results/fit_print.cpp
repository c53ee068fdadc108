#include "results/fit_print.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <algorithm>
#include <string>
#include <vector>

#include "base/error.h"
#include "graph/all_series.h"
#include "graph/edit/mark_edit.h"
#include "graph/graph_update.h"
#include "graph/layout/automatic_legend.h"
#include "graph/layout/plot_layout.h"
#include "graph/layout/quiet_corner.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "results/fit_texts.h"
#include "results/joint_fit.h"

namespace tarnwick {
namespace {

constexpr double kInset = 12;         // pixels between plot edge and printed parameters
constexpr double kBeforeText = 6;     // between a mark and its caption
constexpr double kClearance = 8;      // left and right of them
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

/// The place in the plot where a text of this size covers least of what is drawn, and nothing else that is to be read.
QPointF QuietPlaceFor(const TxyGraph& graph, const PlotLayout& layout, QSizeF size) {
  const QRectF plot = layout.plot.adjusted(kInset, kInset, -kInset, -kInset);
  std::vector<QRectF> places = PlacesIn(plot, size);
  PictureContents contents{BoxesToRead(layout), {}};
  if (layout.legend) contents.boxes.push_back(layout.legend->frame);
  const std::vector<QPointF> pixels = SampledPixels(graph, layout);
  contents.points_in = [&pixels](const QRectF& place) {
    const QRectF around = place.adjusted(-kClearance, 0, kClearance, 0);
    return static_cast<std::size_t>(std::ranges::count_if(
        pixels, [&](const QPointF& pixel) { return around.contains(pixel); }));
  };
  return places.at(FindQuietPlace(places, contents).index).topLeft();
}

bool AreSeveralFitted(const TxyGraph& graph) {
  const auto is_fitted = [](const TSeries& series) { return !series.Fit().Expression().empty(); };
  return std::ranges::count_if(AllSeries(graph), is_fitted) > 1;
}

/// What the line of a parameter begins with, alone or as one of several fitted DataSets.
std::string BareBeginning(const std::string& parameter) {
  return parameter + " = ";
}

std::string NamedBeginning(const std::string& parameter, const TSeries& series) {
  return series.SeriesName() + ": " + BareBeginning(parameter);
}

std::string BeginningOf(const std::string& parameter, const TSeries& series,
                        const TxyGraph& graph) {
  return AreSeveralFitted(graph) ? NamedBeginning(parameter, series) : BareBeginning(parameter);
}

std::string LineOf(const FittedParameter& one, const std::string& beginning) {
  return beginning + PlusMinusText(one.settings.Value, one.error, one.settings.Units);
}

double WidthOf(const std::string& line, const TxyGraph& graph) {
  return TextMetrics()
      .SizeOf({QString::fromStdString(line), {}}, graph.GetAppearance().font_for_labels)
      .width();
}

const Mark* FindLine(const TxyGraph& graph, const std::string& beginning) {
  for (const Mark& mark : graph.Marks().All()) {
    if (mark.type == MarkType::Line && mark.caption.starts_with(beginning)) return &mark;
  }
  return nullptr;
}

/// Where a line of an earlier printing stands: one that names the DataSet also when it is the only one fitted now.
const Mark* EarlierLine(const TxyGraph& graph, const std::string& parameter,
                        const TSeries& series) {
  const Mark* const named = FindLine(graph, NamedBeginning(parameter, series));
  if (named != nullptr || AreSeveralFitted(graph)) return named;
  return FindLine(graph, BareBeginning(parameter));
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

/// Lines that were printed when their DataSet was the only one fitted, and still tell what it has, name it.
void NameLinesOfSeveral(TxyGraph& graph) {
  if (!AreSeveralFitted(graph)) return;
  for (const TSeries& series : AllSeries(graph)) {
    for (const FittedParameter& one : PrintedParameters(graph, series)) {
      const std::string bare = LineOf(one, BareBeginning(one.settings.Name));
      const Mark* const line = FindLine(graph, bare);
      if (line == nullptr || line->caption != bare) continue;
      Mark mark = *line;
      mark.caption = LineOf(one, NamedBeginning(one.settings.Name, series));
      SetMark(graph, mark);
    }
  }
}

}  // namespace

void RenewPrinted(TxyGraph& graph, const TSeries& series) {
  const GraphUpdate update(graph);
  NameLinesOfSeveral(graph);
  for (const FittedParameter& one : PrintedParameters(graph, series)) {
    const Mark* const earlier = EarlierLine(graph, one.settings.Name, series);
    if (earlier == nullptr) continue;
    Mark mark = *earlier;
    mark.caption = LineOf(one, BeginningOf(one.settings.Name, series, graph));
    SetMark(graph, mark);
  }
}

void RecolourPrinted(TxyGraph& graph, const TSeries& series, Color before) {
  for (const FittedParameter& one : PrintedParameters(graph, series)) {
    const Mark* const line = EarlierLine(graph, one.settings.Name, series);
    if (line == nullptr || line->color != before) continue;
    Mark mark = *line;
    mark.color = series.ModelCurveColor();
    SetMark(graph, mark);
  }
}

bool IsPrinted(const TxyGraph& graph, const TSeries& series) {
  const TCurFit& model = series.Fit();
  for (std::int32_t i = 1; i <= model.NParams(); ++i) {
    const TDBLParameter& one = model.Param(i);
    if (one.Printed() && EarlierLine(graph, one.Name(), series) != nullptr) return true;
  }
  return false;
}

void PrintFitOnGraph(TxyGraph& graph, TSeries& series) {
  const GraphUpdate update(graph);
  NameLinesOfSeveral(graph);
  MarkPrinted(series.Fit());
  const std::vector<FittedParameter> printed = PrintedParameters(graph, series);
  if (printed.empty()) {
    throw Error("DataSet \"" + series.SeriesName() + "\" has no parameters to print.");
  }
  const QSizeF size(graph.ClientWidth(), graph.ClientHeight());
  if (AutomaticLegendHides(graph, size, TextMetrics())) SettleLegend(graph, size, TextMetrics());
  const PlotLayout layout = LayoutPlot(graph, size, TextMetrics());
  const AxisId y_axis = YAxisOf(series);
  const double height =
      kLineSpacing * TextMetrics().LineHeight(graph.GetAppearance().font_for_labels);
  QSizeF block(0, height * static_cast<double>(printed.size()));
  for (const FittedParameter& one : printed) {
    const std::string line = LineOf(one, BeginningOf(one.settings.Name, series, graph));
    block.setWidth(std::max(block.width(), WidthOf(line, graph)));
  }
  // Longer captions are cut to that.
  block.setWidth(std::min(block.width(), layout.plot.width() / 2) + kBeforeText);
  QPointF place = QuietPlaceFor(graph, layout, block);
  for (const FittedParameter& one : printed) {
    const std::string beginning = BeginningOf(one.settings.Name, series, graph);
    place.ry() += height;
    const Mark* earlier = EarlierLine(graph, one.settings.Name, series);
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
