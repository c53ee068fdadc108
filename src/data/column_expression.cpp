#include "data/column_expression.h"

#include <memory>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "expr/expression_parser.h"
#include "expr/parser_exception.h"

namespace tarnwick {
namespace {

/// One expression with the storage that it reads.
class ColumnExpression {
 public:
  explicit ColumnExpression(const std::string& text) {
    parser_.DefineVariable("x", &x_);
    parser_.DefineVariable("y", &y_);
    parser_.CompileExpression(text);
  }

  std::optional<double> At(double x, double y) {
    x_ = x;
    y_ = y;
    try {
      const double value = parser_.Evaluate();
      return IsUndefined(value) ? std::nullopt : std::optional(value);
    } catch (const EIntegerDivision&) {
      // This row has no value; the next may have one.
      return std::nullopt;
    }
  }

 private:
  TExpressionParser parser_;
  double x_ = 0;
  double y_ = 0;
};

ColumnTransform Compile(const std::string& text, std::string_view raw_name) {
  const std::string_view trimmed = TrimBlanks(text);
  if (trimmed.empty() || LowerAscii(trimmed) == raw_name) return {};
  try {
    auto expression = std::make_shared<ColumnExpression>(text);
    return [expression](double x, double y) { return expression->At(x, y); };
  } catch (const EParserException& error) {
    const std::string place =
        error.Place() ? ", character " + std::to_string(*error.Place() + 1) : std::string();
    throw Error(std::string(error.what()) + " (column expression \"" + text + "\"" + place + ")");
  }
}

}  // namespace

ColumnTransforms CompileColumnExpressions(const TDataSeries& series) {
  return {Compile(series.XColExpr(), "x"), Compile(series.YColExpr(), "y")};
}

}  // namespace tarnwick
