#include "data/series/data_series_file.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stream/stream_error.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;
using ::testing::IsNan;

std::string Written(const TDataSeries& series, WithPoints with_points,
                    WriterMode mode = WriterMode::Typed) {
  std::string bytes;
  SectionWriter writer(bytes, mode);
  WriteDataSeries(writer, series, with_points);
  return bytes;
}

void Read(const std::string& bytes, TDataSeries& series) {
  ValueReader values(bytes);
  SectionReader reader(values);
  ReadDataSeries(reader, series);
}

// Every stored setting away from its default.
void FillWithOddities(TDataSeries& series) {
  DataState state = series.State();
  DataSettings& s = state.settings;
  s.SeriesName = "Zerfall \xC2\xB5";
  s.BaseLineSlope = 0.25;
  s.ZeroValue = -2.5;
  s.NumericalTolerance = 1e-9;
  s.DuplicatesAllowed = true;
  s.regression_type = RegressionType::Smoother;
  s.regression_steps = 50;
  s.regression_alpha = 0.1;
  s.source.XColExpr = "X*2";
  s.source.YColExpr = "Y-X";
  TDSInfo& i = s.source;
  i.DataSource = DataSourceKind::Text;
  i.DatasourceInfo = "decay.dat";
  i.DivideTextByWidth = true;
  i.FileHasHeaders = 3;
  i.TextSeparators = ";";
  i.TextMarkers = "'";
  i.XDataColumn = "t";
  i.YDataColumn = "U";
  i.YErrorColumn = "dU";
  i.XErrorColumn = "#3";
  i.Recipe = "smooth(\"Rate\")";
  i.RowSamplingFrequency = 7;
  i.AutoRowHitFreq = false;
  i.ColumnWidth = 12;
  i.ColumnCuts = "1 9 21";
  i.StackedNames = true;
  i.PointsEdited = true;
  i.Follow = true;
  i.KeepPoints = 500;
  i.TablePart = "Run 1!A3:C20";
  i.RowChoiceMode = RowChoice::BetweenX;
  i.RowChoiceValue1 = 1;
  i.RowChoiceValue2 = 9;
  i.XFormat = ColumnFormat::DateTime;
  i.YFormat = ColumnFormat::DecimalComma;
  i.MergeSeparators = false;
  state.fit.Expression = "a*exp(-b*x) +";  // kept, though it cannot be compiled
  state.fit.Tolerance = 1e-9;
  state.fit.parameters = {{"a", 2, 0.1, 0.001, true, false, "Height", "mV", 0, 7.5, ""}};
  state.fit.templates = {{"g", "x^2", ""}};
  series.SetState(state);
  const std::vector<double> x = {1, 3.5, 2, 2}, own = {0.1, kUndefined, 1e-300, 3};
  series.SetErrors({{ErrorKind::Column, 0}, {ErrorKind::Percent, 2.5}, {}, {}});
  series.AddPoints(x, x, {own, {}});
}

TEST(DataSeriesFile, ComesBackAsItWas) {
  TDataSeries series;
  FillWithOddities(series);
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    for (const WithPoints with_points : {WithPoints::No, WithPoints::Yes}) {
      TDataSeries read;
      Read(Written(series, with_points, mode), read);
      EXPECT_EQ(read.Settings(), series.Settings());
      EXPECT_EQ(read.Fit().Settings(), series.Fit().Settings());
      EXPECT_EQ(XValues(read.Points()),
                with_points == WithPoints::Yes ? XValues(series.Points()) : std::vector<double>{});
      EXPECT_EQ(read.Errors().y, series.Errors().y);
      EXPECT_EQ(read.Errors().x, series.Errors().x);
      if (with_points == WithPoints::No) continue;
      EXPECT_THAT(NumbersAlong(read.Points(), read.Errors().y_values),
                  ElementsAre(0.1, 3, 1e-300, IsNan()));
    }
  }
}

