// How alike two DataSets are when one is moved along X.
#include "analysis/correlation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "analysis/interpolation.h"
#include "analysis/resampling.h"
#include "analysis/smoothing.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "base/word_list.h"
#include "results/tools/tool_table.h"
#include "results/tools/unit_names.h"

namespace tarnwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kEven = 0.01;  // share of a step by which steps may differ

constexpr std::array kQuantities = {
    FieldChoice{CorrelationOf::Coefficient, "Coefficient, between -1 and 1"},
    FieldChoice{CorrelationOf::Covariance, "Covariance"},
    FieldChoice{CorrelationOf::Sum, "Sum, of products"}};

const ToolSetting kSettings[] = {
    {"quantity", "Quantity", control::ChoiceOf(kQuantities),
     static_cast<std::int32_t>(CorrelationOf::Coefficient), "What is told of each lag"},
    {"longest", "Longest lag", control::RealWithin(0, kInfinity), kUndefined,
     "Longest lag, in units of X; half the length of the data where it is not given"},
};

constexpr OtherInput kOthers[] = {
    {"with", "With", "The other DataSet; none: with itself", OtherInput::Need::MayLack}};

/// Both at the same even steps of X.
struct Pair {
  double step = 0;
  std::vector<double> a;
  std::vector<double> b;
  std::string told;
};

void CheckRoom(std::size_t points) {
  if (points < 2) throw Error("A correlation needs two X or more at which both have values.");
}

Pair EvenPair(const TSeries& first, const TSeries& second) {
  ToolColumns a = ColumnsInX(first);
  CheckRoom(a.x.size());
  Pair pair;
  if (!IsEvenlySpaced(a.x, kEven) && a.x.back() > a.x.front()) {
    const double mean = (a.x.back() - a.x.front()) / static_cast<double>(a.x.size() - 1);
    Resampled even = Resample(a.x, a.y, mean, ResampleMethod::Linear);
    a.x = std::move(even.x);
    a.y = std::move(even.y);
    pair.told =
        "X is not evenly spaced: taken on straight lines at steps of " + GeneralText(mean, 4) + ".";
  }
  pair.step = (a.x.back() - a.x.front()) / static_cast<double>(a.x.size() - 1);
  if (!(pair.step > 0)) CheckRoom(1);
  const Interpolation other(second.Points());
  const BaseLine line = second.GetBaseLine();
  std::size_t beyond = 0;
  for (std::size_t i = 0; i < a.x.size(); ++i) {
    const std::optional<double> y = &first == &second ? a.y[i] : other.At(a.x[i]);
    if (!y) {
      ++beyond;
      if (!pair.a.empty() && i + 1 < a.x.size() && other.At(a.x[i + 1]))
        throw Error("DataSet \"" + second.SeriesName() +
                    "\" has no value at X = " + GeneralText(a.x[i], 6) + ".");
      continue;
    }
    pair.a.push_back(a.y[i]);
    pair.b.push_back(&first == &second ? *y : line.CorrectedY(a.x[i], *y));
  }
  if (beyond > 0) {
    AddSentence(pair.told, Counted(static_cast<std::int64_t>(beyond), "point") +
                               " left out where the two do not overlap.");
  }
  CheckRoom(pair.a.size());
  return pair;
}

std::string BestText(const std::vector<double>& lags, const std::vector<double>& values) {
  const auto best = std::ranges::max_element(values);
  const double lag = lags[static_cast<std::size_t>(best - values.begin())];
  return "Greatest, " + GeneralText(*best, 4) + ", at a lag of " + GeneralText(lag, 6) +
         " (above 0: the other DataSet comes later).";
}

std::string ValueTitle(const ToolInput& input, bool alone) {
  const std::string of = input.Source().SeriesName();
  return alone ? "Autocorrelation of " + of
               : "Correlation of " + of + " with " + input.series[1]->SeriesName();
}

Computed Compute(const ToolInput& input) {
  const TSeries& first = input.Source();
  const bool alone = input.series.size() < 2 || input.series[1] == &first;
  Pair pair = EvenPair(first, alone ? first : *input.series[1]);
  const double wanted = input.settings.Number("longest") / pair.step;
  const auto most =
      static_cast<std::size_t>(std::min(wanted + 1e-9, static_cast<double>(pair.a.size() - 1)));
  const std::vector<double> values =
      Correlation(pair.a, pair.b, most, input.settings.Chosen<CorrelationOf>("quantity"));
  if (!std::isfinite(values[most]))
    throw Error("A DataSet whose Y is the same everywhere has no correlation coefficient.");
  std::vector<double> lags;
  for (std::size_t i = 0; i < values.size(); ++i)
    lags.push_back((static_cast<double>(i) - static_cast<double>(most)) * pair.step);
  if (!alone) AddSentence(pair.told, BestText(lags, values));
  if (HasYErrors(first.Errors())) AddSentence(pair.told, "Errors are left out.");
  return {SeriesLike(first, lags, values, TitleOf({"Lag", XNameOf(input).unit}),
                     ValueTitle(input, alone)),
          pair.told};
}

void Suggest(const TSeries& source, ToolSettings& settings) {
  const PointChain& points = source.Points();
  const double range = points.Empty() ? 0 : points.LastX() - points.Front().x;
  settings.Suggest("longest", std::isfinite(range) ? range / 2 : 0);
}

}  // namespace

constinit const Tool kCorrelateTool = {.name = "correlate",
                                       .caption = "Correlation",
                                       .purpose = "How alike two DataSets are, one moved along X",
                                       .suffix = "_COR",
                                       .settings = kSettings,
                                       .others = kOthers,
                                       .x = ResultX::Own,
                                       .compute = Compute,
                                       .suggest = Suggest};

}  // namespace tarnwick
