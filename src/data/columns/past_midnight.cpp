#include "data/columns/past_midnight.h"

#include <algorithm>
#include <span>

namespace tarnwick {
namespace {

constexpr double kHalfDay = 0.5;

bool IsOfDay(double time) {
  return time >= 0 && time < 1;
}

}  // namespace

double DayCounter::Placed(double time) {
  if (!IsOfDay(time)) return time;
  if (last_ - time > kHalfDay) ++days_;
  last_ = time;
  return time + days_;
}

bool GoOnPastMidnight(const ColumnGuess& column) {
  const std::vector<double>& times = column.values;
  if (!column.is_date || times.size() < 2 || !std::ranges::all_of(times, &IsOfDay)) return false;
  bool passes = false;
  const std::size_t successive = column.Successive().size();
  for (std::size_t i = 1; i < successive; ++i) {
    if (times[i] >= times[i - 1]) continue;
    if (times[i - 1] - times[i] < kHalfDay) return false;
    passes = true;
  }
  // Between places further on whole days may lie.
  const auto ends = std::ranges::minmax(times);
  return passes || (ends.max - ends.min > kHalfDay && !std::ranges::is_sorted(times));
}

void LetGoOn(ColumnGuess& column) {
  column.format = ColumnFormat::TimeGoingOn;
  const std::size_t successive = column.Successive().size();
  DayCounter days;
  double later_days = 0;
  for (std::size_t i = 0; i < column.values.size(); ++i) {
    double& time = column.values[i];
    if (i < successive) {
      time = days.Placed(time);
    } else {
      while (time + later_days < column.values[i - 1]) ++later_days;
      time += later_days;
    }
  }
}

}  // namespace tarnwick
