// Models whose curve is faster than its points lie: they fit, and determine how fast it is in no way. Knows the truth.
#pragma once

#include <cstdint>

namespace tarnwick::bench {

/// Prints how often such fits are trusted, of `repeats` of every family, number of points and error.
void TellLimits(int repeats, std::uint64_t seed);

}  // namespace tarnwick::bench
