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

// Whether `pixels` has one in the box.
bool Any(const Pixels& pixels, int left, int right, int top, int bottom) {
  for (int column = left; column <= right; ++column) {
    if (pixels.lower_bound({column, top}) != pixels.upper_bound({column, bottom})) return true;
  }
  return false;
}

TEST(OccupiedPixels, AreThoseOfAllPointsLessWhatIsHidden) {
  constexpr int kGap = 3, kReach = 2;
  for (const std::size_t points : {50U, 5'000U, 300'000U}) {
    for (const bool log : {false, true}) {
      const PointChain chain = Noise(points);
      const ThinningView view = View(points, log);
      const Pixels all = Expected(chain, view);
      const auto found = [&](SymbolHiding hiding) {
        const SymbolPixels given = OccupiedPixels(chain, view, kArea, hiding);
        Pixels pixels;
        for (const QPoint& pixel : given.symbols) pixels.emplace(pixel.x(), pixel.y());
        EXPECT_EQ(pixels.size(), given.symbols.size());
        for (const QRect& run : given.solid) {
          for (int y = run.top(); y <= run.bottom(); ++y) pixels.emplace(run.left(), y);
        }
        return pixels;
      };
      EXPECT_EQ(found({}), all) << points << log;
      const Pixels symbols = found({kGap});
      EXPECT_EQ(symbols.size() < all.size() / 2, points > 5'000) << points << log;
      for (const Pixels& shown : {symbols, found({kGap, kReach})}) {
        for (const auto& [x, y] : shown) {  // where a point is, or between two
          EXPECT_TRUE(all.contains({x, y}) ||
                      (Any(all, x, x, y - kGap + 1, y - 1) && Any(all, x, x, y + 1, y + kGap - 1)))
              << x << ' ' << y;
        }
        for (const auto& [x, y] : all) {  // shown, or between shown ones on all sides
          EXPECT_TRUE(Any(shown, x - kGap, x, y - kGap, y) &&
                      Any(shown, x, x + kGap, y - kGap, y) &&
                      Any(shown, x - kGap, x, y, y + kGap) && Any(shown, x, x + kGap, y, y + kGap))
              << x << ' ' << y;
        }
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
