#include "analysis/fits/fit_part.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fit/judge/likelihood.h"
#include "fit/residuals/greatest_size.h"

namespace tarnwick {

FitPart::FitPart(const FitJob& given, const FitWeighting& settled)
    : job(given), weighting(settled), greatest_y(GreatestSize(given.y)) {
  model.SetSettings(job.settings, MarkModified::No);
  model.Prepare();
}

void FitPart::Begin() {
  weights.emplace(weighting, job.y, job.errors);
  residuals.emplace(model, FitPoints{job.x, job.y, weights->Now()}, job.options.threads);
}

std::vector<double> FitPart::Local(std::span<const double> p) const {
  std::vector<double> local;
  local.reserve(columns.size());
  for (const std::size_t column : columns) local.push_back(p[column]);
  return local;
}

void FitPart::Reweigh(std::span<const double> local) {
  weights->Update(residuals->Values(local), local.size());
  Weigh(Loss::With);
}

void FitPart::Weigh(Loss loss) {
  residuals->SetWeights(loss == Loss::With ? weights->Now() : weights->WithoutLoss());
}

std::vector<double> FitPart::ResidualsWithoutLoss(std::span<const double> local) {
  Weigh(Loss::Without);
  std::vector<double> rest = residuals->Residuals(local, job.y.size());
  std::erase_if(rest, [](double r) { return !std::isfinite(r); });
  Weigh(Loss::With);
  return rest;
}

ResidualSample FitPart::SampleToTest(std::span<const double> local, std::size_t most) {
  ResidualSample sample = residuals->Sample(local, most);
  if (weighting.loss == FitLoss::Linear) return sample;
  const std::vector<double> weighted = std::move(sample.residuals);
  Weigh(Loss::Without);
  sample = residuals->Sample(local, most);
  Weigh(Loss::With);
  // The weights are the roots of the shares psi(r) / r.
  for (std::size_t i = 0; i < weighted.size(); ++i) {
    double& rest = sample.residuals[i];
    rest = rest == 0 ? 0 : weighted[i] * weighted[i] / rest;
  }
  return sample;
}

double FitPart::LikelihoodTerm(std::span<const double> local) {
  if (weighting.weights == FitWeights::Counts)
    return CountDeviance(job.y, residuals->Values(local));
  return weighting.weights == FitWeights::Relative ? SumOfLogSquares(residuals->Values(local)) : 0;
}

double FitPart::GreatestWeightedY() const {
  const std::span<const double> w = weights->Now();
  if (w.empty()) return greatest_y;
  double greatest = 0;
  for (std::size_t i = 0; i < job.y.size(); ++i)
    greatest = std::max(greatest, std::abs(w[i] * job.y[i]));
  return greatest;
}

double FitPart::MeanVariance() const {
  if (weighting.weights != FitWeights::Errors) return 1;
  double sum = 0;
  for (const double error : job.errors) sum += 1 / (error * error);
  return static_cast<double>(job.errors.size()) / sum;
}

}  // namespace tarnwick
