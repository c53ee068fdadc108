// Where the rows of data begin in a text: their number, and a sparse index that finds any of them quickly. Knows which
// lines are rows; knows no fields.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "data/fields/text_fields.h"

namespace tarnwick {

class RowIndex {
 public:
  /// Over the lines of `text`, which begins behind the header lines. Both must outlive the index.
  RowIndex(std::string_view text, const TextLayout& layout);

  /// Counts the rows; false when cancelled (then nothing is known). Progress goes by bytes.
  bool Build(Progress& progress);

  std::int64_t Rows() const { return rows_; }
  /// Where row `row` (from 0, below Rows()) begins.
  const char* RowBegin(std::int64_t row) const;

  /// Number of rows that begin in text[from, to). Position 0 begins a line.
  static std::int64_t CountRows(std::string_view text, std::size_t from, std::size_t to,
                                const TextLayout& layout);

 private:
  std::string_view text_;
  const TextLayout& layout_;
  std::int64_t rows_ = 0;
  std::vector<std::int64_t> rows_before_;  // rows that begin before each stride of the text
};

}  // namespace tarnwick
