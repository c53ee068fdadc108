#include "both_roads.h"

#include <gtest/gtest.h>

#include <random>

#include "base/error.h"
#include "data/import/loader.h"
#include "sources/database_supplier.h"

namespace tarnwick::testing {
namespace {

struct RandomTable {
  int rows = 0;
  bool texts = false;  ///< SQLite takes any value anywhere
};

/// Steps of one half, so that X repeats; NULLs; X that falls now and then.
std::vector<std::string> Statements(const RandomTable& table, std::mt19937& random) {
  std::vector<std::string> all = {"DROP TABLE IF EXISTS t",
                                  "CREATE TABLE t (x double precision, y double precision, "
                                  "\"odd \"\"% na.me\" double precision)"};
  std::uniform_int_distribution<int> kind(0, 19), step(-1, 4);
  std::string rows;
  double x = 0;
  for (int i = 0; i < table.rows; ++i) {
    x += step(random) / 2.0;
    const auto value = [&](const std::string& number) {
      const int k = kind(random);
      if (k == 0) return std::string("NULL");
      return k == 1 && table.texts ? "'12," + number + "'" : number;
    };
    rows += (rows.empty() ? "(" : ", (") + value(std::to_string(x)) + ", " +
            value(std::to_string(i)) + ", " + value(std::to_string(-i)) + ")";
  }
  if (!rows.empty()) all.push_back("INSERT INTO t VALUES " + rows);
  if (table.texts) all.push_back("DELETE FROM t WHERE rowid % 7 = 3");
  return all;
}

TDSInfo RandomChoice(std::mt19937& random, int rows) {
  const auto up_to = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
  TDSInfo info;
  info.DataSource = DataSourceKind::Database;
  info.active = true;
  info.XDataColumn = "x";
  info.YDataColumn = up_to(1) == 0 ? "y" : "odd \"% na.me";
  info.RowChoiceMode = static_cast<RowChoice>(up_to(6));
  const bool by_x =
      info.RowChoiceMode >= RowChoice::UntilX && info.RowChoiceMode <= RowChoice::BetweenX;
  info.RowChoiceValue1 = up_to(by_x ? rows : rows / 3);
  info.RowChoiceValue2 = up_to(2 * rows);
  info.AutoRowHitFreq = up_to(1) == 0;
  constexpr int kEvery[] = {1, 2, 7, 33};
  info.RowSamplingFrequency = kEvery[up_to(3)];
  info.FileHasHeaders = up_to(4) == 0 ? 2 : 0;
  if (up_to(5) == 0) info.XDataColumn = std::string(kRowNumberName);
  return info;
}

std::string Loaded(const TDSInfo& info, const DatabasePlace& place, bool value_by_value) {
  NoProgress unseen;
  TDBSupplier supplier(place, unseen);
  TDataSeries series;
  series.Source() = info;
  LoadOptions options;
  options.reduced_points = true;
  options.value_by_value = value_by_value;
  const LoadReport report = LoadDataSet(series, supplier, options);
  std::string text = report.Message() + ' ' + std::to_string(report.rows_read) + ' ' +
                     std::to_string(series.Source().RowSamplingFrequency) + ' ' +
                     std::to_string(series.Source().RowChoiceValue2) + '\n';
  for (std::size_t i = 0; i < series.Points().Size(); ++i) {
    const auto point = series.Points().At(i);
    text += std::to_string(point.x) + ' ' + std::to_string(point.y) + '\n';
  }
  return text;
}

}  // namespace

void ExpectSameByBothRoads(
    bool texts, int tables, const std::vector<DatabasePlace>& places,
    const std::function<void(const std::vector<std::string>& statements)>& make) {
  std::mt19937 random(7);
  for (int i = 0; i < tables; ++i) {
    const RandomTable table{std::uniform_int_distribution<int>(0, 1800)(random), texts};
    make(Statements(table, random));
    for (int choice = 0; choice < 40; ++choice) {
      const TDSInfo info = RandomChoice(random, table.rows);
      const DatabasePlace& place = places[static_cast<std::size_t>(choice) % places.size()];
      SCOPED_TRACE("table " + std::to_string(i) + " mode " +
                   std::to_string(static_cast<int>(info.RowChoiceMode)) + " x " + info.XDataColumn +
                   " y " + info.YDataColumn + " of " + place.Text() + " every " +
                   std::to_string(info.RowSamplingFrequency));
      ASSERT_EQ(Loaded(info, place, false), Loaded(info, place, true));
    }
  }
}

}  // namespace tarnwick::testing
