// Columns that count the rows of a table or label them, which nothing was measured over. Knows names and sampled values.
#pragma once

#include <cstdint>

#include "data/columns/import_source.h"

namespace tarnwick {

/// Some column has a name of its own.
bool HasNamedColumns(const ImportSource& source);

/// The column counts the rows, by its values and by its name or for want of one, or labels them (LabelsRows).
bool CountsRows(const ImportSource& source, std::int32_t column);

}  // namespace tarnwick
