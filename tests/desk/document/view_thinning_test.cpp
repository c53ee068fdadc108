#include "desk/document/view_thinning.h"

#include <gtest/gtest.h>

#include <QTest>
#include <algorithm>
#include <string>

#include "data/points/point_columns.h"
#include "desk/document/document.h"
#include "document/immediate_work.h"
#include "graph/files/graph_file.h"
#include "sources/database/database_place.h"
#include "sources/database/database_source.h"
#include "support/run_statements.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr int kRows = 200'000;

/// X 1 to 200000; Y of three values, with a spike of one row at 70000 and another at 123456.
class ViewsOfDatabase : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::RunStatements(
        file_,
        {"CREATE TABLE run AS WITH RECURSIVE n(x) AS (SELECT 1.0 UNION ALL SELECT x + 1 FROM n "
         "WHERE x < 200000) SELECT x, CASE WHEN x IN (70000, 123456) THEN 50.0 ELSE x % 3 + 0.5 "
         "END AS y FROM n"});
    TDSInfo place;
    place.DataSource = DataSourceKind::Database;
    place.DatasourceInfo = PlaceOfFile(file_).Text() + "?table=run";
    place.ThinnedAtSource = true;
    ASSERT_TRUE(document_.Files().ReadPlace(place));
  }
  TSeries& Series() { return document_.WholeGraph().Series(0); }
  /// Points between two X, and the highest of them.
  std::pair<std::int64_t, double> Shown(double from, double to) {
    const std::vector<double> x = XValues(Series().Points()), y = YValues(Series().Points());
    std::pair<std::int64_t, double> shown = {0, 0};
    for (std::size_t i = 0; i < x.size(); ++i) {
      if (x[i] < from || x[i] > to) continue;
      ++shown.first;
      shown.second = std::max(shown.second, y[i]);
    }
    return shown;
  }
  void Zoom(ViewThinning& views, double from, double to) {
    document_.WholeGraph().Axis(AxisId::X).SetMin(from);
    document_.WholeGraph().Axis(AxisId::X).SetMax(to);
    ASSERT_TRUE(QTest::qWaitFor([&] { return views.IsSettled(); }, 20'000));
  }

  testing::TemporaryFolder folder_;
  std::string file_ = folder_.File("runs.db").string();
  testing::ScriptedPrompt prompt_;
  testing::ImmediateWork work_;
  Document document_{"Graph_1", work_, prompt_};
};

TEST_F(ViewsOfDatabase, AZoomShowsAllRowsOfANarrowViewAndKeepsWhatLiesBeside) {
  const int whole = Series().PointCount();
  EXPECT_LT(whole, kRows);
  EXPECT_EQ(Shown(123'000, 124'000).second, 50) << "a spike of the whole";
  const std::int64_t step = document_.History().LastStep();
  ViewThinning views(document_, nullptr);
  Zoom(views, 123'000, 124'000);
  EXPECT_EQ(Shown(123'000, 124'000), std::pair(std::int64_t{1001}, 50.0));
  EXPECT_EQ(Shown(69'990, 70'010).second, 50) << "what lies beside";
  EXPECT_NE(document_.Told().Text().find("1501 rows in view"), std::string::npos)
      << document_.Told().Text();
  Zoom(views, 60'000, 61'000);
  EXPECT_EQ(Shown(60'000, 61'000).first, 1001);
  EXPECT_LT(Shown(123'000, 124'000).first, 1001) << "views that were left would pile up";
  EXPECT_EQ(Shown(123'000, 124'000).second, 50);
  EXPECT_EQ(document_.History().LastStep(), step) << "looking is no step";
}

TEST_F(ViewsOfDatabase, PointsThatWereEditedStay) {
  ViewThinning views(document_, nullptr);
  document_.Edit("Shift", [](TxyGraph& graph) { graph.Series(0).ShiftX(5); });
  const int edited = Series().PointCount();
  Zoom(views, 123'000, 124'000);
  EXPECT_EQ(Series().PointCount(), edited);
  EXPECT_EQ(Shown(123'461, 123'461).second, 50);
}

TEST_F(ViewsOfDatabase, AllRowsAreLoadedOnRequestAndATableThatGoesIsTold) {
  ViewThinning views(document_, nullptr);
  std::filesystem::rename(file_, file_ + ".away");
  const int before = Series().PointCount();
  Zoom(views, 123'000, 124'000);
  EXPECT_EQ(Series().PointCount(), before);
  EXPECT_NE(document_.Told().Text().find("stays as it was: The file of the data base is missing: " +
                                         file_),
            std::string::npos)
      << document_.Told().Text();
  std::filesystem::rename(file_ + ".away", file_);
  ASSERT_TRUE(document_.Files().LoadAllRows());
  EXPECT_EQ(Series().PointCount(), kRows);
}

/// A table that claims to be large: its row numbers lie far apart. X repeats only where few rows lie.
class CoarseFirst : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::RunStatements(
        file_,
        {"CREATE TABLE run (x REAL, y REAL, z REAL)",
         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) "
         "INSERT INTO run(rowid, x, y, z) SELECT i * 100, CASE WHEN i = 70001 THEN 70000 ELSE i "
         "END, CASE i WHEN 70000 THEN 50 WHEN 70001 THEN -50 ELSE i % 3 END, -i FROM n"});
    place_.DataSource = DataSourceKind::Database;
    place_.DatasourceInfo = PlaceOfFile(file_).Text() + "?table=run";
    place_.ThinnedAtSource = true;
    ASSERT_TRUE(document_.Files().ReadPlace(place_));
    ASSERT_EQ(document_.WholeGraph().SeriesCount(), 2);
  }
  TSeries& Series(std::size_t i) { return document_.WholeGraph().Series(i); }
  std::vector<double> YAt(double at) {
    const std::vector<double> x = XValues(Series(0).Points()), y = YValues(Series(0).Points());
    std::vector<double> found;
    for (std::size_t i = 0; i < x.size(); ++i) {
      if (x[i] == at) found.push_back(y[i]);
    }
    std::ranges::sort(found);
    return found;
  }
  bool Settle(const ViewThinning& views) {
    return QTest::qWaitFor([&] { return views.IsSettled(); }, 20'000);
  }

  TDSInfo place_;
  testing::TemporaryFolder folder_;
  std::string file_ = folder_.File("runs.db").string();
  testing::ScriptedPrompt prompt_;
  testing::ImmediateWork work_;
  Document document_{"Graph_1", work_, prompt_};
};

