#include "graph/thinning/kept_cover.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "graph/thinning/arrival_cover.h"

namespace tarnwick {
namespace {

constexpr double kCellsOfPixel = 3;  // when made
constexpr double kLargestCell = 0.5;
constexpr double kBeyond = 0.25;      // of the picture's size that is kept on either side
constexpr double kMostCells = 256e6;  // 32 MB

/// Where the line's points lie; nothing where some have no place.
std::optional<QRectF> PlaceOf(const ArrivalLine& line, const ThinningView& view) {
  if (view.base_line_slope != 0 || line.LargeBoxes().empty()) return std::nullopt;
  ArrivalBox all = line.LargeBoxes().front();
  for (const ArrivalBox& box : line.LargeBoxes()) all.Include(box);
  const QPointF one(view.x.At(all.x_min), view.y.At(all.y_min - view.zero_value));
  const QPointF other(view.x.At(all.x_max), view.y.At(all.y_max - view.zero_value));
  const QRectF place = QRectF(one, other).normalized();
  if (!std::isfinite(place.left() + place.top() + place.width() + place.height())) {
    return std::nullopt;
  }
  return place;
}

ThinningView InCells(ThinningView view) {
  view.x = view.x.Finer(kCellsOfPixel);
  view.y = view.y.Finer(kCellsOfPixel);
  return view;
}

QRect CellsOf(const QRectF& place) {
  return QRectF(place.topLeft() * kCellsOfPixel, place.size() * kCellsOfPixel)
      .toAlignedRect()
      .adjusted(-1, -1, 1, 1);
}

/// The middle of the first of `count` cells from `first` on, among other pixels, and the step to the next.
std::pair<double, double> PlaceOfCells(const PixelMap& cells, int first, int count,
                                       const PixelMap& pixels) {
  const double begin = pixels.Unheld(cells.ValueAt(first));
  const double end = pixels.Unheld(cells.ValueAt(first + count));
  const double step = (end - begin) / count;
  return {begin + step / 2, step};
}

}  // namespace

std::optional<LineCover> KeptCover::Of(const ArrivalLine& line, const ThinningView& view,
                                       const QRect& area) {
  if (area.isEmpty() || !view.x.Usable() || !view.y.Usable()) return std::nullopt;
  const std::optional<QRectF> place = PlaceOf(line, view);
  if (place) {
    const std::optional<CellPlaces> places = PlacesIn(view, *place & QRectF(area));
    if (places) return kept_->cover.Within(area, *places);
  }
  if (!IsTangle(line, view, area)) return std::nullopt;
  const bool first = !std::exchange(drawn_, true);
  return first || !place ? CoverOf(line, view, area) : MadeAnew(line, view, area, *place);
}

LineCover KeptCover::MadeAnew(const ArrivalLine& line, const ThinningView& view, const QRect& area,
                              const QRectF& place) {
  const double wide = kBeyond * area.width(), high = kBeyond * area.height();
  const QRectF wanted = place & QRectF(area).adjusted(-wide, -high, wide, high);
  if (wanted.width() * wanted.height() * kCellsOfPixel * kCellsOfPixel > kMostCells) {
    return CoverOf(line, view, area);
  }
  const QRect cells = CellsOf(wanted);
  kept_.emplace(Cells{InCells(view), cells, CoverOf(line, InCells(view), cells)});
  const std::optional<CellPlaces> places = PlacesIn(view, place & QRectF(area));
  return places ? kept_->cover.Within(area, *places) : CoverOf(line, view, area);
}

/// Where the cells kept lie in the view, if they are fine enough and hold all that is seen.
std::optional<CellPlaces> KeptCover::PlacesIn(const ThinningView& view, const QRectF& seen) const {
  if (!kept_ || kept_->view.zero_value != view.zero_value || kept_->view.x.Log() != view.x.Log() ||
      kept_->view.y.Log() != view.y.Log()) {
    return std::nullopt;
  }
  const QRect& area = kept_->area;
  const auto [x, column_step] = PlaceOfCells(kept_->view.x, area.left(), area.width(), view.x);
  const auto [y, row_step] = PlaceOfCells(kept_->view.y, area.top(), area.height(), view.y);
  const auto is_fine = [](double step) { return step > 0 && step <= kLargestCell; };
  if (!is_fine(column_step) || !is_fine(row_step)) return std::nullopt;
  const QRectF held(x, y, column_step * area.width(), row_step * area.height());
  if (!held.contains(seen)) return std::nullopt;
  return CellPlaces{{x, y}, column_step, row_step};
}

}  // namespace tarnwick
