#include "sources/streams/stream_clock.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>

#include "base/day_number.h"

namespace tarnwick {

double LocalDay(std::chrono::system_clock::time_point moment) {
  using std::chrono::system_clock;
  const std::time_t seconds = system_clock::to_time_t(moment);
  std::tm local{};
  localtime_r(&seconds, &local);
  const std::chrono::duration<double> part = moment - system_clock::from_time_t(seconds);
  constexpr double kSecondsOfDay = 86400;
  return JoinDay({.year = local.tm_year + 1900,
                  .month = local.tm_mon + 1,
                  .day = local.tm_mday,
                  .hour = local.tm_hour,
                  .minute = local.tm_min,
                  .second = local.tm_sec}) +
         part.count() / kSecondsOfDay;
}

StreamClock::StreamClock()
    : start_(LocalDay(std::chrono::system_clock::now())),
      started_(std::chrono::steady_clock::now()) {}

double StreamClock::Now() {
  using Days = std::chrono::duration<double, std::ratio<86400>>;
  const Days passed = std::chrono::steady_clock::now() - started_;
  // Two values may come within what a day number resolves (a microsecond).
  last_ = std::max(start_ + passed.count(),
                   std::nextafter(last_, std::numeric_limits<double>::infinity()));
  return last_;
}

}  // namespace tarnwick
