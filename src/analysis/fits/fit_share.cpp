#include "analysis/fits/fit_share.h"

#include <algorithm>
#include <cstdint>

#include "base/error.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "fit/judge/tied_parameters.h"
#include "fit/model/find_parameter.h"

namespace tarnwick {
namespace {

std::vector<double> Picked(const std::vector<double>& all, const std::vector<std::size_t>& which) {
  std::vector<double> picked;
  picked.reserve(which.size());
  for (const std::size_t i : which) picked.push_back(i < all.size() ? all[i] : kUndefined);
  return picked;
}

std::vector<double> PickedSquare(const std::vector<double>& all, std::size_t width,
                                 const std::vector<std::size_t>& which) {
  std::vector<double> picked;
  if (all.size() != width * width) return picked;
  for (const std::size_t i : which) {
    for (const std::size_t j : which) picked.push_back(all[i * width + j]);
  }
  return picked;
}

/// The places among the part's own parameters of those that `all` names.
std::vector<std::int32_t> PlacesOf(const std::vector<std::int32_t>& all,
                                   const std::vector<std::size_t>& columns) {
  std::vector<std::int32_t> places;
  for (const std::int32_t one : all) {
    const auto place = std::ranges::find(columns, static_cast<std::size_t>(one));
    if (place != columns.end())
      places.push_back(static_cast<std::int32_t>(place - columns.begin()));
  }
  return places;
}

void TakeStatistics(FitPart& part, const FitResult& whole, FitResult& result) {
  FitStatistics& own = result.statistics;
  const FitStatistics& all = whole.statistics;
  const std::size_t width = whole.names.size();
  own.varied = static_cast<std::int32_t>(part.columns.size());
  own.standard_errors = Picked(all.standard_errors, part.columns);
  own.covariance = PickedSquare(all.covariance, width, part.columns);
  own.correlation = PickedSquare(all.correlation, width, part.columns);
  own.determined_covariance = PickedSquare(all.determined_covariance, width, part.columns);
  own.weighting.loss_scale = part.weights->LossScale();
  own.mean_variance = part.MeanVariance();
  own.sum_of_squares = part.residuals->SumOfSquares(result.values);
  const double about_mean = part.residuals->SumAboutMean();
  own.r_squared = about_mean > 0 ? 1 - own.sum_of_squares / about_mean : kUndefined;
  own.adjusted_r_squared = kUndefined;
}

}  // namespace

FitResult ShareOf(FitPart& part, const FitResult& whole) {
  FitResult result = whole;
  const FitJob& job = part.job;
  result.names.clear();
  for (std::int32_t i = 1; i <= part.model.NParams(); ++i) {
    if (part.model.Param(i).Vary()) result.names.push_back(part.model.Param(i).Name());
  }
  result.start = Picked(whole.start, part.columns);
  result.values = Picked(whole.values, part.columns);
  result.points_in_range = job.points_in_range;
  result.points_used = job.points_chosen;
  result.points_without_error = job.points_without_error;
  result.points_without_weight = part.weights ? part.weights->WithoutWeight() : 0;
  result.undefined_points =
      job.points_chosen - job.points_without_error - static_cast<std::int64_t>(job.x.size());
  result.unmoved = PlacesOf(whole.unmoved, part.columns);
  result.at_bound = PlacesOf(whole.at_bound, part.columns);
  result.singular_directions.clear();
  for (const SingularDirection& direction : whole.singular_directions) {
    SingularDirection own{direction.relative_singular_value,
                          PlacesOf(direction.parameters, part.columns)};
    if (!own.parameters.empty()) result.singular_directions.push_back(own);
  }
  result.absent.clear();
  for (const AbsentTerm& term : whole.absent) {
    const std::vector<std::int32_t> own = PlacesOf({term.parameter}, part.columns);
    const std::vector<std::int32_t> through = PlacesOf(term.through, part.columns);
    if (!own.empty() && !through.empty())
      result.absent.push_back({own.front(), through, term.gain, term.chance});
  }
  if (!Failed(whole.outcome.why)) TakeStatistics(part, whole, result);
  return result;
}

std::vector<TiedParameter> TiesOf(const FitPart& part, const FitResult& result) {
  const bool determined = result.singular_directions.empty() && result.unmoved.empty();
  std::vector<TiedParameter> tied =
      TiedParameters(part.job.settings, result.values, result.statistics);
  for (TiedParameter& one : tied) one.error = determined ? one.error : kUndefined;
  return tied;
}

ResidualSample SampleOfAll(std::span<const std::unique_ptr<FitPart>> parts,
                           std::span<const double> p, std::size_t most) {
  ResidualSample all;
  all.jacobian.resize(0, static_cast<Eigen::Index>(p.size()));
  for (const std::unique_ptr<FitPart>& part : parts) {
    const ResidualSample one =
        part->SampleToTest(part->Local(p), std::max<std::size_t>(most / parts.size(), 1));
    const Eigen::Index before = all.jacobian.rows();
    all.jacobian.conservativeResize(before + one.jacobian.rows(), Eigen::NoChange);
    all.jacobian.bottomRows(one.jacobian.rows()).setZero();
    for (std::size_t j = 0; j < part->columns.size(); ++j)
      all.jacobian.col(static_cast<Eigen::Index>(part->columns[j])).tail(one.jacobian.rows()) =
          one.jacobian.col(static_cast<Eigen::Index>(j));
    for (const auto list : {&ResidualSample::x, &ResidualSample::curve, &ResidualSample::weights,
                            &ResidualSample::residuals})
      (all.*list).insert((all.*list).end(), (one.*list).begin(), (one.*list).end());
  }
  return all;
}

bool IsTestedByAll(std::span<const std::unique_ptr<FitPart>> parts, const FitPart& part) {
  const FitSettings& own = part.job.settings;
  const bool one_function = std::ranges::all_of(parts, [&](const auto& other) {
    const FitSettings& settings = other->job.settings;
    return settings.Expression == own.Expression && settings.templates == own.templates;
  });
  const bool shares = std::ranges::any_of(parts, [&](const auto& other) {
    return other.get() != &part &&
           std::ranges::find_first_of(part.columns, other->columns) != part.columns.end();
  });
  return one_function && shares;
}

void CheckShared(std::span<const FitJob> jobs, std::span<const std::string> shared) {
  for (const std::string& name : shared) {
    for (const FitJob& job : jobs) {
      const ParameterSettings* const one = FindParameter(job.settings.parameters, name);
      if (one != nullptr && one->Tie.empty() && one->Vary) continue;
      std::string trouble = one == nullptr ? "The model of DataSet \"" : "The parameter \"";
      if (one != nullptr) trouble.append(name).append("\" of DataSet \"");
      trouble.append(job.data_set).append("\" ");
      if (one == nullptr) {
        trouble.append("has no parameter \"").append(name).append("\" to share.");
      } else {
        trouble.append(one->Tie.empty() ? "is held fixed" : "is tied");
        trouble.append(": what is shared is varied in every DataSet.");
      }
      throw Error(trouble);
    }
  }
}

}  // namespace tarnwick
