#include "expr/block/block_kernels.h"

// Compiled once for each instruction set that the program shall know.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "expr/block/block_kernels.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

#include "expr/block/block_loops-inl.h"
#include "expr/block/faddeeva-inl.h"
#include "expr/block/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

template <class Operation>
void Unary(const double* a, const double* /*b*/, double* out, std::size_t count) {
  const Array first(a);
  ForEachVector(count,
                [&](std::size_t i) { hn::StoreU(Operation::Of(first.At(i)), Lanes(), out + i); });
}

/// The same for a long operation, which gains nothing from unrolling.
template <class Operation>
void Function(const double* a, const double* /*b*/, double* out, std::size_t count) {
  for (std::size_t i = 0; i < count; i += kLanes)
    hn::StoreU(Operation::Of(hn::LoadU(Lanes(), a + i)), Lanes(), out + i);
}

template <class Operation, class First, class Second>
void Binary(const double* a, const double* b, double* out, std::size_t count) {
  const First first(a);
  const Second second(b);
  ForEachVector(count, [&](std::size_t i) {
    hn::StoreU(Operation::Of(first.At(i), second.At(i)), Lanes(), out + i);
  });
}

template <class Condition>
HWY_INLINE Vec Truth(Condition holds) {
  return hn::IfThenElseZero(holds, Number(1));
}

// clang-format off
struct NegateOp { static HWY_INLINE Vec Of(Vec a) { return hn::Neg(a); } };
struct AbsoluteOp { static HWY_INLINE Vec Of(Vec a) { return hn::Abs(a); } };
struct SquareRootOp { static HWY_INLINE Vec Of(Vec a) { return hn::Sqrt(a); } };
struct ExpOp { static HWY_INLINE Vec Of(Vec a) { return ExpVec(a); } };
struct LnOp { static HWY_INLINE Vec Of(Vec a) { return LnVec(a); } };
struct SinOp { static HWY_INLINE Vec Of(Vec a) { return SinVec(a); } };
struct CosOp { static HWY_INLINE Vec Of(Vec a) { return CosVec(a); } };
struct TanOp { static HWY_INLINE Vec Of(Vec a) { return hn::Div(SinVec(a), CosVec(a)); } };

struct QuotientOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Div(a, b); } };
// clang-format on

struct MaskedOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::IfThenElseZero(hn::Ne(a, Number(0)), b); }
};
struct GreaterOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return Truth(hn::Gt(a, b)); }
};
struct GreaterOrEqualOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return Truth(hn::Ge(hn::Add(a, Number(1e-20)), b)); }
};
struct LessOrEqualOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return Truth(hn::Ge(hn::Add(b, Number(1e-20)), a)); }
};
struct LessOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return Truth(hn::Le(a, b)); }
};
struct UnequalOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) {
    return Truth(hn::Gt(hn::Abs(hn::Sub(a, b)), Number(1e-30)));
  }
};
struct EqualOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) {
    return Truth(hn::Lt(hn::Abs(hn::Sub(a, b)), Number(1e-30)));
  }
};
struct MaxOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::IfThenElse(hn::Ge(a, b), a, b); }
};
struct MinOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::IfThenElse(hn::Gt(a, b), b, a); }
};

template <class Operation>
constexpr BlockKernels OneArgument() {
  return {&Unary<Operation>, nullptr, nullptr};
}
template <class Operation>
constexpr BlockKernels LongFunction() {
  return {&Function<Operation>, nullptr, nullptr};
}
template <class Operation>
constexpr BlockKernels TwoArguments() {
  return {&Binary<Operation, Array, Array>, &Binary<Operation, Uniform, Array>,
          &Binary<Operation, Array, Uniform>};
}

const BlockKernelTable* Table() {
  // In the order of BlockOp.
  static constexpr BlockKernelTable kTable = {
      OneArgument<NegateOp>(),
      OneArgument<AbsoluteOp>(),
      LongFunction<SquareRootOp>(),
      LongFunction<ExpOp>(),
      LongFunction<LnOp>(),
      LongFunction<SinOp>(),
      LongFunction<CosOp>(),
      LongFunction<TanOp>(),
      TwoArguments<AddOp>(),
      TwoArguments<SubtractOp>(),
      TwoArguments<MultiplyOp>(),
      TwoArguments<DivideOp>(),
      TwoArguments<QuotientOp>(),
      TwoArguments<MaskedOp>(),
      TwoArguments<GreaterOp>(),
      TwoArguments<GreaterOrEqualOp>(),
      TwoArguments<LessOrEqualOp>(),
      TwoArguments<LessOp>(),
      TwoArguments<UnequalOp>(),
      TwoArguments<EqualOp>(),
      TwoArguments<MaxOp>(),
      TwoArguments<MinOp>(),
      TwoArguments<FaddeevaOp<FaddeevaReOf>>(),
      TwoArguments<FaddeevaOp<FaddeevaReByXOf>>(),
      TwoArguments<FaddeevaOp<FaddeevaReByYOf>>(),
  };
  return &kTable;
}

}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarnwick {

HWY_EXPORT(Table);

const BlockKernelTable& BestBlockKernels() {
  return *HWY_DYNAMIC_DISPATCH(Table)();
}

}  // namespace tarnwick
#endif
