#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "cli/commands/commands.h"
#include "expr/expression_hints.h"
#include "expr/formula_parser.h"
#include "expr/message_with_place.h"
#include "expr/words/parser_exception.h"

namespace tarnwick::cli {
namespace {

constexpr std::size_t kNamesTold = 10;

struct CalcOptions {
  std::vector<std::string> variables;  // NAME=VALUE
  std::vector<std::string> expressions;
};

std::pair<std::string, double> ReadVariable(const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::string name(TrimBlanks(std::string_view(text).substr(0, equals)));
  if (equals == std::string::npos || name.empty())
    throw UsageError("\"" + text + "\" is no variable; -v takes NAME=VALUE");
  const std::optional<double> value = ParseNumber(std::string_view(text).substr(equals + 1));
  if (!value) throw UsageError("\"" + text + "\" gives " + name + " no number");
  return {name, *value};
}

double Calculate(TExpressionParser& parser, const std::string& expression) {
  try {
    if (parser.CompileExpression(expression) < 0) throw UsageError("an expression is empty");
    return parser.Evaluate();
  } catch (const EParserException& error) {
    throw Error(MessageWithPlace(error, expression));
  } catch (const EIntegerDivision& error) {
    throw Error(std::string(error.what()) + " in \"" + expression + "\"");
  }
}

void RunCalc(const CalcOptions& options, Output& output) {
  TFormulaParser parser;
  std::deque<double> values;  // stay where they are
  for (const std::string& text : options.variables) {
    const auto [name, value] = ReadVariable(text);
    parser.DefineVariable(name, &values.emplace_back(value));
  }
  Json results = Json::Array();
  std::string lines;
  for (const std::string& expression : options.expressions) {
    for (const std::string& warning : ExpressionWarnings(expression))
      output.Remarks() << "tarnwick-cli: " << warning << '\n';
    const double value = Calculate(parser, expression);
    results.Append({{"expression", expression}, {"value", JsonNumber(value)}});
    lines += ShortestText(value) + '\n';
  }
  if (const std::vector<std::string> unknown = parser.UnassignedNames(); !unknown.empty())
    output.Remarks() << "tarnwick-cli: no value was given for " << Listed(unknown, kNamesTold)
                     << '\n';
  if (output.IsJson()) {
    output.Document({{"results", results}});
  } else {
    output.Text() << lines;
  }
}

}  // namespace

void DeclareCalc(Command& command, Action& action) {
  auto options = std::make_shared<CalcOptions>();
  command.Add("-v,--variable", options->variables, "NAME=VALUE; repeat for several")
      .Repeated()
      .OneValueEach()
      .ValueName("NAME=VALUE");
  command
      .Add("EXPRESSION", options->expressions,
           "Computed in order, one value a line; y:=3 keeps y for what follows")
      .Required();
  OnCommand(command, action, options, &RunCalc);
}

}  // namespace tarnwick::cli
