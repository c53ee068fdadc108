#include "fit/start_search.h"

#include <Eigen/Dense>
#include <cmath>
#include <optional>

#include "fit/linearised_problem.h"

namespace tarnwick {
namespace {

/// A smallest singular value below this, to the greatest, is no place where a fit should end.
constexpr double kNearlySingular = 1e-8;
constexpr int kRounds = 2;
constexpr double kFactors[] = {1e-3, 1e-2, 0.1, 0.3, 3, 10, 100, 1e3, -1};
constexpr double kInsteadOfZero[] = {1, -1, 100, -100};

struct Candidate {
  std::vector<double> p;
  double sum_of_squares = 0;
};

class StartSearch {
 public:
  StartSearch(ModelResiduals& residuals, std::span<const double> start)
      : residuals_(residuals), linear_(residuals.LinearParameters(start)) {}

  /// With the linear parameters at their best; nothing where the model has no value.
  std::optional<Candidate> Try(const std::vector<double>& p) {
    ++evaluations_;
    const ReducedJacobian reduced = residuals_.Reduce(p, Reduction::Orthogonal);
    if (reduced.undefined != 0 || !reduced.r.allFinite() || !reduced.qtr.allFinite())
      return std::nullopt;
    const PartedJacobian parted(reduced, linear_);
    const Eigen::VectorXd step =
        parted.Complete(Eigen::VectorXd::Zero(static_cast<Eigen::Index>(parted.bound.size())));
    Candidate candidate{p, parted.BestOfFree()};
    if (!step.allFinite() || !std::isfinite(candidate.sum_of_squares)) return std::nullopt;
    for (std::size_t i = 0; i < p.size(); ++i) candidate.p[i] += step[static_cast<Eigen::Index>(i)];
    return candidate;
  }

  /// The best of one parameter's powers of ten, when better than `best`.
  void ImproveBy(std::size_t parameter, Candidate& best) {
    const std::vector<double> from = best.p;
    const bool zero = from[parameter] == 0;
    for (const double factor :
         zero ? std::span<const double>(kInsteadOfZero) : std::span<const double>(kFactors)) {
      std::vector<double> p = from;
      p[parameter] = zero ? factor : factor * p[parameter];
      const std::optional<Candidate> candidate = Try(p);
      if (candidate && candidate->sum_of_squares < best.sum_of_squares) best = *candidate;
    }
  }

  bool IsLinear(std::size_t parameter) const { return linear_[parameter]; }
  std::int64_t Evaluations() const { return evaluations_; }

 private:
  ModelResiduals& residuals_;
  std::vector<bool> linear_;
  std::int64_t evaluations_ = 0;
};

}  // namespace

bool IsNearlySingular(const ReducedJacobian& reduced) {
  const Eigen::VectorXd lengths = reduced.r.colwise().norm().transpose();
  if (lengths.size() == 0 || !reduced.r.allFinite()) return false;
  if (lengths.minCoeff() == 0) return true;
  const Eigen::MatrixXd scaled = reduced.r * lengths.cwiseInverse().asDiagonal();
  const Eigen::VectorXd singular = Eigen::JacobiSVD<Eigen::MatrixXd>(scaled).singularValues();
  return singular[singular.size() - 1] < kNearlySingular * singular[0];
}

FoundStart SearchStart(ModelResiduals& residuals, std::span<const double> start,
                       Progress& progress) {
  StartSearch search(residuals, start);
  const std::vector<double> as_given(start.begin(), start.end());
  std::optional<Candidate> best = search.Try(as_given);
  if (!best) return {as_given, 0, search.Evaluations()};
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < as_given.size() && !progress.Cancelled(); ++i) {
      if (!search.IsLinear(i)) search.ImproveBy(i, *best);
    }
  }
  return {std::move(best->p), best->sum_of_squares, search.Evaluations()};
}

}  // namespace tarnwick
