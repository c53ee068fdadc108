#include "results/fit_texts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "base/undefined.h"
#include "base/word_list.h"

namespace tarnwick {
namespace {

constexpr int kDigitsWithoutError = 6;
constexpr int kMostDecimals = 14;
constexpr int kDigitsOfError = 2;
/// A value that its error leaves fewer digits than this is written with digits of its own.
constexpr int kLeastDigitsLeft = 2;
constexpr int kDigitsOfSwallowed = 3;
/// Decimal exponents that are written out.
constexpr int kSmallestPlain = -4;
constexpr int kGreatestPlain = 6;

int DecimalExponent(double value) {
  return static_cast<int>(std::floor(std::log10(std::abs(value))));
}

std::string Superscript(int number) {
  constexpr const char* kDigits[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
  std::string text;
  for (const char letter : std::to_string(number)) {
    text += letter == '-' ? "⁻" : kDigits[letter - '0'];
  }
  return text;
}

std::string PowerOfTen(int exponent) {
  return "×10" + Superscript(exponent);
}

/// The exponent to take out of numbers of this size; 0 where they are written out.
int ExponentOutside(int size) {
  return size < kSmallestPlain || size > kGreatestPlain ? size : 0;
}

/// So many significant digits, with a power of ten of its own where the number is far from 1.
std::string SignificantText(double value, int digits) {
  const int size = DecimalExponent(value);
  const int exponent = ExponentOutside(size);
  const int decimals = std::clamp(digits - 1 - (size - exponent), 0, kMostDecimals);
  const std::string text = FixedText(value / std::pow(10.0, exponent), decimals);
  return exponent == 0 ? text : text + PowerOfTen(exponent);
}

/// Letters of a UTF-8 text, for columns of equal width.
std::size_t LetterCount(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

std::string Padded(std::string text, std::size_t width) {
  const std::size_t letters = LetterCount(text);
  if (letters < width) text.append(width - letters, ' ');
  return text;
}

std::string FigureText(const FitFigure& figure) {
  return figure.kind == FigureKind::Count ? FixedText(figure.value, 0)
                                          : GeneralText(figure.value, kDigitsWithoutError);
}

/// What the share of one DataSet in a fit of several has of its own.
bool IsOwn(const FitFigure& figure) {
  constexpr std::string_view kOwn[] = {"rss", "r_squared"};
  return std::ranges::find(kOwn, figure.key) != std::end(kOwn);
}

std::string Exact(double value) {
  return IsUndefined(value) ? std::string() : ShortestText(value);
}

const char* TextOf(FitWeights weights) {
  switch (weights) {
    case FitWeights::Errors:
      return "weights by the errors of Y";
    case FitWeights::Counts:
      return "weights of counts, by the model's value";
    case FitWeights::Relative:
      return "weights relative to the model's value";
    default:
      return "unit weights";
  }
}

std::string TextOf(const FitWeighting& weighting) {
  if (weighting.loss == FitLoss::Linear) return {};
  constexpr const char* kNames[] = {"linear", "soft L1", "Huber", "Cauchy"};
  std::string text = ", " + std::string(kNames[static_cast<int>(weighting.loss)]) + " loss ";
  if (!(weighting.loss_scale > 0)) {
    return text +
           "without a scale (half of the residuals are 0, or the fit ended before they told one)";
  }
  return text + "of scale " + GeneralText(weighting.loss_scale, 4);
}

}  // namespace

const char* NameOfSum(const FitWeighting& weighting) {
  if (weighting.errors == FitErrors::Absolute) return "χ²";
  const bool plain = weighting.weights == FitWeights::None && weighting.loss == FitLoss::Linear;
  return plain ? "Sum of squares" : "Weighted sum of squares";
}

std::string ChangedText(const LastFit& last) {
  if (last.damaged) return "The file holds a result of a fit that is damaged; it was passed over.";
  if (last.points_changed && last.model_changed)
    return "Points and function changed since this fit.";
  if (last.points_changed) return "The points changed since this fit.";
  return last.model_changed ? "The function or its values changed since this fit." : "";
}

std::string SharedText(const FitOfSeveral& together) {
  constexpr std::size_t kMostNamed = 5;
  const std::vector<std::string>& shared = together.shared;
  if (shared.empty()) return "no parameter is shared.";
  return Listed(shared, kMostNamed) + (shared.size() == 1 ? " has" : " have") +
         " one value in all.";
}

std::string ErrorModelText(const FitStatistics& statistics) {
  const FitWeighting& weighting = statistics.weighting;
  return TextOf(weighting.weights) + TextOf(weighting) +
         (weighting.errors == FitErrors::Absolute ? ", errors absolute"
                                                  : ", errors scaled by the residuals");
}

RoundedValue Rounded(double value, double error) {
  const bool has_error = std::isfinite(error) && error > 0 && std::isfinite(value);
  if (!has_error) return {GeneralText(value, kDigitsWithoutError), {}, 0};
  RoundedValue rounded;
  rounded.exponent = ExponentOutside(DecimalExponent(std::max(std::abs(value), error)));
  const double unit = std::pow(10.0, rounded.exponent);
  const double scaled_error = error / unit;
  const int decimals =
      std::clamp(kDigitsOfError - 1 - DecimalExponent(scaled_error), 0, kMostDecimals);
  const bool swallowed =
      value != 0 && DecimalExponent(value / unit) + 1 + decimals < kLeastDigitsLeft;
  if (swallowed) {
    return {SignificantText(value, kDigitsOfSwallowed), SignificantText(error, kDigitsOfError), 0};
  }
  rounded.value = FixedText(value / unit, decimals);
  rounded.error = FixedText(scaled_error, decimals);
  return rounded;
}

std::string PlusMinusText(double value, double error, const std::string& units) {
  const RoundedValue rounded = Rounded(value, error);
  std::string text = rounded.error.empty() ? rounded.value : rounded.value + " ± " + rounded.error;
  if (rounded.exponent != 0) text = "(" + text + ")" + PowerOfTen(rounded.exponent);
  return units.empty() ? text : text + " " + units;
}

std::vector<FittedParameter> FittedParameters(const FitSettings& model, const FitResult& result) {
  std::vector<FittedParameter> parameters;
  const std::vector<double>& errors = result.statistics.standard_errors;
  std::int32_t varied = 0;
  for (const ParameterSettings& settings : model.parameters) {
    FittedParameter one{settings, kUndefined};
    if (const auto tie = std::ranges::find(result.tied, settings.Name, &TiedParameter::name);
        tie != result.tied.end())
      one.error = tie->error;
    if (settings.Vary && std::cmp_less(varied, errors.size())) {
      one.at_bound = std::ranges::find(result.at_bound, varied) != result.at_bound.end();
      one.error = errors[static_cast<std::size_t>(varied++)];
    }
    parameters.push_back(one);
  }
  return parameters;
}

std::string ValueText(const FittedParameter& parameter) {
  const RoundedValue rounded = Rounded(parameter.settings.Value, parameter.error);
  return rounded.exponent == 0 ? rounded.value : rounded.value + PowerOfTen(rounded.exponent);
}

std::string WithoutErrorText(const FittedParameter& parameter) {
  if (std::isfinite(parameter.error)) return "";
  if (!parameter.settings.Tie.empty()) return "tied";
  if (!parameter.settings.Vary) return "fixed";
  return parameter.at_bound ? "at its bound" : "not determined";
}

std::string ErrorText(const FittedParameter& parameter) {
  if (std::string without = WithoutErrorText(parameter); !without.empty()) return without;
  const RoundedValue rounded = Rounded(parameter.settings.Value, parameter.error);
  if (rounded.error.empty()) return GeneralText(parameter.error, 2);
  return rounded.exponent == 0 ? rounded.error : rounded.error + PowerOfTen(rounded.exponent);
}

std::vector<FitFigure> FiguresOf(const FitStatistics& statistics) {
  return {
      {"rss", NameOfSum(statistics.weighting), statistics.sum_of_squares, 5},
      {"degrees_of_freedom", "Degrees of freedom",
       static_cast<double>(statistics.degrees_of_freedom), 7, FigureKind::Count},
      {"residual_deviation", "Residual deviation", statistics.residual_deviation, 4},
      {"reduced_chi_squared", "Reduced χ²", statistics.reduced_chi_squared, 3},
      {"chi_squared_probability", "Probability of a greater χ²", statistics.chi_squared_probability,
       6},
      {"r_squared", "R²", statistics.r_squared, 1},
      {"adjusted_r_squared", "Adjusted R²", statistics.adjusted_r_squared, 2},
      {"aic", "AIC", statistics.aic, 8},
      {"aicc", "AICc", statistics.aicc, 9},
      {"bic", "BIC", statistics.bic, 10},
      {"residual_correlation", "", statistics.residual_correlation},
  };
}

std::vector<std::pair<std::string, std::string>> FigureTexts(const FitResult& result) {
  std::vector<std::pair<std::string, std::string>> figures;
  const bool share = result.together != nullptr;
  if (!Failed(result.outcome.why)) {
    std::vector<FitFigure> all = FiguresOf(result.statistics);
    std::erase_if(all, [share](const FitFigure& one) {
      return one.label.empty() || IsUndefined(one.value) || (share && !IsOwn(one));
    });
    std::sort(all.begin(), all.end(), [](const FitFigure& left, const FitFigure& right) {
      return left.asked_for < right.asked_for;
    });
    for (const FitFigure& one : all) figures.emplace_back(one.label, FigureText(one));
  }
  figures.emplace_back("Points used", std::to_string(result.points_used) + " of " +
                                          std::to_string(result.points_in_range));
  if (share) return figures;
  figures.emplace_back("Iterations", std::to_string(result.outcome.iterations));
  figures.emplace_back("Evaluations", std::to_string(result.outcome.evaluations));
  return figures;
}

namespace {

std::string FiguresAsText(const FitResult& result) {
  std::string text;
  for (const auto& [label, value] : FigureTexts(result)) text += Padded(label, 20) + value + "\n";
  return text;
}

}  // namespace

std::string FitAsText(const std::string& data_set, const FitSettings& model,
                      const FitResult& result) {
  std::string text = "Fit of DataSet \"" + data_set + "\"\n" + model.Expression + "\n\n" +
                     result.verdict.summary + "\n";
  for (const std::string& note : result.verdict.notes) text += note + "\n";
  text += "\n";
  std::size_t width = 0;
  for (const auto& one : model.parameters) width = std::max(width, LetterCount(one.Name));
  for (const FittedParameter& one : FittedParameters(model, result)) {
    text += Padded(one.settings.Name, width) + " = " +
            PlusMinusText(one.settings.Value, one.error, one.settings.Units);
    if (!one.settings.Tie.empty()) {
      text += " (= " + one.settings.Tie + ")";
    } else if (!one.settings.Vary || one.at_bound) {
      text += " (" + WithoutErrorText(one) + ")";
    }
    text += "\n";
  }
  text += "(" + ErrorModelText(result.statistics) + ")\n\n" + FiguresAsText(result);
  if (!result.together) return text;
  text += "\nAll DataSets together: " + result.together->whole.verdict.summary + "\n" +
          SharedText(*result.together) + "\n";
  for (const FitOfSeveral::Member& one : result.together->members)
    text += one.data_set + ": " + one.verdict.summary + "\n";
  return text + "\n" + FiguresAsText(result.together->whole);
}

std::string FitAsTable(const FitSettings& model, const FitResult& result) {
  std::string text = "Parameter\tValue\tStandard error\tUnits\tVaried\n";
  for (const FittedParameter& one : FittedParameters(model, result)) {
    text += one.settings.Name + "\t" + Exact(one.settings.Value) + "\t" + Exact(one.error) + "\t" +
            one.settings.Units + "\t" + (one.settings.Vary ? "Yes" : "No") + "\n";
  }
  text += "\n";
  for (const auto& [label, value] : FigureTexts(result)) {
    text.append(label).append("\t").append(value).append("\n");
  }
  const std::size_t k = result.names.size();
  if (k < 2 || result.statistics.correlation.size() != k * k) return text;
  text += "\nCorrelation";
  for (const std::string& name : result.names) text += "\t" + name;
  text += "\n";
  for (std::size_t i = 0; i < k; ++i) {
    text += result.names[i];
    for (std::size_t j = 0; j < k; ++j) {
      text += "\t" + Exact(result.statistics.correlation[i * k + j]);
    }
    text += "\n";
  }
  return text;
}

}  // namespace tarnwick
