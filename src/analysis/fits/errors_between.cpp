#include "analysis/fits/errors_between.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarnwick {
namespace {

struct Knots {
  std::vector<double> x;  // rising
  std::vector<double> error;
};

/// The points lie in the order of X.
Knots KnotsOf(const FitJob& job) {
  Knots knots;
  for (std::size_t i = 0; i < job.x.size();) {
    const std::size_t first = i;
    double squares = 0;
    for (; i < job.x.size() && job.x[i] == job.x[first]; ++i)
      squares += job.errors[i] * job.errors[i];
    knots.x.push_back(job.x[first]);
    knots.error.push_back(std::sqrt(squares / static_cast<double>(i - first)));
  }
  return knots;
}

}  // namespace

std::vector<double> ErrorsBetween(const FitJob& job, std::span<const double> x) {
  std::vector<double> errors;
  if (job.errors.empty() || job.x.empty()) return errors;
  const Knots knots = KnotsOf(job);
  for (const double at : x) {
    const auto above =
        static_cast<std::size_t>(std::ranges::lower_bound(knots.x, at) - knots.x.begin());
    if (above == 0 || above == knots.x.size()) {
      errors.push_back(above == 0 ? knots.error.front() : knots.error.back());
      continue;
    }
    const double share = (at - knots.x[above - 1]) / (knots.x[above] - knots.x[above - 1]);
    errors.push_back(std::lerp(knots.error[above - 1], knots.error[above], share));
  }
  return errors;
}

}  // namespace tarnwick
