#include "expr/block/block_evaluator.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/undefined.h"
#include "expr/formula_parser.h"
#include "expr/words/added_words.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

/// Units in the last place between two numbers; 0 for two undefined ones.
double Distance(double a, double b) {
  if (IsUndefined(a) || IsUndefined(b)) return IsUndefined(a) == IsUndefined(b) ? 0 : kInf;
  if (a == b) return 0;
  if (std::isinf(a) || std::isinf(b) || std::signbit(a) != std::signbit(b)) return kInf;
  const auto bits = [](double value) { return std::bit_cast<std::int64_t>(std::abs(value)); };
  return std::abs(static_cast<double>(bits(a) - bits(b)));
}

/// An expression in x, p and q.
class Model {
 public:
  explicit Model(const std::string& text) {
    parser_.DefineVariable("x", &x_);
    parser_.DefineVariable("p", &p_);
    parser_.DefineVariable("q", &q_);
    parser_.CompileExpression(text);
  }

  std::unique_ptr<BlockEvaluator> Blocks() {
    const double* const variables[] = {&p_, &q_};
    return BlockEvaluator::Make(parser_, &x_, variables);
  }
  double At(double x, double p, double q) {
    x_ = x;
    p_ = p;
    q_ = q;
    return parser_.Evaluate();
  }
  void Set(double p, double q) {
    p_ = p;
    q_ = q;
  }

 private:
  TFormulaParser parser_;
  double x_ = 0;
  double p_ = 1;
  double q_ = 1;
};

/// Arguments of every size and sign, with the places where guards stand.
const std::vector<double>& Arguments() {
  static const std::vector<double> arguments = [] {
    std::vector<double> values = {
        0.0,   -0.0,       1.0,    -1.0,   2.0,      0.5,    1e-20,   -1e-20,   1e-31,      kInf,
        -kInf, kUndefined, 709.74, 709.75, 709.76,   710,    -708.1,  -744.43,  -744.44,    -745,
        1e300, -1e300,     5e-324, 1e-310, 1.79e308, 2.5,    3.5,     256,      257,        1e15,
        3e6,   2.9e6,      1e22,   170.2,  171,      0x1p63, -0x1p63, 22.0 / 7, 355.0 / 113};
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> exponent(-12, 12);
    for (int i = 0; i < 700; ++i) {
      const double size = std::pow(10, exponent(random));
      values.push_back(i % 2 == 0 ? size : -size);
    }
    std::uniform_real_distribution<double> near(-8, 8);
    for (int i = 0; i < 700; ++i) values.push_back(near(random));
    for (int i = 1; i < 300; ++i) values.push_back(i * 1.5707963267948966);
    for (int i = 1; i < 100; ++i) values.push_back(1 + (i - 50) * 1e-4);
    return values;
  }();
  return arguments;
}

/// Runs `test` with every instruction set that this processor has.
template <class Test>
void ForEachInstructionSet(Test test) {
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    test();
  }
  hwy::SetSupportedTargetsForTest(0);
}

void ExpectAgreement(const std::string& text, double p, double q, double most) {
  Model model(text);
  const std::unique_ptr<BlockEvaluator> blocks = model.Blocks();
  ASSERT_TRUE(blocks) << text;
  blocks->Load(std::vector{p, q});
  std::vector<double> values(Arguments().size());
  blocks->Values(Arguments(), values);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double expected = model.At(Arguments()[i], p, q);
    ASSERT_LE(Distance(values[i], expected), most)
        << text << " at x = " << Arguments()[i] << ", p = " << p << ": " << values[i] << " for "
        << expected;
  }
}

std::string Written(const BuiltinWord& word, const std::string& a, const std::string& b) {
  const std::string name = word.name;
  if (word.notation == Notation::Function) {
    const std::string more[] = {"", "", "," + b, "," + b + ",q"};
    return word.n_args == 0 ? name : name + "(" + a + more[word.n_args] + ")";
  }
  if (word.n_args == 2)
    return name == "^@" ? "(" + a + ")^3" : "(" + a + ")" + name + "(" + b + ")";
  if (name == "!" || name == "%") return "(" + a + ")" + name;
  return (name == "not" ? "not " : name.substr(0, 1)) + a;
}

