// How often values lie where: counts in bins of equal width. Mathematics over spans; knows no DataSet.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tarnwick {

struct Histogram {
  double first = 0;  ///< where the first bin begins
  double width = 0;  ///< of each bin
  std::vector<std::size_t>
      counts;  ///< a value between two bins belongs to the upper one, the greatest to the last bin
  std::size_t left_out = 0;  ///< values that are not finite

  double Edge(std::size_t bin) const { return first + static_cast<double>(bin) * width; }
};

inline constexpr std::size_t kMostBins = 5000;

/// Counts finite values in `bins` bins (up to kMostBins) from the least to the greatest; 0: in as many as BinsFor says. Without
/// a finite value there are no bins; values that are all alike lie in the middle of one.
Histogram CountInBins(std::span<const double> values, std::size_t bins = 0);

/// By Freedman and Diaconis (Z. Wahrscheinlichkeitstheorie 57, 1981): bins 2 IQR / n^(1/3) wide, and not fewer than Sturges'
/// 1 + log2 n nor more than 200. `values` are finite; they are put into another order.
std::size_t BinsFor(std::span<double> values);

/// Those that are finite, in their order.
std::vector<double> FiniteOf(std::span<const double> values);

}  // namespace tarnwick
