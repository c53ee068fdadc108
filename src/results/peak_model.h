// The sum of peaks on a straight line as a fitting model: which shapes there are, what their parameters are called and lead to.
// Knows models and results of fits; no DataSet.
#pragma once

#include <limits>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/peak_figures.h"
#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

enum class PeakShape { Gauss, Lorentz, PseudoVoigt, Voigt };
inline constexpr const char* kPeakShapeNames[] = {"Gauss", "Lorentz", "Pseudo-Voigt", "Voigt"};

/// A value that a fit gave, with its standard error; undefined where it told none.
struct FittedValue {
  double value = 0;
  double error = 0;
};

struct FittedPeak {
  FittedValue x, height, width, area;  ///< the width at half height
};

/// The parameters of the line, before those of the peaks.
inline constexpr std::size_t kLineParameters = 2;

/// What bounds a parameter, beside its row's: nothing, the valleys beside the peak, three times the room between them.
enum class PeakBound { None, Valleys, Room };

/// One parameter of every peak.
struct PeakParameter {
  const char* letter;
  const char* description;
  double (*start)(const PeakFigures&, double height);
  double low = 0;
  double high = std::numeric_limits<double>::infinity();
  PeakBound bound = PeakBound::None;
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

/// The shape, which lives as long as the program.
const ShapeRow& RowOf(PeakShape shape);

/// The text of some of the model's peaks, their numbers from 1, each with "+" before it.
std::string PeaksText(const ShapeRow& row, std::size_t first, std::size_t count);
/// "b0+b1*x" and all of them.
std::string ModelText(const ShapeRow& row, std::size_t peaks);

/// Which shape and how many peaks a model made of these texts has.
struct Recognised {
  const ShapeRow* row = nullptr;
  std::size_t peaks = 0;
};
std::optional<Recognised> Recognise(const FitSettings& model);

/// A peak of the model, from 0, with errors as far as the result, which may be null, tells them.
FittedPeak FittedPeakOf(const FitSettings& model, const Recognised& found, std::size_t peak,
                        const FitResult* result);

/// The values of a model of these parameters with another expression.
std::vector<double> ValuesAs(const FitSettings& model, const std::string& expression,
                             std::span<const double> x);

}  // namespace tarnwick
