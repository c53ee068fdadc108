#include "fit/residuals/block_reduction.h"

#include <algorithm>
#include <cmath>

#include "expr/block/block_padding.h"

namespace tarnwick {
void PartialReduction::Clear(PassKind kind, std::size_t width) {
  sum_of_squares = {};
  undefined = 0;
  undefined_residuals = 0;
  products.assign(kind == PassKind::NormalEquations ? width * width : 0, CompensatedSum());
  triangle.assign(kind == PassKind::Orthogonal ? width * width : 0, 0.0);
}

BlockReducer::BlockReducer(std::size_t parameters)
    : kernels_(BestReductionKernels()),
      width_(parameters + 1),
      memory_(width_ * kBlockLength),
      copies_(width_),
      columns_(width_),
      products_(width_ * width_) {
  for (std::size_t j = 0; j < width_; ++j) copies_[j] = memory_.data() + j * kBlockLength;
}

void BlockReducer::Add(ModelBlocks& model, std::span<const double> x, std::span<const double> y,
                       PassKind kind, PartialReduction& sum) {
  if (kind == PassKind::SumOfSquares) {
    AddValues(model.Values(x).values, y, sum);
    return;
  }
  const BlockResult block = model.Derivatives(x);
  AddValues(block.values, y, sum);
  TakeDerivatives(block, x.size());
  if (kind == PassKind::NormalEquations) {
    AddProducts(model, x, sum);
  } else {
    AddOrthogonal(model, x, sum);
  }
}

// Leaves the residuals, zeros beyond their end, in the last copy.
void BlockReducer::AddValues(const double* values, std::span<const double> y,
                             PartialReduction& sum) {
  double* const residuals = copies_.back();
  const std::size_t length = y.size() / kBlockPadding * kBlockPadding;
  double squares = kernels_.residuals(values, y.data(), residuals, length);
  for (std::size_t i = length; i < y.size(); ++i) {
    residuals[i] = values[i] - y[i];
    squares += residuals[i] * residuals[i];
  }
  std::fill(residuals + y.size(), residuals + PaddedLength(y.size()), 0.0);
  if (!std::isfinite(squares)) {
    squares = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
      if (std::isfinite(residuals[i])) {
        squares += residuals[i] * residuals[i];
      } else {
        ++sum.undefined_residuals;
      }
    }
  }
  sum.sum_of_squares.Add(squares);
}

// What lies beyond the points of a block is not ours to sum: such columns are copied.
void BlockReducer::TakeDerivatives(const BlockResult& block, std::size_t length) {
  std::ranges::copy(block.derivatives, columns_.begin());
  columns_.back() = copies_.back();
  if (length % kBlockPadding == 0) return;
  for (std::size_t j = 0; j + 1 < width_; ++j) {
    std::copy_n(columns_[j], length, copies_[j]);
    std::fill(copies_[j] + length, copies_[j] + PaddedLength(length), 0.0);
    columns_[j] = copies_[j];
  }
}

// False when not all of the columns are finite.
bool BlockReducer::CopyColumns(std::size_t length) {
  double check = kernels_.copy(copies_.back(), copies_.back(), length);
  for (std::size_t j = 0; j + 1 < width_; ++j) {
    check += kernels_.copy(columns_[j], copies_[j], length);
    columns_[j] = copies_[j];
  }
  return check == 0;
}

// False when a product is not finite.
bool BlockReducer::Multiply(std::size_t padded) {
  kernels_.products(columns_.data(), width_, padded, products_.data());
  double check = 0;
  for (std::size_t j = 0; j < width_; ++j) check += products_[j + j * width_] * 0;
  return check == 0;
}

void BlockReducer::AddProducts(ModelBlocks& model, std::span<const double> x,
                               PartialReduction& sum) {
  const std::size_t padded = PaddedLength(x.size());
  if (!Multiply(padded)) {
    if (!CopyColumns(padded)) MendRows(model, x, sum);
    Multiply(padded);
  }
  for (std::size_t j = 0; j < width_; ++j) {
    for (std::size_t i = 0; i <= j; ++i)
      sum.products[i + j * width_].Add(products_[i + j * width_]);
  }
}

void BlockReducer::AddOrthogonal(ModelBlocks& model, std::span<const double> x,
                                 PartialReduction& sum) {
  const std::size_t padded = PaddedLength(x.size());
  if (!CopyColumns(padded)) MendRows(model, x, sum);
  kernels_.eliminate(copies_.data(), width_, padded, sum.triangle.data());
}

// Some derivatives have no value where the model has one (of x^b by b at 0, say): differences stand in for them. Points
// where that does not help are taken out.
void BlockReducer::MendRows(ModelBlocks& model, std::span<const double> x, PartialReduction& sum) {
  const BlockResult differences = model.Differences(x);
  for (std::size_t i = 0; i < x.size(); ++i) {
    bool defined = std::isfinite(copies_.back()[i]);
    for (std::size_t j = 0; defined && j + 1 < width_; ++j) {
      if (!std::isfinite(copies_[j][i])) copies_[j][i] = differences.derivatives[j][i];
      defined = std::isfinite(copies_[j][i]);
    }
    if (defined) continue;
    ++sum.undefined;
    for (double* const column : copies_) column[i] = 0;
  }
}

void BlockReducer::Append(PartialReduction& next, PassKind kind, PartialReduction& sum) {
  sum.sum_of_squares.Add(next.sum_of_squares);
  sum.undefined += next.undefined;
  sum.undefined_residuals += next.undefined_residuals;
  for (std::size_t i = 0; i < next.products.size(); ++i) sum.products[i].Add(next.products[i]);
  if (kind != PassKind::Orthogonal) return;
  // The other triangle's rows are eliminated like those of a block.
  const std::size_t padded = PaddedLength(width_);
  for (std::size_t j = 0; j < width_; ++j) {
    std::copy_n(next.triangle.data() + j * width_, width_, copies_[j]);
    std::fill(copies_[j] + width_, copies_[j] + padded, 0.0);
  }
  kernels_.eliminate(copies_.data(), width_, padded, sum.triangle.data());
}

}  // namespace tarnwick
