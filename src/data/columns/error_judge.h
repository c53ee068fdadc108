// Whether a column called as an error gives errors, by what stands beside it and by its values. Knows names and sampled values.
#pragma once

#include <cstdint>

#include "data/columns/error_pairs.h"
#include "data/columns/import_source.h"

namespace tarnwick {

/// True for a column of numbers that is named as the error of another one beside `x` ("dy", "e_Mass", "y err"), or stands as an
/// error of nobody behind the columns of values; so is what `pairs` find to be written so. "dx" and "dy" beside no "x" are steps,
/// a "max error" beside no "max" and an element "SIGMA(1,1)" of a matrix are values, and so is a "sigma" that is larger than what
/// it would be the error of.
bool IsErrorColumn(const ImportSource& source, const ErrorPairs& pairs, std::int32_t x,
                   std::int32_t column);

/// The column stands behind one that holds nothing but "+/-": it is the error of the column before that.
bool StandsBehindSign(const ImportSource& source, std::int32_t column);

}  // namespace tarnwick
