#include "fit/judge/distributions.h"

#include <boost/math/distributions/beta.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/erf.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <cmath>

#include "base/undefined.h"

namespace tarnwick {

double StudentQuantile(std::int64_t degrees_of_freedom, double level) {
  if (degrees_of_freedom <= 0 || !(level > 0 && level < 1)) return kUndefined;
  const boost::math::students_t student(static_cast<double>(degrees_of_freedom));
  return boost::math::quantile(boost::math::complement(student, (1 - level) / 2));
}

double NormalQuantile(double level) {
  if (!(level > 0 && level < 1)) return kUndefined;
  return std::sqrt(2.0) * boost::math::erfc_inv(1 - level);
}

double StudentProbability(double deviation, std::int64_t degrees_of_freedom) {
  if (degrees_of_freedom <= 0 || std::isnan(deviation)) return kUndefined;
  if (std::isinf(deviation)) return 0;
  const boost::math::students_t student(static_cast<double>(degrees_of_freedom));
  return 2 * boost::math::cdf(boost::math::complement(student, std::abs(deviation)));
}

double ChiSquaredProbability(double chi_squared, std::int64_t degrees_of_freedom) {
  if (degrees_of_freedom <= 0 || !(chi_squared >= 0)) return kUndefined;
  if (std::isinf(chi_squared)) return 0;
  return boost::math::gamma_q(static_cast<double>(degrees_of_freedom) / 2, chi_squared / 2);
}

double VarianceRatioProbability(double ratio, std::int64_t above, std::int64_t below) {
  return FisherProbability(ratio, static_cast<double>(above), static_cast<double>(below));
}

double FisherProbability(double ratio, double above, double below) {
  if (!(above > 0) || !(below > 0) || !(ratio >= 0)) return kUndefined;
  if (!std::isfinite(ratio)) return 0;
  return boost::math::ibeta(below / 2, above / 2, below / (below + above * ratio));
}

double BoundedProbability(double value, double limit, double mean, double variance) {
  const double place = (value + limit) / (2 * limit);
  if (place <= 0) return 1;
  if (place >= 1) return 0;
  const double center = (mean + limit) / (2 * limit);
  const double weight = center * (1 - center) * 4 * limit * limit / variance - 1;
  if (!(weight > 0)) return 1;  // wider than any such distribution
  return boost::math::cdf(boost::math::complement(
      boost::math::beta_distribution<>(center * weight, (1 - center) * weight), place));
}

}  // namespace tarnwick
