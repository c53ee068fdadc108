#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "both_roads.h"
#include "data/import/load_source.h"
#include "data/packed/unpack.h"
#include "postgres_server.h"
#include "sources/database/database_source.h"
#include "sources/database/database_supplier.h"
#include "sources/database/session_passwords.h"
#include "sources/database/thinned_view.h"
#include "support/cancelling_progress.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::AddThroughOdbc;
using testing::CancellingProgress;
using testing::ExpectSameByBothRoads;
using testing::ExpectThinnedShowsEveryExtreme;
using testing::PostgresServer;
using testing::Refusal;

/// One server for all tests of it.
class Postgres : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    server_ = std::make_unique<PostgresServer>();
    RememberPassword(server_->Server(), PostgresServer::kPassword);
  }
  static void TearDownTestSuite() { server_.reset(); }
  void SetUp() override {
    if (!server_->WhyNot().empty()) GTEST_SKIP() << server_->WhyNot();
  }
  static DatabasePlace Place(const std::string& table, const std::string& query = {}) {
    DatabasePlace place = ParseDatabaseUrl(server_->Url());
    place.table = table;
    place.query = query;
    return place;
  }
  static std::unique_ptr<PostgresServer> server_;
};
std::unique_ptr<PostgresServer> Postgres::server_;

TEST_F(Postgres, PicksWhatReadingRowByRowPicks) {
  const std::vector<DatabasePlace> places = {
      Place("t"), Place("t"), Place("", "SELECT * FROM t WHERE y > 5"),
      Place("", "SELECT * FROM t ORDER BY y DESC, x, 3"),
      Place("", "SELECT x, x AS x, y, \"odd \"\"% na.me\" FROM t ORDER BY y, 1, 4")};
  ExpectSameByBothRoads(false, 4, places,
                        [&](const auto& statements) { server_->Run(statements); });
}

TEST_F(Postgres, ThinsWithEveryExtreme) {
  std::vector<DatabasePlace> places = {Place("t"), Place("t"),
                                       Place("", "SELECT * FROM t WHERE y > 5;")};
  const std::string odbc =
      "DRIVER=PostgreSQL Unicode;Database=postgres;UID=owner;Servername=" + server_->Server();
  RememberPassword(odbc, PostgresServer::kPassword);
  AddThroughOdbc(odbc, places);
  ExpectThinnedShowsEveryExtreme(false, 4, places,
                                 [&](const auto& statements) { server_->Run(statements); });
}

TEST_F(Postgres, TimesAreThinnedAsDays) {
  server_->Run(
      {"CREATE TABLE days AS SELECT timestamp '2024-03-04' + i * interval '1 hour' AS at, i "
       "AS y, true AS said FROM generate_series(0, 239) i"});
  ThinnedView view{.place = Place("days"), .x = {"at"}, .y = {{"y"}, {"said"}}};
  view.columns = 10;
  view.x_min = 45356;
  view.x_max = 45361;
  NoProgress unseen;
  const ThinnedRows rows = FetchThinned(view, unseen);
  EXPECT_EQ(rows.rows, 121);
  EXPECT_EQ(rows.x.front(), 45356);
  EXPECT_EQ(rows.y[0].front(), 24);
  EXPECT_EQ(rows.x.back(), 45361);
  EXPECT_EQ(rows.y[0].back(), 144);
  EXPECT_EQ(rows.y[1].back(), 1);
}

