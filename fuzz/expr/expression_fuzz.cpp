// Arbitrary text as an expression, or several parted by line ends in one parser. What compiles is evaluated record by record
// and, where blocks take it, in blocks with derivatives. Plain arithmetic must come out the same to the last bit.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "base/undefined.h"
#include "expr/block/block_evaluator.h"
#include "expr/expression_parser.h"
#include "expr/words/parser_exception.h"

namespace {

using namespace tarnwick;

constexpr std::size_t kMostLines = 8;

struct Bindings {
  double x = 0;
  double p = 1.25;
};

/// The values of the current expression at `points`; false where an integer division has no result.
bool ByRecords(TExpressionParser& parser, Bindings& bindings, const std::vector<double>& points,
               std::vector<double>& values) {
  try {
    for (std::size_t i = 0; i < points.size(); ++i) {
      bindings.x = points[i];
      values[i] = parser.Evaluate();
    }
  } catch (const EIntegerDivision&) {
    return false;
  }
  return true;
}

bool ByBlocks(BlockEvaluator& blocks, const std::vector<double>& points,
              std::vector<double>& values) {
  try {
    blocks.Load();
    blocks.Values(points, values);
    blocks.Derivatives(points);
  } catch (const EIntegerDivision&) {
    return false;
  }
  return true;
}

/// No word whose result may differ in the last bits.
bool IsPlainArithmetic(std::string_view text) {
  return text.find_first_not_of("0123456789.xpe +-*/%!<>=()") == std::string_view::npos;
}

void RunOne(TExpressionParser& parser, Bindings& bindings, std::string_view text) {
  try {
    parser.CompileExpression(text);
  } catch (const EParserException& error) {
    if (error.Place() && *error.Place() > text.size()) std::abort();
    return;
  }
  const std::vector<double> points = {0, 1, -1, 0.5, 2.75, 1e5, -3e-7, 40, kUndefined};
  std::vector<double> single(points.size());
  std::vector<double> blocked(points.size());
  const double* const variables[] = {&bindings.p};
  const auto blocks = BlockEvaluator::Make(parser, &bindings.x, variables);
  const bool by_records = ByRecords(parser, bindings, points, single);
  if (!blocks) return;
  if (ByBlocks(*blocks, points, blocked) != by_records) std::abort();
  if (!by_records || !IsPlainArithmetic(text)) return;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool undefined = IsUndefined(single[i]) && IsUndefined(blocked[i]);
    if (!undefined && single[i] != blocked[i]) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  TExpressionParser parser;
  Bindings bindings;
  parser.DefineVariable("x", &bindings.x);
  parser.DefineVariable("p", &bindings.p);
  for (std::size_t line = 0; line < kMostLines && !text.empty(); ++line) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    RunOne(parser, bindings, text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return 0;
}
