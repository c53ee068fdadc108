#include <gtest/gtest.h>

#include "both_roads.h"
#include "made_database.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {
namespace {

using testing::AddThroughOdbc;
using testing::ExpectSameByBothRoads;
using testing::ExpectThinnedShowsEveryExtreme;
using testing::MadeDatabase;

TEST(PushDown, SqlitePicksWhatReadingRowByRowPicks) {
  const MadeDatabase base({});
  const std::vector<DatabasePlace> places = {
      base.Place("t"), base.Place("t"), base.Place("", "SELECT * FROM t WHERE y > 5"),
      base.Place("", "SELECT * FROM t ORDER BY y DESC"),
      base.Place("", "SELECT x, x AS x, y, \"odd \"\"% na.me\" FROM t")};
  ExpectSameByBothRoads(true, 12, places, [&](const auto& statements) { base.Run(statements); });
}

TEST(PushDown, SqliteThinsWithEveryExtreme) {
  const MadeDatabase base({"CREATE TABLE t (x)"});
  base.Run({"CREATE VIEW seen AS SELECT x, y, \"odd \"\"% na.me\" FROM t"});
  const std::vector<DatabasePlace> places = {base.Place("t"), base.Place("t"), base.Place("t"),
                                             base.Place("seen"),
                                             base.Place("", "SELECT * FROM t WHERE y > 5;")};
  ExpectThinnedShowsEveryExtreme(false, 12, places,
                                 [&](const auto& statements) { base.Run(statements); });
}

TEST(PushDown, SqliteBehindOdbcIsThinnedByItsFile) {
  const MadeDatabase base({"CREATE TABLE t (x REAL, \"y \"\" y\" REAL)",
                           "INSERT INTO t VALUES (1, 0.1), (1.5, 5), (2, 3), (2, -1), (2.25, 0)"});
  std::vector<DatabasePlace> places = {base.Place("t"), base.Place("", "SELECT * FROM t")};
  AddThroughOdbc("DRIVER=SQLite3;Database=" + base.File(), places);
  for (const DatabasePlace& place : places) {
    NoProgress unseen;
    const ThinnedView view{
        .place = place, .x = {"x"}, .y = {{"y \" y"}}, .x_min = 0, .x_max = 2.5, .columns = 1};
    const ThinnedRows rows = FetchThinned(view, unseen);
    EXPECT_EQ(rows.x, (std::vector<double>{1, 1.5, 2, 2.25})) << place.scheme;
    EXPECT_EQ(rows.y.at(0), (std::vector<double>{0.1, 5, -1, 0}));
  }
}

}  // namespace
}  // namespace tarnwick
