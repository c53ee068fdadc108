// Reduces blocks of residuals and derivatives to a few sums or a triangle, and adds such parts up in a fixed order. Knows
// where columns come from; nothing of tasks, threads and steps.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "fit/residuals/model_blocks.h"
#include "fit/residuals/model_residuals.h"
#include "fit/residuals/reduction_kernels.h"

namespace tarnwick {

/// A running sum whose rounding errors are summed beside it (Neumaier 1974).
class CompensatedSum {
 public:
  void Add(double value) {
    const double sum = sum_ + value;
    lost_ += (sum_ < 0 ? -sum_ : sum_) >= (value < 0 ? -value : value) ? (sum_ - sum) + value
                                                                       : (value - sum) + sum_;
    sum_ = sum;
  }
  void Add(const CompensatedSum& other) {
    Add(other.sum_);
    lost_ += other.lost_;
  }
  double Value() const { return sum_ + lost_; }

 private:
  double sum_ = 0;
  double lost_ = 0;
};

/// What to make of a block: only the sum of squares, or also the derivatives in one of two ways.
enum class PassKind { SumOfSquares, NormalEquations, Orthogonal };

/// What a run of blocks comes to. Columns are the derivatives and, last, the residuals.
struct PartialReduction {
  CompensatedSum sum_of_squares;         ///< of the defined residuals
  std::int64_t undefined = 0;            ///< points where residual or derivative have no value
  std::int64_t undefined_residuals = 0;  ///< those of them without a residual
  std::vector<CompensatedSum> products;  ///< NormalEquations: width x width, i + j * width, i <= j
  std::vector<double> triangle;          ///< Orthogonal: width x width, i + j * width, i <= j

  void Clear(PassKind kind, std::size_t width);
};

class BlockReducer {
 public:
  /// `parameters` derivatives beside the residual.
  explicit BlockReducer(std::size_t parameters);

  /// Adds the points, at most kBlockLength of them, at the parameters loaded into `model`. Throws EIntegerDivision.
  void Add(ModelBlocks& model, const FitPoints& points, PassKind kind, PartialReduction& sum);
  /// Adds what comes after `sum` to it.
  void Append(PartialReduction& next, PassKind kind, PartialReduction& sum);

 private:
  void AddValues(const double* values, const FitPoints& points, PartialReduction& sum);
  void AddProducts(ModelBlocks& model, const FitPoints& points, PartialReduction& sum);
  void AddOrthogonal(ModelBlocks& model, const FitPoints& points, PartialReduction& sum);
  void TakeDerivatives(const BlockResult& block, std::size_t length);
  bool CopyColumns(const FitPoints& points);
  void MendRows(ModelBlocks& model, const FitPoints& points, PartialReduction& sum);
  bool Multiply(std::size_t padded, const double* factors);

  const ReductionKernels& kernels_;
  std::size_t width_;
  std::vector<double> memory_;          // a copy of each column
  std::vector<double*> copies_;         // into it
  std::vector<const double*> columns_;  // where the columns of this block are
  std::vector<double> products_;
  std::vector<double> factors_;  // squares of the points' weights, or these, zeros beyond
};

}  // namespace tarnwick
