#include "data/import/loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "data/block_source.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "support/cancelling_progress.h"
#include "support/temporary_folder.h"
#include "text/text_supplier_maker.h"

namespace tarnwick {
namespace {

using testing::SupplierOf;

/// Rows "1,1" to "N,N" under a line of names.
std::string Counting(int rows) {
  std::string text = "x,y\n";
  for (int i = 1; i <= rows; ++i) text += std::to_string(i) + "," + std::to_string(i) + "\n";
  return text;
}

std::unique_ptr<TDataSeries> SeriesOf(const TDSInfo& info) {
  auto series = std::make_unique<TDataSeries>();
  series->Source() = info;
  return series;
}

TDSInfo EveryRow() {
  TDSInfo info;
  info.active = true;
  info.FileHasHeaders = 1;
  info.XDataColumn = "x";
  info.YDataColumn = "y";
  info.AutoRowHitFreq = false;
  return info;
}

std::vector<double> Xs(const TDataSeries& series) {
  return XValues(series.Points());
}

LoadOptions ValueByValue() {
  LoadOptions options;
  options.value_by_value = true;
  return options;
}

TEST(Loader, SamplesAutomatically) {
  struct Row {
    int rows;
    bool reduced;
    int every;
    int points;
  };
  const Row rows[] = {{4999, false, 1, 4999}, {5000, false, 2, 2500}, {12000, false, 3, 4000},
                      {12000, true, 25, 480}, {100, true, 1, 100},    {200000, false, 41, 4879}};
  for (const Row& row : rows) {
    TDSInfo info = EveryRow();
    info.AutoRowHitFreq = true;
    const auto supplier = SupplierOf(info, Counting(row.rows));
    const auto series = SeriesOf(info);
    LoadOptions options;
    options.reduced_points = row.reduced;
    const LoadReport report = LoadDataSet(*series, *supplier, options);
    EXPECT_EQ(series->PointCount(), row.points);
    EXPECT_EQ(series->Source().RowSamplingFrequency, row.every);
    EXPECT_EQ(report.sampled_every, row.every);
    EXPECT_EQ(Xs(*series).back(), 1 + (row.points - 1) * row.every);
    series->Source().AllRows = true;
    EXPECT_EQ(LoadDataSet(*series, *supplier, options).points, row.rows);
  }
}

TEST(LoadReport, CountsInWords) {
  const std::pair<int, const char*> rows[] = {
      {2, "2nd"},   {3, "3rd"},   {4, "4th"},   {10, "10th"}, {11, "11th"},   {12, "12th"},
      {13, "13th"}, {14, "14th"}, {21, "21st"}, {30, "30th"}, {101, "101st"}, {113, "113th"}};
  for (const auto& [every, ordinal] : rows) {
    LoadReport report;
    report.loaded = true;
    report.points = 1;
    report.sampled_every = every;
    EXPECT_EQ(report.Message(), "1 point, every " + std::string(ordinal) + " row");
  }
}

TEST(LoadReport, CountsEveryReasonForItself) {
  LoadReport report;
  EXPECT_EQ(report.Message(), "Nothing was loaded");
  report.loaded = true;
  report.points = 20;
  EXPECT_EQ(report.Message(), "20 points");
  report.AddSkipped(SkipReason::YNotNumber, 17);
  EXPECT_EQ(report.Message(), "20 points; 1 row skipped (Y not a number; first at line 17)");
  for (const auto reason : {SkipReason::XMissing, SkipReason::YMissing, SkipReason::YMissing,
                            SkipReason::XNotNumber, SkipReason::XNotNumber, SkipReason::XNotNumber})
    report.AddSkipped(reason, 3);
  report.replaced = 1;
  report.y_errors.Count(0.1);
  report.y_errors.Count(0);
  for (const double error : {0.0, -1.0, -1e-300, kMissingValue, 1e-300, kNotNumberValue, -5.0})
    report.x_errors.Count(error);
  report.found_at = "b.csv";
  report.cancelled = true;
  EXPECT_EQ(report.Message(),
            "20 points; 7 rows skipped (1 X empty, 2 Y empty, 3 X not a number, 1 Y not a number; "
            "first at line 17); 1 row replaced by later ones at the same X; "
            "1 row gives no usable error of Y (zero); "
            "6 rows give no usable error of X (1 empty, 1 not a number, 1 zero, 3 negative); "
            "read from b.csv, where it lies beside the graph now; cancelled");
}

TEST(Loader, KeepsThePointsWhereAColumnIsMissingOrTheSourceIsNotActive) {
  for (const bool active : {true, false}) {
    TDSInfo info = EveryRow();
    info.active = active;
    if (active) info.YDataColumn = "nothing of the kind";
    const auto supplier = SupplierOf(info, Counting(5));
    const auto series = SeriesOf(info);
    series->AddPoint(7, 8);
    EXPECT_FALSE(LoadDataSet(*series, *supplier).loaded);
    EXPECT_EQ(Xs(*series), std::vector<double>{7});
  }
}

TEST(Loader, RefusesExpressionsNobodyEvaluates) {
  const auto supplier = SupplierOf(EveryRow(), Counting(3));
  const auto series = SeriesOf(EveryRow());
  series->Source().YColExpr = "Y*2";
  LoadOptions options;
  options.transforms = [](const TDataSeries&, const std::vector<std::string>&) {
    return ColumnTransforms();
  };
  EXPECT_THROW(LoadDataSet(*series, *supplier, options), Error);
  options.transforms = [](const TDataSeries&, const std::vector<std::string>&) {
    return ColumnTransforms{
        {}, {[](double x, double y, std::span<const double>) -> std::optional<double> {
          return x == 2 ? std::nullopt : std::optional(2 * y);
        }}};
  };
  const LoadReport report = LoadDataSet(*series, *supplier, options);
  EXPECT_EQ(YValues(series->Points()), (std::vector<double>{2, 6}));
  EXPECT_EQ(report.y_not_number, 1);
}

TEST(Loader, ReadsTheColumnsThatExpressionsName) {
  const std::string text =
      "x,y,Temp (C),n\n1,10,100,a\n2,20,,a\n3,30,warm,a\n,40,100,a\n5,50,100,a\n6,60,200,a\n";
  for (const LoadOptions& options : {LoadOptions(), ValueByValue()}) {
    for (const ColumnFormat format : {ColumnFormat::Automatic, ColumnFormat::DecimalComma}) {
      TDSInfo info = EveryRow();
      info.MergeSeparators = false;
      info.YFormat = format;
      const auto supplier = SupplierOf(info, text);
      const auto series = SeriesOf(info);
      series->Source().XColExpr = "X + row_number";
      series->Source().YColExpr = "col2*col0 + Y";
      const auto other = SeriesOf(info);
      other->Source().XColExpr = "temp__c_ div (X - 5)";
      TDataSeries* const all[] = {series.get(), other.get()};
      const std::vector<LoadReport> reports = LoadShared(all, *supplier, options);
      EXPECT_EQ(Xs(*series), (std::vector<double>{2, 10, 12}));
      EXPECT_EQ(YValues(series->Points()), (std::vector<double>{110, 550, 1260}));
      EXPECT_EQ(
          reports[0].Message(),
          "3 points; 3 rows skipped (1 X empty, 1 Y empty, 1 Y not a number; first at line 3)");
      EXPECT_EQ(Xs(*other), (std::vector<double>{-25, 200}));
      EXPECT_EQ(reports[1].Message(),
                "2 points; 4 rows skipped (2 X empty, 2 X not a number; first at line 3)");
    }
  }
}

TEST(Loader, StopsWhenCancelled) {
  const std::string text = Counting(300'000);
  for (const int every : {1, 20}) {
    TDSInfo info = EveryRow();
    info.RowSamplingFrequency = every;
    const auto supplier = SupplierOf(info, text);
    const auto series = SeriesOf(info);
    testing::CancellingProgress progress(3);
    LoadOptions options;
    options.progress = &progress;
    EXPECT_TRUE(LoadDataSet(*series, *supplier, options).cancelled);
    EXPECT_EQ(progress.Shown(), "Loading data: UnNamed Series, a text");
    EXPECT_GT(series->PointCount(), 0);
    EXPECT_LT(series->PointCount(), 300'000 / every);
  }
}

TEST(Loader, ShowsProgressOfASharedPassOnlyWhenLarge) {
  for (const int rows : {4000, 40'000}) {
    const auto supplier = SupplierOf(EveryRow(), Counting(rows));
    const auto series = SeriesOf(EveryRow());
    TDataSeries* const all[] = {series.get()};
    testing::CancellingProgress progress(1'000'000);
    LoadOptions options;
    options.progress = &progress;
    LoadShared(all, *supplier, options);
    EXPECT_EQ(progress.Shown(), rows > 5000 ? "Loading data: a text" : "");
    EXPECT_EQ(series->PointCount(), rows);
  }
}

TEST(Loader, FindsWhereAMeasurementHasGaps) {
  const struct {
    const char *rows, *pieces;
    int runs;
  } kCases[] = {
      {"1,1;2,2;;3,3;4,4", "1 2 | 3 4", 1},
      {";;1,1;# remark;2,2;;", "1 2", 1},
      {"1,1;2,2;;;3,3;4,4", "1 2 | 3 4", 2},
      {"1,1;2,2;3,3;;1.5,1;2.5,2", "1 2 3 | 1.5 2.5", 2},  // X starts anew
      {"3,1;2,2;1,3;;0.5,1;0,2", "3 2 1 | 0.5 0", 1},
      {"1,1;;2,2;;3,3;;4,4;", "1 2 3 4", 1},  // an empty line behind every row
      {"1,1;2,2;3,;4,4;5,5", "1 2 | 4 5", 1},
      {"1,1;2,2;5,none;7,4;20,5;21,6", "1 2 7 20 21", 1},     // uneven steps
      {"1,1;2,;3,;4,4;5,;6,;7,7;8,;9,;10,1", "1 4 7 10", 1},  // a column filled now and then
      {"1,1;2,2;,;4,4;5,5;6,6;;7,7", "1 2 | 4 5 6 | 7", 1},
  };
  for (const auto& row : kCases) {
    std::string text = "x,y\n" + std::string(row.rows) + "\n";
    std::ranges::replace(text, ';', '\n');
    TDSInfo info = EveryRow();
    info.MergeSeparators = false;
    const auto series = SeriesOf(info);
    EXPECT_EQ(LoadDataSet(*series, *SupplierOf(info, text)).runs, row.runs) << row.rows;
    std::string pieces;
    std::int32_t before = 0;
    for (const std::uint32_t index : ArrivalOrder(series->Points())) {
      const Point point = series->Points().At(index);
      if (before != 0) pieces += series->Gaps().Between(before, point.id) ? " | " : " ";
      pieces += GeneralText(point.x);
      before = point.id;
    }
    EXPECT_EQ(pieces, row.pieces) << row.rows;
  }
}

/// A table that is hard to read: gaps, words, dates, blanks, comments, markers, lines of every length.
std::string RandomTable(std::mt19937& random, const std::string& line_end) {
  const char* const fields[] = {"1",   "-2.5",    "3e5",  "4,5",        "",     " 6 ",
                                "'7'", "\"8,9\"", "word", "2024-01-05", "1.50", "NaN",
                                "1e",  "+3",      "12 5", "1.234,5",    "0x1",  "# 3",
                                "\"4", "5\t6",    "- 7",  ".5",         "5.",   "1e400"};
  const char* const separators[] = {",", ",", ";", " ", "\t", ",,", ", "};
  std::string text;
  for (int line = 0; line < 400; ++line) {
    const auto kind = random() % 20;
    if (kind == 0) text += "# a comment";
    if (kind == 1) text += "  ";
    for (auto left = kind < 3 ? 0 : random() % 5; left > 0; --left) {
      const bool plain = random() % 3 != 0;
      text += plain ? std::to_string(random() % 100) : fields[random() % std::size(fields)];
      text += left > 1 || random() % 4 == 0 ? separators[random() % std::size(separators)] : "";
    }
    text += line_end;
  }
  return text;
}

TDSInfo RandomInfo(std::mt19937& random) {
  const char* const separators[] = {",", "\t,", " \t", ";", ",; ", ""};
  TDSInfo info = EveryRow();
  info.TextSeparators = separators[random() % std::size(separators)];
  info.MergeSeparators = random() % 2 == 0;
  info.TextMarkers = random() % 3 == 0 ? "" : "'\"";
  info.DivideTextByWidth = random() % 6 == 0;
  info.ColumnWidth = 1 + static_cast<int>(random() % 6);
  if (info.DivideTextByWidth && info.ColumnWidth > 4) info.ColumnCuts = "1 4 6 9";
  info.FileHasHeaders = static_cast<int>(random() % 4);
  info.XDataColumn = "#" + std::to_string(random() % 3);
  info.YDataColumn =
      random() % 5 == 0 ? std::string(kRowNumberName) : "#" + std::to_string(random() % 3);
  info.XFormat = static_cast<ColumnFormat>(random() % 6);
  info.YFormat = static_cast<ColumnFormat>(random() % 6);
  info.RowChoiceMode = static_cast<RowChoice>(random() % 7);
  info.RowChoiceValue1 = static_cast<double>(random() % 30);
  info.RowChoiceValue2 = static_cast<double>(random() % 300);
  info.RowSamplingFrequency = random() % 3 == 0 ? 1 + static_cast<int>(random() % 20) : 1;
  info.AutoRowHitFreq = random() % 6 == 0;
  info.Run = random() % 8 == 0 ? 1 + static_cast<int>(random() % 3) : 0;
  const char* const errors[] = {"", "#0", "#1", "#2", "Row number", "no such column"};
  info.YErrorColumn = errors[random() % std::size(errors)];
  info.XErrorColumn = errors[random() % std::size(errors)];
  return info;
}

void ExpectSame(const TDataSeries& a, const LoadReport& ra, const TDataSeries& b,
                const LoadReport& rb, const std::string& what) {
  EXPECT_EQ(XValues(a.Points()), XValues(b.Points())) << what;
  EXPECT_EQ(YValues(a.Points()), YValues(b.Points())) << what;
  EXPECT_EQ(Ids(a.Points()), Ids(b.Points())) << what;
  EXPECT_TRUE(a.Errors() == b.Errors()) << what;
  EXPECT_TRUE(a.Gaps() == b.Gaps()) << what;
  EXPECT_EQ(ra.runs, rb.runs) << what;
  EXPECT_EQ(a.Source(), b.Source()) << what;
  EXPECT_EQ(ra.Message(), rb.Message()) << what;
  EXPECT_EQ(ra.rows_read, rb.rows_read) << what;
}

TEST(Loader, BlocksAndSharedPassesGiveWhatReadingValueByValueGives) {
  std::mt19937 random(20240105);
  std::size_t points = 0, gaps = 0, with_errors = 0;
  for (int round = 0; round < 600; ++round) {
    const char* const line_ends[] = {"\n", "\r\n", "\r"};
    const TDSInfo info = RandomInfo(random);
    TDSInfo other = RandomInfo(random);
    if (round % 5 > 0) other.FileHasHeaders = info.FileHasHeaders;
    const auto supplier = SupplierOf(info, RandomTable(random, line_ends[random() % 3]));
    const auto reference = SeriesOf(info);
    const auto blocks = SeriesOf(info);
    const auto shared = SeriesOf(info);
    const auto companion = SeriesOf(other);
    for (TDataSeries* const series : {reference.get(), blocks.get(), shared.get()}) {
      if (round % 3 == 0) series->Source().YColExpr = "Y*2 - col0 + row_number";
      series->SetDuplicatesAllowed(round % 4 == 0);
      series->SetErrors({{ErrorKind::Column, 0}, {ErrorKind::Column, 0}, {}, {}});
    }
    const LoadReport expected = LoadDataSet(*reference, *supplier, ValueByValue());
    const LoadReport got = LoadDataSet(*blocks, *supplier);
    TDataSeries* const all[] = {shared.get(), companion.get()};
    const std::vector<LoadReport> both = LoadShared(all, *supplier);
    const std::string what = "round " + std::to_string(round);
    const auto alone = SeriesOf(other);
    const LoadReport apart = LoadDataSet(*alone, *supplier, ValueByValue());
    ExpectSame(*alone, apart, *companion, both[1], what + ", beside another");
    ExpectSame(*reference, expected, *blocks, got, what);
    ExpectSame(*reference, expected, *shared, both[0], what + ", shared");
    points += reference->Points().Size();
    gaps += reference->Gaps().Begins().size();
    reference->Points().ForEachChunk([&](const ChunkView& chunk) {
      for (std::size_t i = 0; i < chunk.x.size(); ++i) {
        with_errors += YErrorAt(*reference, chunk.chunk->At(i)) > 0 ? 1 : 0;
      }
    });
  }
  EXPECT_GT(points, 3000u);
  EXPECT_GT(gaps, 200u);
  EXPECT_GT(with_errors, 1000u);
}

TEST(Loader, ThreadsGiveTheSamePointsInTheSameOrder) {
  std::mt19937 random(7);
  std::string shuffled = "x,y\n";
  while (shuffled.size() < 6'000'000) {
    for (int i = 0; i < 5000; ++i) shuffled += std::to_string(random() % 1000) + ",5.25\n";
    shuffled += RandomTable(random, "\n");
  }
  // Of rising rows, one that is late waits while others come.
  std::string rising = "x,y\n";
  for (int i = 0; i < 500'500; ++i)
    rising += std::to_string(random() % 700 == 0 ? i - 300 : i) + ",5.25\n";
  const auto load = [](const std::string& text, int threads, bool value_by_value) {
    auto series = SeriesOf(EveryRow());
    series->SetDuplicatesAllowed(true);
    LoadOptions options;
    options.threads = threads;
    options.value_by_value = value_by_value;
    const auto supplier = SupplierOf(EveryRow(), text);
    LoadReport report = LoadDataSet(*series, *supplier, options);
    return std::pair(std::move(series), report);
  };
  for (const std::string& text : {shuffled, rising}) {
    const auto [expected, expected_report] = load(text, 1, true);
    EXPECT_GT(expected->PointCount(), 500'000);
    for (const int threads : {1, 4}) {
      const auto [got, report] = load(text, threads, false);
      ExpectSame(*expected, expected_report, *got, report, std::to_string(threads) + " threads");
    }
  }
}

TEST(Loader, KeepsThePointsWhenTheFileIsCutShortWhileItIsRead) {
  const testing::TemporaryFolder folder;
  for (const int kept : {0, 5000, 100'000}) {
    const auto file = folder.Write("a.csv", Counting(100'000));
    TDSInfo info = EveryRow();
    info.DataSource = DataSourceKind::Text;
    info.DatasourceInfo = file.string();
    const auto series = SeriesOf(info);
    series->AddPoint(1, 1);
    TTxtSupplier supplier(info, std::make_shared<const TextSource>(MappedFile(file), "a.csv"));
    std::filesystem::resize_file(file, static_cast<std::uintmax_t>(kept));
    EXPECT_THROW(LoadDataSet(*series, supplier, ValueByValue()), FileError);
    EXPECT_THROW(LoadDataSet(*series, supplier, {}), FileError);
    EXPECT_EQ(Xs(*series), std::vector<double>{1});
  }
}

TEST(RefreshAll, ReadsEachFileOnceForAllItsDataSets) {
  const testing::TemporaryFolder folder;
  TDSInfo info = EveryRow();
  info.active = false;
  info.DataSource = DataSourceKind::Text;
  info.DatasourceInfo = folder.Write("a.csv", "x,y,z\n1,2,3\n4,5,6\n").string();
  const auto y = SeriesOf(info);
  info.YDataColumn = "z";
  const auto z = SeriesOf(info);
  const auto typed = std::make_unique<TDataSeries>();
  typed->AddPoint(1, 1);
  info.DatasourceInfo = folder.Write("b.csv", "x,y,z\n7,8,9\n").string();
  const auto other = SeriesOf(info);
  // Between those of one file stand one of another and one without a file, from the same place once.
  TDataSeries* const all[] = {y.get(), other.get(), typed.get(), z.get()};
  typed->Source().DatasourceInfo = y->Source().DatasourceInfo;
  const std::vector<LoadReport> reports = RefreshAll(all);
  EXPECT_FALSE(reports[2].loaded);
  EXPECT_EQ(YValues(other->Points()), std::vector<double>{9});
  EXPECT_EQ(typed->PointCount(), 1);
  EXPECT_EQ(YValues(y->Points()), (std::vector<double>{2, 5}));
  EXPECT_EQ(YValues(z->Points()), (std::vector<double>{3, 6}));

  // What was fitted to the points holds as long as the file has these.
  y->Fit().SetResult(std::make_shared<const FitResult>());
  RefreshAll(all);
  EXPECT_TRUE(y->Fit().Last().Holds());

  // The columns may have changed places since.
  folder.Write("a.csv", "z,x,y\n3,1,2\n");
  RefreshAll(all);
  EXPECT_TRUE(y->Fit().Last().points_changed);
  EXPECT_EQ(YValues(z->Points()), std::vector<double>{3});
  std::filesystem::remove(folder.File("a.csv"));
  EXPECT_THROW(RefreshAll(all), FileError);
  EXPECT_EQ(z->PointCount(), 1);
}

}  // namespace
}  // namespace tarnwick
