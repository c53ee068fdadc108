#include "expr/block/fused_kernels.h"

// Compiled once for each instruction set that the program shall know.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "expr/block/fused_kernels.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

#include <type_traits>

#include "expr/block/block_loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

struct SubtractFromOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Sub(b, a); }
};

struct NegateFirstOp {
  static HWY_INLINE Vec Of(Vec a, Vec /*b*/) { return hn::Neg(a); }
};

template <class Inner, class Outer, class A, class B, class C>
void Fused(const double* a, const double* b, const double* c, double* out, std::size_t count) {
  const A first(a);
  const B second(b);
  const C third(c);
  ForEachVector(count, [&](std::size_t i) {
    hn::StoreU(Outer::Of(Inner::Of(first.At(i), second.At(i)), third.At(i)), Lanes(), out + i);
  });
}

template <class Inner, class Outer, class A, class B>
FusedKernel FusedByThird(const FusedOperation& operation) {
  if constexpr (!std::is_same_v<Outer, NegateFirstOp>) {
    if (operation.uniform_c) return &Fused<Inner, Outer, A, B, Uniform>;
  }
  return &Fused<Inner, Outer, A, B, Array>;
}

template <class Inner, class Outer>
FusedKernel FusedByArguments(const FusedOperation& operation) {
  if constexpr (std::is_same_v<Inner, SubtractOp>) {
    if (operation.uniform_a) return FusedByThird<Inner, Outer, Uniform, Array>(operation);
  }
  if (operation.uniform_b) return FusedByThird<Inner, Outer, Array, Uniform>(operation);
  return FusedByThird<Inner, Outer, Array, Array>(operation);
}

template <class Inner>
FusedKernel FusedByOuter(const FusedOperation& operation) {
  switch (operation.outer) {
    case BlockOp::Add:
      return FusedByArguments<Inner, AddOp>(operation);
    case BlockOp::Multiply:
      return FusedByArguments<Inner, MultiplyOp>(operation);
    case BlockOp::Divide:
      return FusedByArguments<Inner, DivideOp>(operation);
    case BlockOp::Negate:
      return FusedByArguments<Inner, NegateFirstOp>(operation);
    default:
      return operation.inner_second ? FusedByArguments<Inner, SubtractFromOp>(operation)
                                    : FusedByArguments<Inner, SubtractOp>(operation);
  }
}

FusedKernel FusedFor(const FusedOperation& operation) {
  if (operation.inner == BlockOp::Add) return FusedByOuter<AddOp>(operation);
  if (operation.inner == BlockOp::Multiply) return FusedByOuter<MultiplyOp>(operation);
  return FusedByOuter<SubtractOp>(operation);
}

}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarnwick {

HWY_EXPORT(FusedFor);

FusedKernel BestFusedKernel(const FusedOperation& operation) {
  return HWY_DYNAMIC_DISPATCH(FusedFor)(operation);
}

}  // namespace tarnwick
#endif
