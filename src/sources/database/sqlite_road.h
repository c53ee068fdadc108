// How the rows of a view are best gone through in a file of SQLite. Knows tables and indexes; goes through no rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sources/database/sqlite_reading.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

struct SqliteRoad {
  std::string from;
  std::string columns;     ///< X and every Y
  bool by_number = false;  ///< X are stored numbers, so that the data base can compare them
  bool indexed = false;    ///< an index finds X
  bool covered = false;    ///< which holds every Y, too
  std::optional<std::pair<std::int64_t, std::int64_t>> keys;  ///< of a table, its first and last
};

/// Throws as SqliteFile::Require().
SqliteRoad RoadOf(const SqliteFile& file, const ThinnedView& view);

struct XRange {
  double x_min = 0, x_max = 0;
};

/// Of all rows, by an index of numbers, which tells it at once; nothing where there is no number.
std::optional<XRange> IndexedRange(const SqliteFile& file, const ThinnedView& view,
                                   const SqliteRoad& road);

/// Parts of a statement's WHERE that share the rows of a road with keys.
std::vector<std::string> KeyPieces(const SqliteRoad& road, std::size_t pieces);

}  // namespace tarnwick
