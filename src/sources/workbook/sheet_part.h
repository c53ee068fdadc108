// Which sheet of a workbook is read, and which range of it, as one text that a DataSet's description keeps. Knows the form of
// that text; opens nothing.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

struct SheetPart {
  std::string sheet;  ///< empty: the one with the most numbers
  std::string range;  ///< "B3:D200", "B:D" or "3:200", capital letters; empty: all of it

  /// "Sheet 2!B3:D200", "Sheet 2" or "B3:D200"; ParseSheetPart reads it back.
  std::string Text() const;
};

/// Behind the last "!" stands the range; a text without one is a range when it reads as one, else a sheet.
SheetPart ParseSheetPart(std::string_view text);

/// First and last row, first and last column, from 1. Of an empty text all there are. Throws Error for what is no range.
std::array<std::int64_t, 4> RangeEdges(std::string_view range);

/// Sheet and range as they are typed, each possibly empty. Throws Error for what is no range.
SheetPart TypedSheetPart(std::string_view sheet, std::string_view range);

}  // namespace tarnwick
