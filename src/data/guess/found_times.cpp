#include "data/guess/found_times.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "data/fields/joined_time.h"

namespace tarnwick {
namespace {

using Columns = std::span<const std::vector<std::string_view>>;

std::size_t RowCount(const JoinedTimeFound& found, Columns columns) {
  std::size_t rows = std::numeric_limits<std::size_t>::max();
  for (const std::size_t column : found.columns) rows = std::min(rows, columns[column].size());
  return rows;
}

}  // namespace

std::vector<std::optional<double>> TimesOf(const JoinedTimeFound& found, Columns columns) {
  std::vector<std::optional<double>> times;
  std::vector<std::string_view> texts(found.columns.size());
  for (std::size_t row = 0; row < RowCount(found, columns); ++row) {
    for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = columns[found.columns[i]][row];
    times.push_back(JoinTime(found.parts, texts, found.date_format));
  }
  return times;
}

std::vector<double> AllTimesOf(const JoinedTimeFound& found, Columns columns) {
  std::vector<double> all;
  for (const std::optional<double> time : TimesOf(found, columns)) {
    if (!time) return {};
    all.push_back(*time);
  }
  return all;
}

}  // namespace tarnwick
