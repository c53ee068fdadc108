#include "results/peak_model.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "expr/words/special_functions.h"
#include "fit/model/curve_fit.h"
#include "fit/model/model_values.h"

namespace tarnwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

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
  return {v[1], v[0] * VoigtOf(0, v[2], v[3]), VoigtWidth(v[2], v[3]), v[0]};
}

/// In the order of PeakShape.
const std::vector<ShapeRow>& Shapes() {
  static const PeakParameter height = {"h", "Height of peak ", Height};
  static const PeakParameter centre = {"c", "Centre of peak ", Centre,
                                       0,   kInfinity,         PeakBound::Valleys};
  static const PeakParameter width = {
      "w", "Width at half height of peak ", Width, 0, kInfinity, PeakBound::Room};
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

std::string PeakText(const ShapeRow& row, std::size_t number) {
  std::string text;
  for (const char* c = row.text; *c != 0; ++c)
    *c == '#' ? text += std::to_string(number) : text += *c;
  return text;
}

std::vector<double> ValuesOf(const FitSettings& model, const Recognised& found, std::size_t peak) {
  std::vector<double> values;
  const std::size_t count = found.row->parameters.size();
  for (std::size_t i = 0; i < count; ++i)
    values.push_back(model.parameters[kLineParameters + peak * count + i].Value);
  return values;
}

/// The covariance of a peak's parameters, row by row; empty where the fit told none.
std::vector<double> CovarianceOf(const FitResult* result, const FitSettings& model,
                                 const Recognised& found, std::size_t peak) {
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

}  // namespace

const ShapeRow& RowOf(PeakShape shape) {
  return Shapes().at(static_cast<std::size_t>(shape));
}

std::string PeaksText(const ShapeRow& row, std::size_t first, std::size_t count) {
  std::string text;
  for (std::size_t i = first; i < first + count; ++i) text += "+" + PeakText(row, i);
  return text;
}

std::string ModelText(const ShapeRow& row, std::size_t peaks) {
  return "b0+b1*x" + PeaksText(row, 1, peaks);
}

std::optional<Recognised> Recognise(const FitSettings& model) {
  if (model.parameters.size() <= kLineParameters) return std::nullopt;
  for (const ShapeRow& row : Shapes()) {
    const std::size_t peaks = (model.parameters.size() - kLineParameters) / row.parameters.size();
    if (model.Expression == ModelText(row, peaks)) return Recognised{&row, peaks};
  }
  return std::nullopt;
}

FittedPeak FittedPeakOf(const FitSettings& model, const Recognised& found, std::size_t peak,
                        const FitResult* result) {
  const std::vector<double> values = ValuesOf(model, found, peak);
  const std::vector<double> covariance = CovarianceOf(result, model, found, peak);
  const auto derived = [&](double Shaped::*figure) {
    return Derived(*found.row, figure, values, covariance);
  };
  return {derived(&Shaped::x), derived(&Shaped::height), derived(&Shaped::width),
          derived(&Shaped::area)};
}

std::vector<double> ValuesAs(const FitSettings& model, const std::string& expression,
                             std::span<const double> x) {
  FitSettings part = model;
  part.Expression = expression;
  TCurFit values;
  values.SetSettings(part, MarkModified::No);
  values.Prepare();
  return ModelValues(values, x);
}

}  // namespace tarnwick
