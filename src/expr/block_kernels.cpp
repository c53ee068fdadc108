#include "expr/block_kernels.h"

// Compiled once for each instruction set that the program shall know.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "expr/block_kernels.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

#include "expr/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

struct OfArrays {
  static Vec First(const double* a, std::size_t i) { return hn::LoadU(Lanes(), a + i); }
  static Vec Second(const double* b, std::size_t i) { return hn::LoadU(Lanes(), b + i); }
};
struct OfUniformFirst : OfArrays {
  static Vec First(const double* a, std::size_t /*i*/) { return Number(*a); }
};
struct OfUniformSecond : OfArrays {
  static Vec Second(const double* b, std::size_t /*i*/) { return Number(*b); }
};

template <class Operation>
void Unary(const double* a, const double* /*b*/, double* out, std::size_t count) {
  for (std::size_t i = 0; i < count; i += hn::Lanes(Lanes()))
    hn::StoreU(Operation::Of(OfArrays::First(a, i)), Lanes(), out + i);
}

template <class Operation, class Access>
void Binary(const double* a, const double* b, double* out, std::size_t count) {
  for (std::size_t i = 0; i < count; i += hn::Lanes(Lanes()))
    hn::StoreU(Operation::Of(Access::First(a, i), Access::Second(b, i)), Lanes(), out + i);
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

struct AddOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Add(a, b); } };
struct SubtractOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Sub(a, b); } };
struct MultiplyOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Mul(a, b); } };
struct QuotientOp { static HWY_INLINE Vec Of(Vec a, Vec b) { return hn::Div(a, b); } };
// clang-format on

struct DivideOp {
  static HWY_INLINE Vec Of(Vec a, Vec b) {
    return hn::IfThenElse(hn::Eq(b, Number(0)), Number(kUndefined), hn::Div(a, b));
  }
};
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
constexpr BlockKernels TwoArguments() {
  return {&Binary<Operation, OfArrays>, &Binary<Operation, OfUniformFirst>,
          &Binary<Operation, OfUniformSecond>};
}

const BlockKernelTable* Table() {
  // In the order of BlockOp.
  static constexpr BlockKernelTable kTable = {
      OneArgument<NegateOp>(),       OneArgument<AbsoluteOp>(),
      OneArgument<SquareRootOp>(),   OneArgument<ExpOp>(),
      OneArgument<LnOp>(),           OneArgument<SinOp>(),
      OneArgument<CosOp>(),          OneArgument<TanOp>(),
      TwoArguments<AddOp>(),         TwoArguments<SubtractOp>(),
      TwoArguments<MultiplyOp>(),    TwoArguments<DivideOp>(),
      TwoArguments<QuotientOp>(),    TwoArguments<MaskedOp>(),
      TwoArguments<GreaterOp>(),     TwoArguments<GreaterOrEqualOp>(),
      TwoArguments<LessOrEqualOp>(), TwoArguments<LessOp>(),
      TwoArguments<UnequalOp>(),     TwoArguments<EqualOp>(),
      TwoArguments<MaxOp>(),         TwoArguments<MinOp>(),
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
