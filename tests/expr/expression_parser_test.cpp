#include "expr/expression_parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <span>
#include <string>
#include <utility>

#include "base/undefined.h"
#include "expr/expression_hints.h"
#include "expr/message_with_place.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

double Value(const std::string& text) {
  TExpressionParser parser;
  parser.CompileExpression(text);
  return parser.Evaluate();
}

struct ValueRow {
  const char* text;
  double value;  // NaN stands for undefined
};

// Comparisons and logic.
const ValueRow kComparisons[] = {
    {"1<1", 1},    {"1>1", 0},     {"2<1", 0},         {"1<>2", 1},      {"1<>1", 0},
    {"1>=1", 1},   {"1<=0", 0},    {"1+1e-19>=1", 1},  {"0>=1e-21", 1},  {"1e-21<=0", 1},
    {"not 2", 3},  {"not 0", 1},   {"not 257", 0},     {"2 and 256", 0}, {"0 or 256", 0},
    {"0 or 1", 1}, {"3 xor 1", 2}, {"(-1) xor 0", 255}};
// Functions.
const ValueRow kFunctions[] = {
    {"5!", 120},           {"1.4!", 1},        {"(-3)!", 1},          {"2.5!", 2},
    {"171!", kInf},        {"1e15!", kInf},    {"50%", 0.5},          {"1/0", kUndefined},
    {"ln(0)", kUndefined}, {"log10(1000)", 3}, {"logn(10, 1000)", 3}, {"exp(710)", kUndefined},
    {"exp(-745)", 0},      {"exp(0)", 1},      {"sqr(3)", 9},         {"abs(0-3)", 3}};
// Whole numbers and the like.
const ValueRow kIntegers[] = {{"7 div 2", 3},        {"-7 mod 2", -1},      {"2.5 div 1", 2},
                              {"3.5 div 1", 4},      {"(-7) div 2", -3},    {"round(2.5)", 2},
                              {"trunc(0-2.7)", -2},  {"max(1, 2)", 2},      {"min(1, 2)", 1},
                              {"radtodeg(pi)", 180}, {"pow(0, 0-1)", kInf}, {"0/0 = 0/0", 0},
                              {"0/0 <> 0/0", 0}};
// Numbers.
const ValueRow kNumbers[] = {{"1e5", 1e5},       {".5", 0.5},   {"5.", 5},
                             {"1.5E-3", 0.0015}, {"1e+2", 100}, {"1e999", kInf}};
// Priorities, signs, powers.
const ValueRow kPriorities[] = {
    {"1+2*3", 7},         {"2^3^2", 64},      {"8/2/2", 2},     {"-2^2", 4},
    {"1--3", 4},          {"2*-+-3", 6},      {"--3", 3},       {"not not 1", 1},
    {"not not not 0", 1}, {"not not -1", -1}, {"1 - -1", 2},    {"(-(-2))", 2},
    {"(not 1)+1", 1},     {"2^5e-1", 1},      {"2^-1", 0.5},    {"(-8)^3", -512},
    {"(-2)^3.0", -8},     {"2^3!", 64},       {"-3!", 1},       {"1+2<4 and 1", 1},
    {"not 1 = 1", 0},     {"2>1 xor 2>1", 0}, {"((((7))))", 7}, {"(1)+(2)", 3},
    {" 2 * 3 ", 6}};
// Dropped operands and surplus arguments.
const ValueRow kDropped[] = {{"2 sin(0)", 0}, {"2 3 sin(0)", 0}, {"sin(0) cos(0)", 1},
                             {"abs(2) 3", 2}, {"3! 4", 6},       {"max(1) 2", 2}};
// Strings.
const ValueRow kStrings[] = {{"'abc'<'abd'", 1}, {"'ABC'='abc'", 1}, {"'b'>'a'", 1},
                             {"'a'>='b'", 0},    {"'a'>='a'", 1},    {"'a'<='a'", 1},
                             {"'a'<'a'", 0},     {"('a'='a')+1", 2}, {"'a '='a'", 0},
                             {"'a'='a", 0},      {"''=''", 1},       {"''=' ", 1}};
// Names nobody defined.
const ValueRow kUnknownNames[] = {{"y", kUndefined}, {"@", kUndefined}, {"y:=3", 3},
                                  {"(y:=3)+y", 6},   {"a:=2*3>5", 1},   {"2:=7", 7},
                                  {"(1+1):=7", 7}};
