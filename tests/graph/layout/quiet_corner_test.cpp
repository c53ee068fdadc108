#include "graph/layout/quiet_corner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace tarnwick {
namespace {

TEST(QuietCorner, IsTheFirstPlaceThatHidesLeast) {
  const std::array<QRectF, 3> places = {QRectF(0, 0, 10, 10), QRectF(20, 0, 10, 10),
                                        QRectF(40, 0, 10, 10)};
  struct Row {
    const char* what;
    std::vector<QRectF> boxes;
    std::array<std::size_t, 3> points;  // in each place
    std::size_t best;
  };
  const Row rows[] = {
      {"nothing in the way", {}, {0, 0, 0}, 0},
      {"fewest points", {}, {3, 1, 2}, 1},
      {"a box weighs more than points", {QRectF(21, 1, 2, 2)}, {900, 0, 800}, 2},
      {"a box that only touches hides nothing", {QRectF(10, 0, 10, 10)}, {0, 0, 0}, 0},
      {"fewest boxes where all places have some",
       {QRectF(1, 1, 2, 2), QRectF(0, 0, 50, 1), QRectF(45, 5, 1, 1)},
       {0, 5, 0},
       1},
  };
  for (const Row& row : rows) {
    const auto points_in = [&](const QRectF& place) {
      return row.points.at(static_cast<std::size_t>(place.left() / 20));
    };
    const QuietPlace found = FindQuietPlace(places, {row.boxes, points_in});
    EXPECT_EQ(found.index, row.best) << row.what;
    EXPECT_EQ(found.hidden.points, row.points.at(row.best)) << row.what;
  }
}

TEST(QuietCorner, PlacesBeginWithTheCornersAndFillTheArea) {
  const QRectF area(10, 20, 200, 100);
  const std::vector<QRectF> places = PlacesIn(area, {50, 20});
  const QPointF corners[] = {{160, 20}, {160, 100}, {10, 100}, {10, 20}};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(places.at(i).topLeft(), corners[i]);
  for (const QRectF& place : places) EXPECT_TRUE(area.contains(place));
  const std::array<QPointF, 3> inside = {{{85, 60}, {35, 40}, {140, 90}}};
  for (const QPointF& one : inside) {
    const auto at = [&](const QRectF& place) {
      return (place.topLeft() - one).manhattanLength() < 10;
    };
    EXPECT_TRUE(std::ranges::any_of(places, at)) << one.x();
  }
  for (const QRectF& place : PlacesIn(area, {500, 500})) EXPECT_EQ(place.topLeft(), area.topLeft());
}

}  // namespace
}  // namespace tarnwick
