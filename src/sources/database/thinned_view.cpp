#include "sources/database/thinned_view.h"

#include <QSqlQuery>
#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/error.h"
#include "sources/database/database_connection.h"
#include "sources/database/mysql_thinning.h"
#include "sources/database/postgres_thinning.h"
#include "sources/database/sqlite_coarse.h"
#include "sources/database/sqlite_thinning.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostYs = 32;  // what is kept grows with their square

/// How what speaks a dialect is asked over a connection.
struct Way {
  std::string_view scheme;
  ThinnedRows (*fetch)(const ThinnedView& view, const DatabaseConnection& connection,
                       ThinnedSoFar& so_far, const ThinnedTaker& take, Progress& progress);
  /// Null: it finds no rows but by going through all.
  std::optional<std::int64_t> (*coarse_rows)(const ThinnedView& view,
                                             const DatabaseConnection& connection,
                                             Progress& progress) = nullptr;
  std::optional<ThinnedRows> (*coarse)(const ThinnedView& view,
                                       const DatabaseConnection& connection,
                                       Progress& progress) = nullptr;
};

/// Its file is on this machine, whatever driver reads it.
ThinnedView OfItsFile(ThinnedView view, const DatabaseConnection& connection) {
  QSqlQuery query(connection.Handle());
  const bool known =
      query.exec("SELECT file FROM pragma_database_list WHERE name = 'main'") && query.next();
  view.place.scheme = "sqlite";
  view.place.address = known ? query.value(0).toString().toStdString() : std::string();
  return view;
}

ThinnedRows FetchFromItsFile(const ThinnedView& view, const DatabaseConnection& connection,
                             ThinnedSoFar& so_far, const ThinnedTaker& take, Progress& progress) {
  return FetchThinnedOfSqlite(OfItsFile(view, connection), so_far, take, progress);
}

std::optional<std::int64_t> CoarseRowsOfItsFile(const ThinnedView& view,
                                                const DatabaseConnection& connection,
                                                Progress& progress) {
  return CoarseRowsOfSqlite(OfItsFile(view, connection), progress);
}

std::optional<ThinnedRows> FetchCoarseFromItsFile(const ThinnedView& view,
                                                  const DatabaseConnection& connection,
                                                  Progress& progress) {
  return FetchCoarseOfSqlite(OfItsFile(view, connection), progress);
}

using FetchOfServer = ThinnedRows (*)(const ThinnedView& view, const DatabaseConnection& connection,
                                      Progress& progress);

template <FetchOfServer fetch>
ThinnedRows FetchAtOnce(const ThinnedView& view, const DatabaseConnection& connection,
                        ThinnedSoFar& /*so_far*/, const ThinnedTaker& /*take*/,
                        Progress& progress) {
  return fetch(view, connection, progress);
}

constexpr Way kWays[] = {
    {"sqlite", &FetchFromItsFile, &CoarseRowsOfItsFile, &FetchCoarseFromItsFile},
    {"postgresql", &FetchAtOnce<&FetchThinnedOfPostgres>, &CoarseRowsOfPostgres,
     &FetchCoarseOfPostgres},
    {"mysql", &FetchAtOnce<&FetchThinnedOfMysql>}};

const Way* WayOf(const DatabaseDialect& dialect) {
  const auto* const way = std::ranges::find(kWays, dialect.scheme, &Way::scheme);
  return way == std::end(kWays) ? nullptr : way;
}

}  // namespace

bool CanThin(const DatabaseDialect& dialect) {
  return WayOf(dialect) != nullptr;
}

void RequireThinning(const DatabasePlace& place, const DatabaseDialect& dialect) {
  if (CanThin(dialect)) return;
  throw Error("Data bases of this kind do not thin, SQLite, PostgreSQL, MySQL and MariaDB do: " +
              place.Name());
}

ThinnedRows FetchThinned(const ThinnedView& view, Progress& progress) {
  ThinnedSoFar nothing;
  return FetchThinnedInPieces(view, nothing, {}, progress);
}

ThinnedRows FetchThinnedInPieces(const ThinnedView& view, ThinnedSoFar& so_far,
                                 const ThinnedTaker& take, Progress& progress) {
  if (!view.place.query.empty()) RequireReadingQuery(view.place.query);
  if (view.y.size() > kMostYs) {
    throw Error("A table is thinned for at most " + std::to_string(kMostYs) +
                " columns of Y at once; name those that are wanted");
  }
  if (view.place.scheme == "sqlite") return FetchThinnedOfSqlite(view, so_far, take, progress);
  const DatabaseConnection connection(view.place);
  RequireThinning(view.place, connection.Dialect());
  return WayOf(connection.Dialect())->fetch(view, connection, so_far, take, progress);
}

std::optional<std::int64_t> CoarseRows(const ThinnedView& view, Progress& progress) {
  if (!view.place.query.empty() || view.y.size() > kMostYs) return std::nullopt;
  if (view.place.scheme == "sqlite") return CoarseRowsOfSqlite(view, progress);
  const DatabaseConnection connection(view.place);
  const Way* const way = WayOf(connection.Dialect());
  if (way == nullptr || way->coarse_rows == nullptr) return std::nullopt;
  return way->coarse_rows(view, connection, progress);
}

std::optional<ThinnedRows> FetchCoarse(const ThinnedView& view, Progress& progress) {
  if (!CoarseRows(view, progress)) return std::nullopt;
  if (view.place.scheme == "sqlite") return FetchCoarseOfSqlite(view, progress);
  const DatabaseConnection connection(view.place);
  return WayOf(connection.Dialect())->coarse(view, connection, progress);
}

}  // namespace tarnwick
