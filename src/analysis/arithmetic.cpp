#include "analysis/arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "analysis/interpolation.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "expr/formula_parser.h"
#include "expr/message_with_place.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr const char* kLetters[kMostOperands] = {"A", "B", "C", "D"};

/// Share of a value by which it is moved for derivatives: the cube root of the precision.
constexpr double kMove = 6e-6;

/// A name as the parser has it, in small letters, as the letters of DataSets are written.
std::string AsLetter(std::string name) {
  const bool is_letter = name.size() == 1 && name.front() >= 'a' && name.front() <= 'z';
  if (is_letter) name.front() = static_cast<char>(name.front() - 'a' + 'A');
  return name;
}

/// The expression with the storage that it reads.
class Formula {
 public:
  Formula(const std::string& text, std::size_t operands) {
    parser_.DefineVariable("X", &x_);
    for (std::size_t i = 0; i < operands; ++i) parser_.DefineVariable(kLetters[i], &values_.at(i));
    Compile(text);
    if (std::vector<std::string> unknown = parser_.UnassignedNames(); !unknown.empty()) {
      std::ranges::transform(unknown, unknown.begin(), AsLetter);
      std::vector<std::string> known = {"X"};
      for (std::size_t i = 0; i < operands; ++i) known.emplace_back(kLetters[i]);
      throw Error("The expression names " + Listed(unknown, kMostOperands) + "; known are " +
                  Listed(known, known.size()) + ".");
    }
  }

  double At(double x, const std::array<double, kMostOperands>& values) {
    x_ = x;
    values_ = values;
    try {
      return parser_.Evaluate();
    } catch (const EIntegerDivision&) {
      return kUndefined;  // here alone
    }
  }

  /// Whether the value depends on an operand at all.
  bool Uses(std::size_t operand) const {
    for (const TExprRec* rec = parser_.CurrentRec(); rec; rec = rec->Next) {
      if (std::ranges::find(rec->Args, &values_.at(operand)) != rec->Args.end()) return true;
    }
    return false;
  }

 private:
  void Compile(const std::string& text) {
    try {
      if (parser_.CompileExpression(text) < 0) throw Error("The expression is empty.");
    } catch (const EParserException& error) {
      throw Error(MessageWithPlace(error, text));
    }
  }

  TFormulaParser parser_;
  double x_ = 0;
  std::array<double, kMostOperands> values_ = {};
};

using Values = std::array<double, kMostOperands>;

/// One operand at any X, with its error.
class Operand {
 public:
  explicit Operand(const TDataSeries& series)
      : series_(series), line_(series.GetBaseLine()), curve_(series.Points()) {}

  bool HasErrors() const { return HasYErrors(series_.Errors()); }

  std::optional<double> At(double x) const {
    const std::optional<double> y = curve_.At(x);
    return y ? std::optional(line_.CorrectedY(x, *y)) : std::nullopt;
  }

  /// Undefined where a point that goes into the value has none; 0 for a DataSet without errors.
  double ErrorAt(double x) const {
    if (!HasErrors()) return 0;
    const std::optional<Between> found = curve_.Around(x);
    if (!found) return kUndefined;
    const double right = YErrorAt(series_, found->right);
    if (found->share == 0 && !(found->right.x > x)) return right;
    const double left = YErrorAt(series_, found->left);
    if (found->share == 0) return left;
    return std::hypot((1 - found->share) * left, found->share * right);
  }

 private:
  const TDataSeries& series_;
  BaseLine line_;
  Interpolation curve_;
};

/// The error that the operands' own lead to.
double ErrorOf(Formula& formula, double x, const Values& values, std::span<const double> errors) {
  double variance = 0;
  for (std::size_t i = 0; i < errors.size(); ++i) {
    if (errors[i] == 0) continue;
    const double move = kMove * (values.at(i) == 0 ? 1 : std::abs(values.at(i)));
    Values moved = values;
    moved.at(i) = values.at(i) + move;
    const double above = formula.At(x, moved);
    moved.at(i) = values.at(i) - move;
    const double slope = (above - formula.At(x, moved)) / (2 * move);
    variance += slope * slope * errors[i] * errors[i];
  }
  return std::sqrt(variance);
}

}  // namespace

ArithmeticResult Calculate(const std::string& expression,
                           std::span<const TDataSeries* const> operands) {
  Formula formula(expression, operands.size());
  std::vector<Operand> all;
  std::vector<std::size_t> used;  // beside the first
  bool errors = false;
  for (std::size_t i = 0; i < operands.size(); ++i) {
    all.emplace_back(*operands[i]);
    const bool uses = formula.Uses(i);
    if (uses && i > 0) used.push_back(i);
    errors = errors || (uses && all.back().HasErrors());
  }
  const bool uses_first = formula.Uses(0);
  const TDataSeries& first = *operands.front();
  const BaseLine line = first.GetBaseLine();
  ArithmeticResult result;
  const PointChain& points = first.Points();
  for (std::size_t place = 0; place < points.Size(); ++place) {
    const Point point = points.At(place);
    Values values = {line.CorrectedY(point.x, point.y)};
    Values own = {uses_first && all.front().HasErrors() ? YErrorAt(first, point) : 0};
    const bool reaches = std::ranges::all_of(used, [&](std::size_t i) {
      const std::optional<double> y = all[i].At(point.x);
      values.at(i) = y.value_or(0);
      if (errors) own.at(i) = all[i].ErrorAt(point.x);
      return y.has_value();
    });
    if (!reaches) {
      ++result.beyond;
      continue;
    }
    const double value = formula.At(point.x, values);
    if (!std::isfinite(value)) {
      ++result.without_value;
      continue;
    }
    result.x.push_back(point.x);
    result.y.push_back(value);
    if (errors) result.error.push_back(ErrorOf(formula, point.x, values, own));
  }
  return result;
}

}  // namespace tarnwick
