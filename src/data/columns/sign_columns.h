// Columns of signs that stand apart from their numbers: "- 16 20 5" for an angle below zero. Knows sampled texts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/columns/import_source.h"

namespace tarnwick {

/// True for "+", "-" and nothing else, or for no texts at all: such a column parts no kinds of rows.
bool AreSigns(const std::vector<std::string>& texts);

/// A clause for each column of signs without a name, some of them "-", that stands ahead of one of numbers: these are read
/// without them.
std::vector<std::string> SignsLeftOut(const ImportSource& source);

}  // namespace tarnwick
