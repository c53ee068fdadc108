// Columns of one kind side by side, of which none is what the others were measured over. Knows names and sampled values.
#pragma once

#include <cstdint>
#include <span>

#include "data/import/import_source.h"

namespace tarnwick {

/// True where three and more of these columns, all that vary, go over one range of values, and the first of them does not rise or
/// fall throughout (where they have names: is in no order): components of vectors, colours from 0 to 255, matrices. Their rows are counted.
bool AreAlike(const ImportSource& source, std::span<const std::int32_t> columns);

}  // namespace tarnwick
