#include "data/import/column_expression.h"

#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/error.h"
#include "data/data_supplier.h"
#include "data/import/column_variables.h"

namespace tarnwick {
namespace {

using Names = std::vector<std::string>;

ColumnTransforms Compiled(const std::string& x, const std::string& y, const Names& names = {}) {
  TDataSeries series;
  series.Source().XColExpr = x;
  series.Source().YColExpr = y;
  return CompileColumnExpressions(series, names);
}

std::optional<double> ValueOf(const std::string& text, double x, double y) {
  return Compiled(text, "Y").x.value(x, y, {});
}

TEST(ColumnExpression, LeavesRawColumnsAlone) {
  for (const char* const text : {"", " ", "X", " x "}) EXPECT_FALSE(Compiled(text, "1").x) << text;
  for (const char* const text : {"", "Y", "y"}) EXPECT_FALSE(Compiled("1", text).y) << text;
  EXPECT_TRUE(Compiled("Y", "X").x);
}

TEST(ColumnExpression, ComputesFromTheRawNumbers) {
  EXPECT_EQ(ValueOf("X+Y", 1, 2), 3);
  EXPECT_EQ(ValueOf("100 div x", 7, 0), 14);
  EXPECT_EQ(ValueOf("100 div x", -7, 0), -14);
  EXPECT_FALSE(ValueOf("100 div x", 0.2, 0)) << "no quotient";
  EXPECT_FALSE(ValueOf("1/Y", 1, 0));
  EXPECT_FALSE(ValueOf("X*10", 1e308, 0)) << "beyond a double";
  EXPECT_EQ(ValueOf("(k := X*2) + k", 3, 0), 12) << "a name that the text assigns";
}

TEST(ColumnExpression, FindsColumnsByTheirNames) {
  const Names names = {"Time", "Temp (\u00b0C)", "exp",  "x", "2theta", "a b",
                       "a_b",  "(col 7)",        "col2", "",  "9"};
  struct Row {
    const char* variable;
    std::int32_t column;  // -1 = none
    const char* shown;    // what to write for that column
  };
  const Row rows[] = {{"time", 0, "time"},
                      {"temp___c_", 1, "temp___c_"},
                      {"_2theta", 4, "_2theta"},
                      {"a_b", 6, "a_b"},
                      {"col5", 5, "col5"},
                      {"_col_7_", 7, "_col_7_"},
                      {"col2", 8, "col2"},
                      {"col3", 3, "col3"},
                      {"col9", 9, "col9"},
                      {"col010", 10, "_9"},
                      {"row_number", kRowNumberColumn, nullptr},
                      {"col", -1, nullptr},
                      {"col11", -1, nullptr},
                      {"col99999999999", -1, nullptr},
                      {"2theta", -1, nullptr},
                      {"temp", -1, nullptr}};
  for (const Row& row : rows) {
    EXPECT_EQ(ColumnOfVariable(names, row.variable).value_or(-1), row.column) << row.variable;
    if (row.shown == nullptr) continue;
    EXPECT_EQ(VariableOfColumn(names, row.column), row.shown);
  }
  EXPECT_EQ(VariableOfColumn(names, 3), "col3") << "X stays the raw number";
  EXPECT_EQ(VariableOfColumn({"Row", "Exp"}, 1), "col1") << "a built-in word stays one";
}

TEST(ColumnExpression, AsksForTheColumnsThatItNames) {
  const Names names = {"t", "v", "exp", "unused"};
  const ColumnTransform transform = Compiled("X*V - col2 + exp(0)", "Y", names).x;
  EXPECT_EQ(transform.columns, (std::vector<std::int32_t>{2, 1}));
  const double values[] = {100, 5};
  EXPECT_EQ(transform.value(3, 0, values), 3 * 5 - 100 + 1);
}

TEST(ColumnExpression, SaysWhatIsWrong) {
  struct Row {
    const char* text;
    const char* message;
  };
  const Row rows[] = {
      {"Y 2",
       "Syntax error in expression Y 2 (column expression \"Y 2\", character 3): an operator is "
       "missing before \"2\""},
      {"2*Tmp",
       "There is no column \"tmp\" (column expression \"2*Tmp\"; names: x, y, time, temp, col2)"},
      {"(k := X) + n",
       "There is no column \"n\" (column expression \"(k := X) + n\"; names: x, y, time, temp, "
       "col2)"}};
  for (const Row& row : rows) {
    try {
      Compiled("X", row.text, {"Time", "Temp", "Ln"});
      ADD_FAILURE() << "compiled " << row.text;
    } catch (const Error& error) {
      EXPECT_STREQ(error.what(), row.message);
    }
  }
}

}  // namespace
}  // namespace tarnwick
