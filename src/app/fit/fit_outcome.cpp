#include "app/fit/fit_outcome.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/fit_residuals.h"
#include "app/fit/fit_texts.h"
#include "app/fit/fit_work.h"
#include "app/fit/residual_band.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "data/points/point_columns.h"
#include "desk/document/document.h"
#include "fit/judge/fit_bands.h"
#include "fit/model/model_copy.h"
#include "graph/edit/mark_edit.h"
#include "graph/layout/plot_layout.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kSecondAxisMargin = 55;
/// Points of a band at most: more are not seen, and every one is kept with the graph.
constexpr std::int32_t kBandPoints = 300;
constexpr double kPrintInset = 12;      // pixels between plot edge and printed parameters
constexpr double kPrintedWidth = 0.42;  // of the plot, that printed parameters may cover
constexpr double kDashLength = 16;      // of the line before each
constexpr double kLineSpacing = 1.8;    // of the label font's height
constexpr std::size_t kWorseThanAnyPoints = 1'000'000'000'000;

const FitResult& ResultOf(const TSeries& series) {
  const FitResult* result = series.Fit().Result().get();
  if (result == nullptr || Failed(result->outcome.why)) {
    throw Error("DataSet \"" + series.SeriesName() +
                "\" has no fit that holds: fit it first, with Show Final Curve.");
  }
  return *result;
}

/// Takes the place of a DataSet of the same name, unless that is the current one.
const TSeries& PutSeries(TxyGraph& graph, std::unique_ptr<TSeries> series) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (&graph.Series(i) == graph.CurrentSeries()) continue;
    if (graph.Series(i).SeriesName() != series->SeriesName()) continue;
    graph.DeleteSeries(i);
    break;
  }
  return graph.AddSeries(std::move(series));
}

void ShowSecondAxis(TxyGraph& graph) {
  graph.Axis(AxisId::Y2).SetShowAxis(true);
  Dimensions dimensions = graph.GetDimensions();
  dimensions.right_margin = std::max(dimensions.right_margin, kSecondAxisMargin);
  graph.SetDimensions(dimensions);
}

/// Not the whole axis: DataSets that fill it would make it grow.
CurveSpan SpanOfPoints(const TSeries& series, const TxyGraph& graph) {
  const bool log = graph.Axis(AxisId::X).LogScale();
  const Extremes extremes = series.GetExtremes();
  return {log ? SmallestPositiveX(series.Points(), extremes) : extremes.x_min, extremes.x_max,
          log ? CurveSpacing::Geometric : CurveSpacing::Linear};
}

struct Band {
  std::string name;
  LineStyle style = LineStyle::Dash;
  std::vector<double> y;
  bool named = true;  // one of each pair stands in the legend
};

std::unique_ptr<TSeries> BandSeries(const Band& band, const std::vector<double>& x,
                                    const TSeries& source) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(band.name);
  SeriesStyle style;
  style.show_symbols = false;
  style.line_color = source.ModelCurveColor();
  style.line_style = band.style;
  style.first_axis = source.Style().first_axis;
  style.show_in_legend = band.named ? 1 : 0;
  style.selectable = false;
  series->SetStyle(style);
  series->Source().XDataColumn = source.Source().XDataColumn;
  series->Source().YDataColumn = source.Source().YDataColumn;
  series->AddPoints(x, band.y);
  return series;
}

std::vector<double> Sum(const std::vector<double>& left, double factor,
                        const std::vector<double>& right) {
  std::vector<double> sum(left.size());
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] = left[i] + factor * right[i];
  return sum;
}

