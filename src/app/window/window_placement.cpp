#include "app/window/window_placement.h"

#include <QMdiArea>
#include <algorithm>
#include <cmath>

#include "app/window/graph_window.h"

namespace tarnwick {
namespace {

constexpr double kSmallestShare = 0.05;  // below it a window could not be found again
constexpr double kOwnShare = 0.7;        // of a window without a place

bool IsPlace(const Dimensions& dimensions) {
  const auto share = [](double value) { return value >= kSmallestShare && value <= 1; };
  const auto corner = [](double value) { return value >= 0 && value <= 1 - kSmallestShare; };
  return share(dimensions.hor_size) && share(dimensions.ver_size) &&
         corner(dimensions.hor_position) && corner(dimensions.ver_position);
}

bool FillsAll(const Dimensions& dimensions) {
  return dimensions.hor_size == 1 && dimensions.ver_size == 1;
}

int Pixels(double share, int room) {
  return static_cast<int>(std::lround(share * room));
}

}  // namespace

void StorePlacement(TGraphWindow& window) {
  const QMdiArea* area = window.mdiArea();
  if (!area || window.isMinimized() || !window.isVisible()) return;
  const QSizeF room = area->viewport()->size();
  Document& document = window.GetDocument();
  Dimensions dimensions = document.WholeGraph().GetDimensions();
  const QRectF place = window.isMaximized() ? QRectF({0, 0}, room) : QRectF(window.geometry());
  dimensions.hor_position = place.x() / room.width();
  dimensions.ver_position = place.y() / room.height();
  dimensions.hor_size = place.width() / room.width();
  dimensions.ver_size = place.height() / room.height();
  document.WholeGraph().SetDimensions(dimensions);
}

void ShowPlaced(TGraphWindow& window, Otherwise otherwise) {
  const Dimensions& dimensions = window.GetDocument().WholeGraph().GetDimensions();
  const bool placed = IsPlace(dimensions);
  if (placed ? FillsAll(dimensions) : otherwise == Otherwise::FillWorkspace) {
    window.showMaximized();
    return;
  }
  const QSize room = window.mdiArea()->viewport()->size();
  if (placed) {
    window.setGeometry(Pixels(dimensions.hor_position, room.width()),
                       Pixels(dimensions.ver_position, room.height()),
                       Pixels(dimensions.hor_size, room.width()),
                       Pixels(dimensions.ver_size, room.height()));
  }
  if (!placed) window.resize(room * kOwnShare);
  window.show();
  // Among many the workspace finds no place that lies inside of it.
  const QSize left = (room - window.size()).expandedTo({0, 0});
  if (!placed) window.move(std::min(window.x(), left.width()), std::min(window.y(), left.height()));
}

}  // namespace tarnwick
