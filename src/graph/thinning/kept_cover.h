// The area that a line covers, kept from one drawing to the next in cells finer than pixels: while the eye moves over it or draws
// nearer, its points need not be read again. Knows one line's covers; the line's owner drops it with the line.
#pragma once

#include <optional>

#include <QRect>
#include <QRectF>

#include "graph/thinning/line_cover.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

class ArrivalLine;

class KeptCover {
 public:
  /// The pixels of `area` that the line passes, where it is a tangle; always the same line. Exactly the first time, later (to
  /// within a quarter of a pixel) from what is kept, which is made anew where it does not show enough. The view shows Y.
  std::optional<LineCover> Of(const ArrivalLine& line, const ThinningView& view, const QRect& area);

 private:
  LineCover MadeAnew(const ArrivalLine& line, const ThinningView& view, const QRect& area,
                     const QRectF& place);

  struct Cells {
    ThinningView view;  // in cells
    QRect area;
    LineCover cover;
  };

  std::optional<CellPlaces> PlacesIn(const ThinningView& view, const QRectF& seen) const;

  bool drawn_ = false;
  std::optional<Cells> kept_;
};

}  // namespace tarnwick
