#include "results/peak_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <optional>

#include "base/error.h"
#include "base/number_text.h"
#include "fit/minimise.h"
#include "fit/model/curve_fit.h"
#include "fit/model/model_values.h"
#include "graph/graph_update.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLineParameters = 2;
constexpr int kCurvePoints = 600;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// One parameter of every peak.
struct PeakParameter {
  const char* letter;
  const char* description;
  double (*start)(const PeakFigures&, double height);
  double low = 0;
  double high = kInfinity;
};

/// What a peak's parameters lead to.
struct Shaped {
  double x = 0, height = 0, width = 0, area = 0;
};

struct ShapeRow {
  const char* text;  ///< "#" stands for the peak's number
  std::vector<PeakParameter> parameters;
  Shaped (*shaped)(std::span<const double> values);
};

const double kGaussArea = std::sqrt(std::numbers::pi / (4 * std::numbers::ln2));
constexpr double kLorentzArea = std::numbers::pi / 2;
const double kWidthPerDeviation = std::sqrt(8 * std::numbers::ln2);

double WidthOf(const PeakFigures& peak) {
  const double room = peak.right_valley - peak.left_valley;
  return IsUndefined(peak.width) ? room / 2 : std::min(peak.width, room);
}

double Centre(const PeakFigures& peak, double) {
  return peak.x;
}
double Height(const PeakFigures&, double height) {
  return height;
}
double Width(const PeakFigures& peak, double) {
  return WidthOf(peak);
}

/// Full width at half height of a Voigt profile, to 0.0003 of it: Olivero & Longbothum, Journal of Quantitative Spectroscopy
/// and Radiative Transfer 17, 233 (1977).
double VoigtWidth(double deviation, double half_width) {
  const double gauss = kWidthPerDeviation * deviation;
  const double lorentz = 2 * half_width;
  return 0.5346 * lorentz + std::sqrt(0.2166 * lorentz * lorentz + gauss * gauss);
}

Shaped ShapedVoigt(std::span<const double> v) {
  const double width = VoigtWidth(v[2], v[3]);
  // The height of a pseudo-Voigt of that width and area, whose mixing follows the widths (Ida, Ando & Toraya, Journal of
  // Applied Crystallography 33, 1311 (2000), the mixing of Thompson, Cox & Hastings).
  const double ratio = width > 0 ? 2 * v[3] / width : 0;
  const double mixing = ratio * (1.36603 - ratio * (0.47719 - 0.11116 * ratio));
  const double area_of_unit = width * (mixing * kLorentzArea + (1 - mixing) * kGaussArea);
  return {v[1], v[0] / area_of_unit, width, v[0]};
}

/// In the order of PeakShape.
const std::vector<ShapeRow>& Shapes() {
  static const PeakParameter height = {"h", "Height of peak ", Height};
  static const PeakParameter centre = {"c", "Centre of peak ", Centre};
  static const PeakParameter width = {"w", "Width at half height of peak ", Width};
  static const std::vector<ShapeRow> rows = {
      {"h#*exp(-4*ln(2)*sqr((x-c#)/w#))",
       {height, centre, width},
       [](std::span<const double> v) -> Shaped {
         return {v[1], v[0], v[2], v[0] * v[2] * kGaussArea};
       }},
      {"h#/(1+4*sqr((x-c#)/w#))",
       {height, centre, width},
       [](std::span<const double> v) -> Shaped {
         return {v[1], v[0], v[2], v[0] * v[2] * kLorentzArea};
       }},
      {"h#*(m#/(1+4*sqr((x-c#)/w#))+(1-m#)*exp(-4*ln(2)*sqr((x-c#)/w#)))",
       {height,
        centre,
        width,
        {"m", "Lorentzian part of peak ", [](const PeakFigures&, double) { return 0.5; }, 0, 1}},
       [](std::span<const double> v) -> Shaped {
         const double area = v[3] * kLorentzArea + (1 - v[3]) * kGaussArea;
         return {v[1], v[0], v[2], v[0] * v[2] * area};
       }},
      {"A#*voigt(x-c#,s#,g#)",
       {{"A", "Area of peak ",
         [](const PeakFigures& peak, double h) { return h * WidthOf(peak) * 1.2; }},
        centre,
        {"s", "Gaussian deviation of peak ",
         [](const PeakFigures& peak, double) { return WidthOf(peak) / 3.5; }},
        {"g", "Lorentzian half width of peak ",
         [](const PeakFigures& peak, double) { return WidthOf(peak) / 4; }}},
       ShapedVoigt},
  };
  return rows;
}

const ShapeRow& RowOf(PeakShape shape) {
  return Shapes().at(static_cast<std::size_t>(shape));
}

std::string PeakText(const ShapeRow& row, std::size_t number) {
  std::string text;
  for (const char* c = row.text; *c != 0; ++c)
    *c == '#' ? text += std::to_string(number) : text += *c;
  return text;
}

std::string ModelText(const ShapeRow& row, std::size_t peaks) {
  std::string text = "b0+b1*x";
  for (std::size_t i = 1; i <= peaks; ++i) text += "+" + PeakText(row, i);
  return text;
}

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
    if (parameter.start == Centre) {
      made.Low = peak.left_valley;
      made.High = peak.right_valley;
    } else if (parameter.start == Width) {
      made.High = 3 * room;
    }
    model.parameters.push_back(made);
  }
}

/// Which shape and how many peaks a model made here has.
struct Recognised {
  const ShapeRow* row = nullptr;
  std::size_t peaks = 0;
};

