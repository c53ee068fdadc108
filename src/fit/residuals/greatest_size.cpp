#include "fit/residuals/greatest_size.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace tarnwick {
namespace {

/// Compared side by side.
constexpr std::size_t kStrands = 8;

}  // namespace

double GreatestSize(std::span<const double> values) {
  std::array<double, kStrands> greatest{};
  std::size_t i = 0;
  for (; i + kStrands <= values.size(); i += kStrands) {
    for (std::size_t strand = 0; strand < kStrands; ++strand)
      greatest[strand] = std::max(greatest[strand], std::abs(values[i + strand]));
  }
  for (; i < values.size(); ++i) greatest[0] = std::max(greatest[0], std::abs(values[i]));
  return std::ranges::max(greatest);
}

}  // namespace tarnwick
