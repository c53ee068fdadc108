#include "expr/words/added_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "base/undefined.h"
#include "expr/expression_hints.h"
#include "expr/formula_parser.h"
#include "expr/words/special_functions.h"

namespace tarnwick {
namespace {

struct Row {
  const char* text;
  double value;      // to 40 digits, rounded; NaN stands for undefined
  double tolerance;  // relative
};

constexpr double kUlps = 1e-15;

const Row kRows[] = {
    {"erf(0.5)", 0.5204998778130465377, kUlps},
    {"erf(0-2)", -0.9953222650189527342, kUlps},
    {"erf(1e-10)", 1.128379167095512574e-10, kUlps},
    {"erfc(10)", 2.088487583762544757e-45, kUlps},
    {"erfc(0-3)", 1.999977909503001415, kUlps},
    {"gamma(0.5)", 1.772453850905516027, kUlps},
    {"gamma(10.25)", 639232.5987795767943, kUlps},
    {"gamma(0-1.5)", 2.363271801207354703, kUlps},
    {"gamma(100)", 9.332621544394415268e+155, kUlps},
    {"gamma(0)", kUndefined, 0},
    {"gamma(0-3)", kUndefined, 0},
    {"lngamma(0.5)", 0.5723649429247000871, kUlps},
    {"lngamma(1e10)", 220258509288.8105815, kUlps},
    {"lngamma(0-1.5)", 0.8600470153764810145, kUlps},
    {"lngamma(0)", kUndefined, 0},
    {"besselj(0, 1)", 0.7651976865579665514, kUlps},
    {"besselj(1, 10)", 0.04347274616886143667, kUlps},
    {"besselj(5.2, 3)", 0.04302843487704758392, kUlps},
    {"besselj(2, 0-1)", 0.1149034849319004805, kUlps},
    {"besselj(10, 0.5)", 2.613177360822803086e-13, kUlps},
    {"besselj(1e9, 0.5)", kUndefined, 0},
    {"arctan(2)", 1.107148717794090503, kUlps},
    {"voigt(0, 1, 1)", 0.2087092805203676891, 1e-14},
    {"voigt(1, 0.5, 0.5)", 0.1814303988525508595, 1e-14},
    {"voigt(0-1, 0-0.5, 0.5)", 0.1814303988525508595, 1e-14},
    {"voigt(10, 1, 1e-6)", 3.283734598778135505e-9, 1e-14},
    {"voigt(30, 0.5, 2)", 0.0007048070179140885125, 1e-14},
    {"voigt(2, 1, 1e-12)", 0.05399096651327717113, 1e-14},
    {"voigt(0-1, 0-0.5, 0-0.5)", 0.1814303988525508595, 1e-14},
    {"voigt(30, 0.5, 0-2)", 0.0007048070179140885125, 1e-14},
    {"voigt(1e5, 2, 3)", 9.549296588378509118e-11, 1e-14},
    {"voigt(1, 0, 1)", kUndefined, 0},
    {"if(2>1, 10, 20)", 10, 0},
    {"if(0, 1/0, 20)", 20, 0},
    {"if(0-0.5, 10, ln(0))", 10, 0},
    {"if(0/0, 10, 20)", kUndefined, 0},
};

TEST(AddedWords, GiveTheValueOf) {
  for (const Row& row : kRows) {
    TFormulaParser parser;
    parser.CompileExpression(row.text);
    const double value = parser.Evaluate();
    if (IsUndefined(row.value)) {
      EXPECT_TRUE(IsUndefined(value)) << row.text << " gives " << value;
    } else {
      EXPECT_NEAR(value, row.value, row.tolerance * std::abs(row.value)) << row.text;
    }
  }
}

TEST(AddedWords, GiveWayToVariables) {
  TFormulaParser parser;
  parser.CompileExpression("2*gamma(4) + erf");
  EXPECT_EQ(parser.UnassignedNames(), std::vector<std::string>{"erf"});
  parser.CompileExpression("gamma := 3");
  EXPECT_EQ(parser.Evaluate(), 3);
  parser.CompileExpression("gamma^2");
  EXPECT_EQ(parser.Evaluate(), 9);
  double own = 7;
  parser.DefineVariable("voigt", &own);
  parser.CompileExpression("voigt*2");
  EXPECT_EQ(parser.Evaluate(), 14);
}

// w' through both of its ways, far out and near.
TEST(SpecialFunctions, SlopeOfTheProfile) {
  const std::complex<double> near = FaddeevaSlope(1, 2);
  EXPECT_NEAR(near.real(), -0.06499399297937392945, 1e-15);
  EXPECT_NEAR(-near.imag(), -0.06841308721074605451, 1e-15);
  const std::complex<double> far = FaddeevaSlope(40, 1);
  EXPECT_NEAR(far.real(), -0.0000176419385856642029, 1e-19);
  EXPECT_NEAR(-far.imag(), 0.0003522870472626016756, 1e-18);
}

}  // namespace
}  // namespace tarnwick