TEST(DataSeriesFile, KeepsTheLastFitAndSeesWhetherItIsOfThesePoints) {
  TDataSeries series;
  FillWithOddities(series);
  auto result = std::make_shared<FitResult>();
  result->names = {"a"};
  result->start = result->values = {2};
  series.Fit().SetResult(result);
  const std::string typed = Written(series, WithPoints::Yes);
  const std::string text = Written(series, WithPoints::Yes, WriterMode::Text);
  const auto replaced = [&text](const std::string& from, const std::string& to) {
    std::string bytes = text;
    return bytes.replace(bytes.rfind(from), from.size(), to);
  };
  series.SetY(1, 0.75);
  const struct {
    const char* name;
    std::string bytes;
    bool known, holds, modified;
  } rows[] = {
      {"typed", typed, true, true, false},
      {"text", text, true, true, false},
      {"a point of the file changed", replaced("3.5", "3.6"), true, false, true},
      {"an error of the file changed", replaced("0.1 3 ", "0.2 3 "), true, false, true},
      {"changed before it was saved", Written(series, WithPoints::Yes), true, false, true},
      {"damaged", replaced("iterations 0", "iterations -"), false, false, true},
      {"without points", Written(series, WithPoints::No), false, false, false},
  };
  for (const auto& row : rows) {
    TDataSeries read;
    Read(row.bytes, read);
    EXPECT_EQ(read.Fit().Last().record != nullptr, row.known) << row.name;
    EXPECT_EQ(read.Fit().Result() != nullptr, row.holds) << row.name;
    EXPECT_EQ(read.Fit().Modified(), row.modified) << row.name;
    EXPECT_EQ(read.Points().Size(), row.name == std::string("without points") ? 0U : 4U);
  }
}

// X of the points in the order in which they came, "|" between pieces.
std::string Arrivals(const TDataSeries& series) {
  std::string text;
  std::int32_t before = 0;
  for (const std::uint32_t index : ArrivalOrder(series.Points())) {
    const Point point = series.Points().At(index);
    if (before != 0) text += series.Gaps().Between(before, point.id) ? " | " : " ";
    text += std::to_string(static_cast<int>(point.x));
    before = point.id;
  }
  return text;
}

TEST(DataSeriesFile, KeepsTheOrderInWhichPointsCameWhereItIsNeeded) {
  TDataSeries series;
  for (const double x : {1, 5, 9, 7, 4, 2}) series.AddPoint(x, x);
  series.DeletePoint(2);
  const auto written = [&](WithPoints points) { return Written(series, points, WriterMode::Text); };
  EXPECT_THAT(written(WithPoints::Yes), testing::Not(testing::HasSubstr("PointOrder")));
  TDataSeries read;
  Read(written(WithPoints::YesAndOrder), read);
  EXPECT_EQ(Arrivals(read), "1 9 7 4 2");
  series.SetGaps(PointGaps({4, 6}, series.LastId()));
  series.SetBreakAtGaps(true);
  // What is edited behind a gap leaves it where it is; what is put in by hand belongs to both sides.
  series.DeletePoint(4);
  series.AddPoint(8, 0);
  series.ShiftX(1);
  EXPECT_EQ(Arrivals(series), "2 10 | 5 | 3 9");
  TDataSeries pieces;
  Read(written(WithPoints::Yes), pieces);
  EXPECT_EQ(Arrivals(pieces), "2 10 | 5 | 3 9");
  EXPECT_EQ(XValues(pieces.Points()), XValues(series.Points()));
  EXPECT_TRUE(pieces.Settings().BreakAtGaps);
  EXPECT_THAT(written(WithPoints::No), testing::Not(testing::HasSubstr("Gaps52")));
}

