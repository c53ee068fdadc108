// Where tables stand in a text: the longest runs of equally shaped rows of values. Knows lines and fields; decides nothing
// about columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// What a line is, cut by some separators.
struct LineShape {
  enum class Kind : std::uint8_t { Blank, Comment, Row, Text };

  Kind kind = Kind::Blank;
  std::int32_t fields = 0;    ///< empty ones among them where the layout does not merge separators
  std::int32_t filled = 0;    ///< that hold something, placeholders apart
  std::int32_t values = 0;    ///< that some column format reads
  std::int32_t doubtful = 0;  ///< of the values, those with a unit or blanks, as words have
  bool marks_part = false;    ///< text that begins a part of the file: "$ROI:", "<<END>>", "[Data]"
};

LineShape ShapeOf(std::string_view line, const TextLayout& layout);

/// Lines [first, behind) of the lines searched; the first and the last are rows.
struct FoundTable {
  std::size_t first = 0;
  std::size_t behind = 0;
  std::int32_t fields = 0;   ///< that most of its rows have
  std::size_t rows = 0;      ///< with that many
  std::size_t odd_rows = 0;  ///< rows of another number of fields
  double weight = 0;         ///< the rows, each by the share of values among its fields
  /// A remark above it names its columns otherwise than the table before.
  bool headed_anew = false;
  /// An empty line or a remark parts it from a table with another number of columns.
  bool stands_apart = false;
};

/// How many lines of text may stand within a table, one behind the other.
inline constexpr int kStrayLines = 3;

/// All tables, in order. Lines that do not fit are passed over within a table, a few at a time; a line that may hold the
/// names of other columns, or text beside an empty line, ends it, and so do rows that agree on another number of fields behind an
/// empty line or a remark. Lines of its head may come again between its rows.
std::vector<FoundTable> FindTables(std::span<const std::string_view> lines,
                                   const TextLayout& layout);

/// The one with the greatest weight, or null.
const FoundTable* HeaviestTable(std::span<const FoundTable> tables);

}  // namespace tarnwick
