#include "sources/database/thinned_view.h"

#include <QSqlQuery>
#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/error.h"
#include "sources/database/database_connection.h"
#include "sources/database/mysql_thinning.h"
#include "sources/database/postgres_thinning.h"
#include "sources/database/sqlite_thinning.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostYs = 32;  // what is kept grows with their square

/// How what speaks a dialect is asked over a connection.
struct Way {
  std::string_view scheme;
  ThinnedRows (*fetch)(const ThinnedView& view, const DatabaseConnection& connection,
                       Progress& progress);
};

/// Its file is on this machine, whatever driver reads it.
ThinnedRows FetchFromItsFile(const ThinnedView& view, const DatabaseConnection& connection,
                             Progress& progress) {
  QSqlQuery query(connection.Handle());
  const bool known =
      query.exec("SELECT file FROM pragma_database_list WHERE name = 'main'") && query.next();
  ThinnedView of_file = view;
  of_file.place.scheme = "sqlite";
  of_file.place.address = known ? query.value(0).toString().toStdString() : std::string();
  return FetchThinnedOfSqlite(of_file, progress);
}

constexpr Way kWays[] = {{"sqlite", &FetchFromItsFile},
                         {"postgresql", &FetchThinnedOfPostgres},
                         {"mysql", &FetchThinnedOfMysql}};

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
  if (!view.place.query.empty()) RequireReadingQuery(view.place.query);
  if (view.y.size() > kMostYs) {
    throw Error("A table is thinned for at most " + std::to_string(kMostYs) +
                " columns of Y at once; name those that are wanted");
  }
  if (view.place.scheme == "sqlite") return FetchThinnedOfSqlite(view, progress);
  const DatabaseConnection connection(view.place);
  RequireThinning(view.place, connection.Dialect());
  return WayOf(connection.Dialect())->fetch(view, connection, progress);
}

}  // namespace tarnwick
