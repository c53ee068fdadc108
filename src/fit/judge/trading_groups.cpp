#include "fit/judge/trading_groups.h"

#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

bool Share(const TradingGroup& one, const TradingGroup& other) {
  return std::ranges::find_first_of(one.parameters, other.parameters) != one.parameters.end();
}

void Take(const TradingGroup& from, TradingGroup& group) {
  std::vector<std::int32_t>& all = group.parameters;
  all.insert(all.end(), from.parameters.begin(), from.parameters.end());
  std::ranges::sort(all);
  all.erase(std::unique(all.begin(), all.end()), all.end());
  group.directions += from.directions;
}

}  // namespace

std::vector<TradingGroup> TradingGroups(const FitResult& result) {
  std::vector<TradingGroup> groups;
  for (const SingularDirection& direction : result.singular_directions) {
    TradingGroup group{direction.parameters};
    for (auto other = groups.begin(); other != groups.end();) {
      if (Share(*other, group)) {
        Take(*other, group);
        other = groups.erase(other);
      } else {
        ++other;
      }
    }
    groups.push_back(std::move(group));
  }
  return groups;
}

}  // namespace tarnwick
