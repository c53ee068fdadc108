#include "data/import/import_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/undefined.h"
#include "data/import/import_like.h"
#include "data/points/point_columns.h"
#include "support/cancelling_progress.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::TemporaryFolder;

std::string Single(float value) {
  const auto bits = std::bit_cast<std::uint32_t>(value);
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(bits >> shift & 0xFF);
  return bytes;
}

TEST(ImportOptions, TakeWhatLiesWithinTheirEdgesOnly) {
  const struct {
    const char* what;
    void (*set)(ImportOptions&);
    bool taken;
  } rows[] = {
      {"nothing", [](ImportOptions&) {}, true},
      {"no headers", [](ImportOptions& o) { o.headers = 0; }, true},
      {"fewer headers than none", [](ImportOptions& o) { o.headers = -1; }, false},
      {"columns of one character", [](ImportOptions& o) { o.width = 1; }, true},
      {"columns of none", [](ImportOptions& o) { o.width = 0; }, false},
      {"cuts that rise", [](ImportOptions& o) { o.cuts = "1 2 21"; }, true},
      {"cuts that stand", [](ImportOptions& o) { o.cuts = "1 9 9"; }, false},
      {"a cut before the first", [](ImportOptions& o) { o.cuts = "0 9"; }, false},
      {"every row", [](ImportOptions& o) { o.every = 1; }, true},
      {"every zeroth row", [](ImportOptions& o) { o.every = 0; }, false},
      {"no line of names", [](ImportOptions& o) { o.names_line = 0; }, true},
      {"names above the text", [](ImportOptions& o) { o.names_line = -2; }, false},
      {"no line of units", [](ImportOptions& o) { o.units_line = 0; }, true},
      {"units above the text", [](ImportOptions& o) { o.units_line = -1; }, false},
      {"both", [](ImportOptions& o) { o.names_line = 2, o.units_line = 3; }, true},
      {"names and no units", [](ImportOptions& o) { o.names_line = 2, o.units_line = -3; }, false},
      {"units and no names", [](ImportOptions& o) { o.names_line = -2, o.units_line = 3; }, false},
      {"errors of X by columns",
       [](ImportOptions& o) {
         o.x_errors = {{}, "dx"};
       },
       true},
      {"errors of X by counts",
       [](ImportOptions& o) { o.x_errors.emplace().rule.kind = ErrorKind::Counts; }, false},
      {"a separator", [](ImportOptions& o) { o.separators = ";"; }, true},
      {"no separator", [](ImportOptions& o) { o.separators = ""; }, false},
      {"the last choice of rows", [](ImportOptions& o) { o.row_choice = RowChoice{6}; }, true},
      {"one behind it", [](ImportOptions& o) { o.row_choice = RowChoice{7}; }, false},
      {"one before the first", [](ImportOptions& o) { o.row_choice = RowChoice{-1}; }, false},
      {"no tolerance", [](ImportOptions& o) { o.tolerance = 0; }, true},
      {"less than none", [](ImportOptions& o) { o.tolerance = -1e-9; }, false},
      {"a tolerance that is no number", [](ImportOptions& o) { o.tolerance = kUndefined; }, false},
  };
  for (const auto& row : rows) {
    ImportOptions options;
    row.set(options);
    if (row.taken) {
      EXPECT_NO_THROW(options.Validate()) << row.what;
    } else {
      EXPECT_THROW(options.Validate(), Error) << row.what;
    }
  }
}

TEST(ImportFile, EveryFormatOfDatesMakesXATime) {
  const TemporaryFolder folder;
  const auto path = folder.Write("t.csv", "day,a\n3/4/2024,1\n5/6/2024,2\n");
  for (const ColumnFormat format : {ColumnFormat::DateTime, ColumnFormat::DateDayFirst,
                                    ColumnFormat::DateMonthFirst, ColumnFormat::Number}) {
    ImportOptions options;
    options.x_column = "day";
    options.x_format = format;
    if (format == ColumnFormat::Number) {
      EXPECT_THROW(ImportFile(path, options), FileError);
    } else {
      EXPECT_TRUE(ImportFile(path, options).x_is_date);
    }
  }
}

