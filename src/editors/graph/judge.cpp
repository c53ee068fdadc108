#include "editors/graph/judge.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "base/number_text.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/axes/nice_step.h"
#include "graph/edit/axis_edit.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

const TSeries& SeriesOf(const TxyGraph& graph, std::int32_t id) {
  return graph.Series(static_cast<std::size_t>(id));
}

/// A value with the rows and the graph that it is judged in.
struct Case {
  const TxyGraph& graph;
  std::int32_t id;
  std::size_t row;
  int number;
  const FieldValue& value;

  double Number() const { return std::get<double>(value); }
  std::int32_t Whole() const { return std::get<std::int32_t>(value); }
  const std::string& Text() const { return std::get<std::string>(value); }
};

FieldRemark JudgeSteps(const Case& c) {
  constexpr int kFewest = 14;
  const Appearance& now = c.graph.GetAppearance();
  const StepLimits limits = {now.min_steps, now.max_steps};
  const bool fewest = c.number == kFewest;
  const StepLimits after =
      fewest ? WithMinSteps(limits, c.Whole()) : WithMaxSteps(limits, c.Whole());
  if ((fewest ? after.min_steps : after.max_steps) == c.Whole()) return {};
  return FieldRemark::Refused(
      fewest ? "The fewest steps lie between 1 and two fifths of the most, which are " +
                   std::to_string(limits.max_steps) + "."
             : "The most steps lie above two and a half times the fewest, which are " +
                   std::to_string(limits.min_steps) + ", and are 90 at most.");
}

FieldRemark JudgePicture(const Case& c) {
  std::error_code unreadable;  // means not there
  const auto path = std::filesystem::path(c.graph.GetAppearance().data_directory) / c.Text();
  if (c.Text().empty() || std::filesystem::is_regular_file(path, unreadable)) return {};
  return FieldRemark::Told("There is no such file.");
}

FieldRemark JudgeAppearance(const Case& c) {
  constexpr int kFewest = 14, kMost = 15, kBackground = 38;
  if (c.number == kFewest || c.number == kMost) return JudgeSteps(c);
  return c.number == kBackground ? JudgePicture(c) : FieldRemark();
}

/// The axis as it would be. Its switches may correct a range, which is no trouble of the value.
FieldRemark JudgeAxis(const Case& c) {
  constexpr int kLog = 5, kShortest = 9, kAutomatic = 18;
  const AxisState now = c.graph.Axis(static_cast<AxisId>(c.id)).State();
  AxisState wanted = now;
  SetField(AxisFields()[c.row], wanted, c.value);
  const Appearance& look = c.graph.GetAppearance();
  if (c.number == kShortest && c.Number() < 0) {
    return FieldRemark::Refused("A range is not shorter than zero.");
  }
  if (wanted.StepSize != now.StepSize) wanted.AutoStepping = false;
  if (c.number == kLog || c.number == kAutomatic) {
    const bool reaches_zero = wanted.LogScale && wanted.AutoSizing && now.oMin <= 0 &&
                              AxisInUse(c.graph, static_cast<AxisId>(c.id));
    return reaches_zero
               ? FieldRemark::Told(
                     "Some data lie at or below zero: they are not drawn, and the range does "
                     "not follow them.")
               : FieldRemark();
  }
  if (wanted.Min == now.Min && wanted.Max == now.Max && wanted.StepSize == now.StepSize) return {};
  const std::string objection = AxisObjection(wanted, {look.min_steps, look.max_steps});
  return objection.empty() ? FieldRemark() : FieldRemark::Refused(objection);
}

FieldRemark JudgeName(const Case& c) {
  if (TrimBlanks(c.Text()).empty()) return FieldRemark::Refused("A DataSet needs a name.");
  for (std::size_t i = 0; i < c.graph.SeriesCount(); ++i) {
    if (static_cast<std::int32_t>(i) != c.id && c.graph.Series(i).SeriesName() == c.Text()) {
      return FieldRemark::Told("Another DataSet has this name, too.");
    }
  }
  return {};
}

FieldRemark JudgeRegression(const TSeries& series, RegressionType type, std::int32_t steps,
                            double control) {
  if (HasRegressionCurve(type) && steps < 1) {
    return FieldRemark::Refused("The curve needs at least one step.");
  }
  if (type == RegressionType::Spline && series.DuplicatesAllowed()) {
    return FieldRemark::Refused(
        "A spline needs one point at each X: see \"Several points at one X\".");
  }
  if (type == RegressionType::RunningAverage && !(control > 0 && control <= 0.5)) {
    return FieldRemark::Refused(
        "A running average needs 1 / window above 0 and at most 0.5, two points.");
  }
  return {};
}

