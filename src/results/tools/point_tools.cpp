// A DataSet at other X, within limits, on another scale, without outliers.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "analysis/along_line.h"
#include "analysis/derived.h"
#include "analysis/outliers.h"
#include "analysis/resampling.h"
#include "analysis/sample_comparison.h"
#include "analysis/smoothing.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "base/word_list.h"
#include "data/column_caption.h"
#include "graph/line_way.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string CountedPoints(std::size_t count) {
  return Counted(static_cast<std::int64_t>(count), "point");
}

/// The end of a sentence about points whose Y became another: their errors are not those of the points measured.
std::string WithoutErrors(std::size_t count, const ToolColumns& columns) {
  if (count == 0 || columns.y_error.empty()) return ".";
  return count == 1 ? ", which has no error now." : ", which have no errors now.";
}

// --- resample

constexpr std::array kResampleMethods = {
    FieldChoice{ResampleMethod::Linear, "Linear"},
    FieldChoice{ResampleMethod::Akima, "Akima, a smooth curve through the points"},
    FieldChoice{ResampleMethod::Mean, "Mean, of the points within half a step"}};

const ToolSetting kResampleSettings[] = {
    {"step", "Step of X", control::RealWithin(0, kInfinity), kUndefined,
     "Step of X; the mean step where it is not given"},
    {"method", "Method", control::ChoiceOf(kResampleMethods),
     static_cast<std::int32_t>(ResampleMethod::Linear), "How values between points are made"},
};

double LengthInX(const PointChain& points, const LineWay& way, const LinePiece& piece) {
  return std::abs(points.At(way.IndexAt(piece.end - 1)).x - points.At(way.IndexAt(piece.begin)).x);
}

Computed ComputeResampled(const ToolInput& input) {
  const TSeries& source = input.Source();
  const ToolColumns columns = ColumnsOf(source);
  const double step = input.settings.Number("step");
  if (!(step > 0)) throw Error("The step of X is a number above 0.");
  const Resampled made =
      Resample(columns.x, columns.y, step, input.settings.Chosen<ResampleMethod>("method"));
  std::string told = CountedPoints(columns.x.size()) +
                     (columns.x.size() == 1 ? " makes " : " make ") + CountedPoints(made.x.size()) +
                     ".";
  if (made.empty > 0)
    AddSentence(told, Counted(static_cast<std::int64_t>(made.empty), "step") +
                          " left out, since no point lies within.");
  AddSentence(told, LeftOutText(source, columns));
  return {SeriesLike(source, made.x, made.y), told};
}

/// The mean step of X along the line, whichever way X goes.
void SuggestStep(const TSeries& source, ToolSettings& settings) {
  const LineWay way = WayToCompute(source);
  double length = 0;
  std::size_t steps = 0;
  for (const LinePiece& piece : BranchesOf(way, source.Points())) {
    length += LengthInX(source.Points(), way, piece);
    steps += piece.Size() - 1;
  }
  const double step = length / static_cast<double>(steps);
  settings.Suggest("step", step > 0 && std::isfinite(step) ? step : 1);
}

// --- clip

enum class Outside { Removed, Limited };
constexpr std::array kOutsides = {FieldChoice{Outside::Removed, "Removed"},
                                  FieldChoice{Outside::Limited, "Limited, set to the limit"}};
constexpr FieldControl kAnyNumber = control::RealWithin(-kInfinity, kInfinity);

const ToolSetting kClipSettings[] = {
    {"left", "X from", kAnyNumber, -kInfinity, "Lowest X that stays"},
    {"right", "X to", kAnyNumber, kInfinity, "Highest X that stays"},
    {"low", "Y from", kAnyNumber, -kInfinity, "Lowest Y, less the base line"},
    {"high", "Y to", kAnyNumber, kInfinity, "Highest Y, less the base line"},
    {"outside", "Y beyond are", control::ChoiceOf(kOutsides),
     static_cast<std::int32_t>(Outside::Removed), "What becomes of points beyond in Y"},
};

void CheckLimits(double low, double high, const char* of) {
  if (!(low <= high)) {
    throw Error("The limits of " + std::string(of) + " cross: " + GeneralText(low, 6) +
                " is above " + GeneralText(high, 6) + ".");
  }
}

