#include "fit/residuals/reduction_kernels.h"

#include <algorithm>
#include <cmath>

// Compiled once for each instruction set that the program shall know.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fit/residuals/reduction_kernels.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

#include "expr/block/block_padding.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// No wider than the padding, and of a fixed size, so that vectors can stand in arrays.
using Lanes = hn::CappedTag<double, kBlockPadding>;
using Vec = hn::Vec<Lanes>;

HWY_INLINE double Sum(Vec values) {
  return hn::GetLane(hn::SumOfLanes(Lanes(), values));
}

double Residuals(const double* HWY_RESTRICT values, const double* HWY_RESTRICT y,
                 double* HWY_RESTRICT residuals, std::size_t length) {
  const Lanes lanes;
  const std::size_t step = hn::Lanes(lanes);
  Vec squares = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += step) {
    const Vec r = hn::Sub(hn::LoadU(lanes, values + i), hn::LoadU(lanes, y + i));
    hn::StoreU(r, lanes, residuals + i);
    squares = hn::MulAdd(r, r, squares);
  }
  return Sum(squares);
}

double WeightedResiduals(const double* HWY_RESTRICT values, const double* HWY_RESTRICT y,
                         const double* HWY_RESTRICT weights, double* HWY_RESTRICT residuals,
                         double* HWY_RESTRICT squares, std::size_t length) {
  const Lanes lanes;
  const std::size_t step = hn::Lanes(lanes);
  Vec sum = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += step) {
    const Vec r = hn::Sub(hn::LoadU(lanes, values + i), hn::LoadU(lanes, y + i));
    hn::StoreU(r, lanes, residuals + i);
    const Vec weight = hn::LoadU(lanes, weights + i);
    const Vec square = hn::Mul(weight, weight);
    hn::StoreU(square, lanes, squares + i);
    sum = hn::MulAdd(hn::Mul(r, square), r, sum);
  }
  return Sum(sum);
}

double Copy(const double* from, double* to, std::size_t length) {
  const Lanes lanes;
  const std::size_t step = hn::Lanes(lanes);
  Vec not_finite = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += step) {
    const Vec value = hn::LoadU(lanes, from + i);
    hn::StoreU(value, lanes, to + i);
    not_finite = hn::MulAdd(value, hn::Zero(lanes), not_finite);
  }
  return Sum(not_finite);
}

double Weigh(const double* from, const double* weights, double* to, std::size_t length) {
  const Lanes lanes;
  const std::size_t step = hn::Lanes(lanes);
  Vec not_finite = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += step) {
    const Vec value = hn::Mul(hn::LoadU(lanes, from + i), hn::LoadU(lanes, weights + i));
    hn::StoreU(value, lanes, to + i);
    not_finite = hn::MulAdd(value, hn::Zero(lanes), not_finite);
  }
  return Sum(not_finite);
}

// A tile of products: rows of columns times columns of columns, all sums kept in registers.
template <bool kFactors, int kRows, int kColumns>
HWY_INLINE void Tile(const double* const* rows, const double* const* columns,
                     const double* HWY_RESTRICT factors, std::size_t length, double* products,
                     std::size_t width) {
  const Lanes lanes;
  const std::size_t step = hn::Lanes(lanes);
  Vec sums[kRows * kColumns];
  for (Vec& sum : sums) sum = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += step) {
    Vec left[kRows];
    for (int row = 0; row < kRows; ++row) {
      left[row] = hn::LoadU(lanes, rows[row] + i);
      if constexpr (kFactors) left[row] = hn::Mul(left[row], hn::LoadU(lanes, factors + i));
    }
    for (int column = 0; column < kColumns; ++column) {
      const Vec right = hn::LoadU(lanes, columns[column] + i);
      for (int row = 0; row < kRows; ++row) {
        Vec& sum = sums[row + column * kRows];
        sum = hn::MulAdd(left[row], right, sum);
      }
    }
  }
  for (int column = 0; column < kColumns; ++column) {
    for (int row = 0; row < kRows; ++row)
      products[static_cast<std::size_t>(row) + static_cast<std::size_t>(column) * width] =
          Sum(sums[row + column * kRows]);
  }
}

