// A parameter that stands still while others are measured: "25 1.0 0.99", "25 10.0 0.94", …, "50 1.0 0.98". Knows sampled values.
#pragma once

#include <cstdint>
#include <optional>

#include "data/columns/import_source.h"

namespace tarnwick {

/// The first column of numbers, no time, where it is the same in blocks of five rows and more, another in each block, and `x`,
/// the column of numbers behind it, only rises or only falls within each block and starts over with the next; called as what
/// others are measured over it may stand for several rows there, and start over once in ten.
std::optional<std::int32_t> FindBlockParameter(const ImportSource& source, std::int32_t x);

}  // namespace tarnwick
