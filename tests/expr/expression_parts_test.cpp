#include "expr/expression_parts.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnwick {
namespace {

/// "N:1.5 O:* F:sin B:(3 ..." with the partner's number behind a bracket that has one.
std::string Shown(const std::string& expression) {
  constexpr char kLetters[] = "NTFOBn";  // in the order of PartKind
  std::string shown;
  for (const ExpressionPart& part : PartsOf(expression)) {
    if (!shown.empty()) shown += ' ';
    shown += kLetters[static_cast<int>(part.kind)];
    shown += ':' + expression.substr(part.place, part.length);
    if (part.partner) shown += std::to_string(*part.partner);
  }
  return shown;
}

TEST(ExpressionParts, AreCutAsFormulasReadThem) {
  struct Row {
    const char* expression;
    const char* parts;
  };
  const Row rows[] = {
      {"", ""},
      {"A*Exp(-k*x)", "n:A O:* F:Exp B:(8 O:- n:k O:* n:x B:)3"},
      {"  1.5E-3 <= pi", "N:1.5E-3 O:<= F:pi"},
      {"((a)", "B:( B:(3 n:a B:)1"},
      {")(", "B:) B:("},
      {"gamma+gamma(2)", "n:gamma O:+ n:gamma B:(5 N:2 B:)3"},  // a variable from then on
      {"'a b' = 'c", "T:'a b' O:= T:'c"},
      {"a := not 2", "n:a O::= O:not N:2"},
      {"x+1e-", "n:x O:+"},  // what is no number ends it
      {"\xC3\xA4*2", "n:\xC3 n:\xA4 O:* N:2"},
  };
  for (const Row& row : rows) EXPECT_EQ(Shown(row.expression), row.parts) << row.expression;
}

}  // namespace
}  // namespace tarnwick
