#include "sources/follow/followed_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "data/fields/joined_time.h"
#include "data/import/loader.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "data/pseudo_columns.h"
#include "data/series/data_series.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

// Runs that begin anew, blank lines, remarks, rows that cannot be read, gaps, groups, errors, times of day in two columns.
constexpr char kText[] =
    "a log\nday;clock;t;u;du;dt;who\n"
    "2024-03-01;23:00:00;0;5;0.5;0.1;a\n2024-03-01;23:00:10;1;6;0.6;;a\n"
    "2024-03-01;23:00:20;2;-9;0.7;0.1;b\n# a remark\n2024-03-01;23:00:30;3;8;;0.3;b\n"
    "\n2024-03-01;23:00:50;0;9;0.9;0.1;a\n2024-03-01;23:01:00;1;burnt;1;0.2;c\n"
    "2024-03-02;00:01:10;x;11;1.1;0.3;a\n2024-03-02;00:01:20;3;12;1.2;0.4;\n"
    "\n\n2024-03-02;00:01:40;5;13;1.3;0.5;b\n2024-03-02;00:01:50;6;14;-1;0.6;a\n"
    "2024-03-02;;7;15;1.5;0.7;a\n2024-03-02;00:02:10;8;16;1.6;0.8;b\n";

struct Described {
  const char* what;
  void (*describe)(TDSInfo& info);
};

const Described kDescribed[] = {
    {"all of it", [](TDSInfo&) {}},
    {"errors of both", [](TDSInfo& i) { i.YErrorColumn = "du", i.XErrorColumn = "dt"; }},
    {"errors of X", [](TDSInfo& i) { i.XErrorColumn = "dt"; }},
    {"errors that are not there",
     [](TDSInfo& i) { i.YErrorColumn = "du2", i.XErrorColumn = "dt"; }},
    {"missing values", [](TDSInfo& i) { i.MissingValues = "-9"; }},
    {"expressions of other columns",
     [](TDSInfo& i) { i.XColExpr = "X + dt", i.YColExpr = "Y*du - t"; }},
    {"a time in two columns",
     [](TDSInfo& i) {
       i.TimeColumns = "Date:day\tTime:clock";
       i.XDataColumn = kJoinedTimeName;
     }},
    {"rows counted", [](TDSInfo& i) { i.XDataColumn = kRowNumberName; }},
    {"Y counts rows", [](TDSInfo& i) { i.YDataColumn = kRowNumberName; }},
    {"a group", [](TDSInfo& i) { i.GroupColumn = "who", i.GroupValue = "a"; }},
    {"until X", [](TDSInfo& i) { i.RowChoiceMode = RowChoice::UntilX, i.RowChoiceValue2 = 5; }},
    {"from X", [](TDSInfo& i) { i.RowChoiceMode = RowChoice::FromX, i.RowChoiceValue1 = 2; }},
    {"the first rows",
     [](TDSInfo& i) { i.RowChoiceMode = RowChoice::FirstRows, i.RowChoiceValue2 = 7; }},
    {"rows skipped",
     [](TDSInfo& i) { i.RowChoiceMode = RowChoice::SkipRows, i.RowChoiceValue1 = 3; }},
    {"the second run", [](TDSInfo& i) { i.Run = 2; }},
    {"the third run", [](TDSInfo& i) { i.Run = 3; }},
    {"times past midnight",
     [](TDSInfo& i) { i.XDataColumn = "clock", i.XFormat = ColumnFormat::TimeGoingOn; }},
    {"columns by place", [](TDSInfo& i) { i.XDataColumn = "#2", i.YDataColumn = "#4"; }},
};

/// X, Y and their errors.
std::vector<std::vector<double>> PointsOf(const TDataSeries& series) {
  std::vector<std::vector<double>> all = {XValues(series.Points()), YValues(series.Points())};
  for (const ErrorColumn* const errors : {&series.Errors().y_values, &series.Errors().x_values}) {
    all.push_back(NumbersAlong(series.Points(), *errors));
    for (double& error : all.back()) error = std::isnan(error) ? -7 : error;
  }
  return all;
}

TDSInfo Info(const std::filesystem::path& file, const Described& row) {
  TDSInfo info;
  info.DataSource = DataSourceKind::Text;
  info.DatasourceInfo = file.string();
  info.FileHasHeaders = 2;
  info.TextSeparators = ";";
  info.MergeSeparators = false;
  info.XDataColumn = "t";
  info.YDataColumn = "u";
  info.active = info.AllRows = true;
  row.describe(info);
  return info;
}

/// Lines in pieces of up to `most`.
std::vector<std::string> Pieces(std::mt19937& random, int most) {
  std::vector<std::string> pieces = {""};
  std::uniform_int_distribution<int> lines(1, most);
  int left = lines(random);
  for (const char c : std::string(kText)) {
    pieces.back() += c;
    if (c != '\n' || --left > 0) continue;
    left = lines(random);
    pieces.emplace_back();
  }
  return pieces;
}

TEST(FollowedText, ComesToWhatReadingItDoesInWhateverPiecesItComes) {
  const testing::TemporaryFolder folder;
  const std::filesystem::path file = folder.Write("t.txt", kText);
  std::mt19937 random(3);
  for (const Described& row : kDescribed) {
    const TDSInfo info = Info(file, row);
    TDataSeries loaded;
    loaded.SetDuplicatesAllowed(true);
    loaded.SetBreakAtGaps(true);
    loaded.Source() = info;
    loaded.SetErrors(
        {.y = {ErrorKind::Column, 0}, .x = {ErrorKind::Column, 0}, .y_values = {}, .x_values = {}});
    TDataSeries* const all[] = {&loaded};
    RefreshAll(all);
    ASSERT_GT(loaded.PointCount(), 1) << row.what;
    std::vector<std::size_t> breaks;  // as they come with all of it at once
    for (const int most : {99, 1, 2, 3, 5}) {
      TDataSeries followed;
      followed.SetDuplicatesAllowed(true);
      followed.SetErrors({loaded.Errors().y, loaded.Errors().x, {}, {}});
      FollowedText text(info);
      for (const std::string& piece : Pieces(random, most)) {
        StreamRows rows;
        text.Take(piece, rows);
        AppendRows(followed, rows, DescribedColumns(info));
      }
      EXPECT_EQ(PointsOf(followed), PointsOf(loaded)) << row.what << ", up to " << most;
      if (most == 99) breaks = BreaksAlongChain(followed.Points(), followed.Gaps());
      EXPECT_EQ(BreaksAlongChain(followed.Points(), followed.Gaps()), breaks)
          << row.what << ", up to " << most;
    }
  }
}

}  // namespace
}  // namespace tarnwick
