// How long a classic NetCDF file must be, which the library that reads it does not ask. Knows the header only.
#pragma once

#include <cstdint>
#include <string_view>

namespace tarnwick {

/// The bytes up to the end of the last value that the header of `file` (classic, 64-bit offset or 64-bit data) claims. Throws
/// Error for a header that is no such one.
std::uint64_t ClaimedSize(std::string_view file);

}  // namespace tarnwick