std::optional<Recognised> Recognise(const FitSettings& model) {
  if (model.parameters.size() <= kLineParameters) return std::nullopt;
  for (const ShapeRow& row : Shapes()) {
    const std::size_t peaks = (model.parameters.size() - kLineParameters) / row.parameters.size();
    if (model.Expression == ModelText(row, peaks)) return Recognised{&row, peaks};
  }
  return std::nullopt;
}

std::vector<double> ValuesOf(const FitSettings& model, const Recognised& found, std::size_t peak) {
  std::vector<double> values;
  const std::size_t count = found.row->parameters.size();
  for (std::size_t i = 0; i < count; ++i)
    values.push_back(model.parameters[kLineParameters + peak * count + i].Value);
  return values;
}

/// The covariance of a peak's parameters, row by row; empty where the fit told none.
std::vector<double> CovarianceOf(const TSeries& series, const FitSettings& model,
                                 const Recognised& found, std::size_t peak) {
  const FitResult* result = series.Fit().Result().get();
  if (!result || result->statistics.covariance.empty()) return {};
  const std::size_t count = found.row->parameters.size();
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string& name = model.parameters[kLineParameters + peak * count + i].Name;
    const auto place = std::ranges::find(result->names, name);
    if (place == result->names.end()) return {};
    places.push_back(static_cast<std::size_t>(place - result->names.begin()));
  }
  std::vector<double> covariance;
  for (const std::size_t i : places) {
    for (const std::size_t k : places)
      covariance.push_back(result->statistics.covariance[i * result->names.size() + k]);
  }
  return covariance;
}

/// With its error by the derivatives of the figure (central differences) and the parameters' covariance.
FittedValue Derived(const ShapeRow& row, double Shaped::*figure, const std::vector<double>& values,
                    const std::vector<double>& covariance) {
  FittedValue derived{row.shaped(values).*figure, kUndefined};
  if (covariance.empty()) return derived;
  const std::size_t count = values.size();
  std::vector<double> slopes;
  for (std::size_t i = 0; i < count; ++i) {
    const double step = std::max(std::abs(values[i]), 1e-300) * 1e-6;
    std::vector<double> above = values;
    std::vector<double> below = values;
    above[i] += step;
    below[i] -= step;
    slopes.push_back((row.shaped(above).*figure - row.shaped(below).*figure) / (2 * step));
  }
  double variance = 0;
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = 0; k < count; ++k) {
      const double common = covariance[i * count + k];
      // One that stands at its bound has no error: it counts as held.
      if (std::isfinite(common)) variance += slopes[i] * slopes[k] * common;
    }
  }
  derived.error = std::sqrt(variance);
  return derived;
}

std::string PartName(std::size_t number, const TSeries& series) {
  return "Peak " + std::to_string(number) + " of " + series.SeriesName();
}

void DeleteParts(TxyGraph& graph, const TSeries& series) {
  for (std::size_t number = 1; number <= static_cast<std::size_t>(kMaxVariedParameters); ++number) {
    for (std::size_t i = graph.SeriesCount(); i > 0; --i) {
      if (graph.Series(i - 1).SeriesName() == PartName(number, series)) graph.DeleteSeries(i - 1);
    }
  }
}

/// The model with no peak but this one.
std::vector<double> PartValues(const FitSettings& whole, const Recognised& found,
                               std::size_t number, std::span<const double> x) {
  FitSettings part = whole;
  part.Expression = "b0+b1*x+" + PeakText(*found.row, number);
  TCurFit model;
  model.SetSettings(part, false);
  model.Prepare();
  return ModelValues(model, x);
}

}  // namespace

std::size_t MostFittedPeaks(PeakShape shape) {
  return (static_cast<std::size_t>(kMaxVariedParameters) - kLineParameters) /
         RowOf(shape).parameters.size();
}

FitSettings PeakModel(std::span<const PeakFigures> peaks, PeakShape shape,
                      const FitSettings& look) {
  if (peaks.empty()) throw Error("There is no peak to fit.");
  if (peaks.size() > MostFittedPeaks(shape)) {
    throw Error("A fit varies " + std::to_string(kMaxVariedParameters) +
                " parameters at most: choose up to " + std::to_string(MostFittedPeaks(shape)) +
                " of the " + std::to_string(peaks.size()) + " peaks.");
  }
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
  return model;
}

std::vector<FittedPeak> FittedPeaks(const TSeries& series) {
  const FitSettings model = series.Fit().Settings();
  const std::optional<Recognised> found = Recognise(model);
  if (!found) return {};
  std::vector<FittedPeak> peaks;
  for (std::size_t i = 0; i < found->peaks; ++i) {
    const std::vector<double> values = ValuesOf(model, *found, i);
    const std::vector<double> covariance = CovarianceOf(series, model, *found, i);
    const auto derived = [&](double Shaped::*figure) {
      return Derived(*found->row, figure, values, covariance);
    };
    peaks.push_back({derived(&Shaped::x), derived(&Shaped::height), derived(&Shaped::width),
                     derived(&Shaped::area)});
  }
  return peaks;
}

void AddPeakParts(TxyGraph& graph, const TSeries& series) {
  const FitSettings model = series.Fit().Settings();
  const std::optional<Recognised> found = Recognise(model);
  if (!found) throw Error("The model of DataSet \"" + series.SeriesName() + "\" has no peaks.");
  std::vector<double> x;
  x.reserve(kCurvePoints);
  const double step = (model.RightMargin - model.LeftMargin) / (kCurvePoints - 1);
  for (int i = 0; i < kCurvePoints; ++i) x.push_back(model.LeftMargin + i * step);
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
    part->AddPoints(x, PartValues(model, *found, number, x));
    graph.AddSeries(std::move(part));
  }
}

}  // namespace tarnwick
