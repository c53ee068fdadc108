// How the display panel lays its indicators out: a grid filled along its rows. Knows widths only.
#pragma once

#include <QRect>

namespace tarnwick {

struct DisplayGrid {
  int columns = 1;
  int width = 0;        ///< of an indicator, pixels
  int value_font = 0;   ///< size of the value, points
  int second_font = 0;  ///< size of what stands beside it, points

  /// Where indicator `number`, counted from 0, stands.
  QRect Place(int number) const;
};

/// The grid of a panel of that width in pixels; halves are rounded to even.
DisplayGrid DisplayGridOf(int panel_width);

/// Of a text that a grid gives `size` points: smaller ones cannot be read.
int DrawnSize(int size);

}  // namespace tarnwick
