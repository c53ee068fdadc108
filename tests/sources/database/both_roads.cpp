#include "both_roads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "base/error.h"
#include "data/import/loader.h"
#include "sources/database/database_connection.h"
#include "sources/database/database_supplier.h"
#include "sources/database/thinned_view.h"

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
  if (!rows.empty()) all.push_back("CREATE INDEX by_x ON t (x)");
  if (table.texts && table.rows % 2 == 0) all.push_back("DELETE FROM t WHERE rowid % 7 = 3");
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
  EXPECT_GE(supplier.ColumnIndex(info.YDataColumn), 0) << info.YDataColumn;
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

namespace {

struct Table {
  std::vector<std::vector<double>> rows;  // X and every Y; NaN for none
};

Table AllRows(const ThinnedView& view) {
  NoProgress unseen;
  TDBSupplier supplier(view.place, unseen);
  Table table;
  for (; !supplier.AtEnd(); supplier.NextRow()) {
    const auto value = [&](const ThinnedColumn& column) {
      return supplier.ReadValue(supplier.ColumnIndex(column.name), column.format)
          .value_or(std::numeric_limits<double>::quiet_NaN());
    };
    std::vector<double> row = {value(view.x)};
    for (const ThinnedColumn& y : view.y) row.push_back(value(y));
    const bool has_y =
        std::any_of(row.begin() + 1, row.end(), [](double y) { return !std::isnan(y); });
    if (row[0] >= view.x_min && row[0] <= view.x_max && has_y) table.rows.push_back(row);
  }
  return table;
}

/// Per column of the view: how many of the ends of X and of the extremes of every Y there are, as a text.
std::string Extremes(const ThinnedView& view, const Table& table) {
  std::map<int, std::vector<double>> found;
  const std::size_t ys = view.y.size();
  for (const std::vector<double>& row : table.rows) {
    const double at = (row[0] - view.x_min) * (view.columns / (view.x_max - view.x_min));
    std::vector<double>& of = found[std::min(static_cast<int>(at), view.columns - 1)];
    of.resize(2 + 2 * ys, std::numeric_limits<double>::quiet_NaN());
    for (std::size_t i = 0; i <= ys; ++i) {
      of[2 * i] = std::fmin(of[2 * i], row[i]);
      of[2 * i + 1] = std::fmax(of[2 * i + 1], row[i]);
    }
  }
  std::string text;
  for (const auto& [column, of] : found) {
    text += std::to_string(column) + ':';
    for (const double value : of) text += ' ' + std::to_string(value);
    text += '\n';
  }
  return text;
}

}  // namespace

void ExpectThinnedShowsEveryExtreme(
    bool texts, int tables, const std::vector<DatabasePlace>& places,
    const std::function<void(const std::vector<std::string>& statements)>& make) {
  std::mt19937 random(11);
  const auto up_to = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
  for (int i = 0; i < tables; ++i) {
    const RandomTable table{1 + up_to(1800), texts};
    make(Statements(table, random));
    for (int choice = 0; choice < 20; ++choice) {
      ThinnedView view;
      view.place = places[static_cast<std::size_t>(choice) % places.size()];
      view.x.name = "x";
      view.y = {{"y"}};
      const bool as_times = view.place.scheme == "sqlite" && up_to(1) == 0;
      const ColumnFormat format = as_times ? ColumnFormat::UnixSeconds : ColumnFormat::Automatic;
      if (up_to(1) == 0) view.y.push_back({"odd \"% na.me", format});
      view.x_min = up_to(table.rows) * 0.75 - 5;
      view.x_max = view.x_min + 1 + up_to(choice % 2 == 0 ? 20 : table.rows);
      view.columns = 1 + up_to(40);
      SCOPED_TRACE(view.place.Text() + " from " + std::to_string(view.x_min) + " to " +
                   std::to_string(view.x_max) + " in " + std::to_string(view.columns));
      NoProgress unseen;
      const ThinnedRows thinned = FetchThinned(view, unseen);
      const Table all = AllRows(view);
      Table picked;
      for (std::size_t row = 0; row < thinned.x.size(); ++row) {
        picked.rows.push_back({thinned.x[row]});
        for (const auto& y : thinned.y) picked.rows.back().push_back(y[row]);
      }
      ASSERT_EQ(Extremes(view, picked), Extremes(view, all));
      EXPECT_EQ(thinned.rows, static_cast<std::int64_t>(all.rows.size()));
      EXPECT_TRUE(std::ranges::is_sorted(thinned.x));
      const auto same = [](const auto& one, const auto& other) {
        return std::ranges::equal(one, other, [](double a, double b) {
          return a == b || (std::isnan(a) && std::isnan(b));
        });
      };
      for (const auto& row : picked.rows) {
        EXPECT_TRUE(std::ranges::any_of(all.rows, [&](const auto& r) { return same(r, row); }))
            << "a row that is none of the table at " << row[0];
      }
    }
  }
}

void AddThroughOdbc(const std::string& words, std::vector<DatabasePlace>& places) {
  try {
    const DatabaseConnection is_installed({"odbc", words, {}, {}});
  } catch (const Error& error) {
    const std::string why = error.what();
    const bool is_missing =
        why.find("Can't open lib") != why.npos || why.find("is not installed") != why.npos;
    EXPECT_TRUE(is_missing) << why;
    return;
  }
  for (std::size_t i = 0, known = places.size(); i < known; ++i) {
    places.push_back({"odbc", words, places[i].table, places[i].query});
  }
}

}  // namespace tarnwick::testing
