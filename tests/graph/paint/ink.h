// Pictures told as rows of ink, and compared with such rows.
#pragma once

#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/told.h"

namespace tarnwick::testing {

/// From " " for white to "9"; blanks at the ends of rows are left out.
inline std::vector<std::string> InkOf(const QImage& image) {
  std::vector<std::string> rows;
  for (int y = 0; y < image.height(); ++y) {
    std::string row = "|";
    for (int x = 0; x < image.width(); ++x) {
      const int ink = (255 - qGray(image.pixel(x, y))) * 10 / 256;
      row += ink == 0 ? ' ' : static_cast<char>('0' + ink);
    }
    row.erase(row.find_last_not_of(' ') + 1);
    rows.push_back(row);
  }
  return rows;
}

/// Whether the ink is the same but for what another version of the drawing library may shade otherwise.
inline bool IsSameInk(const std::string& told, const std::string& written) {
  constexpr int kShade = 2;
  const auto ink = [](const std::string& row, std::size_t at) {
    return at >= row.size() || row[at] == ' ' ? 0 : row[at] - '0';
  };
  for (std::size_t at = 1; at < std::max(told.size(), written.size()); ++at) {
    if (std::abs(ink(told, at) - ink(written, at)) > kShade) return false;
  }
  return true;
}

inline void ExpectInk(const char* file, const std::string& name, const QImage& image) {
  ExpectTold(file, name, InkOf(image), IsSameInk);
}

}  // namespace tarnwick::testing