TEST(ImportFile, PlotsTheFirstColumnAgainstEveryOther) {
  const TemporaryFolder folder;
  const auto path = folder.Write("t.csv", "day;name;a;b\n2024-01-05;p;1,5;2\n2024-01-06;q;2,5;3\n");
  const ImportResult result = ImportFile(path);
  ASSERT_EQ(result.series.size(), 2u);
  EXPECT_TRUE(result.x_is_date);
  EXPECT_EQ(result.x_name, "day");
  const TDataSeries& a = *result.series[0];
  EXPECT_EQ(a.SeriesName(), "a");
  EXPECT_EQ(YValues(a.Points()), (std::vector<double>{1.5, 2.5}));
  EXPECT_EQ(a.Source().DataSource, DataSourceKind::Text);
  EXPECT_EQ(a.Source().DatasourceInfo, path.string());
  EXPECT_EQ(a.Source().XDataColumn, "day");
  EXPECT_EQ(a.Source().YFormat, ColumnFormat::DecimalComma);

  // What was stored is enough to read it again.
  const std::vector<double> before = XValues(a.Points());
  TDataSeries* const all[] = {result.series[0].get(), result.series[1].get()};
  for (TDataSeries* const series : all) series->Clear();
  RefreshAll(all);
  EXPECT_EQ(XValues(a.Points()), before);
  EXPECT_EQ(YValues(result.series[1]->Points()), (std::vector<double>{2, 3}));
}

TEST(ImportFile, NamesAreDoubtedWhereTheLastColumnsAloneHaveNone) {
  const TemporaryFolder folder;
  for (const auto& [names, doubted] : {std::pair{"a;b;", true}, {";b;", false}, {"a;;c", false}}) {
    const ImportResult result =
        ImportFile(folder.Write("t.csv", std::string(names) + "\n1;2;3\n2;3;5\n4;5;7\n"));
    EXPECT_EQ(
        std::ranges::count(result.notes,
                           "the last column has no name: names may stand over the wrong columns"),
        doubted ? 1 : 0)
        << names;
  }
}

TEST(OptionsLike, ReadAnotherFileAsTheFirstWasRead) {
  const TemporaryFolder folder;
  const auto rows = [](int shift) {
    std::string text = "t;a;b;c\n";
    for (int i = 0; i < 30; ++i)
      text += std::to_string(i + shift) + ";1,5;" + std::to_string(i * i) + ";-\n";
    return text;
  };
  ImportOptions asked;
  asked.x_column = "b";
  asked.y_columns = {"t", "a"};
  asked.y_expression = "2*Y";
  asked.every = 3;
  asked.missing = "-";
  const ImportResult first = ImportFile(folder.Write("one.csv", rows(0)), asked);
  const TDataSeries* const all[] = {first.series[0].get(), first.series[1].get()};
  const ImportResult second = ImportFile(folder.Write("two.csv", rows(100)), OptionsLike(all));
  ASSERT_EQ(second.series.size(), 2u);
  EXPECT_EQ(XValues(second.series[0]->Points()), XValues(all[0]->Points()));
  EXPECT_EQ(second.series[0]->Points().At(1).y, all[0]->Points().At(1).y + 200);
  EXPECT_EQ(YValues(second.series[1]->Points()), YValues(all[1]->Points()));
  const ImportResult plain = ImportFile(folder.Write("three.csv", rows(7)), OptionsLike({}));
  EXPECT_EQ(plain.x_name, "t");
}

TEST(ImportFile, TakesRowsThatGrowBeyondTheColumnsCounted) {
  const TemporaryFolder folder;
  std::string text;
  for (int i = 0; i < 60; ++i) text += std::to_string(i) + (i < 50 ? ",1,2\n" : ",1,2,3,4\n");
  EXPECT_EQ(ImportFile(folder.Write("t.csv", text)).series.size(), 2u);
}

