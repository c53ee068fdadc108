#include "app/display/display_grid.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(DisplayGrid, FollowsTheWidthOfThePanel) {
  struct Row {
    int panel;
    int columns;
    int width;
    int value_font;
    int second_font;
  };
  constexpr Row kRows[] = {
      {140, 1, 132, 4, 8}, {199, 1, 191, 7, 11},
      {200, 2, 94, 2, 6},  {203, 2, 96, 2, 6},  // 95.5 to the even one
      {205, 2, 96, 2, 6},                       // 96.5 to the even one
      {400, 3, 128, 4, 8},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.panel);
    const DisplayGrid grid = DisplayGridOf(row.panel);
    EXPECT_EQ(grid.columns, row.columns);
    EXPECT_EQ(grid.width, row.width);
    EXPECT_EQ(grid.value_font, row.value_font);
    EXPECT_EQ(grid.second_font, row.second_font);
  }
  EXPECT_EQ(DrawnSize(7), 8);
  EXPECT_EQ(DrawnSize(11), 11);
}

TEST(DisplayGrid, IsFilledAlongItsRows) {
  const DisplayGrid grid = DisplayGridOf(200);
  EXPECT_EQ(grid.Place(0).topLeft(), QPoint(4, 4));
  EXPECT_EQ(grid.Place(1).topLeft(), QPoint(102, 4));
  EXPECT_EQ(grid.Place(2).topLeft(), QPoint(4, 94));
}

}  // namespace
}  // namespace tarnwick
