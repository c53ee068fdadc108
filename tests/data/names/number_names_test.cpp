#include "data/names/number_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnwick {
namespace {

TEST(NumberNames, RiseOverThreeNeighboursAtLeast) {
  const struct {
    std::vector<std::string> fields;
    bool rise;
  } rows[] = {
      {{}, false},
      {{"1", "2"}, false},
      {{"t", "1", "2"}, false},
      {{"1", "2", "3"}, true},
      {{"t", "400", "402.5", "410"}, true},
      {{"1", "2", "a", "3"}, false},
      {{"1", "2", "2", "3"}, false},
      {{"9", "1", "2", "3", "b"}, true},
      {{"3", "2", "1"}, false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(HoldRisingNumbers(row.fields), row.rise) << ::testing::PrintToString(row.fields);
}

}  // namespace
}  // namespace tarnwick
