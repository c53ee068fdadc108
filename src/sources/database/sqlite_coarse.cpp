#include "sources/database/sqlite_coarse.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "sources/database/sqlite_file.h"
#include "sources/database/sqlite_road.h"
#include "sources/database/thinned_columns.h"

namespace tarnwick {
namespace {

constexpr std::uint32_t kSeekBits = 12;
constexpr std::uint32_t kSeeks = 1U << kSeekBits;
constexpr auto kPatience = std::chrono::milliseconds(800);  // what is found by then is the picture

/// The order of van der Corput: however many come, they lie all over the table.
std::uint32_t SeekAt(std::uint32_t i) {
  std::uint32_t reversed = 0;
  for (std::uint32_t bit = 0; bit < kSeekBits; ++bit)
    reversed |= ((i >> bit) & 1U) << (kSeekBits - 1 - bit);
  return reversed;
}

/// Rows by rising X or key, from that share of the table on: the end of a statement's WHERE.
std::function<std::string(double share)> RowsFrom(const SqliteFile& file, const ThinnedView& view,
                                                  const SqliteRoad& road) {
  if (const auto range = road.indexed ? IndexedRange(file, view, road) : std::nullopt) {
    return [x = SqliteName(view.x.name), range = *range](double share) {
      const double from = range.x_min + share * (range.x_max - range.x_min);
      return x + " >= " + SqliteLiteral(from) + " AND " + x + " < 9e999 ORDER BY " + x;
    };
  }
  return [keys = *road.keys](double share) {
    const auto wide = static_cast<long double>(keys.second) - static_cast<long double>(keys.first);
    const auto key = keys.first + static_cast<std::int64_t>(wide * static_cast<long double>(share));
    return "_rowid_ >= " + std::to_string(key) + " ORDER BY _rowid_";
  };
}

}  // namespace

std::optional<std::int64_t> CoarseRowsOfSqlite(const ThinnedView& view, Progress& progress) {
  RequireSqliteFile(view.place.address);
  const SqliteFile file(view.place, progress);
  const SqliteRoad road = RoadOf(file, view);
  if (!road.keys) return std::nullopt;
  const double rows =
      static_cast<double>(road.keys->second) - static_cast<double>(road.keys->first) + 1;
  if (rows <= static_cast<double>(kMostRowsAtOnce)) return std::nullopt;
  return static_cast<std::int64_t>(std::min(rows, 9e18));
}

std::optional<ThinnedRows> FetchCoarseOfSqlite(const ThinnedView& view, Progress& progress) {
  const auto begun = std::chrono::steady_clock::now();
  RequireSqliteFile(view.place.address);
  const SqliteFile file(view.place, progress);
  const SqliteRoad road = RoadOf(file, view);
  if (!road.keys) return std::nullopt;
  const auto rows_from = RowsFrom(file, view, road);
  const std::size_t width = 1 + view.y.size();
  std::vector<double> found;
  double x_min = std::numeric_limits<double>::infinity(), x_max = -x_min;
  const auto take = [&](std::span<sqlite3_value* const> values) {
    const double x = SqliteNumber(values[0], view.x.format);
    if (!std::isfinite(x)) return;
    x_min = std::min(x_min, x);
    x_max = std::max(x_max, x);
    found.push_back(x);
    for (std::size_t y = 1; y < width; ++y)
      found.push_back(SqliteNumber(values[y], view.y[y - 1].format));
  };
  const auto seek = [&](const std::string& rows) {
    HandSqliteRows(
        file, road.columns,
        "(SELECT " + road.columns + " FROM " + road.from + " WHERE " + rows + " LIMIT 4)", take);
  };
  seek(rows_from(0) + " DESC");
  for (std::uint32_t i = 0; i < kSeeks; ++i) {
    seek(rows_from(static_cast<double>(SeekAt(i)) / kSeeks));
    if (std::chrono::steady_clock::now() - begun > kPatience) break;
  }
  if (found.empty()) return std::nullopt;
  ThinnedColumns columns(x_min, x_max, view.columns, view.y.size());
  for (std::size_t at = 0; at < found.size(); at += width) columns.Add(found.data() + at);
  return columns.Rows();
}

}  // namespace tarnwick
