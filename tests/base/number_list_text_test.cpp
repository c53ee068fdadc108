#include "base/number_list_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(NumberListText, ComesBackAsItWas) {
  const std::vector<double> lists[] = {
      {}, {1}, {0.1, -2.5e-300, 3}, {kUndefined}, {1, kUndefined, 2}, {kUndefined, kUndefined}};
  for (const std::vector<double>& numbers : lists) {
    const std::string text = NumberListText(numbers);
    const auto back = ParseNumberList(text);
    ASSERT_TRUE(back) << text;
    ASSERT_EQ(back->size(), numbers.size()) << text;
    for (std::size_t i = 0; i < numbers.size(); ++i)
      EXPECT_TRUE((*back)[i] == numbers[i] || (IsUndefined((*back)[i]) && IsUndefined(numbers[i])));
    EXPECT_TRUE(ParseNumberList(text, numbers.size())) << text;
    EXPECT_FALSE(ParseNumberList(text, numbers.size() + 1)) << text;
    if (!numbers.empty()) {
      EXPECT_FALSE(ParseNumberList(text, numbers.size() - 1)) << text;
    }
  }
  EXPECT_EQ(NumberListText(std::vector<double>{1, HUGE_VAL, -HUGE_VAL, 2}),
            NumberListText(std::vector<double>{1, kUndefined, kUndefined, 2}));
  for (const char* const text : {"a", "1 a", "a 1", "1 2x", "--1"})
    EXPECT_FALSE(ParseNumberList(text)) << text;
}

}  // namespace
}  // namespace tarnwick