Computed ComputeClipped(const ToolInput& input) {
  const TSeries& source = input.Source();
  const ToolColumns columns = ColumnsOf(source);
  const ToolSettings& settings = input.settings;
  const double left = settings.Number("left");
  const double right = settings.Number("right");
  const double low = settings.Number("low");
  const double high = settings.Number("high");
  CheckLimits(left, right, "X");
  CheckLimits(low, high, "Y");
  const bool keep = settings.Chosen<Outside>("outside") == Outside::Limited;
  ToolColumns kept;
  std::size_t limited = 0;
  for (std::size_t i = 0; i < columns.x.size(); ++i) {
    const double y = std::clamp(columns.y[i], low, high);
    const bool beyond = y != columns.y[i];
    if (columns.x[i] < left || columns.x[i] > right || (beyond && !keep)) continue;
    limited += beyond;
    kept.TakePoint(columns, i, y);
  }
  if (kept.x.empty()) throw Error("No point lies within the limits.");
  std::string told = CountedPoints(columns.x.size() - kept.x.size()) + " of " +
                     std::to_string(columns.x.size()) + " removed.";
  if (keep)
    AddSentence(told,
                CountedPoints(limited) + " set to the limit" + WithoutErrors(limited, columns));
  AddSentence(told, PointsLeftOutText(columns));
  return {SeriesWithErrors(source, kept), told};
}

// --- normalise

enum class Scale { Range, Maximum, Deviation, Area };
constexpr std::array kScales = {
    FieldChoice{Scale::Range, "Range, from 0 to 1"},
    FieldChoice{Scale::Maximum, "Maximum, the largest size is 1"},
    FieldChoice{Scale::Deviation, "Deviation, mean 0 and standard deviation 1"},
    FieldChoice{Scale::Area, "Area, below the curve is 1"}};

const ToolSetting kNormaliseSettings[] = {
    {"by", "By", control::ChoiceOf(kScales), static_cast<std::int32_t>(Scale::Range),
     "What becomes 1"},
};

struct Scaled {
  double offset = 0;
  double unit = 1;
};

Scaled ByDeviation(std::span<const double> y) {
  const MeanAndDeviation scatter = MeanAndDeviationOf(y);
  return {scatter.mean, scatter.deviation};
}

double AreaOfColumns(const TSeries& source, const ToolColumns& columns) {
  return TurnsBack(source) ? AreaEnclosed({columns.x, columns.y, {}})
                           : AreaBelow(columns.x, columns.y);
}

Scaled ScaleOf(Scale scale, const TSeries& source, const ToolColumns& columns) {
  const auto [low, high] = std::ranges::minmax(columns.y);
  switch (scale) {
    case Scale::Range:
      return {low, high - low};
    case Scale::Maximum:
      return {0, std::max(std::abs(low), std::abs(high))};
    case Scale::Deviation:
      return ByDeviation(columns.y);
    case Scale::Area:
      break;
  }
  return {0, AreaOfColumns(source, columns)};
}

Computed ComputeNormalised(const ToolInput& input) {
  const TSeries& source = input.Source();
  ToolColumns columns = ColumnsOf(source);
  const Scaled scaled = ScaleOf(input.settings.Chosen<Scale>("by"), source, columns);
  if (!(std::abs(scaled.unit) > 0) || !std::isfinite(scaled.unit))
    throw Error("What should become 1 is " + GeneralText(scaled.unit, 6) + ".");
  for (double& y : columns.y) y = (y - scaled.offset) / scaled.unit;
  for (double& error : columns.y_error) error /= std::abs(scaled.unit);
  std::string told = "Y is less " + GeneralText(scaled.offset, 6) + ", divided by " +
                     GeneralText(scaled.unit, 6) + ".";
  if (HasYErrors(source.Errors())) AddSentence(told, "Errors of Y are divided alike.");
  AddSentence(told, PointsLeftOutText(columns));
  return {SeriesWithErrors(source, columns, "Normalised " + CaptionOfY(source.Source())), told};
}

// --- outliers

enum class OutlierRule { Hampel, Tukey };
constexpr std::array kRules = {FieldChoice{OutlierRule::Hampel, "Hampel, by the median around"},
                               FieldChoice{OutlierRule::Tukey, "Tukey, by quartiles of all"}};
enum class OutlierFate { Removed, Replaced };
constexpr std::array kFates = {
    FieldChoice{OutlierFate::Removed, "Removed"},
    FieldChoice{OutlierFate::Replaced, "Replaced, by the expected value"}};

bool IsHampel(const ToolSettings& settings) {
  return settings.Chosen<OutlierRule>("rule") == OutlierRule::Hampel;
}

