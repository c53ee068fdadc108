#include "data/series/data_series_file.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "data/series/number_run_text.h"
#include "fit/model/curve_fit_file.h"

namespace tarnwick {

namespace {

using namespace control;
using S = TDataSeries;
using Texts = Property<S, std::string>;
using Integers = Property<S, std::int32_t>;
using Floats = Property<S, double>;
using Booleans = Property<S, bool>;

// Access to a member of the data-source description; enums travel as integers.
template <auto Member>
constexpr auto OfSource() {
  using Held = std::remove_cvref_t<decltype(std::declval<TDSInfo&>().*Member)>;
  using Value = std::conditional_t<std::is_enum_v<Held>, std::int32_t, Held>;
  return Property<S, Value>{
      [](const S& series) { return static_cast<Value>(series.Source().*Member); },
      [](S& series, Value value) {
        series.Source().*Member = static_cast<Held>(std::move(value));
      }};
}

/// True when a setting is not that of a new description.
template <auto Member>
bool Differs(const S& series) {
  return series.Source().*Member != TDSInfo().*Member;
}

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr AllowedRange kByte = {0, 255};
constexpr AllowedRange kFormats = {0, static_cast<std::int32_t>(kLastColumnFormat)};
constexpr AllowedRange kModes = {0, static_cast<std::int32_t>(RowChoice::DropLast)};

constexpr std::array kRegressionTypes = {
    FieldChoice{RegressionType::None, "None"},
    FieldChoice{RegressionType::Parabola, "Parabola"},
    FieldChoice{RegressionType::RobustLine, "Straight line, resistant to outliers"},
    FieldChoice{RegressionType::Line, "Straight line"},
    FieldChoice{RegressionType::Spline, "Spline"},
    FieldChoice{RegressionType::Smoother, "Smoothed curve"},
    FieldChoice{RegressionType::ExponentialSmoothing, "Exponential smoothing"},
    FieldChoice{RegressionType::RunningAverage, "Running average"},
};

constexpr std::array kRowChoices = {
    FieldChoice{RowChoice::All, "All"},
    FieldChoice{RowChoice::UntilX, "Until X is above the last"},
    FieldChoice{RowChoice::FromX, "From X at the first on"},
    FieldChoice{RowChoice::BetweenX, "X between first and last"},
    FieldChoice{RowChoice::FirstRows, "Until the row of the last number"},
    FieldChoice{RowChoice::SkipRows, "Skip as many as the first number"},
    FieldChoice{RowChoice::DropLast, "Drop as many at the end as the first number"},
};

constexpr std::array kColumnFormats = {
    FieldChoice{ColumnFormat::Automatic, "Automatic"},
    FieldChoice{ColumnFormat::Number, "Number, 1.5"},
    FieldChoice{ColumnFormat::DecimalComma, "Number, 1,5"},
    FieldChoice{ColumnFormat::DateTime, "Date and time, 2024-04-03 or 3.4.2024"},
    FieldChoice{ColumnFormat::DateDayFirst, "Date and time, 3/4/2024 is 3 April"},
    FieldChoice{ColumnFormat::DateMonthFirst, "Date and time, 3/4/2024 is 4 March"},
    FieldChoice{ColumnFormat::GroupedThousands, "Number, 1,234.5"},
    FieldChoice{ColumnFormat::NumberWithUnit, "Number with a unit, 1.5 mV"},
    FieldChoice{ColumnFormat::UnixSeconds, "Seconds since 1970"},
    FieldChoice{ColumnFormat::UnixMilliseconds, "Milliseconds since 1970"},
};

constexpr FieldControl kFormat = ChoiceOf(kColumnFormats);

const Field<S> kFields[] = {
    {1,
     "SeriesName",
     Texts{[](const S& s) { return s.SeriesName(); },
           [](S& s, std::string v) { s.SetSeriesName(std::move(v)); }},
     {"Name", "DataSet", kText}},
    {2,
     "NumericalTolerance",
     Floats{[](const S& s) { return s.NumericalTolerance(); },
            [](S& s, double v) { s.SetNumericalTolerance(v); }},
     {"X distance within which points are one", "DataSet", kNumber}},
    {3,
     "DuplicatesAllowed",
     Booleans{[](const S& s) { return s.DuplicatesAllowed(); },
              [](S& s, bool v) { s.SetDuplicatesAllowed(v); }},
     {"Several points at one X", "DataSet", kCheckBox}},
    {4,
     "AutoZero",
     Booleans{[](const S& s) { return s.AutoZero(); }, [](S& s, bool v) { s.SetAutoZero(v); }},
     {"At the smallest Y", "Base line", kCheckBox}},
    {5,
     "ZeroValue",
     Floats{[](const S& s) { return s.ZeroValue(); }, [](S& s, double v) { s.SetZeroValue(v); }},
     {"Y at X = 0", "Base line", kNumber}},
    {6,
     "RegressionType",
     Integers{[](const S& s) { return static_cast<std::int32_t>(s.RegressionType()); },
              [](S& s, std::int32_t v) { s.SetRegressionType(static_cast<RegressionType>(v)); }},
     {"Kind", "Regression", ChoiceOf(kRegressionTypes)},
     kByte},
    {7,
     "RegressionControlValue1",
     Integers{[](const S& s) { return s.Settings().regression_steps; },
              [](S& s, std::int32_t v) { s.SetRegressionSteps(v); }},
     {"Steps of the curve", "Regression", kInteger}},
    {8,
     "RegressionControlValue1",
     Floats{[](const S& s) { return s.Settings().regression_alpha; },
            [](S& s, double v) { s.SetRegressionAlpha(v); }},
     {"Smoothing factor, 1 / window, or slope at the ends", "Regression", kNumber}},
    {9,
     "DataSource",
     OfSource<&TDSInfo::DataSource>(),
     {"Kind of source", "Source", ReadOnly("chosen with the source")},
     kByte},
    {10,
     "DatasourceInfo",
     OfSource<&TDSInfo::DatasourceInfo>(),
     {"File, table or link", "Source", kFile}},
    {12,
     "DivideTextByWidth",
     OfSource<&TDSInfo::DivideTextByWidth>(),
     {"Columns of a fixed width", "Text", kCheckBox}},
    {13,
     "FileHasHeaders",
     OfSource<&TDSInfo::FileHasHeaders>(),
     {"Header lines", "Text", WholeWithin(0, kMost)},
     {0, kMost}},
    {14, "TextSeparators", OfSource<&TDSInfo::TextSeparators>(), {"Separators", "Text", kText}},
    {15, "TextMarkers", OfSource<&TDSInfo::TextMarkers>(), {"Quotes", "Text", kText}},
    {16, "XDataColumn", OfSource<&TDSInfo::XDataColumn>(), {"X", "Columns", kColumn}},
    {17, "YDataColumn", OfSource<&TDSInfo::YDataColumn>(), {"Y", "Columns", kColumn}},
    {18,
     "RowSamplingFrequency",
     OfSource<&TDSInfo::RowSamplingFrequency>(),
     {"Take one of", "Rows", WholeWithin(1, kMost, "rows")},
     {1, kMost}},
    {19,
     "ColumnWidth",
     OfSource<&TDSInfo::ColumnWidth>(),
     {"Width of a column", "Text", WholeWithin(1, kMost, "characters")},
     {1, kMost}},
    {20,
     "RowChoiceMode",
     OfSource<&TDSInfo::RowChoiceMode>(),
     {"Rows taken", "Rows", ChoiceOf(kRowChoices)},
     kModes},
    {21,
     "RowChoiceValue1",
     OfSource<&TDSInfo::RowChoiceValue1>(),
     {"First X or number", "Rows", kMoment}},
    {22,
     "RowChoiceValue2",
     OfSource<&TDSInfo::RowChoiceValue2>(),
     {"Last X or number", "Rows", kMoment}},
    {23, "XFormat", OfSource<&TDSInfo::XFormat>(), {"Format of X", "Columns", kFormat}, kFormats},
    {24, "YFormat", OfSource<&TDSInfo::YFormat>(), {"Format of Y", "Columns", kFormat}, kFormats},
    {42,
     "BaseLineSlope",
     Floats{[](const S& s) { return s.BaseLineSlope(); },
            [](S& s, double v) { s.SetBaseLineSlope(v); }},
     {"Slope", "Base line", kNumber}},
    {44,
     "AutoRowHitFreq",
     OfSource<&TDSInfo::AutoRowHitFreq>(),
     {"As many rows as the plot can show", "Rows", kCheckBox}},
    {46,
     "XColExpr",
     OfSource<&TDSInfo::XColExpr>(),
     {"X is computed from", "Columns", kExpression}},
    {47,
     "YColExpr",
     OfSource<&TDSInfo::YColExpr>(),
     {"Y is computed from", "Columns", kExpression}},
    // Absent from a file means true, what files without this key expect.
    {48,
     "MergeSeparators",
     OfSource<&TDSInfo::MergeSeparators>(),
     {"A run of separators counts as one", "Text", kCheckBox},
     {},
     [](const S& s) { return !s.Source().MergeSeparators; }},
    // The keys from here on are written only where they differ from what readers without them take for granted.
    {49,
     "AllRows",
     OfSource<&TDSInfo::AllRows>(),
     {"Every row", "Rows", kCheckBox},
     {},
     &Differs<&TDSInfo::AllRows>},
    {50,
     "BreakAtGaps",
     Booleans{[](const S& s) { return s.BreakAtGaps(); },
              [](S& s, bool v) { s.SetBreakAtGaps(v); }},
     {"Break the line at gaps", "DataSet", kCheckBox},
     {},
     [](const S& s) { return s.BreakAtGaps(); }},
    {53,
     "NamesLine",
     OfSource<&TDSInfo::NamesLine>(),
     {"Line of names, 0 finds it, -1 is none", "Text", WholeWithin(kNoNamesLine, kMost)},
     {kNoNamesLine, kMost},
     &Differs<&TDSInfo::NamesLine>},
    {54,
     "UnitsLine",
     OfSource<&TDSInfo::UnitsLine>(),
     {"Line of units, 0 is none", "Text", WholeWithin(0, kMost)},
     {0, kMost},
     &Differs<&TDSInfo::UnitsLine>},
    {55,
     "CommentMarks",
     OfSource<&TDSInfo::CommentMarks>(),
     {"Marks of comment lines", "Text", kText},
     {},
     &Differs<&TDSInfo::CommentMarks>},
    {56,
     "RelativeSource",
     OfSource<&TDSInfo::RelativeSource>(),
     {"File from the graph's folder on", "Source", ReadOnly("told when a graph is saved")},
     {},
     &Differs<&TDSInfo::RelativeSource>},
    {57,
     "MissingValues",
     OfSource<&TDSInfo::MissingValues>(),
     {"Stand for no value", "Columns", kText},
     {},
     &Differs<&TDSInfo::MissingValues>},
    {58,
     "TimeColumns",
     OfSource<&TDSInfo::TimeColumns>(),
     {"Columns that make the time of X", "Columns", kText},
     {},
     &Differs<&TDSInfo::TimeColumns>},
    {59,
     "TableLines",
     OfSource<&TDSInfo::TableLines>(),
     {"Lines of the table, 0 is all", "Rows", WholeWithin(0, kMost)},
     {0, kMost},
     &Differs<&TDSInfo::TableLines>},
    {60,
     "Run",
     OfSource<&TDSInfo::Run>(),
     {"Only run of the table, 0 is all", "Rows", WholeWithin(0, kMost)},
     {0, kMost},
     &Differs<&TDSInfo::Run>},
};

constexpr int kPointOrder = 51, kGaps = 52;

/// The point block has no ids: read again, points get 1, 2, … along the chain. What goes by ids is written in numbers of
/// arrival, from 1, which is what key 51 makes the ids of.
void WriteArrivals(SectionWriter& writer, const TDataSeries& series, WithPoints with_points) {
  const PointChain& points = series.Points();
  const PointGaps& gaps = series.Gaps();
  const bool asked = with_points == WithPoints::YesAndOrder || !gaps.Empty();
  if (with_points == WithPoints::No || points.Empty() || !asked) return;
  if (!IdsAscend(points)) {
    const std::vector<std::uint32_t> order = ArrivalOrder(points);
    const std::vector<std::int32_t> places(order.begin(), order.end());
    writer.WriteString(kPointOrder, "PointOrder", NumberRunText(places));
  }
  if (gaps.Empty()) return;
  std::vector<std::int32_t> ids = Ids(points);
  std::ranges::sort(ids);
  const auto arrivals_before = [&ids](std::int64_t id) {
    return static_cast<std::int32_t>(std::ranges::lower_bound(ids, id) - ids.begin());
  };
  const std::int32_t last = arrivals_before(std::int64_t{gaps.Last()} + 1);
  std::vector<std::int32_t> numbers = {last};
  std::int32_t before = 1;
  for (const std::int32_t begin : gaps.Begins()) {
    const std::int32_t number = arrivals_before(begin) + 1;
    if (number <= before || number > last) continue;
    numbers.push_back(number);
    before = number;
  }
  writer.WriteString(kGaps, "Gaps", NumberRunText(numbers));
}

struct ArrivalTexts {
  std::string order, gaps;
};

std::optional<std::vector<std::uint32_t>> ParseOrder(const std::string& text, std::size_t points) {
  const std::optional<std::vector<std::int32_t>> places = ParseNumberRun(text, points);
  if (!places) return std::nullopt;
  std::vector<std::uint32_t> order;
  for (const std::int32_t place : *places) order.push_back(static_cast<std::uint32_t>(place));
  if (!IsOrderOf(order, points)) return std::nullopt;
  return order;
}

PointGaps ParseGaps(const std::string& text, std::size_t points) {
  std::vector<std::int32_t> numbers = ParseNumberRun(text, points).value_or(std::vector<int>{});
  if (numbers.size() < 2) return {};
  const std::int32_t last = numbers.front();
  numbers.erase(numbers.begin());
  const bool ascend = std::ranges::adjacent_find(numbers, std::greater_equal<>()) == numbers.end();
  const bool inside = numbers.front() > 1 && numbers.back() <= last;
  return ascend && inside && std::cmp_less_equal(last, points) ? PointGaps(std::move(numbers), last)
                                                               : PointGaps();
}

/// Texts that do not fit `points`, those of the block, are passed over: what they hold is worth less than the points.
void TakeArrivals(const ArrivalTexts& texts, std::size_t points, TDataSeries& series) {
  if (points == 0 || series.Points().Size() != points) return;
  if (!texts.order.empty()) {
    const std::optional<std::vector<std::uint32_t>> order = ParseOrder(texts.order, points);
    if (!order) return;
    DataState state = series.State();
    state.points = WithOrder(series.Points(), *order);
    series.SetState(state);
  }
  series.SetGaps(ParseGaps(texts.gaps, points));
}

// The model's sections go between the fields, by their numbers.
void WriteKeys(SectionWriter& writer, const TDataSeries& series, WithPoints with_points) {
  constexpr std::array kFitSections = {kModelSection, kRunSection, kTemplateSection};
  const FitSettings fit = series.Fit().Settings();
  auto section = kFitSections.begin();
  for (const Field<S>& field : kFields) {
    for (; section != kFitSections.end() && *section < field.number; ++section) {
      WriteCurveFitKeys(writer, *section, fit);
    }
    WriteField(writer, field, series);
  }
  WriteArrivals(writer, series, with_points);
}

ArrivalTexts ReadKeys(SectionReader& reader, TDataSeries& series) {
  ArrivalTexts arrivals;
  CurveFitReader fit;
  for (int number = reader.ReadKey(); number != 0; number = reader.ReadKey()) {
    if (CurveFitReader::Knows(number)) {
      fit.Take(number, reader);
    } else if (number == kPointOrder) {
      arrivals.order = reader.ReadAsString();
    } else if (number == kGaps) {
      arrivals.gaps = reader.ReadAsString();
    } else if (!ReadField<TDataSeries>(reader, number, kFields, series)) {
      reader.SkipValue();
    }
  }
  // Not compiled here: a model that cannot be compiled leaves the rest of the file as good as it is.
  series.Fit().SetSettings(fit.Finish(), false);
  return arrivals;
}

}  // namespace

FieldTable<TDataSeries> DataSeriesFields() {
  return kFields;
}

void WriteDataSeries(SectionWriter& writer, const TDataSeries& series, WithPoints with_points,
                     const std::function<void()>& after_block) {
  WriteKeys(writer, series, with_points);
  writer.WriteEndOfSection();
  if (with_points == WithPoints::No) {
    writer.WritePointBlockHeader(0);
    return;
  }
  writer.WritePointBlockHeader(series.PointCount());
  series.Points().ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) writer.WritePoint(chunk.x[i], chunk.y[i]);
    if (after_block) after_block();
  });
}

void ReadDataSeries(SectionReader& reader, TDataSeries& series) {
  const ArrivalTexts arrivals = ReadKeys(reader, series);
  // Blocks bound the memory beside the DataSet; their result is that of single points.
  constexpr std::size_t kBlock = 65536;
  const auto points = static_cast<std::size_t>(std::max(0, reader.ReadPointBlockHeader()));
  std::size_t left = points;
  std::vector<double> x;
  std::vector<double> y;
  while (left > 0) {
    const std::size_t count = std::min(left, kBlock);
    x.clear();
    y.clear();
    for (std::size_t i = 0; i < count; ++i) {
      const StreamPoint point = reader.ReadPoint();
      x.push_back(point.x);
      y.push_back(point.y);
    }
    series.AddPoints(x, y);
    left -= count;
  }
  TakeArrivals(arrivals, points, series);
}

}  // namespace tarnwick
