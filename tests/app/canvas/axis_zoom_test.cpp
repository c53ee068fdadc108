#include "app/canvas/axis_zoom.h"

#include <cmath>

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

/// A 200 pixel axis that begins at pixel 50.
AxisScale Scale(double min, double max, bool log, PixelDirection direction) {
  const double length = log ? std::log(max) - std::log(min) : max - min;
  return {min, max, 200 / length, 50, log, direction};
}

const AxisScale kScales[] = {
    Scale(-5, 15, false, PixelDirection::Rightward),
    Scale(-5, 15, false, PixelDirection::Upward),
    Scale(0.01, 1000, true, PixelDirection::Rightward),
    Scale(0.01, 1000, true, PixelDirection::Upward),
};

TEST(AxisZoom, KeepsTheValueUnderThePointerAtItsPixel) {
  for (const AxisScale& scale : kScales) {
    const auto range = ZoomedRange(scale, 100, 0.5);
    ASSERT_TRUE(range);
    const AxisScale zoomed = Scale(range->min, range->max, scale.log, scale.direction);
    EXPECT_NEAR(static_cast<double>(zoomed.pixels_per_unit / scale.pixels_per_unit), 2, 1e-9);
    EXPECT_NEAR(zoomed.ValueAt(100), scale.ValueAt(100), 1e-9 * std::abs(scale.ValueAt(100)));
  }
}

TEST(AxisZoom, DragsTheValueAlongWithThePointer) {
  for (const AxisScale& scale : kScales) {
    const auto range = DraggedRange(scale, 30);
    ASSERT_TRUE(range);
    const AxisScale dragged = Scale(range->min, range->max, scale.log, scale.direction);
    EXPECT_NEAR(dragged.ValueAt(130), scale.ValueAt(100), 1e-9 * std::abs(scale.ValueAt(100)));
  }
}

TEST(AxisZoom, RefusesRangesThatCannotBeDrawn) {
  const AxisScale narrow = Scale(1e6, 1e6 + 1e-6, false, PixelDirection::Rightward);
  EXPECT_FALSE(ZoomedRange(narrow, 100, 0.5));
  const AxisScale wide = Scale(-1e308, 1e308 / 2, false, PixelDirection::Rightward);
  EXPECT_FALSE(ZoomedRange(wide, 100, 4));
  const AxisScale decades = Scale(1e-300, 1e300, true, PixelDirection::Upward);
  EXPECT_FALSE(ZoomedRange(decades, 150, 4));
}

}  // namespace
}  // namespace tarnwick
