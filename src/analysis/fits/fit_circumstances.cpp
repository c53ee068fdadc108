#include "analysis/fits/fit_circumstances.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "expr/expression_hints.h"
#include "fit/model/typed_model.h"
#include "fit/residuals/greatest_size.h"

namespace tarnwick {
namespace {

/// Squares of numbers beyond this, with what is multiplied to them, are no numbers any more.
constexpr double kGreatestSquared = 1e153;

/// A point that counts for less of its square may as well be absent.
constexpr double kHardly = 0.1;

/// Y or X whose squares, or those of what depends on them, are lost or overflow.
std::optional<ExtremeData> FindExtreme(const FitPart& part) {
  for (const ExtremeData& data :
       {ExtremeData{'Y', part.greatest_y}, ExtremeData{'X', GreatestSize(part.job.x)}}) {
    if (data.greatest > kGreatestSquared || (data.greatest > 0 && data.greatest < kSmallestSquared))
      return data;
  }
  return std::nullopt;
}

}  // namespace

FitCircumstances CircumstancesOf(const FitPart& part) {
  const FitJob& job = part.job;
  FitCircumstances about;
  about.method = job.settings.ProcType;
  about.variable = job.settings.XVarName;
  about.max_iterations = job.settings.IterMax;
  about.thinned_to = job.settings.NPoints;
  about.extreme_data = FindExtreme(part);
  about.expression_warnings = ExpressionWarnings(job.settings.Expression);
  about.ignores_x = IgnoresX(job.settings, part.model.CurrentText());
  about.regression_curve = job.source == FitPointSource::RegressionCurve;
  about.has_x_errors = job.has_x_errors;
  about.some_rows = job.some_rows;
  about.weighted_unasked = job.settings.weighting.weights == FitWeights::Automatic &&
                           part.weighting.weights == FitWeights::Errors;
  if (part.weighting.weights == FitWeights::Counts)
    about.no_counts =
        std::ranges::count_if(job.y, [](double y) { return y < 0 || y != std::floor(y); });
  return about;
}

void MeasureStart(FitPart& part, FitCircumstances& about) {
  TCurFit& model = part.model;
  for (const double x : part.job.x) {
    if (std::isfinite(model.Value(x))) continue;
    if (about.undefined_at_start++ == 0) about.first_undefined_x = x;
  }
  about.unknown_names = UnknownNames(model);
  for (std::int32_t i = 1; i <= model.NParams(); ++i) {
    const TDBLParameter& parameter = model.Param(i);
    if (!std::isfinite(parameter.Value())) about.infinite_names.push_back(parameter.Name());
  }
}

void MeasureOutliers(const FitPart& part, FitCircumstances& about) {
  const std::span<const double> with = part.weights->Now();
  const std::span<const double> without = part.weights->WithoutLoss();
  std::vector<std::pair<double, double>> far;  // share and X
  for (std::size_t i = 0; i < with.size(); ++i) {
    const double ratio = with[i] / (without.empty() ? 1 : without[i]);
    if (const double share = ratio * ratio; share < kHardly) far.emplace_back(share, part.job.x[i]);
  }
  std::ranges::sort(far);
  about.hardly_counted.clear();
  for (const auto& one : far) about.hardly_counted.push_back(one.second);
}

FitCircumstances Together(std::span<const FitCircumstances> parts) {
  FitCircumstances all = parts.front();
  for (const FitCircumstances& one : parts.subspan(1)) {
    all.ignores_x = all.ignores_x && one.ignores_x;
    if (!all.extreme_data) all.extreme_data = one.extreme_data;
    if (!all.first_undefined_x) all.first_undefined_x = one.first_undefined_x;
    all.undefined_at_start += one.undefined_at_start;
    all.no_counts += one.no_counts;
    all.hardly_counted.insert(all.hardly_counted.end(), one.hardly_counted.begin(),
                              one.hardly_counted.end());
    if (all.expression_warnings.empty()) all.expression_warnings = one.expression_warnings;
    all.has_x_errors = all.has_x_errors || one.has_x_errors;
    if (all.some_rows.empty()) all.some_rows = one.some_rows;
    all.regression_curve = all.regression_curve || one.regression_curve;
    all.unknown_names.insert(all.unknown_names.end(), one.unknown_names.begin(),
                             one.unknown_names.end());
    all.infinite_names.insert(all.infinite_names.end(), one.infinite_names.begin(),
                              one.infinite_names.end());
  }
  return all;
}

}  // namespace tarnwick
