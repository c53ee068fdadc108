// The rows of one pixel column that carry a symbol. Knows rows and the map from values to them; no points.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "graph/thinning/row_bits.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// Rows from 1 on; row 0 and the row behind the last stand for whatever lies before and behind.
class ColumnRows {
 public:
  /// Where points crowd, one between two in the column that are at most `gap` rows apart is hidden; 1 hides none.
  ColumnRows(int rows, int gap)
      : rows_(static_cast<std::size_t>(rows)),
        gap_(static_cast<std::size_t>(gap)),
        taken_(rows_ + 2 + gap_),
        closed_(taken_) {}

  void Clear() {
    taken_.Clear();
    closed_.Clear();
  }
  void Take(std::int32_t row) { taken_.Set(static_cast<std::size_t>(row)); }
  /// Whether nothing more would be seen of points in first <= row <= last, where both ends are taken.
  bool Hidden(std::int32_t first_row, std::int32_t last_row) const {
    const auto first = static_cast<std::size_t>(first_row);
    const auto last = static_cast<std::size_t>(last_row);
    const std::size_t near = first == 0 || last > rows_ ? 1 : gap_;
    return last - first <= near || closed_.AllSet(first + 1, last - 1);
  }

  /// Works out anew what Hidden() and those below tell.
  void Close();
  /// Rows taken.
  const RowBits& Taken() const { return taken_; }
  /// Rows taken or hidden.
  const RowBits& Closed() const { return closed_; }

 private:
  std::size_t rows_, gap_;
  RowBits taken_, closed_;
};

/// Value -> row. NaN, which is nowhere, counts as before the first row.
class RowMap {
 public:
  /// The first row, numbered 1, is the pixel `top`.
  RowMap(const PixelMap& y, int top, int rows) : y_(y), before_(top - 1), behind_(rows + 1) {}

  std::int32_t At(double value) const { return static_cast<std::int32_t>(Held(y_.Unheld(value))); }

  /// Of values[i] - zero.
  void All(const double* values, double zero, std::size_t count, std::int32_t* rows) const {
    for (; count > 1 && !y_.Log(); count -= 2, values += 2, rows += 2) {
      const DoublePair pair = LoadPair(values) - zero;
      const PairRows held = __builtin_convertvector(Held(y_.UnheldLinear(pair)), PairRows);
      std::memcpy(rows, &held, sizeof(held));
    }
    for (; count != 0; --count) *rows++ = At(*values++ - zero);
  }

 private:
  using PairRows = std::int32_t __attribute__((vector_size(8)));

  template <class Value>
  Value Held(Value pixel) const {
    const Value first{}, last = first + behind_;
    Value row = pixel - before_;
    row = row > first ? row : first;
    return row < last ? row : last;
  }

  PixelMap y_;
  double before_, behind_;
};

}  // namespace tarnwick
