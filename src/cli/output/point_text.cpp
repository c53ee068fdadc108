#include "cli/output/point_text.h"

#include <optional>
#include <string>

#include "base/number_text.h"
#include "data/regression/regression_figures.h"
#include "graph/line_way.h"

namespace tarnwick::cli {
namespace {

/// Calls `visit(Point)` for every point along the line.
template <class Visit>
void ForEachPoint(const PointChain& chain, const LineWay& way, Visit&& visit) {
  for (std::size_t i = 0; i < chain.Size(); ++i) visit(chain.At(way.IndexAt(i)));
}

/// The errors that the DataSet has, by their names.
struct ErrorColumns {
  bool y, x;
  explicit ErrorColumns(const TDataSeries& series)
      : y(HasYErrors(series.Errors())), x(HasXErrors(series.Errors())) {}
};

std::string PointLine(const TDataSeries& series, const Point& point, const ErrorColumns& errors) {
  return std::to_string(point.id) + ',' + ShortestText(point.x) + ',' + ShortestText(point.y) +
         ',' + ShortestText(series.GetBaseLine().CorrectedY(point.x, point.y)) + ',' +
         ShortestText(point.regression) +
         (errors.y ? ',' + ShortestText(YErrorAt(series, point)) : "") +
         (errors.x ? ',' + ShortestText(XErrorAt(series, point)) : "") + '\n';
}

Json PointJson(const TDataSeries& series, const Point& point, const ErrorColumns& errors) {
  Json json = {{"id", point.id},
               {"x", JsonNumber(point.x)},
               {"y", JsonNumber(point.y)},
               {"corrected", JsonNumber(series.GetBaseLine().CorrectedY(point.x, point.y))},
               {"regression", JsonNumber(point.regression)}};
  if (errors.y) json["y_error"] = JsonNumber(YErrorAt(series, point));
  if (errors.x) json["x_error"] = JsonNumber(XErrorAt(series, point));
  return json;
}

Json PointsJson(const TSeries& series) {
  Json points = Json::Array();
  const ErrorColumns errors(series);
  ForEachPoint(series.Points(), WayOf(series),
               [&](const Point& point) { points.Append(PointJson(series, point, errors)); });
  return points;
}

Json CurveJson(const TDataSeries& series) {
  Json curve = Json::Array();
  ForEachPoint(series.Regression().curve, {}, [&](const Point& sample) {
    curve.Append({{"x", JsonNumber(sample.x)}, {"value", JsonNumber(sample.regression)}});
  });
  return curve;
}

}  // namespace

void AddRegressionFigures(const TDataSeries& series, Json& document) {
  const std::optional<RegressionFigures> figures =
      FiguresOf(series.Points(), series.RegressionType());
  if (!figures) return;
  Json json = {{"intercept", JsonNumber(figures->intercept)},
               {"slope", JsonNumber(figures->slope)}};
  if (figures->curvature) json["curvature"] = JsonNumber(*figures->curvature);
  document["regression_figures"] = json;
}

void PrintPoints(const TSeries& series, Output& output) {
  if (output.IsJson()) {
    output.Document({{"points", PointsJson(series)}});
    return;
  }
  const ErrorColumns errors(series);
  output.Text() << "id,x,y,corrected,regression" << (errors.y ? ",y_error" : "")
                << (errors.x ? ",x_error" : "") << '\n';
  ForEachPoint(series.Points(), WayOf(series),
               [&](const Point& point) { output.Text() << PointLine(series, point, errors); });
}

void PrintCurve(const TDataSeries& series, Output& output) {
  if (output.IsJson()) {
    output.Document({{"curve", CurveJson(series)}});
    return;
  }
  output.Text() << "x,value\n";
  ForEachPoint(series.Regression().curve, {}, [&](const Point& sample) {
    output.Text() << ShortestText(sample.x) << ',' << ShortestText(sample.regression) << '\n';
  });
}

void PrintRegression(const TSeries& series, Output& output) {
  const bool has_curve = HasRegressionCurve(series.RegressionType());
  if (output.IsJson()) {
    Json document = {{"points", PointsJson(series)}};
    if (has_curve) document["curve"] = CurveJson(series);
    AddRegressionFigures(series, document);
    output.Document(document);
  } else if (has_curve) {
    PrintCurve(series, output);
  } else {
    PrintPoints(series, output);
  }
}

}  // namespace tarnwick::cli