TEST_F(Postgres, ATableThatIsLargeHasACoarsePictureWhereAnIndexFindsX) {
  server_->Run(
      {"CREATE TABLE large AS SELECT i AS n, i * 0.5::float8 AS x, timestamp '2024-03-04' "
       "+ i * interval '1 hour' AS at, i % 7 AS y FROM generate_series(1, 100000) i",
       "CREATE INDEX ON large (n)", "CREATE INDEX ON large (x)", "CREATE INDEX ON large (at)",
       "ANALYZE large", "UPDATE pg_class SET reltuples = 1e8 WHERE relname = 'large'"});
  NoProgress unseen;
  for (const char* const x : {"n", "x", "at"}) {
    SCOPED_TRACE(x);
    const ThinnedView view{.place = Place("large"), .x = {x}, .y = {{"y"}}};
    EXPECT_EQ(CoarseRows(view, unseen).value_or(0), 100'000'000);
    const auto coarse = FetchCoarse(view, unseen);
    ASSERT_TRUE(coarse);
    EXPECT_GT(coarse->rows, 4000);
    const ThinnedRows whole = FetchThinned(view, unseen);
    EXPECT_EQ(whole.rows, 100'000);
    EXPECT_EQ(coarse->x.front(), whole.x.front());
    EXPECT_EQ(coarse->x.back(), whole.x.back());
  }
  const ThinnedView not_found{.place = Place("large"), .x = {"y"}, .y = {{"x"}}};
  EXPECT_FALSE(FetchCoarse(not_found, unseen));
}

/// What happens while rows are read.
class Meanwhile final : public Progress {
 public:
  explicit Meanwhile(std::function<void()> happens) : happens_(std::move(happens)) {}
  void Begin(std::string_view, std::string_view, std::int64_t) override {}
  bool Advance(std::int64_t done) override {
    if (done > 0 && happens_) std::exchange(happens_, nullptr)();
    return true;
  }
  bool Cancelled() const override { return false; }

 private:
  std::function<void()> happens_;
};

TEST_F(Postgres, AServerThatGoesAndATableThatIsDroppedAreToldAndThePointsStay) {
  server_->Run({"DROP TABLE IF EXISTS g",
                "CREATE TABLE g AS SELECT i AS x, 2.5 * i AS y FROM generate_series(1, 400000) i"});
  TDataSeries series;
  series.Source().DataSource = DataSourceKind::Database;
  series.Source().DatasourceInfo = Place("g").Text();
  series.Source().XDataColumn = "x";
  series.Source().YDataColumn = "y";
  series.Source().AllRows = true;
  TDataSeries* const all[] = {&series};
  const SourceKind kinds[] = {DatabaseKind()};
  LoadOptions load;
  load.kinds = kinds;
  EXPECT_TRUE(RefreshAll(all, load)[0].loaded);
  EXPECT_EQ(series.PointCount(), 400000);
  EXPECT_EQ(series.Points().At(399999).y, 1000000);

  Meanwhile killed([] { server_->Kill(); });
  load.progress = &killed;
  const std::string told = Refusal([&] { RefreshAll(all, load); });
  EXPECT_NE(told.find("The data base cannot be read"), std::string::npos) << told;
  EXPECT_EQ(series.PointCount(), 400000);
  load.progress = nullptr;
  EXPECT_NE(Refusal([&] { RefreshAll(all, load); }).find("The data base cannot be opened"),
            std::string::npos);
  server_->Start();
  server_->Run({"DROP TABLE g"});
  EXPECT_NE(Refusal([&] { RefreshAll(all, load); }).find("There is no table \"g\""),
            std::string::npos);
  EXPECT_EQ(series.PointCount(), 400000);
}

TEST_F(Postgres, NothingIsWrittenWhateverAQueryCalls) {
  server_->Run({"CREATE TABLE w (v int)",
                "CREATE FUNCTION writes() RETURNS int LANGUAGE plpgsql AS $$ BEGIN INSERT INTO w "
                "VALUES (1); RETURN 1; END $$",
                "CREATE FUNCTION opens() RETURNS int LANGUAGE plpgsql AS $$ BEGIN PERFORM "
                "set_config('transaction_read_only', 'off', false); INSERT INTO w VALUES (1); "
                "RETURN 1; END $$"});
  struct Case {
    const char* query;
    const char* told;
  };
  const Case cases[] = {
      {"SELECT writes() AS x, 1 AS y", "read-only transaction"},
      {"SELECT set_config('default_transaction_read_only', 'off', false), writes() AS x",
       "read-only transaction"},
      {"SELECT opens() AS x, 1 AS y", "read-write mode must be set before any query"},
      {"SELECT 1 / 0 AS x, 1 AS y", "division by zero"},
      {"SELECT none AS x FROM w", "\"none\" does not exist"},
  };
  NoProgress unseen;
  for (const Case& one : cases) {
    const std::string told = Refusal([&] { TDBSupplier(Place("", one.query), unseen); });
    EXPECT_NE(told.find(one.told), std::string::npos) << one.query << ": " << told;
  }
  TDBSupplier written(Place("w"), unseen);
  EXPECT_EQ(written.RowCount(), 0);
}

TEST_F(Postgres, CancellingReachesTheServer) {
  CancellingProgress cancelled(0);
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_THROW(TDBSupplier(Place("", "SELECT 1 AS x, pg_sleep(60) AS y"), cancelled),
               UnpackingCancelled);
  EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(5));
  NoProgress unseen;
  TDBSupplier running(
      Place("",
            "SELECT count(*) AS x FROM pg_stat_activity WHERE state = 'active' AND query LIKE "
            "'%pg_sleep(60)%' AND pid <> pg_backend_pid()"),
      unseen);
  EXPECT_EQ(running.ReadValue(0, ColumnFormat::Automatic), 0);
}

TEST_F(Postgres, APasswordIsNeverShown) {
  RememberPassword(server_->Server(), "wrong one");
  NoProgress unseen;
  const std::string told = Refusal([&] { TDBSupplier(Place("t"), unseen); });
  RememberPassword(server_->Server(), PostgresServer::kPassword);
  EXPECT_NE(told.find("password authentication failed"), std::string::npos) << told;
  EXPECT_EQ(told.find("wrong one"), std::string::npos);
}

TEST_F(Postgres, APasswordThatIsMissingOrWrongIsWanted) {
  for (const char* const given : {"", "wrong one"}) {
    RememberPassword(server_->Server(), given);
    EXPECT_THROW(DatabaseConnection{Place("t")}, PasswordWanted) << given;
  }
  RememberPassword(server_->Server(), PostgresServer::kPassword);
  EXPECT_NO_THROW(DatabaseConnection{Place("t")});
}

TEST_F(Postgres, ATextThatCannotBeThinnedIsToldWithTheWayOut) {
  const ThinnedView view{.place = Place("", "SELECT '1' AS x, 2 AS y"), .x = {"x"}, .y = {{"y"}}};
  NoProgress unseen;
  EXPECT_NE(Refusal([&] { FetchThinned(view, unseen); }).find("sample its rows instead"),
            std::string::npos);
}

}  // namespace
}  // namespace tarnwick
