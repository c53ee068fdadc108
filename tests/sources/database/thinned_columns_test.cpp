#include "sources/database/thinned_columns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace tarnwick {
namespace {

std::string Text(const ThinnedRows& rows) {
  std::string text = std::to_string(rows.rows) + ':';
  for (std::size_t i = 0; i < rows.x.size(); ++i) {
    text += ' ' + std::to_string(rows.x[i]);
    for (const std::vector<double>& y : rows.y) text += '/' + std::to_string(y[i]);
  }
  return text;
}

TEST(ThinnedColumns, DoNotMindTheOrderOfRowsNorThePiecesTheyComeIn) {
  constexpr int kRows = 500;
  constexpr std::size_t kYs = 2;
  std::mt19937 random(5);
  std::uniform_int_distribution<int> few(0, 3), x(0, 60);
  std::vector<std::vector<double>> rows;
  for (int i = 0; i < kRows; ++i) {
    const auto y = [&] { return few(random) == 3 ? std::nan("") : few(random); };
    rows.push_back({static_cast<double>(x(random)), y(), y()});
  }
  std::string expected;
  for (int turn = 0; turn < 20; ++turn) {
    ThinnedColumns all(0, 60, 7, kYs);
    ThinnedColumns piece(0, 60, 7, kYs);
    for (const std::vector<double>& row : rows) {
      piece.Add(row.data());
      if (few(random) > 0) continue;
      all.Merge(piece);
      piece.Clear();
    }
    all.Merge(piece);
    if (turn == 0) expected = Text(all.Rows());
    EXPECT_EQ(Text(all.Rows()), expected);
    std::ranges::shuffle(rows, random);
  }
}

}  // namespace
}  // namespace tarnwick
