// One simulated measurement, fitted and judged: what its verdict says beside what is true. Knows the truth, which no fit does.
#pragma once

#include <cstdint>
#include <string>

#include "families.h"
#include "fit/fit_result.h"

namespace tarnwick::bench {

/// What a simulated measurement is like beside its trial.
struct Measurement {
  int points = 0;
  double noise = 0;  ///< deviation of the errors, relative to the range of the curve
  std::uint64_t seed = 0;
};

/// What is true of a fit. Between lies what nobody could call right or wrong: a parameter that such errors hardly determine, a
/// model too wrong to be right and too near to be grossly wrong, a curve that its own points miss, a spoiled point that did no
/// harm.
enum class Truth { Right, Between, Wrong };
/// What its verdict says.
enum class Said { Trusted, Untested, Doubted };
Said SaidOf(const FitVerdict& verdict);

struct SimulatedFit {
  Trial trial;
  Measurement measurement;
  bool spoiled = false;  ///< one point lies 20 to 50 deviations off
  Truth truth = Truth::Between;
  Said said = Said::Doubted;
  /// The method itself says that it did not come to its end: that is no doubt of the model.
  bool unfinished = false;
  FitResult result;
};

/// Draws parameters, points and errors, starts the fit as users do (near, within a factor of three, of ten, at ones), and
/// compares what comes of it with the truth. Wrong is a fit whose curve strays from the true one, at its points, by more than
/// twice their error in the mean and 36 more in the sum of squares, or by half of the range between them; for the right model, by
/// what chance does not do in a thousand fits.
SimulatedFit SimulateFit(const Trial& trial, const Measurement& measurement);

}  // namespace tarnwick::bench
