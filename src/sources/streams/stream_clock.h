// The clock that gives X where no column does. Knows day numbers; knows no stream.
#pragma once

#include <chrono>

namespace tarnwick {

/// The day number of a moment by the clock on the wall.
double LocalDay(std::chrono::system_clock::time_point moment);

/// Day numbers of the time on the wall, in the zone that holds when the clock is made. No moment is told twice and none goes
/// back, whoever sets the system's clock meanwhile: points of a stream neither replace one another nor change places.
class StreamClock {
 public:
  StreamClock();

  double Now();

 private:
  double start_;  ///< day number
  std::chrono::steady_clock::time_point started_;
  double last_ = 0;
};

}  // namespace tarnwick
