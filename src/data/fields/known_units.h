// The units that people write behind numbers. Knows their letters; knows no numbers and not what units mean.
#pragma once

#include <string_view>

namespace tarnwick {

/// "mV", "kg/m3", "%", "degC": every word of it is a unit of physics with or without a prefix, or one of those in use beside
/// them. "CS", "p" and "a" are none, so that "13CS", "2p" and "3a" may be told as labels.
bool IsKnownUnit(std::string_view unit);

}  // namespace tarnwick
