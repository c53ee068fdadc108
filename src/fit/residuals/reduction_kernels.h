// Inner loops that reduce a block of columns (derivatives and residuals) in the best instruction set that this processor
// has. Knows arrays; nothing of models, points or threads.
#pragma once

#include <cstddef>

namespace tarnwick {

/// Lengths are multiples of kBlockPadding; what lies beyond a block's end is filled with zeros.
struct ReductionKernels {
  /// residuals[i] = values[i] - y[i]; answers the sum of their squares.
  double (*residuals)(const double* values, const double* y, double* residuals, std::size_t length);
  /// The same residuals, and squares[i] = weights[i]^2; answers the sum of the squares of residuals[i] * weights[i].
  double (*weighted_residuals)(const double* values, const double* y, const double* weights,
                               double* residuals, double* squares, std::size_t length);
  /// Copies a column, to itself perhaps. Answers 0 when all of it is finite, else NaN.
  double (*copy)(const double* from, double* to, std::size_t length);
  /// The same, each number times its weight.
  double (*weigh)(const double* from, const double* weights, double* to, std::size_t length);
  /// products[i + j * width] = the sum over the block of columns[i] times columns[j], for i <= j (rows below hold anything);
  /// where `factors` is not null, of the products times these.
  void (*products)(const double* const* columns, const double* factors, std::size_t width,
                   std::size_t length, double* products);
  /// Replaces the upper triangle R (width x width, column by column) by that of the QR decomposition of R with the block's
  /// rows below it: Householder reflections, each of one row of R and all of the block. Overwrites the columns.
  void (*eliminate)(double* const* columns, std::size_t width, std::size_t length,
                    double* triangle);
};

/// The loops for this processor.
const ReductionKernels& BestReductionKernels();

}  // namespace tarnwick
