#include "data/import/column_expression.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/import/column_variables.h"
#include "expr/formula_parser.h"
#include "expr/message_with_place.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr std::size_t kNamesInMessage = 12;

/// One expression with the storage that it reads.
class ColumnExpression {
 public:
  /// `columns`: names of variables; their values are given in this order.
  ColumnExpression(const std::string& text, const std::vector<std::string>& columns)
      : columns_(columns.size()) {
    parser_.DefineVariable("x", &x_);
    parser_.DefineVariable("y", &y_);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      parser_.DefineVariable(columns[i], &columns_[i]);
    }
    parser_.CompileExpression(text);
  }

  std::vector<std::string> UnassignedNames() { return parser_.UnassignedNames(); }

  std::optional<double> At(double x, double y, std::span<const double> columns) {
    x_ = x;
    y_ = y;
    std::copy(columns.begin(), columns.end(), columns_.begin());
    try {
      const double value = parser_.Evaluate();
      return std::isfinite(value) ? std::optional(value) : std::nullopt;
    } catch (const EIntegerDivision&) {
      // This row has no value; the next may have one.
      return std::nullopt;
    }
  }

 private:
  TFormulaParser parser_;
  double x_ = 0;
  double y_ = 0;
  std::vector<double> columns_;
};

std::string KnownNames(const std::vector<std::string>& column_names) {
  std::string known = "x, y";
  for (std::size_t i = 0; i < std::min(column_names.size(), kNamesInMessage); ++i) {
    known += ", " + VariableOfColumn(column_names, static_cast<std::int32_t>(i));
  }
  return column_names.size() > kNamesInMessage ? known + ", ..." : known;
}

[[noreturn]] void ThrowUnknown(const std::string& name, const std::string& text,
                               const std::vector<std::string>& column_names) {
  throw Error("There is no column \"" + name + "\" (column expression \"" + text +
              "\"; names: " + KnownNames(column_names) + ")");
}

/// Compiles twice where the text names columns: what the first pass does not know is looked for among them.
ColumnTransform CompileText(const std::string& text, const std::vector<std::string>& column_names) {
  ColumnTransform transform;
  auto expression = std::make_shared<ColumnExpression>(text, std::vector<std::string>());
  std::vector<std::string> variables;
  for (const std::string& name : expression->UnassignedNames()) {
    const std::optional<std::int32_t> column = ColumnOfVariable(column_names, name);
    if (!column) ThrowUnknown(name, text, column_names);
    variables.push_back(name);
    transform.columns.push_back(*column);
  }
  if (!variables.empty()) expression = std::make_shared<ColumnExpression>(text, variables);
  transform.value = [expression](double x, double y, std::span<const double> columns) {
    return expression->At(x, y, columns);
  };
  return transform;
}

ColumnTransform Compile(const std::string& text, std::string_view raw_name,
                        const std::vector<std::string>& column_names) {
  const std::string_view trimmed = TrimBlanks(text);
  if (trimmed.empty() || LowerAscii(trimmed) == raw_name) return {};
  try {
    return CompileText(text, column_names);
  } catch (const EParserException& error) {
    const std::optional<std::size_t> at = error.LikelyPlace();
    const std::string place = at ? ", character " + std::to_string(*at + 1) : std::string();
    const std::string hint = error.Hint().empty() ? std::string() : ": " + error.Hint();
    throw Error(ShortMessage(error, text) + " (column expression \"" + text + "\"" + place + ")" +
                hint);
  }
}

}  // namespace

ColumnTransforms CompileColumnExpressions(const TDataSeries& series,
                                          const std::vector<std::string>& column_names) {
  return {Compile(series.Source().XColExpr, "x", column_names),
          Compile(series.Source().YColExpr, "y", column_names)};
}

std::optional<ColumnTrouble> TroubleOfColumnExpression(
    const std::string& text, const std::vector<std::string>& column_names) {
  if (TrimBlanks(text).empty()) return std::nullopt;
  try {
    ColumnExpression expression(text, {});
    for (const std::string& name : expression.UnassignedNames()) {
      if (ColumnOfVariable(column_names, name)) continue;
      const std::size_t place = LowerAscii(text).find(name);
      return ColumnTrouble{"There is no column \"" + name + "\": " + KnownNames(column_names) + ".",
                           place == std::string::npos ? std::nullopt : std::optional(place)};
    }
  } catch (const EParserException& error) {
    const std::string hint = error.Hint().empty() ? std::string() : ": " + error.Hint();
    return ColumnTrouble{ShortMessage(error, text) + hint, error.LikelyPlace()};
  }
  return std::nullopt;
}

}  // namespace tarnwick