template <bool kFactors, int kColumns>
void ColumnTiles(const double* const* columns, const double* factors, std::size_t column,
                 std::size_t width, std::size_t length, double* products) {
  const std::size_t end = column + kColumns;
  std::size_t row = 0;
  for (; row + 3 <= end; row += 3)
    Tile<kFactors, 3, kColumns>(columns + row, columns + column, factors, length,
                                products + row + column * width, width);
  for (; row < end; ++row)
    Tile<kFactors, 1, kColumns>(columns + row, columns + column, factors, length,
                                products + row + column * width, width);
}

template <bool kFactors>
void AllTiles(const double* const* columns, const double* factors, std::size_t width,
              std::size_t length, double* products) {
  std::size_t column = 0;
  for (; column + 3 <= width; column += 3)
    ColumnTiles<kFactors, 3>(columns, factors, column, width, length, products);
  for (; column < width; ++column)
    ColumnTiles<kFactors, 1>(columns, factors, column, width, length, products);
}

void Products(const double* const* columns, const double* factors, std::size_t width,
              std::size_t length, double* products) {
  if (factors == nullptr) {
    AllTiles<false>(columns, factors, width, length, products);
  } else {
    AllTiles<true>(columns, factors, width, length, products);
  }
}

// Reflects some columns of the block and their numbers in the row of the triangle. `head` is the reflection's element in
// that row, `reflection` its elements in the block; `factor` is 2 by the square of their length.
template <int kColumns>
HWY_INLINE void Reflect(const double* HWY_RESTRICT reflection, double head, double factor,
                        double* const* columns, std::size_t length, double* row,
                        std::size_t width) {
  const Lanes lanes;
  const std::size_t step = hn::Lanes(lanes);
  Vec sums[kColumns];
  for (Vec& sum : sums) sum = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += step) {
    const Vec v = hn::LoadU(lanes, reflection + i);
    for (int k = 0; k < kColumns; ++k)
      sums[k] = hn::MulAdd(v, hn::LoadU(lanes, columns[k] + i), sums[k]);
  }
  Vec amounts[kColumns];
  for (int k = 0; k < kColumns; ++k) {
    double& in_row = row[static_cast<std::size_t>(k) * width];
    const double amount = (head * in_row + Sum(sums[k])) * factor;
    in_row -= amount * head;
    amounts[k] = hn::Set(lanes, amount);
  }
  for (std::size_t i = 0; i < length; i += step) {
    const Vec v = hn::LoadU(lanes, reflection + i);
    for (int k = 0; k < kColumns; ++k)
      hn::StoreU(hn::NegMulAdd(amounts[k], v, hn::LoadU(lanes, columns[k] + i)), lanes,
                 columns[k] + i);
  }
}

double SumOfSquares(const double* values, std::size_t length) {
  const Lanes lanes;
  Vec sum = hn::Zero(lanes);
  for (std::size_t i = 0; i < length; i += hn::Lanes(lanes)) {
    const Vec value = hn::LoadU(lanes, values + i);
    sum = hn::MulAdd(value, value, sum);
  }
  return Sum(sum);
}

// Squares below this lose digits on the way; a column so short is none.
constexpr double kNegligible = 1e-290;

void Eliminate(double* const* columns, std::size_t width, std::size_t length, double* triangle) {
  for (std::size_t j = 0; j < width; ++j) {
    const double below = SumOfSquares(columns[j], length);
    if (below < kNegligible) continue;
    double& diagonal = triangle[j + j * width];
    const double norm = std::sqrt(diagonal * diagonal + below);
    const double reflected = diagonal > 0 ? -norm : norm;
    const double head = diagonal - reflected;
    const double factor = -1 / (reflected * head);
    diagonal = reflected;
    std::size_t column = j + 1;
    for (; column + 4 <= width; column += 4)
      Reflect<4>(columns[j], head, factor, columns + column, length, triangle + j + column * width,
                 width);
    for (; column < width; ++column)
      Reflect<1>(columns[j], head, factor, columns + column, length, triangle + j + column * width,
                 width);
  }
}

const ReductionKernels* Kernels() {
  static constexpr ReductionKernels kKernels = {&Residuals, &WeightedResiduals, &Copy,
                                                &Weigh,     &Products,          &Eliminate};
  return &kKernels;
}

}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarnwick {

HWY_EXPORT(Kernels);

const ReductionKernels& BestReductionKernels() {
  return *HWY_DYNAMIC_DISPATCH(Kernels)();
}

}  // namespace tarnwick
#endif
