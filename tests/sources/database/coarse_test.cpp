#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

#include "data/packed/unpack.h"
#include "made_database.h"
#include "sources/database/thinned_pieces.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {
namespace {

using testing::MadeDatabase;

/// 20000 rows whose row numbers lie as far apart as if there were ten million; Y of three values, one spike.
const std::vector<std::string> kTable = {
    "CREATE TABLE run (x REAL, y REAL)",
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO "
    "run(rowid, x, y) SELECT i * 500, i * 0.5, CASE WHEN i = 7777 THEN 50 ELSE i % 3 END FROM n"};

ThinnedView Whole(const DatabasePlace& place, int columns) {
  return {.place = place, .x = {"x"}, .y = {{"y"}}, .columns = columns};
}

/// Cancelled from one step on.
class Stopped final : public Progress {
 public:
  explicit Stopped(int steps) : left_(steps) {}
  void Begin(std::string_view, std::string_view, std::int64_t) override {}
  bool Advance(std::int64_t) override { return --left_ > 0; }
  bool Cancelled() const override { return left_ <= 0; }

 private:
  std::atomic<int> left_;
};

void ExpectSameRows(const ThinnedRows& one, const ThinnedRows& other) {
  EXPECT_EQ(one.x, other.x);
  EXPECT_EQ(one.y, other.y);
  EXPECT_EQ(one.rows, other.rows);
}

TEST(CoarsePicture, IsOfTrueRowsFromAllOverALargeTable) {
  const MadeDatabase base(kTable);
  NoProgress unseen;
  for (const char* const index : {"", "CREATE INDEX by_x ON run (x)"}) {
    SCOPED_TRACE(index);
    if (*index != 0) base.Run({index});
    const ThinnedView view = Whole(base.Place("run"), 100);
    EXPECT_GT(CoarseRows(view, unseen).value_or(0), 9'000'000);
    const auto rows = FetchCoarse(view, unseen);
    ASSERT_TRUE(rows);
    EXPECT_GT(rows->rows, 4000);
    EXPECT_EQ(rows->x.front(), 0.5);
    EXPECT_EQ(rows->x.back(), 10'000);
    for (double from = 0; from < 10'000; from += 100) {
      EXPECT_TRUE(std::ranges::any_of(rows->x, [&](double x) {
        return x >= from && x <= from + 100;
      })) << from;
    }
    for (std::size_t i = 0; i < rows->x.size(); ++i) {
      const auto number = static_cast<int>(rows->x[i] * 2);
      EXPECT_EQ(rows->y[0][i], number == 7777 ? 50 : number % 3);
    }
  }
}

TEST(CoarsePicture, IsNoneOfWhatIsReadAtOnceOrHasNoRowNumbers) {
  const MadeDatabase base(kTable);
  base.Run({"CREATE TABLE few (x, y)", "INSERT INTO few VALUES (1, 2), (3, 4)",
            "CREATE VIEW seen AS SELECT * FROM run", "CREATE TABLE none (x, y)"});
  NoProgress unseen;
  for (const DatabasePlace& place : {base.Place("few"), base.Place("seen"), base.Place("none"),
                                     base.Place("", "SELECT * FROM run")}) {
    EXPECT_FALSE(FetchCoarse(Whole(place, 100), unseen)) << place.Text();
  }
}

TEST(PiecesOfAWhole, GoOnWhereTheyWereGivenUpAndMakeTheWhole) {
  const MadeDatabase base(kTable);
  NoProgress unseen;
  for (const char* const index : {"", "CREATE INDEX by_x ON run (x, y)"}) {
    SCOPED_TRACE(index);
    if (*index != 0) base.Run({index});
    const ThinnedView view = Whole(base.Place("run"), 50);
    const ThinnedRows whole = FetchThinned(view, unseen);
    EXPECT_EQ(whole.rows, 20'000);
    EXPECT_EQ(std::ranges::max(whole.y[0]), 50);
    ThinnedSoFar so_far;
    double share = 0;
    for (const int steps : {0, 3, 9}) {
      Stopped stopped(steps);
      bool given_up = false;
      try {
        FetchThinnedInPieces(view, so_far, {}, stopped);
      } catch (const UnpackingCancelled&) {
        given_up = true;
      }
      // Other threads may have come to the end before this one took so many steps.
      EXPECT_EQ(given_up, so_far.Share() < 1);
      EXPECT_TRUE(given_up || steps > 0);
      EXPECT_GE(so_far.Share(), share);
      share = so_far.Share();
    }
    ExpectSameRows(FetchThinnedInPieces(view, so_far, {}, unseen), whole);
    EXPECT_EQ(so_far.Share(), 1);
  }
}

}  // namespace
}  // namespace tarnwick
