// What computed columns are called.
#include "data/column_caption.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(ColumnCaption, IsTheExpressionWithTheNamesOfItsColumns) {
  const struct {
    const char* y_column;
    const char* expression;
    const char* caption;
  } rows[] = {{"Z''(b)", "", "Z''(b)"},
              {"Z''(b)", " Y ", "Z''(b)"},
              {"Z''(b)", "-Y", "-Z''(b)"},
              {"Z''(b)", "ln(y)", "ln(Z''(b))"},
              {"U (V)", "-Y", "-U (V)"},
              {"U (V)", "Y*1000", "(U (V))*1000"},
              {"U", "Y*1000+X", "U*1000+(t (s))"},
              {"U", "2*X", "2*(t (s))"},
              {"signal - dark", "Y^2", "(signal - dark)^2"},
              {"signal - dark", "-y", "-(signal - dark)"},
              {"signal - dark", "max(Y,0)", "max(signal - dark,0)"},
              {"U", "current/voltage", "current/voltage"},
              {"U", "(Y", "(U"},
              {"U", "Y+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1", "U (computed)"}};
  for (const auto& row : rows) {
    TDSInfo info;
    info.XDataColumn = "t (s)";
    info.YDataColumn = row.y_column;
    info.YColExpr = row.expression;
    EXPECT_EQ(CaptionOfY(info), row.caption) << row.expression;
    EXPECT_EQ(CaptionOfX(info), "t (s)");
    info.XColExpr = "log10(x)";
    EXPECT_EQ(CaptionOfX(info), "log10(t (s))");
  }
}

}  // namespace
}  // namespace tarnwick
