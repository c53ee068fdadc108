#include "fit/judge/trading_groups.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

using Numbers = std::vector<std::int32_t>;

TEST(TradingGroups, AreDirectionsThatShareParameters) {
  const struct {
    const char* name;
    std::vector<Numbers> directions, groups;
    std::vector<std::size_t> counts;
  } rows[] = {
      {"none", {}, {}, {}},
      {"one", {{2, 0}}, {{2, 0}}, {1}},
      {"two that share nothing", {{0, 1}, {2, 3}}, {{0, 1}, {2, 3}}, {1, 1}},
      {"the last with the first", {{0, 1}, {2, 3}, {4, 1}}, {{2, 3}, {0, 1, 4}}, {1, 2}},
      {"one that joins all", {{0, 1}, {2, 3}, {5, 6}, {3, 0, 5}}, {{0, 1, 2, 3, 5, 6}}, {4}},
  };
  for (const auto& row : rows) {
    FitResult result;
    for (const Numbers& direction : row.directions)
      result.singular_directions.push_back({1e-12, direction});
    std::vector<Numbers> groups;
    std::vector<std::size_t> counts;
    for (const TradingGroup& group : TradingGroups(result)) {
      groups.push_back(group.parameters);
      counts.push_back(group.directions);
    }
    EXPECT_EQ(groups, row.groups) << row.name;
    EXPECT_EQ(counts, row.counts) << row.name;
  }
}

}  // namespace
}  // namespace tarnwick
