#include "fit/judge/distributions.h"

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

double ChiSquaredProbability(double chi_squared, std::int64_t degrees_of_freedom) {
  if (degrees_of_freedom <= 0 || !(chi_squared >= 0) || !std::isfinite(chi_squared))
    return kUndefined;
  return boost::math::gamma_q(static_cast<double>(degrees_of_freedom) / 2, chi_squared / 2);
}

double VarianceRatioProbability(double ratio, std::int64_t above, std::int64_t below) {
  if (above <= 0 || below <= 0 || !(ratio >= 0)) return kUndefined;
  const auto m = static_cast<double>(above);
  const auto n = static_cast<double>(below);
  if (!std::isfinite(ratio)) return 0;
  return boost::math::ibeta(n / 2, m / 2, n / (n + m * ratio));
}

}  // namespace tarnwick
