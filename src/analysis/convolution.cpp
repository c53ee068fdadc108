#include "analysis/convolution.h"

#include <cstddef>

// Compiled once for each instruction set that the program shall know.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "analysis/convolution.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void ConvolveAll(const double* HWY_RESTRICT values, const double* HWY_RESTRICT weights,
                 std::size_t count, double* HWY_RESTRICT sums, std::size_t made) {
  const hn::ScalableTag<double> lanes;
  const std::size_t step = hn::Lanes(lanes);
  std::size_t i = 0;
  for (; i + 4 * step <= made; i += 4 * step) {
    auto a = hn::Zero(lanes);
    auto b = a;
    auto c = a;
    auto d = a;
    for (std::size_t k = 0; k < count; ++k) {
      const auto weight = hn::Set(lanes, weights[k]);
      const double* const from = values + i + k;
      a = hn::MulAdd(weight, hn::LoadU(lanes, from), a);
      b = hn::MulAdd(weight, hn::LoadU(lanes, from + step), b);
      c = hn::MulAdd(weight, hn::LoadU(lanes, from + 2 * step), c);
      d = hn::MulAdd(weight, hn::LoadU(lanes, from + 3 * step), d);
    }
    hn::StoreU(a, lanes, sums + i);
    hn::StoreU(b, lanes, sums + i + step);
    hn::StoreU(c, lanes, sums + i + 2 * step);
    hn::StoreU(d, lanes, sums + i + 3 * step);
  }
  for (; i < made; ++i) {
    double sum = 0;
    for (std::size_t k = 0; k < count; ++k) sum += weights[k] * values[i + k];
    sums[i] = sum;
  }
}

}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarnwick {

HWY_EXPORT(ConvolveAll);

void Convolve(std::span<const double> values, std::span<const double> weights,
              std::span<double> sums) {
  HWY_DYNAMIC_DISPATCH(ConvolveAll)
  (values.data(), weights.data(), weights.size(), sums.data(), sums.size());
}

}  // namespace tarnwick
#endif
