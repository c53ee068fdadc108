#include "fit/judge/chances.h"

#include <boost/math/distributions/beta.hpp>
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>

namespace tarnwick {
namespace {

using boost::math::cdf;
using boost::math::complement;

}  // namespace

double ChanceOfRatio(double ratio, double of_upper, double of_lower) {
  if (!std::isfinite(ratio)) return 0;
  return cdf(complement(boost::math::fisher_f(of_upper, of_lower), ratio));
}

double ChanceOfDeviation(double deviation, double degrees_of_freedom) {
  if (!std::isfinite(deviation)) return 0;
  const boost::math::students_t student(degrees_of_freedom);
  return 2 * cdf(complement(student, std::abs(deviation)));
}

double ChanceOfSquares(double sum, double degrees_of_freedom) {
  if (!std::isfinite(sum)) return 0;
  return cdf(complement(boost::math::chi_squared(degrees_of_freedom), sum));
}

double ChanceBetween(double value, double limit, double mean, double variance) {
  const double place = (value + limit) / (2 * limit);
  if (place <= 0) return 1;
  if (place >= 1) return 0;
  const double center = (mean + limit) / (2 * limit);
  const double weight = center * (1 - center) * 4 * limit * limit / variance - 1;
  if (!(weight > 0)) return 1;  // wider than any such distribution
  return cdf(
      complement(boost::math::beta_distribution<>(center * weight, (1 - center) * weight), place));
}

}  // namespace tarnwick
