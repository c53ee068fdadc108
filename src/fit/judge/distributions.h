// Probabilities and quantiles of the distributions that fits are judged by. Knows numbers only; the library behind it is slow
// to compile and stands in distributions.cpp alone.
#pragma once

#include <cstdint>

namespace tarnwick {

/// The value that Student's t with so many degrees of freedom stays below in size with probability `level`; undefined for no
/// degrees of freedom or a level outside 0 to 1.
double StudentQuantile(std::int64_t degrees_of_freedom, double level);
/// The same of a normal error of deviation 1.
double NormalQuantile(double level);

/// The probability that chance makes a deviation, over its estimated standard deviation, greater in size; undefined for no
/// degrees of freedom.
double StudentProbability(double deviation, std::int64_t degrees_of_freedom);
/// The probability that chance makes chi squared greater; undefined for no degrees of freedom or no chi squared.
double ChiSquaredProbability(double chi_squared, std::int64_t degrees_of_freedom);
/// The probability that chance makes the ratio of two variances with so many degrees of freedom greater; undefined where there
/// are none.
double VarianceRatioProbability(double ratio, std::int64_t above, std::int64_t below);
/// The same with degrees of freedom that need not be whole.
double FisherProbability(double ratio, double above, double below);
/// The probability that a number between -limit and limit, of this mean and variance, is greater: by the beta distribution of the
/// same moments.
double BoundedProbability(double value, double limit, double mean, double variance);

}  // namespace tarnwick
