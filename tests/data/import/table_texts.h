// Texts of tables and what is made of them, for the tests of the guess.
#pragma once

#include <string>
#include <string_view>

#include "data/import/import_file.h"

namespace tarnwick::testing {

/// `count` rows; "@" stands for the number of the row, "@@" for its double and a half.
inline std::string Rows(int count, std::string_view form) {
  std::string text;
  for (int row = 0; row < count; ++row) {
    for (std::size_t i = 0; i < form.size(); ++i) {
      const bool twice = form.substr(i).starts_with("@@");
      if (form[i] != '@') {
        text += form[i];
      } else {
        text += std::to_string(twice ? 2 * row : row) + (twice ? ".5" : "");
        i += twice ? 1 : 0;
      }
    }
    text += '\n';
  }
  return text;
}

/// "x: y1, y2 (points)", an error's column behind the name of its own, and what was told.
inline std::string Described(const ImportResult& result) {
  std::string text = result.x_name + ":";
  for (const auto& series : result.series) {
    const std::string& error = series->Source().YErrorColumn;
    text += " " + series->SeriesName() + (error.empty() ? "" : " +- " + error) + ",";
  }
  return text + " " + std::to_string(result.series.front()->PointCount());
}

}  // namespace tarnwick::testing
