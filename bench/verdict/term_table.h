// The table of fits with a term that may not be there. Prints.
#pragma once

#include <cstdint>

namespace tarnwick::bench {

enum class Listing { None, Errors };

/// `repeats` of every family, number of points and error; with Listing::Errors each that is wrongly trusted, and each called
/// absent that is there, on a line.
void TellTerms(int repeats, std::uint64_t seed, Listing listing);

}  // namespace tarnwick::bench
