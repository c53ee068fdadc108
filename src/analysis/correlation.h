// How alike two curves are when one is moved along X. Mathematics over spans; knows no DataSet.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tarnwick {

/// What the values are: sums of products; these by the number of values (Box & Jenkins, Time Series Analysis (1970)); these by
/// both standard deviations, between -1 and 1.
enum class CorrelationOf { Coefficient, Covariance, Sum };

/// Of `a` with `b` as many steps later: the sum over k of a[k] b[k + lag], lag from -most to most, both 0 beyond their ends. But
/// for sums both are less their means. a and b have one size above `most`.
std::vector<double> Correlation(std::span<const double> a, std::span<const double> b,
                                std::size_t most, CorrelationOf of);

}  // namespace tarnwick
