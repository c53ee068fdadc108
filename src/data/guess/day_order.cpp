#include "data/guess/day_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "base/day_number.h"
#include "data/fields/field_value.h"

namespace tarnwick {
namespace {

/// The days of a column, each once where rows that follow each other share it; empty where a text is no date.
std::vector<double> DaysIn(std::span<const std::string> texts, ColumnFormat format) {
  std::vector<double> days;
  for (const std::string& text : texts) {
    if (text.empty()) continue;
    const std::optional<double> day = ValueOfField(text, format);
    if (!day) return {};
    if (days.empty() || std::floor(*day) != days.back()) days.push_back(std::floor(*day));
  }
  return days;
}

bool GoOnDayByDay(std::span<const double> days) {
  if (days.size() < 2) return false;
  const double step = days[1] - days[0];
  const auto is_other = [step](double one, double next) { return next - one != step; };
  return std::abs(step) == 1 &&
         std::adjacent_find(days.begin(), days.end(), is_other) == days.end();
}

}  // namespace

bool GoOnWithDayFirst(std::span<const std::string> texts) {
  const std::vector<double> days = DaysIn(texts, ColumnFormat::DateDayFirst);
  if (!GoOnDayByDay(days)) return false;
  const std::vector<double> others = DaysIn(texts, ColumnFormat::DateMonthFirst);
  if (others.empty() || GoOnDayByDay(others)) return false;
  const auto filled = static_cast<std::size_t>(
      std::ranges::count_if(texts, [](const std::string& text) { return !text.empty(); }));
  constexpr std::size_t kFewest = 3;
  return filled > 2 * days.size() || (days.size() >= kFewest && SplitDay(others.front()).day != 1);
}

}  // namespace tarnwick
