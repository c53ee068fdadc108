#include "results/fit_texts.h"

#include <gtest/gtest.h>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(FitTexts, RoundAValueAsItsErrorTells) {
  struct Row {
    double value, error;
    const char* text;
  };
  const Row rows[] = {
      {398.2468, 1.523, "398.2 ± 1.5 V"},
      {0.00453211, 0.0000213, "0.004532 ± 0.000021 V"},
      {1.2345e-9, 1.2e-11, "(1.234 ± 0.012)×10⁻⁹ V"},
      {-5.4321e12, 3e10, "(-5.432 ± 0.030)×10¹² V"},
      {12, 340, "12 ± 340 V"},
      {0.0312, 40, "0.0312 ± 40 V"},  // once "0 ± 40"
      {1.234e-7, 5e8, "1.23×10⁻⁷ ± 5.0×10⁸ V"},
      {0, 0.012, "0.000 ± 0.012 V"},
      {3.25, kUndefined, "3.25 V"},
      {3.25, 0, "3.25 V"},
  };
  for (const Row& row : rows) EXPECT_EQ(PlusMinusText(row.value, row.error, "V"), row.text);
}

}  // namespace
}  // namespace tarnwick
