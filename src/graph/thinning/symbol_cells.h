// Finds the pixels that carry a symbol: points that share a pixel are drawn once. Pure arithmetic.
#pragma once

#include <vector>

#include <QPoint>
#include <QRect>

#include "graph/thinning/thinning.h"

namespace tarnwick {

/// What hides a symbol besides another one at the same pixel.
struct SymbolHiding {
  /// Where points crowd, one between drawn ones that are at most this many rows or columns apart is hidden; 1 hides none.
  int gap = 1;
  /// Whole pixels that a symbol reaches from its own, which it covers wholly. 0 makes no area of symbols.
  int reach = 0;
};

/// What shows a DataSet's points, in the order of the pixel columns.
struct SymbolPixels {
  std::vector<QPoint> symbols;  ///< pixels that a symbol is drawn at
  std::vector<QRect> solid;     ///< pixels covered wholly by symbols, which are not drawn for it
};

/// The distinct pixels inside `area` (whole pixels of the view's maps) that show a point. Where points crowd most are not read:
/// the extremes kept with them tell that nothing new would be seen.
SymbolPixels OccupiedPixels(const PointChain& points, const ThinningView& view, const QRect& area,
                            SymbolHiding hiding = {});

}  // namespace tarnwick
