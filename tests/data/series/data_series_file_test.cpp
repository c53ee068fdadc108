#include "data/series/data_series_file.h"
#include "data/points/point_columns.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stream/stream_error.h"

namespace tarnwick {
namespace {

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
  i.RowSamplingFrequency = 7;
  i.AutoRowHitFreq = false;
  i.ColumnWidth = 12;
  i.RowChoiceMode = RowChoice::BetweenX;
  i.RowChoiceValue1 = 1;
  i.RowChoiceValue2 = 9;
  i.XFormat = ColumnFormat::DateTime;
  i.YFormat = ColumnFormat::DecimalComma;
  i.MergeSeparators = false;
  state.fit.Expression = "a*exp(-b*x) +";  // kept, though it cannot be compiled
  state.fit.Tolerance = 1e-9;
  state.fit.parameters = {{"a", 2, 0.1, 0.001, true, false, "Height", "mV"}};
  state.fit.templates = {{"g", "x^2", ""}};
  series.SetState(state);
  for (const double x : {1.0, 2.0, 2.0, 3.5}) series.AddPoint(x, -x);
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
    }
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
  writer.WriteFont(77, "Unknown", Font{});
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
