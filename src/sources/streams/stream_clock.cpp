#include "sources/streams/stream_clock.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>

namespace tarnwick {
namespace {

using Days = std::chrono::duration<double, std::ratio<86400>>;

}  // namespace

double LocalDay(std::chrono::system_clock::time_point moment) {
  using std::chrono::system_clock;
  const std::time_t seconds = system_clock::to_time_t(moment);
  std::tm local{};
  localtime_r(&seconds, &local);
  constexpr double kDayOf1970 = 25569;
  const Days since_1970 = moment.time_since_epoch() + std::chrono::seconds(local.tm_gmtoff);
  return kDayOf1970 + since_1970.count();
}

StreamClock::StreamClock()
    : start_(LocalDay(std::chrono::system_clock::now())),
      started_(std::chrono::steady_clock::now()) {}

double StreamClock::Now() {
  const Days passed = std::chrono::steady_clock::now() - started_;
  // Two values may come within what a day number resolves (a microsecond).
  last_ = std::max(start_ + passed.count(),
                   std::nextafter(last_, std::numeric_limits<double>::infinity()));
  return last_;
}

}  // namespace tarnwick