// Longer ones of all sorts.
const ValueRow kLong[] = {{"1=1.00000000000000000001", 1},
                          {"logN(-1,2)", kUndefined},
                          {"sqrt(0-1)", kUndefined},
                          {"1e300 div 1", kUndefined},
                          {"round(1e19)", kUndefined},
                          {"arctan2(1, 0)", 1.5707963267948966},
                          {"arcsin(2)", kUndefined},
                          {"degtorad(180)", 3.141592653589793},
                          {"sinh(0)+cosh(0)+tanh(0)", 1},
                          {"arcsinh(0)+arccosh(1)+arctanh(0)", 0},
                          {"intpower(2, 9.5)", 1024},
                          {"intpower(2, 0-2)", 0.25},
                          {"power(2, 0.5)", 1.4142135623730951},
                          {"round(0/0)", kUndefined},
                          {"PI", 3.141592653589793},
                          {"2^0.5", 1.4142135623730951},
                          {"sin(1,2)", std::sin(1.0)},
                          {"(q:=5) abs(1) + q*0", kUndefined}};

TEST(ExpressionParser, GivesTheValueOf) {
  using Rows = std::span<const ValueRow>;
  for (const Rows rows :
       {Rows(kComparisons), Rows(kFunctions), Rows(kIntegers), Rows(kNumbers), Rows(kPriorities),
        Rows(kDropped), Rows(kStrings), Rows(kUnknownNames), Rows(kLong)}) {
    for (const ValueRow& row : rows) {
      double value = 0;
      ASSERT_NO_THROW(value = Value(row.text)) << row.text;
      if (IsUndefined(row.value)) {
        EXPECT_TRUE(IsUndefined(value)) << row.text << " gives " << value;
      } else {
        EXPECT_DOUBLE_EQ(value, row.value) << row.text;
      }
    }
  }
}

struct ErrorRow {
  const char* text;
  std::size_t place;
  const char* message = "";  // "" stands for the syntax error with the text
};

const ErrorRow kOtherErrors[] = {{"(1+2", 0, "Unequal brackets"},
                                 {"1+(2*(3)", 2, "Unequal brackets"},
                                 {"1)", 1, "Unequal brackets"},
                                 {"'a'<>'b'", 3, "<> is not a valid string operand"}};
const ErrorRow kSyntaxErrors[] = {{"1 2", 0},
                                  {"X y", 0},
                                  {"(1)(2)", 0},
                                  {")1(", 0},
                                  {"   ", 3},
                                  {"()", 1},
                                  {"sin()", 4},
                                  {"sin", 0},
                                  {"sin 1", 0},
                                  {"max(1)", 0},
                                  {"max(1,-2)", 6},
                                  {"max(1,,2)", 6},
                                  {"max(1,2,3,4,5,6,7)", 16},
                                  {"1+", 1},
                                  {"*2", 0},
                                  {"1 + 2 * ", 6},
                                  {",", 0},
                                  {"(1,2)", 2},
                                  {"1,5+2", 1},
                                  {"'abc'", 0},
                                  {"1+'abc'", 2},
                                  {"sin('a')", 4},
                                  {"1+2e", 2},
                                  {"1 + .", 4},
                                  {"1.2.3", 0},
                                  {"pi()", 0},
                                  {"-not 1", 0},
                                  {"a :b", 0}};

TEST(ExpressionParser, RefusesWithMessageAndPlace) {
  using Rows = std::span<const ErrorRow>;
  for (const Rows rows : {Rows(kOtherErrors), Rows(kSyntaxErrors)}) {
    for (const ErrorRow& row : rows) {
      const std::string message =
          *row.message ? row.message : "Syntax error in expression " + std::string(row.text);
      try {
        const double value = Value(row.text);
        ADD_FAILURE() << row.text << " gives " << value;
      } catch (const EParserException& error) {
        EXPECT_EQ(error.what(), message);
        EXPECT_EQ(error.Place(), row.place) << row.text;
      }
    }
  }
}