TEST(BlockEvaluator, AgreesWithTheReferenceInEveryWord) {
  int words = 0;
  std::vector<BuiltinWord> all(BuiltinWords().begin(), BuiltinWords().end());
  all.insert(all.end(), AddedWords().begin(), AddedWords().end());
  for (const BuiltinWord& word : all) {
    const std::string name = word.name;
    if (word.func == nullptr || name == "random" || name == ":=") continue;
    ++words;
    ForEachInstructionSet([&] {
      const bool divides = name == "div" || name == "mod";
      const double most = name == "voigt" ? 8 : name == "tan" ? 4 : 2;
      for (const double p : {1.0, -2.5, 0.0, 1e-31, kUndefined}) {
        if (divides && p == 1e-31) continue;
        ExpectAgreement(Written(word, "x", divides ? "p*3+1" : "p"), p, 1, most);
        if (word.n_args >= 2 && !divides) {
          ExpectAgreement(Written(word, "p", "x"), p, 1, most);
          ExpectAgreement(Written(word, "x", "x+p"), p, 1, most);
        }
      }
    });
  }
  EXPECT_EQ(words, 59);
}

TEST(BlockEvaluator, FusesOperationsToTheSameBits) {
  const std::string operands[] = {"x", "p"};
  std::vector<std::string> texts = {"(x*x)*(x-p)", "(x+p)*(x+p)", "x*p-x*q+x*x*p", "-(-(x*p)-q)"};
  for (const std::string inner : {"+", "-", "*"}) {
    for (int which = 0; which < 8; ++which) {
      const std::string pair = "(" + operands[which & 1] + inner + operands[which >> 1 & 1] + ")";
      const std::string& third = operands[which >> 2];
      texts.push_back("-" + pair);
      for (const std::string outer : {"+", "-", "*", "/"}) {
        texts.push_back(pair + outer + third);
        texts.push_back(third + outer + pair);
      }
    }
  }
  ForEachInstructionSet([&] {
    for (const std::string& text : texts) ExpectAgreement(text, 1.7, -0.3, 0);
  });
}

TEST(BlockEvaluator, AgreesInWholeExpressions) {
  for (const char* const text : {"p*x^2+q*x+3",
                                 "x^8",
                                 "x^-1",
                                 "x^-8",
                                 "x^9",
                                 "x^2.0",
                                 "x^0",
                                 "x^0.5",
                                 "intpower(x, 0-3)",
                                 "p*exp(-x)+q",
                                 "p",
                                 "7",
                                 "x",
                                 "('a'='A')+x",
                                 "p*(x>1)+q*(x<=1)",
                                 "2 sin(x)",
                                 "1/x/x",
                                 "max(min(x,p),q)*50%",
                                 "ln(x^2+p^2)/ln(10)",
                                 "unknown + x"}) {
    ExpectAgreement(text, 0.7, -1.3, 8);
  }
}

TEST(BlockEvaluator, HasTheDerivativesOf) {
  struct Row {
    const char* text;
    double x, p, q;
  };
  const Row rows[] = {
      {"p*exp(-q*x)+p", 1.3, 2, 0.7},
      {"p*exp(-((x-q)/p)^2)", 0.4, 1.5, 0.2},
      {"sin(p*x+q)/x + cos(p)*tan(q)", 0.8, 1.1, 0.3},
      {"p^q+q^2.5+x^p+p^x", 1.7, 1.4, 2.2},
      {"p^3+(p*x)^-2+intpower(q,5)+p^9", 0.9, 1.2, 0.8},
      {"0^q + (p-p)^q", 0.9, 1.2, 0.8},
      {"ln(p)*log10(q*x)+logN(p,q)+logn(x,p)", 1.9, 2.5, 3.1},
      {"sqrt(p*q)+abs(p-q)+abs(q-p)*x", 1.2, 0.5, 2},
      {"arcsin(p*x)+arccos(q*x)+arctan2(p,q)+arctan2(x,p*q)", 0.6, 0.4, 0.9},
      {"sinh(p)*cosh(q)+tanh(p*q*x)", 0.3, 0.8, 1.1},
      {"arcsinh(p)+arccosh(q+1)+arctanh(p*x)", 0.5, 0.7, 0.9},
      {"max(p,q)*min(p*x,q)+max(0/0,p)", 2, 0.6, 0.9},
      {"p/q+q/p/x-p%-degtorad(q)+radtodeg(p)", 2, 0.6, 0.9},
      {"round(p)+trunc(q)*p+p!+(p>q)*q+(p div 1)+(not p)", 2, 0.6, 2.9},
      {"sqr(p)*+q--p", 2, 0.6, 2.9},
      {"erf(p*x)+erfc(q)*x+arctan(p*q)", 0.8, 0.6, 0.4},
      {"gamma(p+x)+lngamma(q*x)+lngamma(p-2)", 2, 0.6, 0.9},
      {"besselj(2,p*x)+besselj(0,q)+besselj(p,x)", 2.5, 1.2, 0.9},
      {"voigt(x-p,q,0.7)+voigt(x,p,q)+voigt(90,p,q)", 1.5, 0.6, 0.9},
      {"voigt(x,p,q)", -7, 0.9, 0.1},
      {"voigt(x,p,q)+voigt(x,1,q)", 1.5, -0.6, -0.9},
      {"1e4*voigt(p,x,q)", -3, 80, 2},
      {"1e4*voigt(-p,x,q)", 3, 80, 2},
      {"if(x>1,p*q,p)+if(p-p,p,q^2)", 1.5, 0.6, 0.9},
      {"x", 2, 0.6, 2.9},
      {"q", 2, 0.6, 2.9},
  };
  for (const Row& row : rows) {
    Model model(row.text);
    model.Set(row.p, row.q);
    const std::unique_ptr<BlockEvaluator> blocks = model.Blocks();
    ASSERT_TRUE(blocks) << row.text;
    blocks->Load();
    const std::vector<double> x(11, row.x);
    const BlockResult result = blocks->Derivatives(x);
    const auto slope = [&](double dp, double dq) {
      // Central differences, their error of second order removed.
      const auto difference = [&](double h) {
        return (model.At(row.x, row.p + dp * h, row.q + dq * h) -
                model.At(row.x, row.p - dp * h, row.q - dq * h)) /
               (2 * h);
      };
      return (4 * difference(1e-4) - difference(2e-4)) / 3;
    };
    const double expected[] = {slope(1, 0), slope(0, 1)};
    ASSERT_EQ(result.derivatives.size(), 2U);
    for (std::size_t j = 0; j < 2; ++j) {
      for (const std::size_t i : {std::size_t{0}, std::size_t{10}})
        EXPECT_NEAR(result.derivatives[j][i], expected[j], 1e-8 * (1 + std::abs(expected[j])))
            << row.text << ", variable " << j;
    }
    EXPECT_LE(Distance(result.values[10], model.At(row.x, row.p, row.q)), 4) << row.text;
  }
}

