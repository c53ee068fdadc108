#include "data/import/import_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "base/error.h"
#include "data/points/point_columns.h"
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

std::string ErrorOf(const std::filesystem::path& path, const ImportOptions& options = {}) {
  try {
    ImportFile(path, options);
  } catch (const Error& error) {
    return error.what();
  }
  return "no error";
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

TEST(ImportFile, TellsEqualNamesApart) {
  const TemporaryFolder folder;
  const ImportResult result = ImportFile(folder.Write("t.csv", "x,v,v\n1,2,3\n2,3,4\n"));
  EXPECT_EQ(result.series[1]->SeriesName(), "v");
  EXPECT_EQ(result.series[1]->Source().YDataColumn, "#2");
}

TEST(ImportFile, NumbersTheRowsOfASingleColumn) {
  const TemporaryFolder folder;
  const ImportResult result = ImportFile(folder.Write("t.txt", "y\n5\n6\nx\n8\n"));
  EXPECT_EQ(result.x_name, "Row number");
  EXPECT_EQ(XValues(result.series[0]->Points()), (std::vector<double>{1, 2, 4}));
}

TEST(ImportFile, TakesTheUsersOptions) {
  const TemporaryFolder folder;
  const auto path = folder.Write("t.txt", "1 10 100\n2 20 200\n3 30 300\n2 40 400\n");
  ImportOptions options;
  options.x_column = "#1";
  options.y_columns = {"#2", "#0"};
  options.headers = 1;
  options.every = 2;
  options.row_choice = RowChoice::FirstRows;
  options.row_value2 = 2;
  const ImportResult result = ImportFile(path, options);
  ASSERT_EQ(result.series.size(), 2u);
  EXPECT_EQ(XValues(result.series[0]->Points()), (std::vector<double>{20, 40}));
  EXPECT_EQ(YValues(result.series[1]->Points()), (std::vector<double>{2, 2}));
  EXPECT_EQ(result.series[1]->Source().RowSamplingFrequency, 2);
}

TEST(ImportFile, ReadsUnformattedFiles) {
  const TemporaryFolder folder;
  std::string bytes = " t , v\n@UNFORMATTED\n";
  for (int i = 0; i < 12'000; ++i) bytes += Single(float(i)) + Single(float(i) / 2);
  const ImportResult result = ImportFile(folder.Write("t.dat", bytes + "ab"));
  const TDataSeries& series = *result.series.at(0);
  EXPECT_EQ(series.SeriesName(), "v");
  EXPECT_EQ(series.PointCount(), 4000);
  EXPECT_EQ(series.Source().DataSource, DataSourceKind::Unformatted);
  EXPECT_EQ(series.Source().RowSamplingFrequency, 3);
  EXPECT_EQ(series.Points().At(3999).y, 11'997 / 2.0);
  EXPECT_EQ(result.reports.at(0).Message(),
            "4000 points, every 3rd row; 1 row skipped (1 X empty; first at line 12001)");

  const auto unnamed = folder.Write("u.dat", "\n@unformatted\n" + Single(1) + Single(2));
  EXPECT_EQ(ImportFile(unnamed).series.at(0)->SeriesName(), "(col 2)");

  ImportOptions options;
  options.y_columns = {"v"};
  options.y_expression = "V - w";
  const auto wide =
      folder.Write("w.dat", "t,v,w\n@Unformatted\n" + Single(1) + Single(9) + Single(2));
  EXPECT_EQ(YValues(ImportFile(wide, options).series.at(0)->Points()), std::vector<double>{7});
}

TEST(ImportFile, SaysWhatIsWrongWithAFile) {
  const TemporaryFolder folder;
  const auto words = folder.Write("words.txt", "hello\nworld\n");
  EXPECT_EQ(ErrorOf(words),
            "The file holds no numbers to plot: " + words.string() + ", columns: 1");
  const auto good = folder.Write("good.txt", "x,y\n1,2\n");
  ImportOptions options;
  options.y_columns = {"z"};
  EXPECT_EQ(ErrorOf(good, options),
            "There is no column \"z\": " + good.string() + ", columns: x, y");
  ImportOptions apart;
  apart.headers = 2;
  apart.y_columns = {"y"};
  EXPECT_EQ(ErrorOf(good, apart),
            "The file holds no row with a number for X and Y: " + good.string() + ", 0 points");
  ImportOptions wrong;
  wrong.every = 0;
  EXPECT_EQ(ErrorOf(good, wrong), "The sampling frequency must be 1 or more");
  EXPECT_EQ(
      ErrorOf(folder.Write("line.txt", std::string(3'000'000, 'x'))),
      "The file holds no numbers to plot: " + folder.File("line.txt").string() + ", columns: 1");
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

  class Refusal final : public Progress {
   public:
    void Begin(std::string_view, std::string_view, std::int64_t) override {}
    bool Advance(std::int64_t) override { return false; }
    bool Cancelled() const override { return true; }
  } refusal;
  const SourceSummary broken_off = SummarizeFile(path, {}, refusal);
  EXPECT_TRUE(broken_off.cancelled);
  EXPECT_LT(broken_off.rows, summary.rows);
}

TEST(SummarizeFile, CountsRecordsThatCannotBeRead) {
  const TemporaryFolder folder;
  const std::string bytes = "x,y\n@Unformatted\n" + Single(1) + Single(2) + Single(3) +
                            Single(std::numeric_limits<float>::quiet_NaN()) + Single(5);
  NoProgress unseen;
  const SourceSummary summary = SummarizeFile(folder.Write("t.dat", bytes), {}, unseen);
  EXPECT_EQ(summary.rows, 3);
  EXPECT_EQ(summary.skipped, 2);
}

}  // namespace
}  // namespace tarnwick
