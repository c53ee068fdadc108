// Thins the bars that show errors to what a picture can show. Pure arithmetic over points and bars; knows no painter.
#pragma once

#include <vector>

#include <QRect>

#include "graph/thinning/error_bars.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// A bar in pixels, which are counted down and to the right; both ends are included.
struct PixelBar {
  int at = 0;  ///< column of an upright bar, row of a level one
  int first = 0;
  int last = 0;
  bool first_capped = false;  ///< false where the bar goes on beyond what is seen
  bool last_capped = false;
};

struct PixelBars {
  std::vector<PixelBar> upright;  ///< of Y, by columns
  std::vector<PixelBar> level;    ///< of X, by rows
};

/// What is seen, in whole pixels of the view's maps.
struct BarArea {
  QRect seen;
  QRect plot;     ///< a bar to a value that a logarithmic axis does not have goes to its edge
  int reach = 0;  ///< pixels of a cap on either side of its bar
};

/// The bars inside the area. Where several share a pixel column (or row) those that touch become one: they show the same but
/// for caps inside it.
PixelBars ThinBars(const PointChain& points, const ErrorBars& bars, const ThinningView& view,
                   const BarArea& area);

}  // namespace tarnwick
