#include "data/column_expression.h"

#include <gtest/gtest.h>

#include <string>

#include "base/error.h"

namespace tarnwick {
namespace {

ColumnTransforms Compiled(const std::string& x, const std::string& y) {
  TDataSeries series;
  series.SetXColExpr(x);
  series.SetYColExpr(y);
  return CompileColumnExpressions(series);
}

TEST(ColumnExpression, LeavesRawColumnsAlone) {
  for (const char* const text : {"", " ", "X", " x "}) EXPECT_FALSE(Compiled(text, "1").x) << text;
  for (const char* const text : {"", "Y", "y"}) EXPECT_FALSE(Compiled("1", text).y) << text;
  EXPECT_TRUE(Compiled("Y", "X").x);
}

TEST(ColumnExpression, ComputesFromTheRawNumbers) {
  const ColumnTransforms transforms = Compiled("X+Y", "100 div x");
  EXPECT_EQ(transforms.x(1, 2), 3);
  EXPECT_EQ(transforms.y(7, 0), 14);
  EXPECT_FALSE(transforms.y(0.2, 0)) << "no quotient";
  EXPECT_EQ(transforms.y(-7, 0), -14);
  EXPECT_FALSE(Compiled("1/Y", "Y").x(1, 0));
}

TEST(ColumnExpression, NamesTheExpressionThatFails) {
  try {
    Compiled("X", "Y 2");
    ADD_FAILURE() << "compiled";
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(),
                 "Syntax error in expression Y 2 (column expression \"Y 2\", character 1)");
  }
}

}  // namespace
}  // namespace tarnwick