/// The parameters to print; marks the varied ones when none is marked.
std::vector<FittedParameter> PrintedParameters(TSeries& series) {
  TCurFit& model = series.Fit();
  bool any = false;
  for (std::int32_t i = 1; i <= model.NParams(); ++i) any = any || model.Param(i).Printed();
  for (std::int32_t i = 1; !any && i <= model.NParams(); ++i) {
    model.Param(i).SetPrinted(model.Param(i).Vary());
  }
  const FitResult none;
  const FitResult* result = model.Result().get();
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

/// What of the picture a text must not hide, nor be hidden by.
bool IsTaken(const PlotLayout& layout, const QRectF& area) {
  const auto crosses = [&](const QRectF& box) { return box.intersects(area); };
  return (layout.legend && crosses(layout.legend->frame)) ||
         std::any_of(layout.children.begin(), layout.children.end(),
                     [&](const ChildFrame& child) { return crosses(child.frame); }) ||
         std::any_of(layout.marks.begin(), layout.marks.end(), [&](const MarkItem& mark) {
           return mark.caption && crosses(mark.caption->Box());
         });
}

/// The corner of the plot where a text of this size covers fewest points, and nothing else that is to be read.
QPointF QuietCorner(const PlotLayout& layout, const TSeries& series, const AxisScale& y,
                    QSizeF size) {
  const QRectF plot = layout.plot.adjusted(kPrintInset, kPrintInset, -kPrintInset, -kPrintInset);
  const double right = std::max(plot.left(), plot.right() - size.width());
  const double bottom = std::max(plot.top(), plot.bottom() - size.height());
  const std::array<QPointF, 4> corners = {QPointF(right, plot.top()), QPointF(right, bottom),
                                          QPointF(plot.left(), bottom), plot.topLeft()};
  const auto cost = [&](QPointF corner) {
    const QRectF area(corner, size);
    return PointsWithin(series, layout.Axis(AxisId::X).scale, y, area) +
           (IsTaken(layout, area) ? kWorseThanAnyPoints : 0);
  };
  return *std::min_element(corners.begin(), corners.end(),
                           [&](QPointF left, QPointF other) { return cost(left) < cost(other); });
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

/// Where a line of an earlier printing stands.
const Mark* EarlierLine(const TxyGraph& graph, const std::string& beginning) {
  for (const Mark& mark : graph.Marks().All()) {
    if (mark.type == MarkType::Line && mark.caption.starts_with(beginning)) return &mark;
  }
  return nullptr;
}

}  // namespace

void AddResiduals(Document& document) {
  TSeries& source = CurrentDataSet(document);
  auto residuals = std::make_unique<TSeries>();
  FitResiduals(source, *residuals);
  residuals->SetSeriesName("Residuals of " + source.SeriesName());
  SeriesStyle style;
  style.connect_points = false;
  style.symbol_size = 5;
  style.symbol = SymbolShape::Diamond;
  style.symbol_color = style.line_color = Color::FromRgb(0x70, 0x70, 0x70);
  style.first_axis = false;
  residuals->SetStyle(style);
  document.Edit("Residuals", [&](TxyGraph& graph) {
    const TSeries& put = PutSeries(graph, std::move(residuals));
    ShowSecondAxis(graph);
    GiveResidualsABand(graph, put);
  });
}

void AddBands(Document& document, double level) {
  TSeries& source = CurrentDataSet(document);
  const FitStatistics statistics = ResultOf(source).statistics;
  TCurFit model;
  Assign(model, source.Fit());
  ModelCurve curve;
  FitSettings settings = model.Settings();
  settings.NPoints = std::min(settings.NPoints, kBandPoints);
  curve.Update(settings, WithinMargins(SpanOfPoints(source, document.Graph()), settings));
  const std::vector<double> x = XValues(curve.Points());
  const FitBands bands = ComputeFitBands(model, statistics, x, level);
  const std::string suffix = " " + GeneralText(100 * level, 6) + " % of " + source.SeriesName();
  const std::array<Band, 4> wanted = {
      {{"Confidence" + suffix, LineStyle::Dash, Sum(bands.value, 1, bands.confidence), true},
       {"Confidence" + suffix + ", lower", LineStyle::Dash, Sum(bands.value, -1, bands.confidence),
        false},
       {"Prediction" + suffix, LineStyle::Dot, Sum(bands.value, 1, bands.prediction), true},
       {"Prediction" + suffix + ", lower", LineStyle::Dot, Sum(bands.value, -1, bands.prediction),
        false}}};
  document.Edit("Bands", [&](TxyGraph& graph) {
    for (const Band& band : wanted) PutSeries(graph, BandSeries(band, x, source));
  });
}

void PrintFitOnGraph(Document& document, QSizeF size) {
  CurrentDataSet(document);
  document.Edit("Print on Graph", [&](TxyGraph& graph) {
    TSeries& series = *graph.CurrentSeries();
    const std::vector<FittedParameter> printed = PrintedParameters(series);
    if (printed.empty()) {
      throw Error("DataSet \"" + series.SeriesName() + "\" has no parameters to print.");
    }
    const PlotLayout layout = LayoutPlot(graph, size, TextMetrics());
    const AxisScale& x = layout.Axis(AxisId::X).scale;
    const AxisId y_axis = graph.YAxisOf(series);
    const AxisScale& y = layout.Axis(y_axis).scale;
    const double height =
        kLineSpacing * TextMetrics().LineHeight(graph.GetAppearance().font_for_labels);
    QPointF place = QuietCorner(
        layout, series, y,
        {layout.plot.width() * kPrintedWidth, height * static_cast<double>(printed.size())});
    for (const FittedParameter& one : printed) {
      const std::string beginning = BeginningOf(one.settings.Name, series, graph);
      place.ry() += height;
      Mark mark;
      if (const Mark* earlier = EarlierLine(graph, beginning)) {
        mark = *earlier;
      } else {
        mark.type = MarkType::Line;
        mark.status = y_axis == AxisId::Y ? MarkStatus::XAndY : MarkStatus::XAndY2;
        mark.x1 = x.ValueAt(place.x());
        mark.x2 = x.ValueAt(place.x() + kDashLength);
        mark.y1 = mark.y2 = y.ValueAt(place.y() - height / 2);
      }
      mark.color = series.ModelCurveColor();
      mark.caption = beginning + PlusMinusText(one.settings.Value, one.error, one.settings.Units);
      if (mark.id != 0) {
        SetMark(graph, mark);
      } else {
        AddMark(graph, mark);
      }
    }
    Appearance appearance = graph.GetAppearance();
    appearance.marks_are_shown = true;
    graph.SetAppearance(appearance);
  });
}

}  // namespace tarnwick
