#include "expr/block/block_kernels.h"

// Compiled once for each instruction set that the program shall know.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "expr/block/block_kernels.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

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
      OneArgument<NegateOp>(),       OneArgument<AbsoluteOp>(),
      LongFunction<SquareRootOp>(),  LongFunction<ExpOp>(),
      LongFunction<LnOp>(),          LongFunction<SinOp>(),
      LongFunction<CosOp>(),         LongFunction<TanOp>(),
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
  return operation.uniform_c ? &Fused<Inner, Outer, A, B, Uniform>
                             : &Fused<Inner, Outer, A, B, Array>;
}

template <class Inner, class Outer>
FusedKernel FusedByArguments(const FusedOperation& operation) {
  if (operation.uniform_a) return FusedByThird<Inner, Outer, Uniform, Array>(operation);
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

HWY_EXPORT(Table);

const BlockKernelTable& BestBlockKernels() {
  return *HWY_DYNAMIC_DISPATCH(Table)();
}

HWY_EXPORT(FusedFor);

FusedKernel BestFusedKernel(const FusedOperation& operation) {
  return HWY_DYNAMIC_DISPATCH(FusedFor)(operation);
}

}  // namespace tarnwick
#endif
