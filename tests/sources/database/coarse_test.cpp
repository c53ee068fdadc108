#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

#include "data/columns/import_options.h"
#include "data/columns/import_source.h"
#include "data/packed/unpack.h"
#include "made_database.h"
#include "sources/database/database_source.h"
#include "sources/database/thinned_pieces.h"
#include "sources/database/thinned_view.h"
#include "support/cancelling_progress.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::MadeDatabase;

/// 20000 rows whose row numbers, far from zero, lie as far apart as if there were a hundred million; Y of three values, one
/// spike.
const std::vector<std::string> kTable = {
    "CREATE TABLE run (x REAL, y REAL)",
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO "
    "run(rowid, x, y) SELECT i * 5000 + 1000000000, i * 0.5, CASE WHEN i = 7777 THEN 50 ELSE i % 3 "
    "END FROM n"};

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
    EXPECT_GT(CoarseRows(view, unseen).value_or(0), 99'000'000);
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

TEST(CoarsePicture, IsMadeOfAsManyYAsTheWholeIs) {
  const MadeDatabase base(kTable);
  NoProgress unseen;
  ThinnedView view = Whole(base.Place("run"), 1);
  view.y.assign(32, {"y"});
  EXPECT_TRUE(FetchCoarse(view, unseen));
  EXPECT_EQ(FetchThinned(view, unseen).y.size(), 32U);
  view.y.push_back({"y"});
  EXPECT_FALSE(FetchCoarse(view, unseen));
  EXPECT_NE(testing::Refusal([&] { FetchThinned(view, unseen); }).find("at most 32"),
            std::string::npos);
}

RowPlan BothColumns() {
  RowPlan plan;
  plan.x_column = 0;
  for (const std::int32_t column : {0, 1}) plan.columns.push_back({column, {}});
  return plan;
}

/// Rows that are there when both columns have been asked for.
std::int64_t RowsOf(TDataSupplier& supplier) {
  NoProgress unseen;
  EXPECT_TRUE(supplier.Expect(BothColumns(), unseen));
  return supplier.RowCount();
}

TEST(LargeTables, AreThinnedUnlessRowsAreChosenOrItIsNotWanted) {
  const MadeDatabase base(kTable);
  NoProgress unseen;
  ImportOptions not_wanted, some, first;
  not_wanted.thinned_at_source = false;
  some.every = 100;
  first.row_choice = RowChoice::FirstRows;
  for (const ImportOptions& options : std::vector{not_wanted, some, first})
    EXPECT_FALSE(OpenDatabase(base.Place("run"), options, unseen).info.ThinnedAtSource);
  for (const FirstPicture picture : {FirstPicture::Whole, FirstPicture::Coarse}) {
    const ImportSource source = OpenDatabase(base.Place("run"), {}, unseen, picture);
    ASSERT_TRUE(source.info.ThinnedAtSource);
    const std::int64_t rows = RowsOf(*source.supplier);
    const SourceKind kind = DatabaseKind(picture);
    TDSInfo info = source.info;
    info.AllRows = true;
    const bool whole = picture == FirstPicture::Whole;
    EXPECT_EQ(RowsOf(*kind.open(info, unseen)), rows);
    EXPECT_EQ(rows == 20'000, whole) << rows;
    const ImportSource begun = kind.begin(info, {}, unseen);
    EXPECT_TRUE(begun.info.ThinnedAtSource);
    testing::CancellingProgress cancelled(0);
    EXPECT_EQ(begun.supplier->Expect(BothColumns(), cancelled), !whole);
  }
}

TEST(LargeTables, ShowRowsAsTheyAreWhereNothingIsMadeOfThem) {
  struct Row {
    void (*describe)(TDSInfo& info);
    bool thinned, coarse, as_they_are;
  };
  const Row rows[] = {
      {[](TDSInfo&) {}, true, false, true},
      {[](TDSInfo& i) { i.XColExpr.clear(), i.YColExpr.clear(); }, true, false, true},
      {[](TDSInfo& i) { i.RowSamplingFrequency = 2; }, true, true, true},
      {[](TDSInfo& i) { i.XColExpr = "X/2"; }, true, false, false},
      {[](TDSInfo& i) { i.YColExpr = "X"; }, true, false, false},
      {[](TDSInfo& i) { i.YErrorColumn = "dy"; }, true, false, false},
      {[](TDSInfo& i) { i.XErrorColumn = "dx"; }, true, false, false},
      {[](TDSInfo& i) { i.AllRows = false, i.RowSamplingFrequency = 9; }, false, false, false},
      {[](TDSInfo& i) { i.RowChoiceMode = RowChoice::FromX; }, false, false, false},
      {[](TDSInfo& i) { i.ThinnedAtSource = false; }, false, false, false},
      {[](TDSInfo& i) { i.DataSource = DataSourceKind::Text; }, false, false, false},
  };
  for (const Row& row : rows) {
    TDSInfo info;
    info.DataSource = DataSourceKind::Database;
    info.ThinnedAtSource = info.AllRows = true;
    row.describe(info);
    const auto at = &row - rows;
    EXPECT_EQ(IsThinned(info), row.thinned) << at;
    EXPECT_EQ(IsCoarse(info), row.coarse) << at;
    EXPECT_EQ(ShowsRowsAsTheyAre(info), row.as_they_are) << at;
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
