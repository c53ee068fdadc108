#include "app/display/display_grid.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr int kWidestColumn = 200;
constexpr int kRowHeight = 90;
constexpr int kGap = 4;
constexpr int kSmallestFont = 8;

/// To the nearest whole number, halves to the even one.
int Rounded(double value) {
  return static_cast<int>(std::nearbyint(value));
}

}  // namespace

QRect DisplayGrid::Place(int number) const {
  const int column = number % columns;
  const int row = number / columns;
  return {(width + kGap) * column + kGap, row * kRowHeight + kGap, width, kRowHeight - kGap};
}

DisplayGrid DisplayGridOf(int panel_width) {
  DisplayGrid grid;
  grid.columns = panel_width / kWidestColumn + 1;
  const int for_indicators = panel_width - (grid.columns - 1) * kGap - 2 * kGap;
  grid.width = Rounded(static_cast<double>(for_indicators) / grid.columns);
  grid.value_font = Rounded(grid.width * 0.05019 - 2.91208);
  grid.second_font = grid.value_font + 4;
  return grid;
}

int DrawnSize(int size) {
  return std::max(size, kSmallestFont);
}

}  // namespace tarnwick
