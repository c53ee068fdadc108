#include <gtest/gtest.h>

#include "both_roads.h"
#include "made_database.h"

namespace tarnwick {
namespace {

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

}  // namespace
}  // namespace tarnwick
