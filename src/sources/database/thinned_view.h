// What a view shows of a table that is too large to be drawn whole: of each of its columns the first, the last, the lowest and
// the highest row, picked where the table is. Knows places and values; knows no DataSet and no window.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "base/progress.h"
#include "data/ds_info.h"
#include "sources/database/database_place.h"

namespace tarnwick {

struct DatabaseDialect;

/// Columns of a whole table, so many that a zoom finds something until its own rows are there.
inline constexpr int kColumnsOfWhole = 16 * 2048;
/// Columns of a view where no screen says how many.
inline constexpr int kColumnsOfView = 2048;

/// Tables up to so many rows are read whole at once: that takes half a second where it is fast.
inline constexpr std::int64_t kMostRowsAtOnce = 4'000'000;

/// Of a Y: first, last, lowest and highest of each column.
constexpr std::int64_t MostThinnedRows(int columns) {
  return std::int64_t{4} * columns;
}

/// A column, and how its texts become numbers.
struct ThinnedColumn {
  std::string name = {};
  ColumnFormat format = ColumnFormat::Automatic;
  bool operator==(const ThinnedColumn&) const = default;
};

struct ThinnedView {
  DatabasePlace place;
  ThinnedColumn x = {};
  std::vector<ThinnedColumn> y = {};  ///< at least one
  /// Of X, both among it; infinite: to the first and the last row.
  double x_min = -std::numeric_limits<double>::infinity();
  double x_max = std::numeric_limits<double>::infinity();
  int columns = kColumnsOfView;
};

/// True rows of the table, by rising X.
struct ThinnedRows {
  std::vector<double> x;
  std::vector<std::vector<double>> y;  ///< by columns of Y; NaN where a row has no number there
  std::int64_t rows = 0;  ///< with X and some Y in the range, of which these were picked
};

/// True for kinds of data base that can; what is behind a driver of many kinds is known once it is met.
bool CanThin(const DatabaseDialect& dialect);
/// Throws Error, naming the place, for kinds that cannot.
void RequireThinning(const DatabasePlace& place, const DatabaseDialect& dialect);

/// Asks a connection of its own, in the thread that calls. Every row that is the lowest or highest of a Y in its column of the
/// view is among the answer. Throws Error and FileError as suppliers do, and UnpackingCancelled when `progress` cancels, which
/// reaches the data base. Where it can be told how far it is, `progress` comes to MostThinnedRows of the columns.
ThinnedRows FetchThinned(const ThinnedView& view, Progress& progress);

/// About how many rows a table has that is so large that a few of them are looked at first, where FetchCoarse() finds them.
/// Nothing for others, for views and queries, and where no index leads to a row. Throws as FetchThinned().
std::optional<std::int64_t> CoarseRows(const ThinnedView& view, Progress& progress);

/// A few rows from all over the table, in about a second: a picture to look at until every row is read, which misses most
/// extremes. The view is of the whole. Nothing where CoarseRows() is nothing. Throws as FetchThinned().
std::optional<ThinnedRows> FetchCoarse(const ThinnedView& view, Progress& progress);

}  // namespace tarnwick
