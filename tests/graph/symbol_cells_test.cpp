#include "graph/thinning/symbol_cells.h"

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <utility>

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

using Pixels = std::set<std::pair<int, int>>;
const QRect kArea(3, 2, 90, 70);

ThinningView View(std::size_t points, bool log) {
  const AxisScale x{0,     static_cast<double>(points), 100 / static_cast<double>(points), 0,
                    false, PixelDirection::Rightward};
  const AxisScale y = log ? AxisScale{0.1, 10, 80 / std::log(100), 0, true, PixelDirection::Upward}
                          : AxisScale{-3, 3, 80.0 / 6, 0, false, PixelDirection::Upward};
  return {.x = PixelMap(x, 1, 0),
          .y = PixelMap(y, 1, 0),
          .zero_value = 0.25,
          .first_column = kArea.left(),
          .last_column = kArea.right()};
}

PointChain Noise(std::size_t points) {
  std::mt19937_64 random(5);
  std::normal_distribution<double> normal(0, 1);
  PointChain chain;
  for (std::size_t i = 0; i < points; ++i) {
    const double y = i % 501 == 7 ? std::numeric_limits<double>::quiet_NaN() : normal(random);
    chain.Append(static_cast<std::int32_t>(i), static_cast<double>(i), y);
  }
  return chain;
}

// Point by point.
Pixels Expected(const PointChain& chain, const ThinningView& view) {
  Pixels pixels;
  chain.ForEachPoint([&](double x, double y) {
    const double column = std::floor(view.x.At(x)), row = std::floor(view.y.At(y - 0.25));
    if (!std::isfinite(row)) return;
    const QPoint pixel(static_cast<int>(column), static_cast<int>(row));
    if (kArea.contains(pixel)) pixels.emplace(pixel.x(), pixel.y());
  });
  return pixels;
}

TEST(OccupiedPixels, AreThoseOfAllPointsLessWhatIsHidden) {
  for (const std::size_t points : {50U, 5'000U, 300'000U}) {
    for (const bool log : {false, true}) {
      const PointChain chain = Noise(points);
      const ThinningView view = View(points, log);
      const Pixels all = Expected(chain, view);
      const auto found = [&](int rows) {
        const auto list = OccupiedPixels(chain, view, kArea, {rows});
        Pixels pixels;
        for (const QPoint& pixel : list) pixels.emplace(pixel.x(), pixel.y());
        EXPECT_EQ(pixels.size(), list.size());
        return pixels;
      };
      EXPECT_EQ(found(1), all) << points << log;
      const Pixels shown = found(3);
      EXPECT_EQ(shown.size() < all.size(), points > 5'000) << points << log;
      const auto any = [&shown](int column, int from, int to) {
        return shown.lower_bound({column, from}) != shown.upper_bound({column, to});
      };
      for (const auto& [column, row] : all) {  // hidden between two that are shown
        EXPECT_TRUE(any(column, row, row) ||
                    (any(column, row - 2, row - 1) && any(column, row + 1, row + 2)))
            << column << ' ' << row;
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
