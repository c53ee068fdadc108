#include "sources/database/sqlite_road.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "data/text/stored_format.h"

namespace tarnwick {
namespace {

std::string FromOf(const DatabasePlace& place) {
  return place.query.empty() ? SqliteName(place.table) : '(' + ReadingQuery(place.query) + ')';
}

}  // namespace

SqliteRoad RoadOf(const SqliteFile& file, const ThinnedView& view) {
  SqliteRoad road;
  road.from = FromOf(view.place);
  const std::string x = SqliteName(view.x.name);
  road.columns = x;
  for (const ThinnedColumn& y : view.y) road.columns += ", " + SqliteName(y.name);
  const std::string rows = " FROM " + road.from;
  const SqliteStatement first(file, "SELECT " + x + rows + " WHERE " + x + " IS NOT NULL LIMIT 1");
  road.by_number = TakesNumbers(view.x.format) && first.Next() && first.Type(0) != SQLITE_TEXT;
  const SqliteStatement plan(file, "EXPLAIN QUERY PLAN SELECT " + road.columns + rows + " WHERE " +
                                       x + " >= 0.5 AND " + x + " < 1.5");
  while (plan.Next()) {
    const auto* const told = reinterpret_cast<const char*>(sqlite3_column_text(plan.Get(), 3));
    const std::string_view step = told == nullptr ? "" : told;
    road.indexed = road.indexed || (road.by_number && step.starts_with("SEARCH"));
    road.covered = road.covered || step.find("COVERING") != step.npos;
  }
  if (!view.place.query.empty()) return road;
  const std::string name = SqliteLiteral(view.place.table);
  const SqliteStatement table(
      file, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = " + name +
                " AND sql NOT LIKE '%WITHOUT%ROWID%' AND NOT EXISTS (SELECT 1 "
                "FROM pragma_table_info(" +
                name + ") AS i WHERE lower(i.name) = '_rowid_')");
  if (!table.Next()) return road;
  const SqliteStatement ends(
      file, "SELECT (SELECT min(_rowid_)" + rows + "), (SELECT max(_rowid_)" + rows + ")");
  if (ends.Next() && ends.Type(0) == SQLITE_INTEGER && ends.Type(1) == SQLITE_INTEGER) {
    road.keys = {sqlite3_column_int64(ends.Get(), 0), sqlite3_column_int64(ends.Get(), 1)};
  }
  return road;
}

std::optional<XRange> IndexedRange(const SqliteFile& file, const ThinnedView& view,
                                   const SqliteRoad& road) {
  const std::string x = SqliteName(view.x.name);
  // Texts come behind all numbers, infinite ones among these.
  const std::string some = " FROM " + road.from + " WHERE " + x + " < 9e999 AND " + x + " > -9e999";
  const SqliteStatement ends(
      file, "SELECT (SELECT min(" + x + ")" + some + "), (SELECT max(" + x + ")" + some + ")");
  if (!ends.Next() || ends.Type(0) == SQLITE_NULL) return std::nullopt;
  return XRange{sqlite3_column_double(ends.Get(), 0), sqlite3_column_double(ends.Get(), 1)};
}

std::vector<std::string> KeyPieces(const SqliteRoad& road, std::size_t pieces) {
  if (!road.keys) return {"1"};
  const auto [first, last] = *road.keys;
  const auto wide = static_cast<long double>(last) - static_cast<long double>(first);
  std::vector<std::string> all;
  for (std::size_t i = 0; i < pieces; ++i) {
    const auto key = [&, from = first](std::size_t piece) {
      return std::to_string(from +
                            static_cast<std::int64_t>(wide * static_cast<long double>(piece) /
                                                      static_cast<long double>(pieces)));
    };
    std::string& piece = all.emplace_back("_rowid_ >= " + key(i));
    piece += " AND _rowid_";
    piece += i + 1 == pieces ? " <= " + std::to_string(last) : " < " + key(i + 1);
  }
  return all;
}

}  // namespace tarnwick
