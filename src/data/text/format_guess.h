// Guesses how a text file is laid out. Knows how tables of numbers are written; knows no DataSet and opens no file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "data/ds_info.h"

namespace tarnwick {

/// What the first lines say about one column.
struct ColumnGuess {
  bool has_numbers = false;  ///< most of its fields can be read as numbers or dates
  bool is_date = false;      ///< its values are days or times: the axis should show them as such
  ColumnFormat format = ColumnFormat::Automatic;
};

/// How a text file is laid out.
struct TextFormat {
  std::string separators = "\t,";
  std::string markers = "'\"";
  bool merge_separators = true;
  bool divide_by_width = false;
  std::int32_t column_width = 10;
  std::int32_t header_lines = 0;  ///< lines before the first row of data
  bool decimal_comma = false;     ///< some column is written with decimal commas
  std::vector<ColumnGuess> columns;

  /// Puts the layout into a description; its columns and row choice stay.
  void ApplyTo(TDSInfo& info) const;
};

/// What the user has settled already; the rest is guessed around it.
struct GuessHints {
  std::optional<std::string> separators;
  std::optional<std::string> markers;
  std::optional<bool> merge_separators;
  std::optional<std::int32_t> column_width;  ///< given: fixed width
  std::optional<std::int32_t> header_lines;
};

/// The layout of `text` (UTF-8 or 8-bit without byte order mark). Reads the first lines and a few places further on;
/// unless `hints` settle the merging of separators, the whole text is searched for gaps, with progress by bytes, and
/// when that is cancelled the gaps behind that place do not count. A text with no numbers gives columns without
/// has_numbers.
TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints, Progress& progress);
TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints = {});

}  // namespace tarnwick
