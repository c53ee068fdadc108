// Finds the rows of a table in which a field was left empty. Knows separators and lines; knows no numbers and decides
// nothing about the layout.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/progress.h"
#include "data/fields/text_fields.h"

namespace tarnwick {

/// What a line is cut into when every separator counts.
struct LineCount {
  std::int64_t separators = 0;  ///< outside markers
  std::int64_t fields = 0;      ///< that hold something, be it a blank
  std::int64_t EmptyFields() const { return separators + 1 - fields; }
};

/// Counts along a line; `layout` must not merge separators.
LineCount CountLine(std::string_view line, const TextLayout& layout);

/// True when both lines have the same columns but one of them leaves out more. A line of separators only leaves out
/// nothing: it holds no value that could shift.
bool IsGapBeside(const LineCount& line, const LineCount& common);

/// What nearly all `rows` look like; nothing when they disagree on the number of separators or have none. The rows are
/// views into `text` and are counted to their ends even where they were cut.
std::optional<LineCount> CommonCount(std::span<const std::string_view> rows, std::string_view text,
                                     const TextLayout& layout);

/// True when some row of `text`, which begins a line, is a gap beside `common`. Reads at the speed of the memory and
/// progresses by bytes; false when cancelled.
bool HasGapBeside(const LineCount& common, std::string_view text, const TextLayout& layout,
                  Progress& progress);

}  // namespace tarnwick
