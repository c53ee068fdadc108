// w(z) = exp(-z^2) erfc(-iz) and its slope on vectors, included once for each instruction set: the methods of
// words/special_functions.cpp. Knows only vectors.
#if defined(TARNWICK_FADDEEVA_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef TARNWICK_FADDEEVA_INL
#undef TARNWICK_FADDEEVA_INL
#else
#define TARNWICK_FADDEEVA_INL
#endif

#include <hwy/highway.h>

#include <array>
#include <cstddef>
#include <numbers>

#include "expr/block/vector_math-inl.h"
#include "expr/words/faddeeva_nodes.h"
#include "expr/words/special_functions.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

/// Beyond, single numbers go other ways.
inline constexpr double kGreatestPlainZ = 1e60;

struct ComplexVec {
  Vec re;
  Vec im;
};

HWY_INLINE ComplexVec Times(ComplexVec a, ComplexVec b) {
  return {hn::MulSub(a.re, b.re, hn::Mul(a.im, b.im)), hn::MulAdd(a.re, b.im, hn::Mul(a.im, b.re))};
}

HWY_INLINE ComplexVec Times(ComplexVec a, Vec factor) {
  return {hn::Mul(a.re, factor), hn::Mul(a.im, factor)};
}

/// 1 / z, and 1 / z^2.
struct Inverse {
  ComplexVec one;
  ComplexVec square;
};

HWY_INLINE Inverse InverseOf(Vec x, Vec y) {
  const Vec size = hn::Div(Number(1), hn::MulAdd(x, x, hn::Mul(y, y)));
  const ComplexVec one = {hn::Mul(x, size), hn::Neg(hn::Mul(y, size))};
  return {one, Times(one, one)};
}

/// sum of c[0] ... c[n] / z^(2n), c[n] = c[n-1] (n + offset)
HWY_INLINE ComplexVec SumFarOut(ComplexVec square, double offset) {
  ComplexVec sum = {Number(0), Number(0)};
  for (int n = kFarTerms; n > 0; --n) {
    const ComplexVec more = {hn::Add(sum.re, Number(1)), sum.im};
    sum = Times(Times(more, square), Number(n + offset));
  }
  return {hn::Add(sum.re, Number(1)), sum.im};
}

/// i / (sqrt(pi) z) sum (2n - 1)!! / (2 z^2)^n
HWY_INLINE ComplexVec FarOut(Vec x, Vec y) {
  const Inverse inverse = InverseOf(x, y);
  const ComplexVec w =
      Times(Times(inverse.one, SumFarOut(inverse.square, -0.5)), Number(std::numbers::inv_sqrtpi));
  return {hn::Neg(w.im), w.re};
}

/// -i / (sqrt(pi) z^2) sum (2n + 1)!! / (2 z^2)^n
HWY_INLINE ComplexVec SlopeFarOut(Vec x, Vec y) {
  const ComplexVec square = InverseOf(x, y).square;
  const ComplexVec slope =
      Times(Times(square, SumFarOut(square, 0.5)), Number(std::numbers::inv_sqrtpi));
  return {slope.im, hn::Neg(slope.re)};
}

/// What the poles of the sum leave: 2 exp(-z^2) / (1 + sign exp(-2 pi i z / h)).
HWY_INLINE ComplexVec PoleTerms(Vec sign, Vec x, Vec y) {
  const Vec xx = hn::Mul(x, x);
  const Vec yy = hn::Mul(y, y);
  const Vec lost = hn::Sub(hn::MulSub(y, y, yy), hn::MulSub(x, x, xx));
  const Vec bell = ExpVec(hn::Sub(yy, xx));
  const Vec size = hn::Mul(Number(2), hn::MulAdd(bell, lost, bell));
  const Vec angle = hn::Mul(Number(2), hn::Mul(x, y));
  const ComplexVec above = {hn::Mul(size, CosVec(angle)), hn::Neg(hn::Mul(size, SinVec(angle)))};
  const Vec turn = hn::Mul(x, Number(2 * std::numbers::pi / kFaddeevaStep));
  const Vec growth = hn::Mul(
      sign, ExpVec(hn::Min(hn::Mul(y, Number(2 * std::numbers::pi / kFaddeevaStep)), Number(300))));
  const ComplexVec below = {hn::MulAdd(growth, CosVec(turn), Number(1)),
                            hn::Neg(hn::Mul(growth, SinVec(turn)))};
  const Vec squared = hn::MulAdd(below.re, below.re, hn::Mul(below.im, below.im));
  return Times({hn::MulAdd(above.re, below.re, hn::Mul(above.im, below.im)),
                hn::MulSub(above.im, below.re, hn::Mul(above.re, below.im))},
               hn::Div(Number(1), squared));
}

