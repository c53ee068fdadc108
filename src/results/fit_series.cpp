#include "results/fit_series.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/fits/errors_between.h"
#include "analysis/fits/fit_job.h"
#include "analysis/fits/fit_residuals.h"
#include "base/error.h"
#include "base/number_text.h"
#include "data/points/point_columns.h"
#include "fit/judge/fit_bands.h"
#include "fit/model/model_copy.h"
#include "graph/all_series.h"
#include "graph/axes/tick.h"
#include "graph/graph_update.h"
#include "graph/panel_axis.h"
#include "graph/series_names.h"
#include "graph/xy_graph.h"
#include "results/made_series.h"

namespace tarnwick {
namespace {

/// Points of a band at most: more are not seen, and every one is kept with the graph.
constexpr std::int32_t kBandPoints = 300;
/// Of the bands' names: "Confidence 95 % of X".
constexpr const char* kConfidence = "Confidence";
constexpr const char* kPrediction = "Prediction";
constexpr const char* kPercentOf = " % of ";
constexpr const char* kLower = ", lower";

const FitResult& ResultOf(const TSeries& series) {
  const FitResult* result = series.Fit().Result().get();
  if (result == nullptr || Failed(result->outcome.why)) {
    throw Error("DataSet \"" + series.SeriesName() +
                "\" has no fit that holds: fit it first, with Show Final Curve.");
  }
  if (!HasErrors(result->statistics)) {
    throw Error(
        "The fit of DataSet \"" + series.SeriesName() +
        "\" has no more points than varied parameters: nothing tells how sure its curve is.");
  }
  return *result;
}

/// True when `one` was made as `other` is now.
bool IsMadeAs(const TSeries& other, const TSeries& one) {
  return one.SeriesName() == other.SeriesName() &&
         one.Source().YDataColumn == other.Source().YDataColumn;
}

/// Takes the place of the DataSet that was made so before, and looks as that did; never of `source`.
TSeries& PutSeries(TxyGraph& graph, const TSeries& source, std::unique_ptr<TSeries> series) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (&graph.Series(i) == &source || !IsMadeAs(*series, graph.Series(i))) continue;
    series->SetStyle(graph.Series(i).Style());
    graph.DeleteSeries(i);
    break;
  }
  return graph.AddSeries(std::move(series));
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
  series->Source().YColExpr = source.Source().YColExpr;
  series->AddPoints(x, band.y);
  return series;
}

std::vector<double> Sum(const std::vector<double>& left, double factor,
                        const std::vector<double>& right) {
  std::vector<double> sum(left.size());
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] = left[i] + factor * right[i];
  return sum;
}

/// A left margin with room for the labels that these values get in the panel, and the title beside them.
void MakeRoomForLabels(TxyGraph& graph, const Extremes& values) {
  if (!std::isfinite(values.y_min) || !std::isfinite(values.y_max)) return;
  constexpr std::size_t kBeside = 32;  // pixels of ticks, title and edge
  constexpr std::size_t kWidest = 6;   // of a letter
  constexpr std::size_t kLongest = 6;  // longer ones give up a power of ten
  const AxisState axis = PanelAxisFor(values.y_min, values.y_max);
  std::size_t longest = 0;
  for (const Tick& tick : MakeTicks(axis, {})) longest = std::max(longest, tick.label.size());
  longest = std::min(longest, kLongest);
  Dimensions dimensions = graph.GetDimensions();
  dimensions.left_margin =
      std::max(dimensions.left_margin, static_cast<std::int32_t>(kBeside + kWidest * longest));
  graph.SetDimensions(dimensions);
}

}  // namespace

std::string ResidualsName(const TSeries& source) {
  return "Residuals of " + source.SeriesName();
}

bool HasResiduals(const TxyGraph& graph, const TSeries& source) {
  return IsNameTaken(graph, ResidualsName(source));
}

std::vector<double> BandLevels(const TxyGraph& graph, const TSeries& source) {
  const std::string_view begin = kConfidence;
  const std::string end = kPercentOf + source.SeriesName();
  std::vector<double> levels;
  for (const TSeries& series : AllSeries(graph)) {
    const std::string name = series.SeriesName();
    if (!name.starts_with(begin) || !name.ends_with(end)) continue;
    const std::size_t length = name.size() - std::min(name.size(), begin.size() + end.size());
    const auto percent = ParseNumber(std::string_view(name).substr(begin.size(), length));
    if (percent && *percent > 0 && *percent < 100) levels.push_back(*percent / 100);
  }
  return levels;
}

TSeries& AddResiduals(TxyGraph& graph, const TSeries& source, const std::string& name) {
  auto residuals = std::make_unique<TSeries>();
  FitResiduals(source, *residuals);
  residuals->SetSeriesName(name);
  SeriesStyle style;
  style.connect_points = false;
  style.symbol_size = 5;
  style.symbol = SymbolShape::Diamond;
  style.symbol_color = style.line_color = source.Style().symbol_color;
  style.first_axis = false;  // where no panel is known
  style.in_panel = true;
  style.show_in_legend = 0;  // the panel is named after them
  residuals->SetStyle(style);
  const GraphUpdate update(graph);
  MakeRoomForLabels(graph, residuals->GetExtremes());
  return PutSeries(graph, source, std::move(residuals));
}

void AddBands(TxyGraph& graph, const TSeries& source, double level) {
  const FitStatistics statistics = ResultOf(source).statistics;
  TCurFit model;
  Assign(model, source.Fit());
  ModelCurve curve;
  FitSettings settings = model.Settings();
  settings.NPoints = std::min(settings.NPoints, kBandPoints);
  curve.Update(settings, WithinMargins(SpanOfPoints(source, graph), settings));
  const std::vector<double> x = XValues(curve.Points());
  const FitJob job = PrepareFit(source, {.points = FitPointChoice::All});
  const FitBands bands = ComputeFitBands(model, statistics, x, level, ErrorsBetween(job, x));
  const std::string suffix = " " + GeneralText(100 * level, 6) + kPercentOf + source.SeriesName();
  const std::array<Band, 4> wanted = {
      {{kConfidence + suffix, LineStyle::Dash, Sum(bands.value, 1, bands.confidence), true},
       {kConfidence + suffix + kLower, LineStyle::Dash, Sum(bands.value, -1, bands.confidence),
        false},
       {kPrediction + suffix, LineStyle::Dot, Sum(bands.value, 1, bands.prediction), true},
       {kPrediction + suffix + kLower, LineStyle::Dot, Sum(bands.value, -1, bands.prediction),
        false}}};
  const GraphUpdate update(graph);
  for (const Band& band : wanted) {
    PutSeries(graph, source, BandSeries(band, x, source));
    NameInLegend(graph);
  }
}

void RecolourBands(TxyGraph& graph, const TSeries& source, Color before) {
  const std::string end = kPercentOf + source.SeriesName();
  for (TSeries& band : AllSeries(graph)) {
    const std::string& name = band.SeriesName();
    const bool is_band = (name.starts_with(kConfidence) || name.starts_with(kPrediction)) &&
                         (name.ends_with(end) || name.ends_with(end + kLower));
    SeriesStyle style = band.Style();
    if (!is_band || style.line_color != before) continue;
    style.line_color = source.ModelCurveColor();
    band.SetStyle(style);
  }
}

}  // namespace tarnwick
