// DataSets as text, and that our own import reads the same points back.
#include "graph/files/data_text_file.h"
#include "data/points/point_columns.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "data/import/import_file.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

struct Column {
  std::string name;
  std::vector<double> x;
  std::vector<double> y;
};

std::vector<std::unique_ptr<TSeries>> MakeSeries(const std::vector<Column>& columns) {
  std::vector<std::unique_ptr<TSeries>> all;
  for (const Column& column : columns) {
    all.push_back(std::make_unique<TSeries>());
    all.back()->SetSeriesName(column.name);
    all.back()->SetDuplicatesAllowed(true);
    all.back()->AddPoints(column.x, column.y);
  }
  return all;
}

std::string TextOf(const std::vector<Column>& columns, const DataTextOptions& options = {}) {
  std::vector<const TSeries*> borrowed;
  const auto all = MakeSeries(columns);
  borrowed.reserve(all.size());
  for (const auto& series : all) borrowed.push_back(series.get());
  return DataText(borrowed, options);
}

TEST(DataText, JoinsDataSetsByTheirX) {
  struct Row {
    std::vector<Column> columns;
    DataTextOptions options;
    std::string expected;
  };
  const std::vector<double> one = {1};
  const Row rows[] = {
      {{}, {}, "X\n"},
      {{{"a", {1, 2}, {10, 20}}, {"b", {2, 3}, {0.1, -3e-8}}},
       {},
       "X\ta\tb\n1\t10\t\n2\t20\t0.1\n3\t\t-3E-8\n"},
      {{{"a", {1, 1}, {10, 20}}, {"b", one, {5}}}, {}, "X\ta\tb\n1\t10\t5\n1\t20\t\n"},
      {{{"a,b", one, one}, {"", one, one}, {"'x'", one, one}, {"5\" tube", one, one}},
       {"t", ",", 0},
       "t,\"a,b\",(col 2),\"'x'\",5\" tube\n1,1,1,1,1\n"},
      {{{"two\nlines\tin \"one\"", one, one}}, {}, "X\t\"two lines\tin \"\"one\"\"\"\n1\t1\n"},
      // Near in the sense of both the tolerance and the size of X.
      {{{"a", {1}, {1}}, {"b", {1 + 5e-13}, {2}}}, {}, "X\ta\tb\n1\t1\t2\n"},
      {{{"a", {1e-13}, {1}}, {"b", {2e-13}, {2}}}, {}, "X\ta\tb\n1E-13\t1\t\n2E-13\t\t2\n"},
  };
  for (const Row& row : rows) EXPECT_EQ(TextOf(row.columns, row.options), row.expected);
  EXPECT_THROW(TextOf({}, {"X", "", 0}), Error);
}

TEST(DataText, ATableForOtherProgramsKeepsNearXApart) {
  TxyGraph graph;
  const std::vector<double> first = {1, 2}, second = {1.5, 2 + 1e-12};
  for (const auto& column : {Column{"a", first, first}, Column{"b", second, second}})
    graph.AddSeries(std::move(MakeSeries({column}).front()));
  EXPECT_EQ(CsvText(graph), "X Column,a,b\n1,1,\n1.5,,1.5\n2,2,\n2.000000000001,,2.000000000001\n");
}

TEST(DataText, ReadsBackThroughTheImport) {
  std::vector<double> many(2000);
  for (std::size_t i = 0; i < many.size(); ++i) many[i] = 1.0 / static_cast<double>(2000 - i);
  const std::vector<Column> files[] = {
      {{"a", {1, 2, 4}, {0.1, 0.2, 1.5e300}}, {"b", {2, 3, 5}, {-1e-300, 5e-324, 7}}},
      {{"alpha, beta", {1, 2, 3}, {1, 2, 3}},
       {"it's; 'so'", {1, 2, 3}, {4, 5, 6}},
       {"\"quoted\"", {1, 3}, {7, 9}}},
      {{"twice", {1, 1, 1, 2}, {3, 1, 2, 0}}, {"once", {1, 2}, {8, 9}}},
      {{"tiny", {1e-13, 2e-13, 3e-13}, {1, 2, 3}}, {"other", {1.5e-13, 2e-13}, {4, 5}}},
      {{"", {1, 2}, {3, 4}}, {"second", {1, 2}, {5, 6}}},
      {{"many", many, many},
       {"first half", {many.begin(), many.begin() + 1000}, {many.begin(), many.begin() + 1000}}},
  };
  const testing::TemporaryFolder folder;
  for (const auto& columns : files) {
    SCOPED_TRACE(columns.front().name);
    TxyGraph graph;
    for (auto& series : MakeSeries(columns)) graph.AddSeries(std::move(series));
    SaveDataText(graph, folder.File("table.dat"));
    ImportOptions options;
    options.duplicates_allowed = true;
    options.every = 1;
    const ImportResult result = ImportFile(folder.File("table.dat"), options);
    EXPECT_EQ(result.x_name, "Time (hours)");
    ASSERT_EQ(result.series.size(), columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
      EXPECT_EQ(result.series[i]->SeriesName(),
                columns[i].name.empty() ? "(col 1)" : columns[i].name);
      EXPECT_EQ(XValues(result.series[i]->Points()), columns[i].x);
      EXPECT_EQ(YValues(result.series[i]->Points()), columns[i].y);
    }
  }
}

