// The integral, the running sum, the histogram and the derivative of a DataSet, and the mean of several.
#include <algorithm>
#include <string>
#include <vector>

#include "analysis/average.h"
#include "analysis/derived.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "base/word_list.h"
#include "graph/line_way.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

/// What becomes of errors of Y where the new DataSet has none.
constexpr const char* kNotKnown = "those of its regression are not known.";
constexpr const char* kCounted = "a histogram counts values.";

std::string ErrorsText(const TSeries& source, const TSeries& derived, const char* why_none) {
  const PointErrors& errors = source.Errors();
  const std::string named = " of \"" + source.SeriesName() + "\"";
  std::string text;
  if (HasYErrors(derived.Errors())) {
    text = "The errors of Y" + named + " go on as those of values independent of each other";
    const std::vector<double> known = NumbersAlong(derived.Points(), derived.Errors().y_values);
    const auto without = std::ranges::count_if(known, &IsUndefined);
    if (without > 0)
      text += "; " + Counted(without, "point") + " without, as one that goes into them has none";
    text += '.';
  } else if (HasYErrors(errors)) {
    text = "The errors of Y" + named + " are left out: " + why_none;
  }
  if (HasXErrors(errors)) AddSentence(text, "The errors of X" + named + " are left out.");
  return text;
}

template <auto kDerive>
Computed Derived(const ToolInput& input) {
  auto series = std::make_unique<TSeries>();
  kDerive(input.Source(), *series, WayToCompute(input.Source()));
  std::string told = ErrorsText(input.Source(), *series, kNotKnown);
  return {std::move(series), std::move(told)};
}

/// A regression has one value at each X.
AlongLine AlongDerivative(const ToolInput& input) {
  return input.Source().RegressionType() == RegressionType::None ? AlongLine::Across
                                                                 : AlongLine::InX;
}

Computed Histogram(const ToolInput& input) {
  auto series = std::make_unique<TSeries>();
  ProbabilityDensity(input.Source(), *series, input.settings.Whole("bins"));
  std::string told = ErrorsText(input.Source(), *series, kCounted);
  return {std::move(series), std::move(told)};
}

/// The source gives the X; the others are averaged.
Computed Mean(const ToolInput& input) {
  if (input.series.size() < 2) throw Error("There is no DataSet to average.");
  const std::vector<const TDataSeries*> averaged(input.series.begin() + 1, input.series.end());
  auto series = std::make_unique<TSeries>();
  Average(input.Source(), averaged, *series);
  bool errors = false;
  bool lines = false;
  for (const TDataSeries* one : averaged) {
    errors = errors || HasYErrors(one->Errors()) || HasXErrors(one->Errors());
    const BaseLine line = one->GetBaseLine();
    lines = lines || line.offset != 0 || line.slope != 0;
  }
  std::string told;
  if (errors || lines) {
    told = std::string(!errors ? "Base lines"
                       : lines ? "Errors and base lines"
                               : "Errors") +
           " of the DataSets do not go into their mean.";
  }
  return {std::move(series), std::move(told)};
}

const ToolSetting kBins[] = {
    {"bins", "Number of Bins:", control::WholeWithin(1, std::numeric_limits<std::int32_t>::max()),
     std::int32_t{100}, "Number of bins"}};

}  // namespace

constinit const Tool kIntegrateTool = {.name = "integrate",
                                       .suffix = "_INT",
                                       .along = Always<AlongLine::Across>,
                                       .compute = Derived<Integral>};
constinit const Tool kSumTool = {.name = "sum",
                                 .suffix = "_SUM",
                                 .along = Always<AlongLine::Each>,
                                 .compute = Derived<RunningSum>};
constinit const Tool kHistogramTool = {.name = "histogram",
                                       .suffix = "_HIS",
                                       .settings = kBins,
                                       .x = ResultX::Own,
                                       .along = Always<AlongLine::Each>,
                                       .compute = Histogram};
constinit const Tool kDifferentiateTool = {.name = "differentiate",
                                           .suffix = "_DIF",
                                           .along = &AlongDerivative,
                                           .compute = Derived<Derivative>};
constinit const Tool kAverageTool = {
    .name = "average", .along = Always<AlongLine::Branches>, .compute = Mean};

}  // namespace tarnwick
