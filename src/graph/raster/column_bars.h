// Turns neighbouring pixel columns of a dense line into rectangles with coverage: what an anti-aliased stroke of the line would
// cover, at the price of a few filled rectangles a column. Pure arithmetic on whole pixels.
#pragma once

#include <array>
#include <span>
#include <vector>

#include <QRect>

#include "graph/raster/raster_surface.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// A rectangle whose pixels are covered to level / kLevels.
struct ColumnBar {
  static constexpr int kLevels = 16;
  QRect rect;
  int level = kLevels;
};

/// The line's ink for each level of coverage; the last is opaque.
using ColumnInks = std::array<RasterInk, ColumnBar::kLevels + 1>;

/// Adds the bars of a line `width` pixels wide (1 or more) over one run of columns, inside `clip`. A column reaches from its
/// highest to its lowest point, on to where the line crosses into the next column, and about half the width further; it
/// covers the neighbouring columns likewise.
void AddColumnBars(std::span<const PixelColumn> columns, double width, const QRect& clip,
                   std::vector<ColumnBar>& bars);

/// Lays the same bars straight over the surface.
void FillColumnBars(std::span<const PixelColumn> columns, double width, const QRect& clip,
                    const ColumnInks& inks, RasterSurface& surface);

/// By how many pixels the columns, as far as inside `clip`, reach in the mean beyond the way from their first to their last
/// point: 0 for a smooth line, however steep.
double MeanWander(std::span<const PixelColumn> columns, const QRect& clip);

}  // namespace tarnwick
