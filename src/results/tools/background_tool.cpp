// A DataSet less the base line that its points suggest, or that line.
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/background.h"
#include "analysis/polynomial_line.h"
#include "analysis/smoothing.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/series/line_breaks.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

enum class Method { RubberBand, Asymmetric, Polynomial };
constexpr std::array kMethods = {
    FieldChoice{Method::RubberBand, "Rubber band"},
    FieldChoice{Method::Asymmetric, "arPLS, asymmetric least squares"},
    FieldChoice{Method::Polynomial, "Polynomial, through regions of X"}};
enum class Straight { Own, New };
constexpr std::array kStraight = {FieldChoice{Straight::Own, "Own, of the DataSet itself"},
                                  FieldChoice{Straight::New, "New, a DataSet less it"}};
constexpr double kEvenEnough = 0.01;  // share of a step that a base line does not feel

bool IsAsymmetric(const ToolSettings& settings) {
  return settings.Chosen<Method>("method") == Method::Asymmetric;
}

bool IsPolynomial(const ToolSettings& settings) {
  return settings.Chosen<Method>("method") == Method::Polynomial;
}

bool IsStraight(const ToolSettings& settings) {
  return IsPolynomial(settings) && settings.Whole("degree") < 2 && !settings.Is("line");
}

const ToolSetting kSettings[] = {
    {"method", "Method", control::ChoiceOf(kMethods), static_cast<std::int32_t>(Method::Asymmetric),
     "How the base line is found"},
    {"smoothness", "Smoothness",
     control::RealWithin(1e-300, std::numeric_limits<double>::infinity()), ArPls().smoothness,
     "Of arpls: the greater, the stiffer; 1e2 to 1e9", IsAsymmetric},
    {"degree", "Degree", control::WholeWithin(0, 9), std::int32_t{1},
     "Of the polynomial, 0 to 9; 1 is a straight line", IsPolynomial},
    {"regions", "Regions of X", control::kText, std::string(),
     "Of the polynomial: where there are no peaks, as 0:10, 45:60; every point without them",
     IsPolynomial},
    {"straight", "Straight line", control::ChoiceOf(kStraight),
     static_cast<std::int32_t>(Straight::Own), "What a polynomial of degree 0 or 1 becomes",
     IsStraight},
    {"line", "Make the base line itself", control::kCheckBox, false, "Make the base line itself"},
};

/// Of one "0:10".
XRegion RegionOf(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon != std::string_view::npos) {
    const std::optional<double> begin = ParseNumber(TrimBlanks(text.substr(0, colon)));
    const std::optional<double> end = ParseNumber(TrimBlanks(text.substr(colon + 1)));
    if (begin && end && *begin <= *end) return {*begin, *end};
  }
  throw Error('"' + std::string(TrimBlanks(text)) +
              "\" is no region of X: write the lower and the upper end, as 0:10, 45:60.");
}

std::vector<XRegion> RegionsOf(std::string_view text) {
  std::vector<XRegion> regions;
  while (!TrimBlanks(text).empty()) {
    const std::size_t comma = std::min(text.find(','), text.size());
    regions.push_back(RegionOf(text.substr(0, comma)));
    text.remove_prefix(std::min(comma + 1, text.size()));
  }
  return regions;
}

/// A base line at each X, and what is told of it.
struct Found {
  std::vector<double> y;
  std::string told;
  std::optional<BaseLine> straight;
};

Found Polynomial(const ToolColumns& columns, const ToolSettings& settings) {
  const std::vector<XRegion> regions = RegionsOf(settings.Text("regions"));
  PolynomialLine line = FitPolynomialLine(columns.x, columns.y, regions, settings.Whole("degree"));
  Found found{.y = std::move(line.y), .told = {}, .straight = {}};
  found.told = "The base line goes through " + std::string(regions.empty() ? "all " : "") +
               Counted(static_cast<std::int64_t>(line.points), "point");
  if (std::isfinite(line.deviation))
    found.told += ", which scatter about it by " + GeneralText(line.deviation, 4);
  found.told += '.';
  if (IsStraight(settings) && settings.Chosen<Straight>("straight") == Straight::Own)
    found.straight = BaseLine{line.offset, line.slope};
  return found;
}

Found FindLine(const ToolColumns& columns, const ToolSettings& settings,
               const CancelPoint& cancel) {
  switch (settings.Chosen<Method>("method")) {
    case Method::RubberBand:
      return {RubberBand(columns.x, columns.y), {}, {}};
    case Method::Polynomial:
      return Polynomial(columns, settings);
    case Method::Asymmetric:
      break;
  }
  Found found{
      AsymmetricBaseLine(columns.y, {.smoothness = settings.Number("smoothness")}, cancel), {}, {}};
  if (columns.x.size() > 2 && !IsEvenlySpaced(columns.x, kEvenEnough))
    found.told = "X is not evenly spaced; the base line takes the points as if it were.";
  return found;
}

/// A polynomial has one value at each X.
AlongLine AlongBackground(const ToolInput& input) {
  return IsPolynomial(input.settings) ? AlongLine::Each : AlongLine::Branches;
}

Computed Compute(const ToolInput& input) {
  const TSeries& source = input.Source();
  ToolColumns columns = ColumnsOf(source);
  Found found = FindLine(columns, input.settings, input.cancel);
  if (input.settings.Is("line")) {
    AddSentence(found.told, LeftOutText(source, columns));
    Computed line{SeriesLike(source, columns.x, found.y), std::move(found.told)};
    BreakBefore(*line.series, BreaksOf(columns));
    return line;
  }
  std::ranges::transform(columns.y, found.y, columns.y.begin(), std::minus());
  AddSentence(found.told, PointsLeftOutText(columns));
  if (!columns.y_error.empty() && !found.straight)
    AddSentence(found.told, "Errors of Y are kept: the base line counts as exact.");
  return {SeriesWithErrors(source, columns), std::move(found.told), found.straight};
}

}  // namespace

constinit const Tool kBackgroundTool = {.name = "background",
                                        .caption = "Base Line",
                                        .purpose = "A DataSet less the base line under its peaks",
                                        .suffix = "_BLC",
                                        .settings = kSettings,
                                        .along = &AlongBackground,
                                        .compute = Compute};

}  // namespace tarnwick
