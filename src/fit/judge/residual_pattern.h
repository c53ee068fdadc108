// Whether residuals scatter, as errors of measurement do, or follow a pattern that the model left in them. Knows numbers in
// the order of X; no model.
#pragma once

#include <cstddef>
#include <span>

namespace tarnwick {

/// A pattern shows in so many residuals as well as in all.
inline constexpr std::size_t kPatternPoints = 4096;

struct ResidualPattern {
  std::size_t count = 0;
  /// Sum of products of neighbours over the sum of squares: near 0 where residuals scatter, near 1 where they follow a
  /// pattern. Undefined for fewer than two or when all are zero.
  double neighbour_correlation = 0;
  /// Of the greatest residual in the sum of squares; undefined when all are zero.
  double greatest_share = 0;
};

/// `residuals` in the order of X.
ResidualPattern FindPattern(std::span<const double> residuals);

/// Neighbours are more alike, or one residual is greater, than chance leads to in most fits: worth a look, no proof.
bool IsSuspicious(const ResidualPattern& pattern);

}  // namespace tarnwick