TEST(ExpressionParser, SaysWhatIsProbablyWrong) {
  const std::pair<const char*, const char*> rows[] = {
      {"2*exq(x)", "\"exq\" is no function; did you mean \"exp\"?"},
      {"ASIN(x)", "\"asin\" is no function; did you mean \"arcsin\"?"},
      {"foobar(x)", "\"foobar\" is no function"},
      {"epx(x)", "\"epx\" is no function; did you mean \"exp\"?"},  // letters exchanged: one slip
      {"ocs(x)", "\"ocs\" is no function; did you mean \"cos\"?"},
      {"epy(x)", "\"epy\" is no function"},  // two slips in a short word
      {"arxsxn(x)", "\"arxsxn\" is no function; did you mean \"arcsin\"?"},
      {"arxsxm(x)", "\"arxsxm\" is no function"},  // three
      {"max(1, -2*x)", "a sign behind a comma needs brackets: (-2)"},
      {"1,5+2", "numbers are written with a point: 1.5"},
      {"(x,y)", "a comma stands between the arguments of a function only"},
      {"x,2", "a comma stands between the arguments of a function only"},
      {"2,x", "a comma stands between the arguments of a function only"},
      {",2", "a comma stands between the arguments of a function only"},
      {"2 x", "an operator is missing before \"x\""},
      {"2\tx", "an operator is missing before a tab"},
      {"2\nx", "an operator is missing before a line break"},
      {"2\u00A0x", "a blank that does not break has no meaning in a formula"},
      {"2×x", "\"×\" has no meaning in a formula"},
      {"sin x", "\"sin\" takes its argument in brackets: sin(...)"},
      {"1+max(x)", "\"max\" takes 2 arguments"},
      {"(1+2", ""},
      {"*2", ""}};
  for (const auto& [text, hint] : rows) {
    try {
      Value(text);
      ADD_FAILURE() << text;
    } catch (const EParserException& error) {
      EXPECT_EQ(error.Hint(), hint) << text;
    }
  }
}

std::string Repeated(const std::string& part, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += part;
  return text;
}

TEST(ExpressionParser, RepeatsOfALongTextWhatStandsAboutTheLikelyPlace) {
  const std::string many = Repeated("+1.5", 40);
  const std::pair<std::string, std::string> rows[] = {
      {"1" + many + "\t2" + many, "….5+1.5+1.5+1.5+1.5 2+1.5+1.5+1.5… (character 162)"},
      {"1\t2" + many, "1 2+1.5+1.5+1.5+1.5+1.5+1.5+1.5+… (character 2)"},
      {"1" + many + "é", "….5+1.5+1.5+1.5+1.5é (character 162)"},
      {"1 2", "1 2 (character 3 of \"1 2\")"}};
  for (const auto& [text, shown] : rows) {
    try {
      Value(text);
      ADD_FAILURE() << text;
    } catch (const EParserException& error) {
      const std::string message = MessageWithPlace(error, text);
      EXPECT_TRUE(message.starts_with("Syntax error in expression " + shown)) << message;
    }
  }
}

TEST(ExpressionWarnings, SayWhatWasProbablyMeant) {
  const std::pair<const char*, const char*> rows[] = {
      {"a*exp(-((x-b)/C)^2)", "a*exp(-(((x-b)/C)^2))"},
      {"-x^2 + 2*-sin(x) ^ n * 3", "-(x^2) + 2*-(sin(x) ^ n) * 3"},
      {"exp(-(x/t)^b)", "exp(-((x/t)^b))"},
      {"-2^3^2", "-(2^3^2)"},
      {"-x^-2", "-(x^-2)"},
      {"-x^3", ""},
      {"(-x)^2", ""},
      {"0-x^2", ""},
      {"--x^2", ""},
      {"-x*y^2", ""},
      {"-(x^2", ""},
      {"A*sin(2*pi*x/P+p)+A", "P and p"},
      {"t*T+t*tT/Tt", "t and T tT and Tt"},
      {" y = a*x+b", "For the curve \"a*x+b\" write no more than that."},
      {"if(x=1,a,b)", ""},
      {"SIN(x)+sin(2*PI*x+Pi)", ""}};
  for (const auto& [text, meant] : rows) {
    std::string said;
    for (const std::string& warning : ExpressionWarnings(text)) {
      const std::string names = warning.substr(0, warning.find(" are one name"));
      said += (said.empty() ? "" : " ") + (names == warning ? warning : names);
    }
    EXPECT_EQ(said.empty(), *meant == '\0') << text;
    EXPECT_TRUE(said.ends_with(meant)) << said;
  }
}

TEST(ExpressionParser, ReportsIntegerDivisionsWithoutResult) {
  for (const char* const text :
       {"1 div 0", "1 mod 0", "5 div 0.5", "(-9223372036854775808) div (-1)"}) {
    EXPECT_THROW(Value(text), EIntegerDivision) << text;
  }
  EXPECT_EQ(Value("(-9223372036854775808) mod (-1)"), 0);
}

