#include "data/series/data_series_file.h"

#include <array>
#include <limits>
#include <utility>

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

// Access to a member of the rule for the errors of Y or of X.
template <auto Rule, auto Member>
constexpr auto OfErrors() {
  using Held = std::remove_cvref_t<decltype(std::declval<ErrorRule&>().*Member)>;
  using Value = std::conditional_t<std::is_enum_v<Held>, std::int32_t, Held>;
  return Property<S, Value>{
      [](const S& series) { return static_cast<Value>(series.Errors().*Rule.*Member); },
      [](S& series, Value value) {
        PointErrors errors = series.Errors();
        errors.*Rule.*Member = static_cast<Held>(value);
        series.SetErrors(std::move(errors));
      }};
}

template <auto Rule>
bool HasRule(const S& series) {
  return (series.Errors().*Rule).kind != ErrorKind::None;
}
template <auto Rule>
bool HasValue(const S& series) {
  return (series.Errors().*Rule).value != 0;
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
    FieldChoice{ColumnFormat::TimeGoingOn, "Time, going on past midnight"},
    FieldChoice{ColumnFormat::ScaledUnit, "Number with a unit, 12 mV is 0.012"},
    FieldChoice{ColumnFormat::Uncertainty, "Error behind a number, 1.5 ± 0.2 is 0.2"},
    FieldChoice{ColumnFormat::Factor, "Number with a factor's letter, 1.5n is 1.5e-9"},
};

constexpr std::array kYErrorKinds = {
    FieldChoice{ErrorKind::None, "None"},
    FieldChoice{ErrorKind::Column, "Of each point its own"},
    FieldChoice{ErrorKind::Constant, "The same for all"},
    FieldChoice{ErrorKind::Percent, "Percent of the value"},
    FieldChoice{ErrorKind::Counts, "Square root of counts"},
};
constexpr std::array kXErrorKinds = {kYErrorKinds[0], kYErrorKinds[1], kYErrorKinds[2],
                                     kYErrorKinds[3]};
constexpr AllowedRange kYErrors = {0, static_cast<std::int32_t>(ErrorKind::Counts)};
constexpr AllowedRange kXErrors = {0, static_cast<std::int32_t>(ErrorKind::Percent)};

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
    {14,
     "TextSeparators",
     OfSource<&TDSInfo::TextSeparators>(),
     {"Separators", "Text", kSeparators}},
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
     Booleans{[](const S& s) { return s.Settings().BreakAtGaps; },
              [](S& s, bool v) { s.SetBreakAtGaps(v); }},
     {"Break the line at gaps", "DataSet", kCheckBox},
     {},
     [](const S& s) { return s.Settings().BreakAtGaps; }},
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
    {93,
     "TableEndSought",
     OfSource<&TDSInfo::TableEndSought>(),
     {"Look for the end of the table at each reading", "Rows", kCheckBox},
     {},
     &Differs<&TDSInfo::TableEndSought>},
    {60,
     "Run",
     OfSource<&TDSInfo::Run>(),
     {"Only run of the table, 0 is all", "Rows", WholeWithin(0, kMost)},
     {0, kMost},
     &Differs<&TDSInfo::Run>},
    {61,
     "YErrorKind",
     OfErrors<&PointErrors::y, &ErrorRule::kind>(),
     {"Errors of Y", "Errors", ChoiceOf(kYErrorKinds)},
     kYErrors,
     &HasRule<&PointErrors::y>},
    {62,
     "YErrorValue",
     OfErrors<&PointErrors::y, &ErrorRule::value>(),
     {"Error of Y, or percent", "Errors", kNumber},
     {},
     &HasValue<&PointErrors::y>},
    {63,
     "XErrorKind",
     OfErrors<&PointErrors::x, &ErrorRule::kind>(),
     {"Errors of X", "Errors", ChoiceOf(kXErrorKinds)},
     kXErrors,
     &HasRule<&PointErrors::x>},
    {64,
     "XErrorValue",
     OfErrors<&PointErrors::x, &ErrorRule::value>(),
     {"Error of X, or percent", "Errors", kNumber},
     {},
     &HasValue<&PointErrors::x>},
    {67,
     "YErrorColumn",
     OfSource<&TDSInfo::YErrorColumn>(),
     {"Errors of Y", "Columns", kColumn},
     {},
     &Differs<&TDSInfo::YErrorColumn>},
    {68,
     "XErrorColumn",
     OfSource<&TDSInfo::XErrorColumn>(),
     {"Errors of X", "Columns", kColumn},
     {},
     &Differs<&TDSInfo::XErrorColumn>},
    {77,
     "Recipe",
     OfSource<&TDSInfo::Recipe>(),
     {"Computed as", "Source", ReadOnly("told when the points were computed")},
     {},
     &Differs<&TDSInfo::Recipe>},
    {85,
     "ThinnedAtSource",
     OfSource<&TDSInfo::ThinnedAtSource>(),
     {"Thinned by the data base", "Rows", kCheckBox},
     {},
     &Differs<&TDSInfo::ThinnedAtSource>},
    {87,
     "PointsEdited",
     OfSource<&TDSInfo::PointsEdited>(),
     {"Points edited since they were read", "Rows", ReadOnly("told when a point is edited")},
     {},
     &Differs<&TDSInfo::PointsEdited>},
    {86,
     "StackedNames",
     OfSource<&TDSInfo::StackedNames>(),
     {"Names go over two lines", "Text", kCheckBox},
     {},
     &Differs<&TDSInfo::StackedNames>},
    {88,
     "GroupColumn",
     OfSource<&TDSInfo::GroupColumn>(),
     {"Only rows that hold in the column", "Rows", kColumn},
     {},
     &Differs<&TDSInfo::GroupColumn>},
    {89,
     "GroupValue",
     OfSource<&TDSInfo::GroupValue>(),
     {"this text", "Rows", kText},
     {},
     &Differs<&TDSInfo::GroupValue>},
    {81,
     "ColumnCuts",
     OfSource<&TDSInfo::ColumnCuts>(),
     {"Columns begin at characters", "Text", kText},
     {},
     &Differs<&TDSInfo::ColumnCuts>},
    {82,
     "Follow",
     OfSource<&TDSInfo::Follow>(),
     {"Read rows as they come", "Rows", kCheckBox},
     {},
     &Differs<&TDSInfo::Follow>},
    {83,
     "KeepPoints",
     OfSource<&TDSInfo::KeepPoints>(),
     {"Last points kept of those that come, 0 is all", "Rows", WholeWithin(0, kMost)},
     {0, kMost},
     &Differs<&TDSInfo::KeepPoints>},
    {84,
     "TablePart",
     OfSource<&TDSInfo::TablePart>(),
     {"Sheet and range, or paths of arrays", "Source", kText},
     {},
     &Differs<&TDSInfo::TablePart>},
};

}  // namespace

FieldTable<TDataSeries> DataSeriesFields() {
  return kFields;
}

}  // namespace tarnwick
