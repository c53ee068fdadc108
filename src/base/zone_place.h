// Places that stand for a zone behind a time: "America/New_York". Knows their form; no clocks.
#pragma once

#include <cstddef>
#include <string_view>

namespace tarnwick {

/// The length of the place that `text` begins with, two names or three of letters, digits, "_", "-" and "+" with "/" between, the
/// first of letters only, or the same in brackets; 0 where none stands there.
std::size_t LengthOfZonePlace(std::string_view text);

/// The place behind a blank or in brackets at the end of `text`, without these; empty where none stands there.
std::string_view ZonePlaceAtEnd(std::string_view text);

}  // namespace tarnwick
