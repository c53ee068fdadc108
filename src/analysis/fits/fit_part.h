// One DataSet's share in a fit: its model, the weights of its points, its residuals, and where its varied parameters stand among
// those of the fit. Knows jobs; no minimiser and no verdict.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "fit/model/curve_fit.h"
#include "fit/residuals/model_residuals.h"
#include "fit/residuals/point_weights.h"

namespace tarnwick {

class FitPart {
 public:
  /// Compiles the model. `job` is borrowed; `weighting` holds no Automatic. Throws EParserException and Error
  /// (TCurFit::Prepare).
  FitPart(const FitJob& job, const FitWeighting& weighting);

  /// Makes weights and residuals.
  void Begin();
  /// The varied parameters' values among those of the fit.
  std::vector<double> Local(std::span<const double> p) const;

  /// Weights anew by what the model is worth at `local`. Throws EIntegerDivision, as the following.
  void Reweigh(std::span<const double> local);
  /// Whether what a loss takes away from points counts from now on.
  enum class Loss { Without, With };
  void Weigh(Loss loss);
  /// Weighted residuals, without what the loss takes away; the defined ones.
  std::vector<double> ResidualsWithoutLoss(std::span<const double> local);
  /// What the tests of the residuals look at, of `most` points or so. Under a loss that is the part of each residual that counts,
  /// psi(r), beside the derivatives of points that count in full: a fit ends where the one is orthogonal to the others, and psi
  /// of independent errors is independent, too (P. J. Huber, Robust Statistics, 1981, chapter 7).
  ResidualSample SampleToTest(std::span<const double> local, std::size_t most);
  /// FittedPoints::likelihood_term.
  double LikelihoodTerm(std::span<const double> local);
  /// The greatest size of weighted Y.
  double GreatestWeightedY() const;
  /// n / sum of the squares of the weights that errors make; else 1.
  double MeanVariance() const;

  const FitJob& job;
  TCurFit model;
  FitWeighting weighting;
  double greatest_y = 0;             ///< the greatest size of Y
  std::vector<std::size_t> columns;  ///< of its varied parameters
  std::optional<PointWeights> weights;
  std::optional<ModelResiduals> residuals;
};

}  // namespace tarnwick
