#include "results/peak_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include "base/error.h"
#include "base/number_text.h"
#include "fit/minimise.h"
#include "graph/graph_update.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kCurvePoints = 600;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The straight line through the valleys at both ends.
BaseLine LineUnder(std::span<const PeakFigures> peaks) {
  const auto valley = [](const PeakFigures& peak) { return peak.height - peak.prominence; };
  const double left = peaks.front().left_valley;
  const double right = peaks.back().right_valley;
  const double low_left = valley(peaks.front());
  const double low_right = valley(peaks.back());
  const double slope = peaks.size() > 1 ? (low_right - low_left) / (right - left) : 0;
  return {low_left - slope * left, slope};
}

void AddPeak(FitSettings& model, const ShapeRow& row, const PeakFigures& peak, double height) {
  const std::size_t number =
      (model.parameters.size() - kLineParameters) / row.parameters.size() + 1;
  for (const PeakParameter& parameter : row.parameters) {
    ParameterSettings made;
    made.Name = parameter.letter + std::to_string(number);
    made.Value = parameter.start(peak, height);
    made.Vary = true;
    made.Description = parameter.description + std::to_string(number);
    made.Low = parameter.low;
    made.High = parameter.high;
    const double room = peak.right_valley - peak.left_valley;
    if (parameter.bound == PeakBound::Valleys) {
      made.Low = peak.left_valley;
      made.High = peak.right_valley;
    } else if (parameter.bound == PeakBound::Room) {
      made.High = 3 * room;
    }
    model.parameters.push_back(made);
  }
}

std::string PartName(std::size_t number, const TSeries& series) {
  return "Peak " + std::to_string(number) + " of " + series.SeriesName();
}

void DeleteParts(TxyGraph& graph, const TSeries& series) {
  for (std::size_t i = graph.SeriesCount(); i > 0; --i) {
    const std::string& name = graph.Series(i - 1).SeriesName();
    const std::size_t number_end = name.find(' ', std::string_view("Peak ").size());
    const std::optional<std::int32_t> number =
        name.starts_with("Peak ") ? ParseInteger(name.substr(5, number_end - 5)) : std::nullopt;
    if (number && *number > 0 && name == PartName(static_cast<std::size_t>(*number), series))
      graph.DeleteSeries(i - 1);
  }
}

/// Where a peak is drawn: as far as it can be seen, within the margins.
std::vector<double> PartAbscissas(const FitSettings& model, const FittedPeak& peak) {
  constexpr double kWidths = 12;
  const double reach = kWidths * std::abs(peak.width.value);
  const double left = std::max(model.LeftMargin, peak.x.value - reach);
  const double right = std::min(model.RightMargin, peak.x.value + reach);
  std::vector<double> x;
  x.reserve(kCurvePoints);
  for (int i = 0; i < kCurvePoints; ++i)
    x.push_back(left + i * (right - left) / (kCurvePoints - 1));
  return x;
}

}  // namespace

std::size_t MostFittedPeaks(PeakShape shape) {
  return (static_cast<std::size_t>(kMaxVariedParameters) - kLineParameters) /
         RowOf(shape).parameters.size();
}

FitSettings PeakModel(std::span<const PeakFigures> peaks, PeakShape shape,
                      const FitSettings& look) {
  if (peaks.empty()) throw Error("There is no peak to fit.");
  FitSettings model = look;
  model.XVarName = "x";
  model.templates.clear();
  model.ProcType = FitProcType::cfp_Newton;
  model.LeftMarginUsed = model.RightMarginUsed = true;
  model.LeftMargin = peaks.front().left_valley;
  // The right margin is the first X left out.
  model.RightMargin = std::nextafter(peaks.back().right_valley, kInfinity);
  model.NPoints = kCurvePoints;
  const ShapeRow& row = RowOf(shape);
  model.Expression = ModelText(row, peaks.size());
  const BaseLine line = LineUnder(peaks);
  model.parameters.clear();
  for (const auto& [name, value] : {std::pair{"b0", line.offset}, {"b1", line.slope}}) {
    ParameterSettings made;
    made.Name = name;
    made.Value = value;
    made.Vary = true;
    made.Description = "Line under the peaks";
    model.parameters.push_back(made);
  }
  for (const PeakFigures& peak : peaks) {
    const double height = std::max(line.CorrectedY(peak.x, peak.height), peak.prominence / 2);
    AddPeak(model, row, peak, height);
  }
  const std::size_t most = kLineParameters + MostFittedPeaks(shape) * row.parameters.size();
  for (std::size_t i = most; i < model.parameters.size(); ++i) model.parameters[i].Vary = false;
  return model;
}

std::vector<FittedPeak> FittedPeaks(const TSeries& series) {
  const FitSettings model = series.Fit().Settings();
  const std::optional<Recognised> found = Recognise(model);
  if (!found) return {};
  std::vector<FittedPeak> peaks;
  for (std::size_t i = 0; i < found->peaks; ++i)
    peaks.push_back(FittedPeakOf(model, *found, i, series.Fit().Result().get()));
  return peaks;
}

void AddPeakParts(TxyGraph& graph, const TSeries& series) {
  const FitSettings model = series.Fit().Settings();
  const std::optional<Recognised> found = Recognise(model);
  if (!found) throw Error("The model of DataSet \"" + series.SeriesName() + "\" has no peaks.");
  const GraphUpdate update(graph);
  DeleteParts(graph, series);
  for (std::size_t number = 1; number <= found->peaks; ++number) {
    auto part = std::make_unique<TSeries>();
    part->SetSeriesName(PartName(number, series));
    SeriesStyle style;
    style.show_symbols = false;
    style.line_color = series.ModelCurveColor();
    style.line_style = LineStyle::Dash;
    style.first_axis = series.Style().first_axis;
    style.show_in_legend = 0;
    style.selectable = false;
    part->SetStyle(style);
    part->Source().XDataColumn = series.Source().XDataColumn;
    part->Source().YDataColumn = series.Source().YDataColumn;
    part->Source().YColExpr = series.Source().YColExpr;
    const FittedPeak peak = FittedPeakOf(model, *found, number - 1, nullptr);
    const std::vector<double> x = PartAbscissas(model, peak);
    part->AddPoints(x, ValuesAs(model, "b0+b1*x" + PeaksText(*found->row, number, 1), x));
    graph.AddSeries(std::move(part));
  }
}

}  // namespace tarnwick