TEST(DataText, KeepsErrorsThatTheImportTakesAsThat) {
  const struct {
    std::string name, heading;
  } kNames[] = {{"Rate (1/s)", "Rate (1/s) error"},
                {"Humidity %", "error"},
                {"Residuals of a", "error"},
                {"a", "a error"},
                {"a", "a error"}};
  const testing::TemporaryFolder folder;
  TxyGraph graph;
  std::string headings = "Time (hours)";
  for (const auto& row : kNames) {
    TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
    series.SetSeriesName(row.name);
    series.AddPoints(std::vector<double>{1, 2, 3}, std::vector<double>{9, 16, 25});
    series.SetErrors({{ErrorKind::Counts, 0}, {}, {}, {}});
    headings += "\t" + row.name + "\t" + row.heading;
  }
  graph.AddSeries(std::make_unique<TSeries>()).SetSeriesName("none");
  graph.Series(5).AddPoint(2, 5);
  SaveDataText(graph, folder.File("table.dat"));
  const std::string text = testing::ReadFile(folder.File("table.dat"));
  EXPECT_EQ(text.substr(0, text.find('\n')), headings + "\tnone");
  EXPECT_EQ(LeftOutOfTable(graph), "");
  const ImportResult result = ImportFile(folder.File("table.dat"), {});
  ASSERT_EQ(result.series.size(), 6U);
  for (std::size_t i = 0; i < 5; ++i) {
    const TDataSeries& series = *result.series[i];
    // Of two columns called "a" the second tells its place.
    EXPECT_EQ(series.SeriesName(), kNames[i].name + (i == 4 ? " #9" : ""));
    EXPECT_EQ(NumbersAlong(series.Points(), series.Errors().y_values),
              std::vector<double>({3, 4, 5}))
        << i;
  }
  EXPECT_FALSE(HasYErrors(result.series[5]->Errors()));
}

TEST(DataText, KeepsErrorsOfXThatAllHave) {
  TxyGraph graph;
  TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
  series.SetSeriesName("a");
  series.AddPoints(std::vector<double>{1, 2}, std::vector<double>{3, 4});
  PointErrors errors{{}, {ErrorKind::Column, 0}, {}, {}};
  errors.x_values.Set(2, 0.5);
  series.SetErrors(errors);
  EXPECT_EQ(DataText({&series}, {}), "X\tX error\ta\n1\t\t3\n2\t0.5\t4\n");
  EXPECT_EQ(LeftOutOfTable(graph), "");
  TSeries& other = graph.AddSeries(std::make_unique<TSeries>());
  other.SetState(series.State());
  EXPECT_EQ(CsvText(graph), "X Column,X Column error,a,a\n1,,3,3\n2,0.5,4,4\n");
  errors.x_values.Set(2, 0.75);
  other.SetErrors(errors);
  EXPECT_EQ(
      LeftOutOfTable(graph),
      "The errors of X of \"a\" are left out: the table has one column of X for all DataSets. A "
      "graph file keeps them.");
  other.SetErrors({});
  other.SetSeriesName("spectrum");
  other.Source().XDataColumn = "Frequency";
  EXPECT_TRUE(LeftOutOfTable(graph).starts_with(
      "\"a\" is over X Column, \"spectrum\" over Frequency: the table has one column of X"));
}

TEST(DataText, WritesDatesForOtherProgramsWhereTheyKeepX) {
  const struct {
    std::vector<double> x;
    const char* first_field;
  } rows[] = {
      {{43387, 43388}, "2018-10-14"},
      {{43387, 43387.5}, "2018-10-14 00:00:00"},
      {{43387 + 61.0 / 86400}, "2018-10-14 00:01:01"},
      {{43387 + 0.25 / 86400}, "2018-10-14 00:00:00.250"},
      {{43387 + 1e-9}, "43387.000000001"},
      {{0.5, 1.25}, "0.5"},
      {{43387, 1e9}, "43387"},
  };
  for (const auto& row : rows) {
    TxyGraph graph;
    TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
    series.AddPoints(row.x, row.x);
    const std::string numbers = CsvText(graph);
    graph.Axis(AxisId::X).SetShowAsTime(true);
    const std::string text = CsvText(graph);
    const std::string line = text.substr(text.find('\n') + 1);
    EXPECT_EQ(line.substr(0, line.find(',')), row.first_field);
    EXPECT_EQ(text == numbers, row.first_field == ShortestText(row.x[0]));
  }
}

TEST(DataText, HeadsATimeAxis) {
  const testing::TemporaryFolder folder;
  TxyGraph graph;
  graph.Axis(AxisId::X).SetShowAsTime(true);
  graph.AddSeries(std::make_unique<TSeries>()).AddPoint(40000, 1);
  SaveDataText(graph, folder.File("days.dat"));
  EXPECT_EQ(testing::ReadFile(folder.File("days.dat")), "Time\tUnNamed Series\n40000\t1\n");
}

}  // namespace
}  // namespace tarnwick
