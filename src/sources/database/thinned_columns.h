// The columns of a view while rows fall into them, in any order. Knows numbers only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "sources/database/thinned_view.h"

namespace tarnwick {

class ThinnedColumns {
 public:
  /// `x_min` <= `x_max`, both finite; rows outside fall into the first and the last column.
  ThinnedColumns(double x_min, double x_max, int columns, std::size_t ys);

  /// `row`: X, then every Y; NaN for none. One without X or without any Y counts as none.
  void Add(const double* row);
  /// What fell into the columns of another view alike.
  void Merge(const ThinnedColumns& other);
  /// Rows that were picked elsewhere, of so many.
  void AddPicked(std::span<const double> row) { Keep(row.data()); }
  void Count(std::int64_t rows) { rows_ += rows; }
  /// As if nothing had fallen into them.
  void Clear();
  ThinnedRows Rows() const;

 private:
  std::size_t ColumnOf(double x) const;
  void Keep(const double* row);

  double x_min_;
  double per_x_;  // columns
  int columns_;
  std::size_t ys_;
  std::size_t width_;         // numbers of a row
  std::size_t slots_;         // rows of a column: first, last, lowest and highest of each Y
  std::vector<double> kept_;  // by column, slot and number; NaN: there is none
  std::int64_t rows_ = 0;
};

}  // namespace tarnwick
