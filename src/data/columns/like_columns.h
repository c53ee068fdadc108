// Columns of one kind side by side, of which none is what the others were measured over. Knows names and sampled values.
#pragma once

#include <cstdint>
#include <span>

#include "data/columns/import_source.h"

namespace tarnwick {

/// True where three and more of these columns, all that vary, go over one range of values, and the first of them does not rise or
/// fall, but for a few rows where it is the first of all (where they have names: is in no order): components of vectors, colours
/// from 0 to 255, matrices. Their rows are counted.
bool AreAlike(const ImportSource& source, std::span<const std::int32_t> columns);

/// True where the first of three and more of these columns turns back often, and most change little from row to row for what they
/// change in all: each goes on along the rows, which were taken one after the other. Of two named columns so where the first does
/// in many rows.
bool AreSeries(const ImportSource& source, std::span<const std::int32_t> columns);

/// One name for two and more of these columns, all of them: the first, unless it rises or falls throughout, is no more what the
/// others were measured over than they are.
bool ShareOneName(const ImportSource& source, std::span<const std::int32_t> columns);

}  // namespace tarnwick