const ToolSetting kOutlierSettings[] = {
    {"rule", "Rule", control::ChoiceOf(kRules), static_cast<std::int32_t>(OutlierRule::Hampel),
     "How outliers are found"},
    {"window", "Window", control::WholeWithin(3, 9999, "points"), std::int32_t{11},
     "Of hampel: points around that are compared, odd", IsHampel, 2},
    {"times", "Farther off than", control::RealWithin(0, 1e6, "×"), 3.0,
     "Times the deviation (hampel; 3) or the quartiles' distance (tukey; 1.5)"},
    {"fate", "Outliers are", control::ChoiceOf(kFates),
     static_cast<std::int32_t>(OutlierFate::Removed), "What becomes of them"},
};

AlongLine AlongOutliers(const ToolInput& input) {
  return IsHampel(input.settings) ? AlongLine::Follows : AlongLine::Each;
}

/// Along the line, in a piece of it that is narrower than the window by as many values as there are.
std::vector<Expected> ExpectedAlong(const ToolColumns& columns, int window, double times,
                                    const CancelPoint& cancel) {
  if (columns.piece.empty()) return HampelOutliers(columns.y, window, times, cancel);
  CheckWindow(window, columns.y.size());
  std::vector<Expected> expected;
  for (std::size_t begin = 0; begin < columns.y.size();) {
    const auto end = static_cast<std::size_t>(
        std::ranges::upper_bound(columns.piece, columns.piece[begin]) - columns.piece.begin());
    const std::span<const double> y = std::span(columns.y).subspan(begin, end - begin);
    const std::vector<Expected> of_piece =
        HampelOutliers(y, std::min(window, LargestWindow(y.size())), times, cancel);
    expected.insert(expected.end(), of_piece.begin(), of_piece.end());
    begin = end;
  }
  return expected;
}

Computed ComputeWithoutOutliers(const ToolInput& input) {
  const TSeries& source = input.Source();
  const ToolColumns columns = ColumnsOf(source);
  const ToolSettings& settings = input.settings;
  const double times = settings.Number("times");
  const std::vector<Expected> expected =
      IsHampel(settings) ? ExpectedAlong(columns, settings.Whole("window"), times, input.cancel)
                         : TukeyOutliers(columns.y, times);
  const bool replace = settings.Chosen<OutlierFate>("fate") == OutlierFate::Replaced;
  ToolColumns kept;
  std::size_t outliers = 0;
  for (std::size_t i = 0; i < columns.x.size(); ++i) {
    outliers += expected[i].is_outlier;
    if (expected[i].is_outlier && !replace) continue;
    kept.TakePoint(columns, i, expected[i].is_outlier ? expected[i].y : columns.y[i]);
  }
  std::string told = Counted(static_cast<std::int64_t>(outliers), "outlier") + " of " +
                     CountedPoints(columns.x.size()) +
                     (replace ? " replaced" + WithoutErrors(outliers, columns) : " removed.");
  AddSentence(told, PointsLeftOutText(columns));
  return {SeriesWithErrors(source, kept), told};
}

}  // namespace

constinit const Tool kResampleTool = {.name = "resample",
                                      .caption = "Resample",
                                      .purpose = "A DataSet at even steps of X",
                                      .suffix = "_RES",
                                      .settings = kResampleSettings,
                                      .along = Always<AlongLine::Pieces>,
                                      .compute = ComputeResampled,
                                      .suggest = SuggestStep};
constinit const Tool kClipTool = {.name = "clip",
                                  .caption = "Clip",
                                  .purpose = "A DataSet within limits of X and Y",
                                  .suffix = "_CLP",
                                  .settings = kClipSettings,
                                  .along = Always<AlongLine::Each>,
                                  .compute = ComputeClipped};
constinit const Tool kNormaliseTool = {.name = "normalise",
                                       .caption = "Normalise",
                                       .purpose = "A DataSet on a scale of its own size",
                                       .suffix = "_NRM",
                                       .settings = kNormaliseSettings,
                                       .axis = AxisId::Y2,
                                       .along = Always<AlongLine::Each>,
                                       .compute = ComputeNormalised};
constinit const Tool kOutliersTool = {.name = "outliers",
                                      .caption = "Remove Outliers",
                                      .purpose = "A DataSet without the points that do not belong",
                                      .suffix = "_OUT",
                                      .settings = kOutlierSettings,
                                      .along = &AlongOutliers,
                                      .compute = ComputeWithoutOutliers};

}  // namespace tarnwick
