// Symbols so many that they cover one another: which of them a picture needs. Knows rows and columns of pixels; no points.
#pragma once

#include <cstddef>

#include "graph/thinning/column_rows.h"
#include "graph/thinning/row_bits.h"
#include "graph/thinning/symbol_cells.h"

namespace tarnwick {

class SymbolCrowd {
 public:
  /// For columns 0 <= column < columns.
  SymbolCrowd(int columns, const ColumnRows& rows, SymbolHiding hiding);

  /// The rows when they are complete and closed.
  void Add(int column, const ColumnRows& rows);

  /// What is to be drawn. Deep inside closed rows and columns a lattice of symbols `gap` apart hides all others; deeper still
  /// it is an area. Ends the crowd.
  SymbolPixels TakeShown();

 private:
  std::size_t Stride() const { return words_ * RowBits::kWord; }
  void Shrink(RowBits& bits, std::size_t by) const;
  std::vector<QRect> RunsOf(const RowBits& bits) const;

  std::size_t gap_, reach_;
  std::size_t words_;  // of one column
  RowBits taken_, closed_;
  RowBits lattice_;  // of a column that has one
};

}  // namespace tarnwick