// The points are worth more than their order: what does not fit them is passed over.
TEST(DataSeriesFile, DamagedOrderAndGapsLeaveThePointsAsTheyStand) {
  const struct {
    const char *order, *gaps, *expected;
  } kCases[] = {
      {"EDD", "GD", "3 | 2 1"},  // 2, 1, 0, and the second of three begins a piece: nothing wrong
      {"AA", "", "1 2 3"},       // too few
      {"AAA", "", "1 2 3"},      // one place three times
      {"ADC", "", "1 2 3"},      // below 0
      {"ACCC", "", "1 2 3"},     // too many
      {"A!C", "GC", "1 2 3"},    // no digit; gaps stand in the order's numbers
      {"gggggggggggggggA", "", "1 2 3"},
      {"", "IB", "1 2 3"},   // a last beyond the points
      {"", "GGA", "1 2 3"},  // 3, 6, 6
      {"", "GDD", "1 2 3"},  // 3, 2, 1
  };
  for (const auto& row : kCases) {
    std::string bytes;
    SectionWriter writer(bytes);
    writer.WriteString(51, "PointOrder", row.order);
    writer.WriteString(52, "Gaps", row.gaps);
    writer.WriteEndOfSection();
    writer.WritePointBlockHeader(3);
    for (const double x : {1.0, 2.0, 3.0}) writer.WritePoint(x, x);
    TDataSeries read;
    Read(bytes, read);
    EXPECT_EQ(Arrivals(read), row.expected) << row.order << ' ' << row.gaps;
  }
}

// Errors go with the points, not with their places in the order in which they came.
TEST(DataSeriesFile, KeepsErrorsBesideTheOrderAndPassesOverDamagedOnes) {
  const struct {
    const char *errors, *order;
    std::vector<double> expected;
  } kCases[] = {
      {"0.1 - 3", "EDD", {0.1, kUndefined, 3}},
      {"0.1 - 3", "", {0.1, kUndefined, 3}},
      {"0.1 -2 1E400", "", {0.1, -2, kUndefined}},
      {"0.1 2", "", {kUndefined, kUndefined, kUndefined}},
      {"0.1 2 3 4", "", {kUndefined, kUndefined, kUndefined}},
      {"0.1 x 3", "", {kUndefined, kUndefined, kUndefined}},
      {"0.1  3", "", {kUndefined, kUndefined, kUndefined}},
  };
  for (const auto& row : kCases) {
    std::string bytes;
    SectionWriter writer(bytes);
    writer.WriteString(51, "PointOrder", row.order);
    writer.WriteInteger(61, "YErrorKind", 1);
    writer.WriteInteger(63, "XErrorKind", 4);
    writer.WriteString(65, "YErrors", row.errors);
    writer.WriteEndOfSection();
    writer.WritePointBlockHeader(3);
    for (const double x : {1.0, 2.0, 3.0}) writer.WritePoint(x, x);
    TDataSeries read;
    Read(bytes, read);
    EXPECT_THAT(NumbersAlong(read.Points(), read.Errors().y_values),
                testing::Pointwise(testing::NanSensitiveDoubleEq(), row.expected))
        << row.errors;
    EXPECT_EQ(read.Errors().x.kind, ErrorKind::None);
  }
}

TEST(DataSeriesFile, SettersRunInFileOrderAndStrayValuesDoNoHarm) {
  std::string bytes;
  SectionWriter writer(bytes);
  writer.WriteString(99, "Section:", "DataSet");
  writer.WriteFloat(42, "BaseLineSlope", 2);
  writer.WriteInteger(6, "RegressionType", 200);
  writer.WriteInteger(9, "DataSource", 4711);
  writer.WriteInteger(18, "RowSamplingFrequency", -3);
  writer.WriteInteger(20, "RowChoiceMode", 55);
  writer.WriteInteger(23, "XFormat", -1);
  writer.WriteFont(90, "Unknown", Font{});
  writer.WriteFloat(2, "NumericalTolerance", 0.1);
  writer.WriteEndOfSection();
  writer.WritePointBlockHeader(3);
  for (const double x : {3.0, 1.0, 1.05}) writer.WritePoint(x, 10 * x);
  TDataSeries series;
  Read(bytes, series);
  EXPECT_EQ(static_cast<int>(series.RegressionType()), 200);
  EXPECT_EQ(series.BaseLineSlope(), 2);
  EXPECT_EQ(series.Source(), TDSInfo{});
  EXPECT_EQ(XValues(series.Points()), (std::vector<double>{1.05, 3}));
}

}  // namespace
}  // namespace tarnwick