/// (2 h / pi) sum weight i z / (z^2 - square) over the nodes at whole or at half steps.
template <class Mask>
HWY_INLINE ComplexVec NodeSums(Mask whole, Vec x, Vec y) {
  const Vec squares = hn::MulAdd(x, x, hn::Mul(y, y));
  const Vec difference = hn::Mul(hn::Sub(x, y), hn::Add(x, y));
  const Vec b = hn::Mul(Number(2), hn::Mul(x, y));
  const Vec bb = hn::Mul(b, b);
  Vec real = Number(0);
  Vec imaginary = Number(0);
  for (std::size_t k = 0; k < kFaddeevaTerms; ++k) {
    const Vec square =
        hn::IfThenElse(whole, Number(kWholeNodes.square[k]), Number(kHalfNodes.square[k]));
    const Vec weight =
        hn::IfThenElse(whole, Number(kWholeNodes.weight[k]), Number(kHalfNodes.weight[k]));
    const Vec a = hn::Sub(difference, square);
    const Vec share = hn::Div(weight, hn::MulAdd(a, a, bb));
    real = hn::MulAdd(share, hn::Add(squares, square), real);
    imaginary = hn::MulAdd(share, hn::Sub(squares, square), imaginary);
  }
  const Vec factor = Number(2 * kFaddeevaStep / std::numbers::pi);
  return {hn::Mul(hn::Mul(factor, y), real), hn::Mul(hn::Mul(factor, x), imaginary)};
}

HWY_NOINLINE inline ComplexVec Near(Vec x, Vec y) {
  const Lanes lanes;
  const Vec steps = hn::Mul(x, Number(1 / kFaddeevaStep));
  const Vec place = hn::Sub(steps, hn::Floor(steps));
  const auto between = hn::And(hn::Ge(place, Number(0.25)), hn::Le(place, Number(0.75)));
  const auto whole = hn::And(between, hn::Lt(y, x));
  const ComplexVec sum = NodeSums(whole, x, y);
  // There they are below rounding.
  const Vec fall = hn::Mul(hn::Sub(x, y), hn::Add(x, y));
  const auto gone = hn::Or(hn::And(hn::Gt(fall, Number(60)), hn::Gt(y, Number(1e-8))),
                           hn::Ge(y, Number(std::numbers::pi / kFaddeevaStep)));
  if (hn::AllTrue(lanes, gone)) return sum;
  const ComplexVec poles =
      PoleTerms(hn::IfThenElse(whole, Number(-1), Number(1)), x, hn::Min(y, Number(26)));
  return {hn::Add(sum.re, hn::IfThenZeroElse(gone, poles.re)),
          hn::Add(sum.im, hn::IfThenZeroElse(gone, poles.im))};
}

/// The real part of w(x + iy) and its derivatives.
struct FaddeevaReOf {
  static double Scalar(double x, double y) { return FaddeevaReal(x, y); }
  static HWY_INLINE Vec Far(Vec /*sign*/, Vec x, Vec y) { return FarOut(x, y).re; }
  static HWY_INLINE Vec Close(Vec /*sign*/, Vec x, Vec y) { return Near(x, y).re; }
};

/// w' = 2 i / sqrt(pi) - 2 z w
struct FaddeevaReByXOf {
  static double Scalar(double x, double y) { return FaddeevaSlope(x, y).real(); }
  static HWY_INLINE Vec Far(Vec sign, Vec x, Vec y) {
    return hn::CopySign(SlopeFarOut(x, y).re, hn::Neg(sign));
  }
  static HWY_INLINE Vec Close(Vec sign, Vec x, Vec y) {
    const ComplexVec w = Near(x, y);
    const Vec slope = hn::MulSub(y, w.im, hn::Mul(x, w.re));
    return hn::Mul(Number(2), hn::Xor(slope, hn::And(sign, hn::SignBit(Lanes()))));
  }
};

struct FaddeevaReByYOf {
  static double Scalar(double x, double y) { return -FaddeevaSlope(x, y).imag(); }
  static HWY_INLINE Vec Far(Vec /*sign*/, Vec x, Vec y) { return hn::Neg(SlopeFarOut(x, y).im); }
  static HWY_INLINE Vec Close(Vec /*sign*/, Vec x, Vec y) {
    const ComplexVec w = Near(x, y);
    const Vec turned = hn::MulAdd(x, w.im, hn::Mul(y, w.re));
    return hn::Mul(Number(2), hn::Sub(turned, Number(std::numbers::inv_sqrtpi)));
  }
};

template <class Function>
HWY_NOINLINE Vec OneByOne(Vec x, Vec y) {
  const Lanes lanes;
  HWY_ALIGN double a[hn::MaxLanes(lanes)];
  HWY_ALIGN double b[hn::MaxLanes(lanes)];
  hn::Store(x, lanes, a);
  hn::Store(y, lanes, b);
  for (std::size_t i = 0; i < hn::Lanes(lanes); ++i) a[i] = Function::Scalar(a[i], b[i]);
  return hn::Load(lanes, a);
}

template <class Function>
struct FaddeevaOp {
  static HWY_NOINLINE Vec Of(Vec x, Vec y) {
    const Lanes lanes;
    const Vec size = hn::Abs(x);
    const auto plain = hn::And(hn::Lt(size, Number(kGreatestPlainZ)),
                               hn::And(hn::Ge(y, Number(0)), hn::Lt(y, Number(kGreatestPlainZ))));
    if (HWY_UNLIKELY(!hn::AllTrue(lanes, plain))) return OneByOne<Function>(x, y);
    const auto far = hn::And(hn::Ge(hn::MulAdd(x, x, hn::Mul(y, y)), Number(kFarSquare)),
                             hn::Gt(y, Number(kLeastFarY)));
    return hn::AllTrue(lanes, far) ? Function::Far(x, size, y) : Function::Close(x, size, y);
  }
};

}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // include guard per instruction set
