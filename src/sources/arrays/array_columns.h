// The columns that arrays of one length make together, and what their stored numbers mean. Knows arrays by what is told of
// them; reads no values.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sources/arrays/named_array.h"

namespace tarnwick {

/// What a stored number means: value = stored * scale + offset, unless it is one of those that stand for none.
struct StoredMeaning {
  double scale = 1;
  double offset = 0;
  std::vector<double> missing;
  bool is_date = false;  ///< the values are day numbers

  /// kMissingValue, kNotNumberValue for what is not finite, or the value.
  double ValueOf(double stored) const;
};

/// One column.
struct ArrayColumn {
  std::string path;
  std::string member;
  std::string line;       ///< where it lies in the array: ":,2"
  std::string full_path;  ///< "run/profile[2]"
  std::string name;       ///< "Voltage [V]"; every column has one of its own
  StoredMeaning meaning;
};

struct ArrayTable {
  std::vector<ArrayColumn> columns;
  std::int64_t rows = 0;
  std::vector<std::string> read;   ///< full paths of the arrays that are columns
  std::vector<std::string> notes;  ///< what was decided that may be seen otherwise
};

/// The table of the arrays that `asked` names, by paths, last parts of paths, groups, or lines through arrays ("HGT[0,36,:]"); of
/// none the arrays of that length which most that were measured have, the longest of several, without bounds of coordinates.
/// Arrays of two axes are as many columns, whose rows run along a time where one of the axes is one; the array of the axis they
/// run along goes first. Throws FileError for what is not there or of several lengths, and when nothing is left. `file` is for
/// messages.
ArrayTable ChooseArrays(std::span<const NamedArray> arrays, std::span<const std::string> asked,
                        const std::string& file);

}  // namespace tarnwick