TEST(ExpressionParser, KeepsExpressionsAndVariablesApart) {
  TExpressionParser parser;
  double x = 3;
  EXPECT_EQ(parser.CompileExpression(""), -1);
  EXPECT_TRUE(IsUndefined(parser.Evaluate()));
  parser.DefineVariable("X", &x);
  EXPECT_EQ(parser.CompileExpression("2*x"), 0);
  EXPECT_EQ(parser.Evaluate(), 6);
  x = 5;
  EXPECT_EQ(parser.Evaluate(), 10);
  EXPECT_EQ(parser.CompileExpression("y:=3"), 1);
  EXPECT_EQ(parser.Evaluate(), 3);
  EXPECT_EQ(parser.CompileExpression("Y+1"), 2);
  EXPECT_EQ(parser.Evaluate(), 4);
  EXPECT_EQ(parser.CompileExpression("2*X"), 0);
  EXPECT_EQ(parser.CompileExpression("2* x"), 3);
  EXPECT_EQ(parser.CompileExpression(""), -1);
  EXPECT_EQ(parser.Evaluate(), 10);
  EXPECT_THROW(parser.CompileExpression("1 2"), EParserException);
  EXPECT_EQ(parser.CurrentText(), "1 2");
  EXPECT_EQ(parser.Evaluate(), 10);
  parser.ClearExpressions();
  EXPECT_TRUE(IsUndefined(parser.Evaluate()));
  EXPECT_EQ(parser.CompileExpression("y"), 0);
  EXPECT_EQ(parser.Evaluate(), 3);
}

TEST(ExpressionParser, KeepsOldBindingsInOldExpressions) {
  TExpressionParser parser;
  double first = 1;
  double second = 2;
  parser.DefineVariable("sin", &first);
  parser.DefineVariable("b", &second);
  parser.CompileExpression("sin+b");
  parser.DefineVariable("B", &first);
  EXPECT_EQ(parser.Evaluate(), 3);
  parser.CompileExpression("sin + b");
  EXPECT_EQ(parser.Evaluate(), 2);
  std::vector<std::reference_wrapper<const TDoubleVariable>> variables;
  parser.GetVariables(variables);
  ASSERT_EQ(variables.size(), 2U);
  EXPECT_EQ(variables[0].get().Name(), "b");
  EXPECT_FALSE(parser.RemoveVariable("cos"));
  EXPECT_TRUE(parser.RemoveVariable("B"));
  EXPECT_FALSE(parser.RemoveVariable("b"));
  parser.CompileExpression("b + 0*first");
  EXPECT_TRUE(IsUndefined(parser.Evaluate()));
  ASSERT_EQ(parser.GeneratedVariables().size(), 2U);
  parser.RemoveAllVariables();
  parser.GetVariables(variables);
  EXPECT_TRUE(variables.empty());
  EXPECT_EQ(parser.GeneratedVariables().size(), 2U);
}

TEST(ExpressionParser, LetsAHeirAddWords) {
  class Heir : public TExpressionParser {
    void FillExpressList() override {
      TExpressionParser::FillExpressList();
      WordList().Insert(std::make_unique<TFunction>(
          "twice", 0, Notation::Function, 1, [](TExprRec& rec) { rec.Res = 2 * *rec.Args[0]; }));
    }
  } parser;
  parser.CompileExpression("Twice(4)");
  EXPECT_EQ(parser.Evaluate(), 8);
}

TEST(ExpressionParser, DrawsRandomNumbersFromTheUnitInterval) {
  TExpressionParser parser;
  parser.CompileExpression("random");
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = parser.Evaluate();
    ASSERT_TRUE(value >= 0 && value < 1);
    sum += value;
  }
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

TEST(ExpressionParser, BoundsDepthAndLength) {
  constexpr int kMany = 100000;
  EXPECT_EQ(Value("0" + Repeated("+1", kMany)), kMany);
  EXPECT_EQ(Value(Repeated("(", kMany) + "7" + Repeated(")", kMany)), 7);
  EXPECT_EQ(Value(Repeated("-", kMany) + "1"), 1);
  EXPECT_EQ(Value("1" + Repeated("^1", kMany)), 1);
  EXPECT_EQ(Value("0" + Repeated("+('a'='a')", kMany / 10)), kMany / 10);
  EXPECT_EQ(Value(Repeated("abs(", 900) + "7" + Repeated(")", 900)), 7);
  EXPECT_EQ(Value("0 " + Repeated("+1", 124'999)), 124'999);  // as long as it may be
  const std::string deep = "The expression is nested more than 1000 deep";
  const std::pair<std::string, std::string> rows[] = {
      {Repeated("abs(", kMany / 3) + "7" + Repeated(")", kMany / 3), deep},
      {Repeated("(1+", kMany / 3) + "7" + Repeated(")", kMany / 3), deep},
      {Repeated("-(", kMany / 2) + "7" + Repeated(")", kMany / 2), deep},
      {"1" + Repeated("+1", kMany + kMany / 2), "The expression is longer than 250000 characters"}};
  for (const auto& [text, message] : rows) {
    try {
      Value(text);
      ADD_FAILURE() << "compiled " << text.substr(0, 20);
    } catch (const EParserException& error) {
      EXPECT_EQ(error.what(), message);
    }
  }
}

}  // namespace
}  // namespace tarnwick
