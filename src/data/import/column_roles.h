// Which column of a table gives X, which give Y, and which are left out. Knows names and sampled values; decides nothing
// that the user has settled.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/import/import_source.h"

namespace tarnwick {

struct ChosenColumns {
  std::int32_t x = kRowNumberColumn;
  std::vector<std::int32_t> y;
  std::vector<std::string> notes;  ///< what was left out or preferred, one clause each
};

/// What the user names; else the X that a person would take (times first, then what varies, never a constant or a count of
/// rows while there is something better) against every other column of numbers. Columns of errors, constants, counts of
/// rows and, beside numbers, of dates are left out where others remain. A file with one column is plotted over the number
/// of the row. Throws FileError when there are no numbers or no such column.
ChosenColumns ChooseColumns(const ImportSource& source, const ImportOptions& options);

/// True for the names that columns of errors have: "err", "sigma", "dy", "+-", …
bool NamesErrors(std::string_view name);

}  // namespace tarnwick
