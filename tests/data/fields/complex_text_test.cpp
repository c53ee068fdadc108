#include "data/fields/complex_text.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(ComplexText, TwoNumbersTheSecondImaginary) {
  for (const std::string_view text :
       {"1.2+3.4j", "(1.2-3.4i)", "-1e-3 + 2E+5I", "1e+3-2e-3j", "0+0J"}) {
    EXPECT_TRUE(IsComplexNumber(text)) << text;
  }
  for (const std::string_view text :
       {"", "j", "3.4j", "-3.4j", "1.2", "1.2+3.4", "a+2j", "1+bj", "1e+3j", "(1+2j"}) {
    EXPECT_FALSE(IsComplexNumber(text)) << text;
  }
}

}  // namespace
}  // namespace tarnwick
