#include "fit/judge/residual_pattern.h"

#include <algorithm>
#include <cmath>

#include "base/undefined.h"
#include "fit/residuals/greatest_size.h"

namespace tarnwick {
namespace {

/// Deviations of the correlation of n scattering residuals, about 1/sqrt(n) each (Anderson 1942).
constexpr double kSuspicious = 2;
/// Few residuals show a pattern less well.
constexpr std::size_t kFew = 50;
constexpr double kSuspiciousInFew = 1;
/// The square of the greatest of n scattering residuals, over the mean of the others, passes 2 ln n by more than this in one
/// of a hundred fits (Grubbs 1950).
constexpr double kOutlying = 9;

}  // namespace

ResidualPattern FindPattern(std::span<const double> residuals) {
  ResidualPattern pattern{residuals.size(), kUndefined, kUndefined};
  const double greatest = GreatestSize(residuals);
  if (!(greatest > 0) || !std::isfinite(greatest)) return pattern;
  double squares = 0;
  double products = 0;
  double before = 0;
  for (const double residual : residuals) {
    const double scaled = residual / greatest;  // squares of extreme ones are no numbers
    squares += scaled * scaled;
    products += before * scaled;
    before = scaled;
  }
  if (residuals.size() >= 2) pattern.neighbour_correlation = products / squares;
  pattern.greatest_share = 1 / squares;
  return pattern;
}

bool IsSuspicious(const ResidualPattern& pattern) {
  const auto n = static_cast<double>(pattern.count);
  const double outlying = 2 * std::log(n) + kOutlying;
  const double deviations = pattern.neighbour_correlation * std::sqrt(n);
  return deviations > (pattern.count < kFew ? kSuspiciousInFew : kSuspicious) ||
         pattern.greatest_share > outlying / (n - 1 + outlying);
}

}  // namespace tarnwick
