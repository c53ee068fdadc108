#include "fit/residuals/block_reduction.h"

#include <algorithm>
#include <cmath>

#include "expr/block/block_padding.h"

namespace tarnwick {
namespace {

double Weighted(const FitPoints& points, double value, std::size_t i) {
  return points.weights.empty() ? value : value * points.weights[i];
}

}  // namespace

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
      products_(width_ * width_),
      factors_(kBlockLength) {
  for (std::size_t j = 0; j < width_; ++j) copies_[j] = memory_.data() + j * kBlockLength;
}

void BlockReducer::Add(ModelBlocks& model, const FitPoints& points, PassKind kind,
                       PartialReduction& sum) {
  if (kind == PassKind::SumOfSquares) {
    AddValues(model.Values(points.x).values, points, sum);
    return;
  }
  const BlockResult block = model.Derivatives(points.x);
  AddValues(block.values, points, sum);
  TakeDerivatives(block, points.x.size());
  if (kind == PassKind::NormalEquations) {
    AddProducts(model, points, sum);
  } else {
    AddOrthogonal(model, points, sum);
  }
}

// Leaves the residuals, without weights, in the last copy and the squares of weights in factors_, zeros beyond their end.
void BlockReducer::AddValues(const double* values, const FitPoints& points, PartialReduction& sum) {
  const std::span<const double> y = points.y;
  const double* const weights = points.weights.empty() ? nullptr : points.weights.data();
  double* const residuals = copies_.back();
  const std::size_t length = y.size() / kBlockPadding * kBlockPadding;
  double squares = weights == nullptr
                       ? kernels_.residuals(values, y.data(), residuals, length)
                       : kernels_.weighted_residuals(values, y.data(), weights, residuals,
                                                     factors_.data(), length);
  for (std::size_t i = length; i < y.size(); ++i) {
    residuals[i] = values[i] - y[i];
    const double residual = Weighted(points, residuals[i], i);
    squares += residual * residual;
    if (weights != nullptr) factors_[i] = weights[i] * weights[i];
  }
  std::fill(factors_.data() + y.size(), factors_.data() + PaddedLength(y.size()), 0.0);
  std::fill(residuals + y.size(), residuals + PaddedLength(y.size()), 0.0);
  if (!std::isfinite(squares)) {
    squares = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
      const double residual = Weighted(points, residuals[i], i);
      if (std::isfinite(residual)) {
        squares += residual * residual;
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

// With their weights. False when not all of the columns are finite.
bool BlockReducer::CopyColumns(const FitPoints& points) {
  const std::size_t length = PaddedLength(points.x.size());
  std::fill(std::ranges::copy(points.weights, factors_.begin()).out, factors_.end(), 0.0);
  double check = 0;
  for (std::size_t j = 0; j < width_; ++j) {
    check += points.weights.empty()
                 ? kernels_.copy(columns_[j], copies_[j], length)
                 : kernels_.weigh(columns_[j], factors_.data(), copies_[j], length);
    columns_[j] = copies_[j];
  }
  return check == 0;
}

// False when a product is not finite.
bool BlockReducer::Multiply(std::size_t padded, const double* factors) {
  kernels_.products(columns_.data(), factors, width_, padded, products_.data());
  double check = 0;
  for (std::size_t j = 0; j < width_; ++j) check += products_[j + j * width_] * 0;
  return check == 0;
}

void BlockReducer::AddProducts(ModelBlocks& model, const FitPoints& points, PartialReduction& sum) {
  const std::size_t padded = PaddedLength(points.x.size());
  const double* const squares = points.weights.empty() ? nullptr : factors_.data();
  if (!Multiply(padded, squares)) {
    if (!CopyColumns(points)) MendRows(model, points, sum);
    Multiply(padded, nullptr);
  }
  for (std::size_t j = 0; j < width_; ++j) {
    for (std::size_t i = 0; i <= j; ++i)
      sum.products[i + j * width_].Add(products_[i + j * width_]);
  }
}

void BlockReducer::AddOrthogonal(ModelBlocks& model, const FitPoints& points,
                                 PartialReduction& sum) {
  const std::size_t padded = PaddedLength(points.x.size());
  if (!CopyColumns(points)) MendRows(model, points, sum);
  kernels_.eliminate(copies_.data(), width_, padded, sum.triangle.data());
}

// Some derivatives have no value where the model has one (of x^b by b at 0, say): differences stand in for them. Points
// where that does not help are taken out.
void BlockReducer::MendRows(ModelBlocks& model, const FitPoints& points, PartialReduction& sum) {
  const BlockResult differences = model.Differences(points.x);
  for (std::size_t i = 0; i < points.x.size(); ++i) {
    bool defined = std::isfinite(copies_.back()[i]);
    for (std::size_t j = 0; defined && j + 1 < width_; ++j) {
      if (!std::isfinite(copies_[j][i]))
        copies_[j][i] = Weighted(points, differences.derivatives[j][i], i);
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
