#include "expr/expression_parts.h"

#include <typeinfo>

#include "expr/scanned_formula.h"

namespace tarnwick {
namespace {

PartKind KindOf(const TExprWord& word) {
  switch (word.ResultType()) {
    case WordKind::LeftBracket:
    case WordKind::RightBracket:
      return PartKind::Bracket;
    case WordKind::Comma:
      return PartKind::Operator;
    case WordKind::String:
      return PartKind::Text;
    case WordKind::Number:
    case WordKind::TruthValue:
      break;
  }
  if (word.IsOperator()) return PartKind::Operator;
  if (typeid(word) == typeid(TDoubleConstant)) return PartKind::Number;
  return typeid(word) == typeid(TGeneratedVariable) ? PartKind::Name : PartKind::Function;
}

}  // namespace

std::vector<ExpressionPart> PartsOf(std::string_view expression) {
  // The parts before a place of trouble are as good as any.
  ScannedFormula scanned(expression);
  const TExprCollection& tokens = scanned.Tokens();
  std::vector<ExpressionPart> parts;
  for (std::size_t i = 0; i < tokens.Count(); ++i)
    parts.push_back({tokens.PlaceOf(i), tokens[i].Name().size(), KindOf(tokens[i])});
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < tokens.Count(); ++i) {
    const WordKind kind = tokens[i].ResultType();
    if (kind == WordKind::LeftBracket) open.push_back(i);
    if (kind != WordKind::RightBracket || open.empty()) continue;
    parts[i].partner = open.back();
    parts[open.back()].partner = i;
    open.pop_back();
  }
  return parts;
}

}  // namespace tarnwick