TEST(ImportFile, MakesADataSetOfEveryRun) {
  const TemporaryFolder folder;
  std::string text = "x,a,b\n";
  for (int run = 0; run < 3; ++run) {
    for (int i = 0; i < 4; ++i) text += std::to_string(i) + "," + std::to_string(run) + ",5\n";
    text += "\n\n";
  }
  const ImportResult result = ImportFile(folder.Write("t.csv", text));
  std::vector<TDataSeries*> all;
  std::string names;
  for (const auto& series : result.series) {
    all.push_back(series.get());
    names += series->SeriesName() + "; ";
  }
  EXPECT_EQ(names, "a; a, run 2; a, run 3; b; b, run 2; b, run 3; ");
  EXPECT_EQ(result.reports[1].RunsText(),
            "the file holds 3 runs parted by empty lines or remarks, each is a DataSet of its own");
  all[1]->Clear();
  RefreshAll(all);
  EXPECT_EQ(YValues(all[1]->Points()), std::vector<double>(4, 1));
  EXPECT_TRUE(all[1]->Gaps().Empty());

  for (int run = 3; run < 60; ++run) text += "0,1,2\n1,1,2\n\n\n";
  const ImportResult whole = ImportFile(folder.Write("many.csv", text));
  ASSERT_EQ(whole.series.size(), 2u);
  ImportOptions own;
  own.every = 1;
  EXPECT_EQ(ImportFile(folder.Write("t.csv", text), own).series.size(), 2u);
}

TEST(ImportFile, ReadsUnformattedFiles) {
  const TemporaryFolder folder;
  std::string bytes = " t , v\n@UNFORMATTED\n";
  for (int i = 0; i < 12'000; ++i) bytes += Single(float(i)) + Single(float(i) / 2);
  ImportOptions sampled;
  sampled.automatic_sampling = true;
  const auto path = folder.Write("t.dat", bytes + "ab");
  const auto whole = ImportFile(path).series.at(0)->Source();
  EXPECT_TRUE(whole.AllRows && !whole.AutoRowHitFreq && whole.RowSamplingFrequency == 1);
  const ImportResult result = ImportFile(path, sampled);
  const TDataSeries& series = *result.series.at(0);
  EXPECT_EQ(series.SeriesName(), "v");
  EXPECT_EQ(series.PointCount(), 4000);
  EXPECT_EQ(series.Source().DataSource, DataSourceKind::Unformatted);
  EXPECT_EQ(series.Source().RowSamplingFrequency, 3);
  EXPECT_EQ(series.Points().At(3999).y, 11'997 / 2.0);
  EXPECT_EQ(result.reports.at(0).Message(),
            "4000 points, every 3rd row; 1 row skipped (X empty; first at line 12001)");

  const auto unnamed = folder.Write("u.dat", "\n@unformatted\n" + Single(1) + Single(2));
  EXPECT_EQ(ImportFile(unnamed).series.at(0)->SeriesName(), "(col 2)");

  ImportOptions options;
  options.y_columns = {"v"};
  options.y_expression = "V - w";
  const auto wide =
      folder.Write("w.dat", "t,v,w\n@Unformatted\n" + Single(1) + Single(9) + Single(2));
  EXPECT_EQ(YValues(ImportFile(wide, options).series.at(0)->Points()), std::vector<double>{7});
}

TEST(SummarizeFile, ListsColumnsAndCountsRows) {
  const TemporaryFolder folder;
  std::string text = "x,note,y\n";
  for (int i = 0; i < 50'000; ++i) text += std::to_string(i) + (i % 100 == 7 ? ",n,?\n" : ",n,2\n");
  const auto path = folder.Write("t.csv", text);
  NoProgress unseen;
  const SourceSummary summary = SummarizeFile(path, {}, unseen);
  EXPECT_EQ(summary.rows, 50'000);
  EXPECT_EQ(summary.skipped, 500);
  EXPECT_TRUE(summary.names_line);
  ASSERT_EQ(summary.columns.size(), 3u);
  EXPECT_EQ(summary.columns[1].name, "note");
  using Values = std::vector<std::optional<double>>;
  EXPECT_EQ(summary.columns[0].values, (Values{0, 1, 2, 3, 4}));
  EXPECT_EQ(summary.columns[1].values, Values(5));

  testing::CancellingProgress refusal(0);
  const SourceSummary broken_off = SummarizeFile(path, {}, refusal);
  EXPECT_TRUE(broken_off.cancelled);
  EXPECT_LT(broken_off.rows, summary.rows);
}

}  // namespace
}  // namespace tarnwick
