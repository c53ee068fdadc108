// The pixels that a line passes: a line of so many vertices that it closes over itself costs a picture no more than its area.
// Knows pixels only.
#pragma once

#include <cstddef>
#include <vector>

#include <QRect>

#include "graph/thinning/row_bits.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// Where cells lie among other pixels: the middle of the first one, and how far it is to the next column or row.
struct CellPlaces {
  PixelPoint first;
  double column_step = 1, row_step = 1;  ///< above 0, at most 1
};

class LineCover {
 public:
  explicit LineCover(const QRect& area);

  /// Marks what the way from one point straight to the other passes inside the area.
  void Join(PixelPoint from, PixelPoint to);
  /// Whether all pixels of the area between two corners, the upper left one first, are marked.
  bool Holds(PixelPoint from, PixelPoint to) const;
  /// The same in the pixels of another area: those in which the middle of a marked one lies.
  LineCover Within(const QRect& area, const CellPlaces& places) const;
  /// All marked pixels, as runs one column wide.
  std::vector<QRect> Runs() const;

 private:
  void Mark(int column, double y, double other_y);
  void MarkRows(int column, double low, double high);

  QRect area_;
  std::size_t stride_;  // bits of a column; the last is never set
  RowBits bits_;
};

}  // namespace tarnwick