TEST(BlockEvaluator, DeclinesWhatDependsOnOrder) {
  class Heir : public TExpressionParser {
    void FillExpressList() override {
      TExpressionParser::FillExpressList();
      WordList().Insert(std::make_unique<TFunction>("own", 0, Notation::Function, 1,
                                                    [](TExprRec& rec) { rec.Res = *rec.Args[0]; }));
    }
  };
  for (const char* const text : {"y:=x", "x+random", "(x:=2)*3", "own(x)"}) {
    Heir parser;
    double x = 0;
    parser.DefineVariable("x", &x);
    parser.CompileExpression(text);
    EXPECT_FALSE(BlockEvaluator::Make(parser, &x)) << text;
  }
  const TExpressionParser empty;
  EXPECT_FALSE(BlockEvaluator::Make(empty, nullptr));
}

TEST(BlockEvaluator, ReadsVariablesWhenLoaded) {
  TExpressionParser parser;
  double x = 0;
  double a = 2;
  parser.DefineVariable("x", &x);
  parser.DefineVariable("a", &a);
  parser.CompileExpression("a*x + b");
  const std::unique_ptr<BlockEvaluator> blocks = BlockEvaluator::Make(parser, &x);
  parser.CompileExpression("b := 1");
  parser.Evaluate();
  blocks->Load();
  BlockEvaluator copy(*blocks);
  a = 5;
  EXPECT_EQ(blocks->Values(std::vector{3.0}).values[0], 7);
  blocks->Load();
  EXPECT_EQ(blocks->Values(std::vector{3.0}).values[0], 16);
  EXPECT_EQ(copy.Values(std::vector{3.0}).values[0], 7);
}

TEST(BlockEvaluator, ReportsIntegerDivisionsWithoutResult) {
  Model model("x div p + (q mod 1)");
  const std::unique_ptr<BlockEvaluator> blocks = model.Blocks();
  blocks->Load(std::vector{0.0, 1.0});
  EXPECT_THROW(blocks->Values(std::vector{1.0}), EIntegerDivision);
  Model uniform("x + 1 div q");
  EXPECT_THROW(uniform.Blocks()->Load(std::vector{1.0, 0.0}), EIntegerDivision);
}

TEST(BlockEvaluator, KeepsManyTermsWithinFewArrays) {
  std::string text = "0";
  for (int i = 0; i < 300; ++i) text += "+p*exp(-((x-q)/" + std::to_string(i + 1) + ")^2)";
  ExpectAgreement(text, 0.5, 0.25, 64);
  for (int i = 0; i < 5000; ++i) text += "+x*" + std::to_string(i);
  EXPECT_TRUE(Model(text).Blocks());
  for (int i = 0; i < 40000; ++i) text += "+x";
  EXPECT_FALSE(Model(text).Blocks());
}

}  // namespace
}  // namespace tarnwick
