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

/// The same day of one month after the other, none left out, beyond one year: of twelve months at most the other order would do
/// as well, by which they are the first days of one.
bool GoOnMonthByMonth(std::span<const double> days) {
  constexpr std::size_t kMonths = 12;
  if (days.size() <= kMonths) return false;
  const auto is_other = [](double one, double next) {
    DateTime month_on = SplitDay(one);
    ++month_on.month;
    return JoinDay(month_on) != next;
  };
  return std::ranges::adjacent_find(days, is_other) == days.end();
}

bool AreOfOneMonth(double one, double other) {
  const DateTime first = SplitDay(one);
  const DateTime second = SplitDay(other);
  return first.year == second.year && first.month == second.month;
}

}  // namespace

bool AgreeInMonthWithDayFirst(std::span<const std::string> texts,
                              std::span<const std::string> others) {
  bool tells = false;  // some row of a month that the other order would not give
  for (std::size_t row = 0; row < std::min(texts.size(), others.size()); ++row) {
    if (texts[row].empty() || others[row].empty()) continue;
    const std::optional<double> other = ValueOfField(others[row], ColumnFormat::Automatic);
    const std::optional<double> day_first = ValueOfField(texts[row], ColumnFormat::DateDayFirst);
    if (!other || !day_first || !AreOfOneMonth(*day_first, *other)) return false;
    const std::optional<double> month_first =
        ValueOfField(texts[row], ColumnFormat::DateMonthFirst);
    tells = tells || !month_first || !AreOfOneMonth(*month_first, *other);
  }
  return tells;
}

bool GoOnWithDayFirst(std::span<const std::string> texts) {
  const std::vector<double> days = DaysIn(texts, ColumnFormat::DateDayFirst);
  if (GoOnMonthByMonth(days)) return true;
  if (!GoOnDayByDay(days)) return false;
  const std::vector<double> others = DaysIn(texts, ColumnFormat::DateMonthFirst);
  if (others.empty() || GoOnDayByDay(others)) return false;
  const auto filled = static_cast<std::size_t>(
      std::ranges::count_if(texts, [](const std::string& text) { return !text.empty(); }));
  constexpr std::size_t kFewest = 3;
  return filled > 2 * days.size() || (days.size() >= kFewest && SplitDay(others.front()).day != 1);
}

}  // namespace tarnwick
