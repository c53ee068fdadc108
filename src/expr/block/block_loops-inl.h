// What kernels on blocks are made of: arguments, the loop, arithmetic; included once for each instruction set. Knows arrays;
// nothing of expressions.
#if defined(TARNWICK_BLOCK_LOOPS_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef TARNWICK_BLOCK_LOOPS_INL
#undef TARNWICK_BLOCK_LOOPS_INL
#else
#define TARNWICK_BLOCK_LOOPS_INL
#endif

#include <hwy/highway.h>

#include <cstddef>

#include "base/undefined.h"
#include "expr/block/block_padding.h"
#include "expr/block/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

/// An argument with a value of its own at every place.
class Array {
 public:
  explicit Array(const double* values) : values_(values) {}
  HWY_INLINE Vec At(std::size_t i) const { return hn::LoadU(Lanes(), values_ + i); }

 private:
  const double* values_;
};

/// An argument with one value for all places.
class Uniform {
 public:
  explicit Uniform(const double* value) : value_(Number(*value)) {}
  HWY_INLINE Vec At(std::size_t /*i*/) const { return value_; }

 private:
  Vec value_;
};

inline constexpr std::size_t kLanes = hn::MaxLanes(Lanes());
inline constexpr std::size_t kUnrolled = 4 * kLanes;
static_assert(kBlockPadding % kLanes == 0);

/// `step`, a short one, at every vector's place below `count`: several to a turn of the loop.
template <class Step>
HWY_INLINE void ForEachVector(std::size_t count, Step step) {
  std::size_t i = 0;
  for (; i + kUnrolled <= count; i += kUnrolled) {
    for (std::size_t k = i; k < i + kUnrolled; k += kLanes) step(k);
  }
  for (; i < count; i += kLanes) step(i);
}

// clang-format off
struct AddOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Add(a, b); } };
struct SubtractOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Sub(a, b); } };
struct MultiplyOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Mul(a, b); } };
// clang-format on

struct DivideOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) {
    return hn::IfThenElse(hn::Eq(b, Number(0)), Number(kUndefined), hn::Div(a, b));
  }
};
}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // include guard per instruction set
