// Times of a day without a date that go on over midnight. Knows the order of values; no rows and no texts.
#pragma once

#include <span>
#include <vector>

#include "data/guess/column_judge.h"

namespace tarnwick {

/// Counts the days that times in the order of their rows go through (ColumnFormat::TimeGoingOn).
class DayCounter {
 public:
  /// The time with the days that have passed since the first; what is no time of a day, NaN too, stays as it is.
  double Placed(double time);

 private:
  double last_ = 0;
  double days_ = 0;
};

/// True for times of a day that rise from row to row, but fall back from late to early.
bool GoOnPastMidnight(const ColumnGuess& column);

/// Makes the column one of times that go on.
void LetGoOn(ColumnGuess& column);

}  // namespace tarnwick
