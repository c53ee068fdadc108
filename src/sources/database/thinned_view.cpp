#include "sources/database/thinned_view.h"

#include <iterator>

#include "base/error.h"
#include "sources/database/mysql_thinning.h"
#include "sources/database/postgres_thinning.h"
#include "sources/database/sqlite_thinning.h"

namespace tarnwick {
namespace {

struct Way {
  const char* scheme;
  ThinnedRows (*fetch)(const ThinnedView& view, Progress& progress);
};

constexpr std::size_t kMostYs = 32;  // what is kept grows with their square

constexpr Way kWays[] = {{"sqlite", &FetchThinnedOfSqlite},
                         {"postgresql", &FetchThinnedOfPostgres},
                         {"mysql", &FetchThinnedOfMysql}};

const Way* WayOf(const DatabasePlace& place) {
  for (const Way& way : kWays) {
    if (place.scheme == way.scheme) return &way;
  }
  return nullptr;
}

}  // namespace

bool CanThin(const DatabasePlace& place) {
  return WayOf(place) != nullptr;
}

ThinnedRows FetchThinned(const ThinnedView& view, Progress& progress) {
  const Way* const way = WayOf(view.place);
  if (way == nullptr) throw Error("No data base of the kind " + view.place.scheme + " is thinned");
  if (!view.place.query.empty()) RequireReadingQuery(view.place.query);
  if (view.y.size() > kMostYs) {
    throw Error("A table is thinned for at most " + std::to_string(kMostYs) +
                " columns of Y at once; name those that are wanted");
  }
  return way->fetch(view, progress);
}

}  // namespace tarnwick
