// How probable it is that chance alone leads to a figure as great as the one met. Knows distributions; nothing of fits.
#pragma once

namespace tarnwick {

/// A ratio of two variances with so many degrees of freedom, this or greater (Fisher's F).
double ChanceOfRatio(double ratio, double of_upper, double of_lower);
/// A deviation over its estimated standard deviation this far from zero, on either side (Student's t).
double ChanceOfDeviation(double deviation, double degrees_of_freedom);
/// A sum of squares of so many standard normal numbers, this or greater (chi squared).
double ChanceOfSquares(double sum, double degrees_of_freedom);
/// A number that lies between -limit and limit, of this mean and variance, this or greater: by the beta distribution of the
/// same moments.
double ChanceBetween(double value, double limit, double mean, double variance);

}  // namespace tarnwick
