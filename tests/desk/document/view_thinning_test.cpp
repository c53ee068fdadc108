#include "desk/document/view_thinning.h"

#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>
#include <algorithm>
#include <string>

#include "data/points/point_columns.h"
#include "desk/document/document.h"
#include "document/immediate_work.h"
#include "sources/database/database_place.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr int kRows = 200'000;

/// X 1 to 200000; Y of three values, with a spike of one row at 70000 and another at 123456.
class ViewsOfDatabase : public ::testing::Test {
 protected:
  void SetUp() override {
    {
      QSqlDatabase base = QSqlDatabase::addDatabase("QSQLITE", "viewed");
      base.setDatabaseName(QString::fromStdString(file_));
      ASSERT_TRUE(base.open());
      QSqlQuery query(base);
      ASSERT_TRUE(query.exec(
          "CREATE TABLE run AS WITH RECURSIVE n(x) AS (SELECT 1.0 UNION ALL SELECT x + 1 FROM n "
          "WHERE x < 200000) SELECT x, CASE WHEN x IN (70000, 123456) THEN 50.0 ELSE x % 3 + 0.5 "
          "END AS y FROM n"));
    }
    QSqlDatabase::removeDatabase("viewed");
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
  EXPECT_NE(document_.Files().Told().Text().find("1501 rows in view"), std::string::npos)
      << document_.Files().Told().Text();
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
  EXPECT_NE(document_.Files().Told().Text().find(
                "stays as it was: The file of the data base is missing: " + file_),
            std::string::npos)
      << document_.Files().Told().Text();
  std::filesystem::rename(file_ + ".away", file_);
  ASSERT_TRUE(document_.Files().LoadAllRows());
  EXPECT_EQ(Series().PointCount(), kRows);
}

}  // namespace
}  // namespace tarnwick
