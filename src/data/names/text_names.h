// The names of a text's columns and how many there are. Knows the line of names; knows no values.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

struct TextNames {
  std::vector<std::string>
      names;  ///< UTF-8, one per column, "Voltage [V]", "(col N)" where the text has none
  std::vector<std::string> bare_names;  ///< the same without the units of a line of units
  bool has_names_line = false;          ///< no name was missing or a number
};

inline constexpr std::int32_t kMostColumns = 1000;  ///< fields counted on a line
inline constexpr std::int32_t kColumnLines =
    40;  ///< first lines looked at for the number of columns

/// Where the description names a line of names (of units), it is cut as SplitNames does; where that is one of the first rows,
/// NamesFromWords reads it. Otherwise the names stand on the
/// first line. Where that line is a comment, blank, or (as titles are) of another number of fields
/// than the rows, the last header line that fits the rows better holds them; a comment counts without its mark. The columns
/// are counted over the first 40 lines of the text and the first 40 rows behind
/// the headers.
TextNames ReadTextNames(std::string_view text, const TextLayout& layout, const TDSInfo& info);

/// The name that stands for a column without one: "(col " + position from 0 + ")".
std::string UnnamedColumn(std::int32_t column);

/// True when the field, without its blanks, lies between "0" and "9" in the order of its characters: it is no name.
bool ReadsAsNumber(std::string_view field);

}  // namespace tarnwick