FieldRemark JudgeErrors(const TSeries& series, ErrorKind kind, bool of_x) {
  const ErrorColumn& own = of_x ? series.Errors().x_values : series.Errors().y_values;
  if (kind != ErrorKind::Column || !own.Empty()) return {};
  return FieldRemark::Told("No point has an error of its own yet.");
}

/// Numbers of fields of a DataSet.
enum DataSetField {
  kName = 1,
  kTolerance = 2,
  kDuplicates = 3,
  kRegression = 6,
  kSteps = 7,
  kControl = 8,
  kYErrors = 61,
  kYErrorValue = 62,
  kXErrors = 63,
  kXErrorValue = 64
};

FieldRemark JudgeDataSet(const Case& c) {
  const TSeries& series = SeriesOf(c.graph, c.id);
  const DataSettings& now = series.Settings();
  switch (c.number) {
    case kName:
      return JudgeName(c);
    case kTolerance:
    case kYErrorValue:
    case kXErrorValue:
      return c.Number() < 0 ? FieldRemark::Refused("This is not below zero.") : FieldRemark();
    case kDuplicates:
      if (std::get<bool>(c.value) || !now.DuplicatesAllowed) return {};
      return FieldRemark::Told("Of points at one X the first was kept.");
    case kRegression:
      return JudgeRegression(series, static_cast<RegressionType>(c.Whole()), now.regression_steps,
                             now.regression_alpha);
    case kSteps:
      return JudgeRegression(series, now.regression_type, c.Whole(), now.regression_alpha);
    case kControl:
      return JudgeRegression(series, now.regression_type, now.regression_steps, c.Number());
    case kYErrors:
    case kXErrors:
      return JudgeErrors(series, static_cast<ErrorKind>(c.Whole()), c.number == kXErrors);
    default:
      return {};
  }
}

// ---- what has no effect now

struct IdleRow {
  SectionId section;
  int number;
  bool (*idle)(const TxyGraph&, std::int32_t id);
  const char* why;
};

const AxisState& Axis(const TxyGraph& graph, std::int32_t id) {
  return graph.Axis(static_cast<AxisId>(id)).State();
}

bool IsCalendar(const TxyGraph& graph, std::int32_t id) {
  const AxisState& axis = Axis(graph, id);
  return axis.ShowAsTime && !axis.LogScale && axis.TickType != DateTickType::Automatic;
}

bool IsLog(const TxyGraph& graph, std::int32_t id) {
  return Axis(graph, id).LogScale;
}

bool IsNotTime(const TxyGraph& graph, std::int32_t id) {
  return !Axis(graph, id).ShowAsTime || Axis(graph, id).LogScale;
}

template <auto Member>
bool IsOff(const TxyGraph& graph, std::int32_t id) {
  return !(SeriesOf(graph, id).Style().*Member);
}

template <auto Member>
bool IsNoPart(const TxyGraph& graph, std::int32_t) {
  return !(graph.GetAppearance().*Member);
}

bool HasNoRegression(const TxyGraph& graph, std::int32_t id) {
  return SeriesOf(graph, id).RegressionType() == RegressionType::None;
}

template <auto Rule>
bool HasNoErrorValue(const TxyGraph& graph, std::int32_t id) {
  const ErrorKind kind = (SeriesOf(graph, id).Errors().*Rule).kind;
  return kind != ErrorKind::Constant && kind != ErrorKind::Percent;
}

/// Where an inserted graph stands is its own; a window is moved by itself.
bool IsWindow(const TxyGraph& graph, std::int32_t) {
  return dynamic_cast<const TxyChildGr*>(&graph) == nullptr;
}

constexpr const char* kOwnWindow = "The graph's window keeps its place: move or resize that.";
constexpr const char* kLogarithmic = "A logarithmic axis has ticks in decades.";
constexpr const char* kNoSymbols = "The symbols are not shown.";

/// Numbers of a mark's coordinates, and whether a type of marks has a use for each.
enum MarkField { kX1 = 2, kY1 = 3, kX2 = 4, kY2 = 5 };

template <MarkField kField>
bool HasNoUse(const TxyGraph& graph, std::int32_t id) {
  const Mark* mark = graph.Marks().FindMark(id);
  if (!mark || HasEnd(mark->type)) return false;
  if (mark->type == MarkType::Point) return kField == kY2;
  if (mark->type == MarkType::Text) return kField == kX2 || kField == kY2;
  return kField != (mark->type == MarkType::Vertical ? kX1 : kY1);
}

constexpr const char* kNoUse = "This type of marks has no use for it.";

