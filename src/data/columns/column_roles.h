// Which column of a table gives X, which give Y, and which are left out. Knows names and sampled values; decides nothing
// that the user has settled.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/columns/import_source.h"
#include "data/series/point_errors.h"

namespace tarnwick {

struct ImportOptions;

/// Where the errors of a column's values come from.
struct ChosenErrors {
  ErrorRule rule;
  std::optional<std::int32_t> column = {};  ///< of ErrorKind::Column
};

struct ChosenColumns {
  std::int32_t x = kRowNumberColumn;
  std::vector<std::int32_t> y;
  bool y_is_stated = false;            ///< the user names `y`: none of it is left out
  std::vector<std::int32_t> own_x;     ///< the X of each of `y` where they differ; else empty
  std::vector<ChosenErrors> y_errors;  ///< one for each of `y`
  ChosenErrors x_errors;
  std::string errors_note;  ///< which columns were taken as errors by themselves; empty: none
  std::vector<std::string> notes;  ///< what was left out or preferred, one clause each

  std::int32_t XOf(std::size_t number) const { return own_x.empty() ? x : own_x[number]; }
};

/// What the user names; else the X that a person would take (times first, then what varies, never a constant or a count of
/// rows while there is something better) against every other column of numbers. Columns of errors become those of the columns
/// that they belong to; constants, counts of rows and, beside numbers, dates are left out where others remain, and so are errors
/// of nobody knows what. Where a column repeats the name of X ("nm, A, nm, A") it is the X of those behind it. A file with one
/// column, or with labels of its rows and no column that rises, is plotted over the number of the row. Throws FileError when
/// there are no numbers or no such column.
ChosenColumns ChooseColumns(const ImportSource& source, const ImportOptions& options);

}  // namespace tarnwick