TEST_F(CoarseFirst, EveryRowIsReadBehindIt) {
  const std::int64_t step = document_.History().LastStep();
  const int coarse = Series(0).PointCount();
  EXPECT_TRUE(IsCoarse(Series(0).Source()));
  EXPECT_LT(coarse, 20'000);
  ViewThinning views(document_, nullptr);
  ASSERT_TRUE(Settle(views));
  for (const std::size_t i : {0U, 1U}) {
    EXPECT_FALSE(IsCoarse(Series(i).Source()));
    EXPECT_GT(Series(i).PointCount(), 60'000);
  }
  EXPECT_EQ(YAt(70'000), (std::vector<double>{-50, 50})) << "spikes, also at one X";
  EXPECT_EQ(document_.History().LastStep(), step) << "looking is no step";
  EXPECT_NE(document_.Told().Text().find("of 100000 rows in view of \"y\""), std::string::npos)
      << document_.Told().Text();
}

TEST_F(CoarseFirst, IsToldOfAGraphThatIsRecoveredAndReadOn) {
  SaveGraph(document_.WholeGraph(), folder_.File("copy.tgr"));
  Document recovered("Graph_2", work_, prompt_);
  recovered.Files().Recover(folder_.File("copy.tgr"), {}, {});
  EXPECT_TRUE(recovered.Told().Text().starts_with("Only about one row in "))
      << recovered.Told().Text();
  ViewThinning views(recovered, nullptr);
  ASSERT_TRUE(Settle(views));
  EXPECT_GT(recovered.WholeGraph().Series(0).PointCount(), 60'000);
  EXPECT_TRUE(recovered.Told().Text().find("of 100000 rows in view of \"y\"") != std::string::npos);
}

TEST_F(CoarseFirst, ItStaysWhereItsPointsAreEditedOrItsTableGoesAndIsToldAsSuch) {
  const int coarse = Series(0).PointCount();
  std::filesystem::rename(file_, file_ + ".away");
  {
    ViewThinning views(document_, nullptr);
    ASSERT_TRUE(Settle(views));
  }
  EXPECT_NE(document_.Told().Text().find("stays coarse, spikes may be missing: The file"),
            std::string::npos)
      << document_.Told().Text();
  EXPECT_EQ(Series(0).PointCount(), coarse);
  std::filesystem::rename(file_ + ".away", file_);
  document_.Edit("Shift", [](TxyGraph& graph) { graph.Series(0).ShiftX(5); });
  ViewThinning views(document_, nullptr);
  ASSERT_TRUE(Settle(views));
  EXPECT_EQ(Series(0).PointCount(), coarse);
  EXPECT_TRUE(IsCoarse(Series(0).Source()));
  EXPECT_FALSE(IsCoarse(Series(1).Source()));

  const std::vector<double> edited = XValues(Series(0).Points());
  SaveGraph(document_.WholeGraph(), folder_.File("edited.tgr"));
  document_.Files().LoadGraphFile(folder_.File("edited.tgr"));
  ViewThinning again(document_, nullptr);
  ASSERT_TRUE(Settle(again));
  EXPECT_EQ(XValues(Series(0).Points()), edited) << "the edit went by opening the graph again";
  EXPECT_TRUE(document_.Files().Refresh());
  EXPECT_FALSE(Series(0).Source().PointsEdited);
}

TEST_F(CoarseFirst, IsNotWhereRowsCannotTakeThePlaceOfPoints) {
  TDSInfo by_expression = Series(0).Source();
  by_expression.YColExpr = "2 * Y";
  ASSERT_TRUE(document_.Files().ReadBy({{.place = 0, .source = by_expression}}));
  EXPECT_FALSE(IsCoarse(Series(0).Source()));
  EXPECT_GT(Series(0).PointCount(), 60'000);
  EXPECT_FALSE(YAt(70'000).empty());
}

}  // namespace
}  // namespace tarnwick
