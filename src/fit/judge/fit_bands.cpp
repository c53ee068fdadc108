#include "fit/judge/fit_bands.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "base/undefined.h"
#include "expr/block/block_evaluator.h"
#include "fit/judge/distributions.h"
#include "fit/residuals/model_blocks.h"

namespace tarnwick {
namespace {

/// The varied parameters' places and values.
struct Varied {
  std::vector<double*> places;
  std::vector<double> values;
};

Varied FindVaried(TCurFit& model) {
  Varied varied;
  for (std::int32_t i = 1; i <= model.NParams(); ++i) {
    TDBLParameter& parameter = model.Param(i);
    if (!parameter.Vary()) continue;
    varied.places.push_back(parameter.ValuePtr());
    varied.values.push_back(parameter.Value());
  }
  return varied;
}

std::unique_ptr<ModelBlocks> MakeBlocks(TCurFit& model, const std::vector<double*>& places) {
  const std::vector<const double*> variables(places.begin(), places.end());
  const std::unique_ptr<BlockEvaluator> evaluator =
      BlockEvaluator::Make(model, model.XValue(), variables);
  if (evaluator) return std::make_unique<EvaluatorBlocks>(*evaluator);
  return std::make_unique<RecordBlocks>(model, places);
}

/// g'Cg at one X of the block.
double CurveVariance(const BlockResult& block, std::size_t at,
                     const std::vector<double>& covariance) {
  const std::size_t k = block.derivatives.size();
  double variance = 0;
  for (std::size_t i = 0; i < k; ++i) {
    double row = 0;
    for (std::size_t j = 0; j < k; ++j) row += covariance[i * k + j] * block.derivatives[j][at];
    variance += block.derivatives[i][at] * row;
  }
  return variance < 0 ? 0 : variance;  // rounding only
}

struct BlockCurve {
  std::vector<double> value;
  std::vector<double> variance;
};

/// Where a derivative has no value though the model has one (a power at X = 0), differences take its place.
BlockCurve CurveOver(ModelBlocks& blocks, std::span<const double> x,
                     const FitStatistics& statistics) {
  BlockCurve curve;
  const BlockResult exact = blocks.Derivatives(x);
  bool gaps = false;
  for (std::size_t i = 0; i < x.size(); ++i) {
    curve.value.push_back(exact.values[i]);
    curve.variance.push_back(CurveVariance(exact, i, statistics.determined_covariance));
    gaps = gaps || (IsUndefined(curve.variance[i]) && !IsUndefined(curve.value[i]));
  }
  if (!gaps) return curve;
  const BlockResult differences = blocks.Differences(x);
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (IsUndefined(curve.variance[i]))
      curve.variance[i] = CurveVariance(differences, i, statistics.determined_covariance);
  }
  return curve;
}

/// Of one more measurement where the model has this value and a point this error; 0: not known.
double MeasurementVariance(const FitStatistics& statistics, double value, double error) {
  switch (statistics.weighting.weights) {
    case FitWeights::Errors:
      return statistics.unit_variance * (error > 0 ? error * error : statistics.mean_variance);
    case FitWeights::Counts:
      return statistics.unit_variance * std::abs(value);
    case FitWeights::Relative:
      return statistics.unit_variance * value * value;
    default:
      return statistics.unit_variance * statistics.mean_variance;
  }
}

}  // namespace

bool HasErrors(const FitStatistics& statistics) {
  return statistics.degrees_of_freedom > 0 || (statistics.weighting.errors == FitErrors::Absolute &&
                                               statistics.points >= statistics.varied);
}

double IntervalQuantile(const FitStatistics& statistics, double level) {
  if (!HasErrors(statistics)) return kUndefined;
  return statistics.weighting.errors == FitErrors::Absolute
             ? NormalQuantile(level)
             : StudentQuantile(statistics.degrees_of_freedom, level);
}

double CurveDeviation(TCurFit& model, const FitStatistics& statistics, double x) {
  const Varied varied = FindVaried(model);
  const std::unique_ptr<ModelBlocks> blocks = MakeBlocks(model, varied.places);
  blocks->Load(varied.values);
  return std::sqrt(CurveOver(*blocks, {&x, 1}, statistics).variance.front());
}

FitBands ComputeFitBands(TCurFit& model, const FitStatistics& statistics, std::span<const double> x,
                         double level, std::span<const double> point_errors) {
  const Varied varied = FindVaried(model);
  const std::unique_ptr<ModelBlocks> blocks = MakeBlocks(model, varied.places);
  const double quantile = IntervalQuantile(statistics, level);
  FitBands bands;
  blocks->Load(varied.values);
  for (std::size_t from = 0; from < x.size(); from += kBlockLength) {
    const std::size_t count = std::min(kBlockLength, x.size() - from);
    const BlockCurve curve = CurveOver(*blocks, x.subspan(from, count), statistics);
    for (std::size_t i = 0; i < count; ++i) {
      bands.value.push_back(curve.value[i]);
      bands.confidence.push_back(quantile * std::sqrt(curve.variance[i]));
      const double error = point_errors.empty() ? 0 : point_errors[from + i];
      bands.prediction.push_back(
          quantile *
          std::sqrt(MeasurementVariance(statistics, curve.value[i], error) + curve.variance[i]));
    }
  }
  return bands;
}

}  // namespace tarnwick