constexpr std::array kIdle = {
    IdleRow{SectionId::Mark, kX1, HasNoUse<kX1>, kNoUse},
    IdleRow{SectionId::Mark, kY1, HasNoUse<kY1>, kNoUse},
    IdleRow{SectionId::Mark, kX2, HasNoUse<kX2>, kNoUse},
    IdleRow{SectionId::Mark, kY2, HasNoUse<kY2>, kNoUse},
    IdleRow{SectionId::Axis, 4, [](const TxyGraph& g, std::int32_t id) { return !IsLog(g, id); },
            "Only a logarithmic axis has decades."},
    IdleRow{SectionId::Axis, 8, IsLog, kLogarithmic},
    IdleRow{SectionId::Axis, 8, IsCalendar, "The calendar unit says the step."},
    IdleRow{SectionId::Axis, 10, IsLog, "A logarithmic axis shows numbers."},
    IdleRow{SectionId::Axis, 11, IsNotTime, "The axis does not show dates and times."},
    IdleRow{SectionId::Axis, 12, IsNotTime, "The axis does not show dates and times."},
    IdleRow{SectionId::Axis, 16,
            [](const TxyGraph& g, std::int32_t id) {
              const OffsetType type = Axis(g, id).Offset_type;
              return type != OffsetType::Percent && type != OffsetType::Value;
            },
            "The axis stands at an end of the other one."},
    IdleRow{SectionId::Style, 4, IsOff<&SeriesStyle::show_symbols>, kNoSymbols},
    IdleRow{SectionId::Style, 6, IsOff<&SeriesStyle::show_symbols>, kNoSymbols},
    IdleRow{SectionId::Style, 7, IsOff<&SeriesStyle::show_symbols>, kNoSymbols},
    IdleRow{SectionId::Style, 8, IsOff<&SeriesStyle::show_symbols>, kNoSymbols},
    IdleRow{SectionId::Style, 16, HasNoRegression, "There is no regression."},
    IdleRow{SectionId::Style, 17, HasNoRegression, "There is no regression."},
    IdleRow{SectionId::DataSet, kSteps,
            [](const TxyGraph& g, std::int32_t id) {
              return !HasRegressionCurve(SeriesOf(g, id).RegressionType());
            },
            "Only a spline and a smoothed curve have steps."},
    IdleRow{SectionId::DataSet, kControl,
            [](const TxyGraph& g, std::int32_t id) {
              const RegressionType type = SeriesOf(g, id).RegressionType();
              return type != RegressionType::Spline &&
                     type != RegressionType::ExponentialSmoothing &&
                     type != RegressionType::RunningAverage;
            },
            "This kind of regression has no such number."},
    IdleRow{SectionId::DataSet, kYErrorValue, HasNoErrorValue<&PointErrors::y>,
            "The errors are not given by one number."},
    IdleRow{SectionId::DataSet, kXErrorValue, HasNoErrorValue<&PointErrors::x>,
            "The errors are not given by one number."},
    IdleRow{SectionId::Appearance, 20, IsNoPart<&Appearance::show_cross_at_zero>,
            "The cross is not shown."},
    IdleRow{SectionId::Appearance, 21, IsNoPart<&Appearance::show_cross_at_zero>,
            "The cross is not shown."},
    IdleRow{SectionId::Dimensions, 14, IsWindow, kOwnWindow},
    IdleRow{SectionId::Dimensions, 15, IsWindow, kOwnWindow},
    IdleRow{SectionId::Dimensions, 16, IsWindow, kOwnWindow},
    IdleRow{SectionId::Dimensions, 17, IsWindow, kOwnWindow},
};

}  // namespace

FieldRemark Judge(const TxyGraph& graph, const PageField& field, std::int32_t id,
                  const FieldValue& value) {
  const int number = SectionOf(field.section).rows[field.row].number;
  const Case judged = {graph, id, field.row, number, value};
  switch (field.section) {
    case SectionId::Appearance:
      return JudgeAppearance(judged);
    case SectionId::Axis:
      return JudgeAxis(judged);
    case SectionId::DataSet:
      return JudgeDataSet(judged);
    default:
      return {};
  }
}

std::string IdleReason(const TxyGraph& graph, const PageField& field, std::int32_t id) {
  const int number = SectionOf(field.section).rows[field.row].number;
  const auto found = std::ranges::find_if(kIdle, [&](const IdleRow& row) {
    return row.section == field.section && row.number == number && row.idle(graph, id);
  });
  return found == kIdle.end() ? std::string() : found->why;
}

AxisId AxisOfValue(const TxyGraph& graph, const PageField& field, std::int32_t id) {
  if (field.section != SectionId::Mark) return static_cast<AxisId>(id);
  const int number = SectionOf(field.section).rows[field.row].number;
  if (number == kX1 || number == kX2) return AxisId::X;
  const Mark* mark = graph.Marks().FindMark(id);
  return mark && mark->status == MarkStatus::XAndY2 ? AxisId::Y2 : AxisId::Y;
}

}  // namespace tarnwick
