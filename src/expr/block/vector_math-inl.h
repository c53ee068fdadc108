// Elementary functions on vectors, one step per processor's instruction set: included once for each of them. Knows only
// vectors; special cases follow the words of expressions (undefined out of the domain).
#if defined(TARNWICK_VECTOR_MATH_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef TARNWICK_VECTOR_MATH_INL
#undef TARNWICK_VECTOR_MATH_INL
#else
#define TARNWICK_VECTOR_MATH_INL
#endif

#include <hwy/highway.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/undefined.h"
#include "expr/block/exp_table.h"

HWY_BEFORE_NAMESPACE();
namespace tarnwick::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Lanes = hn::ScalableTag<double>;
using Vec = hn::Vec<Lanes>;
using Bits = hn::RebindToSigned<Lanes>;

HWY_INLINE Vec Number(double value) {
  return hn::Set(Lanes(), value);
}

/// Added and taken away again, rounds numbers below 2^51 to whole ones; the sum's low bits are that whole number.
inline constexpr double kRounder = 0x1.8p52;

/// c0 + c1 x + ...: even and odd powers apart, so that two chains of multiplications run beside each other.
template <std::size_t N>
HWY_INLINE Vec Polynomial(const double (&c)[N], Vec x) {
  static_assert(N > 2);
  constexpr std::size_t kHighestEven = (N - 1) / 2 * 2;
  constexpr std::size_t kHighestOdd = N / 2 * 2 - 1;
  const Vec x2 = hn::Mul(x, x);
  Vec even = Number(c[kHighestEven]);
  Vec odd = Number(c[kHighestOdd]);
  for (std::size_t i = kHighestEven; i >= 2; i -= 2) even = hn::MulAdd(even, x2, Number(c[i - 2]));
  for (std::size_t i = kHighestOdd; i >= 3; i -= 2) odd = hn::MulAdd(odd, x2, Number(c[i - 2]));
  return hn::MulAdd(odd, x, even);
}

/// `function` applied lane by lane: the way out for arguments that the fast road does not serve.
HWY_NOINLINE inline Vec ByLanes(double (*function)(double), Vec x) {
  const Lanes lanes;
  HWY_ALIGN double values[hn::MaxLanes(lanes)];
  hn::Store(x, lanes, values);
  for (std::size_t i = 0; i < hn::Lanes(lanes); ++i) values[i] = function(values[i]);
  return hn::Load(lanes, values);
}

// e^x = 2^n e^r with n = round(x / ln 2), r = x - n ln 2 in two parts (Cody, Waite: Software Manual for the Elementary
// Functions, 1980); e^r = 1 + r + r^2 P(r), P interpolating at Chebyshev nodes, the relative error of e^r below 2e-17.
inline constexpr double kExpCoefficients[] = {
    0.50000000000000011,    0.16666666666666669,    0.041666666666624129,   0.0083333333333300615,
    0.0013888888917213717,  0.00019841269863053618, 2.4801521295954376e-05, 2.7557268459997064e-06,
    2.7620088445409746e-07, 2.510038549551032e-08,
};

/// e^x for small r, and the number whose low bits are n.
struct ExpParts {
  Vec fraction;
  Vec sum;
};

HWY_INLINE ExpParts SplitExp(Vec x) {
  const Vec sum = hn::MulAdd(x, Number(1.4426950408889634), Number(kRounder));
  const Vec n = hn::Sub(sum, Number(kRounder));
  Vec r = hn::NegMulAdd(n, Number(0x1.62e42fee00000p-1), x);
  r = hn::NegMulAdd(n, Number(0x1.a39ef35793c76p-33), r);
  const Vec p = Polynomial(kExpCoefficients, r);
  return {hn::Add(hn::MulAdd(p, hn::Mul(r, r), r), Number(1)), sum};
}

/// e^x for every x: raised in two steps by powers of two that are normal for every x that is not replaced.
HWY_NOINLINE inline Vec GuardedExp(Vec x) {
  const Lanes lanes;
  const Bits bits;
  const ExpParts parts = SplitExp(x);
  const auto whole = hn::Sub(hn::BitCast(bits, parts.sum), hn::BitCast(bits, Number(kRounder)));
  const auto half = hn::ShiftRight<1>(whole);
  const auto power = [&](auto exponent) {
    return hn::BitCast(lanes, hn::ShiftLeft<52>(hn::Add(exponent, hn::Set(bits, 1023))));
  };
  const Vec scaled = hn::Mul(hn::Mul(parts.fraction, power(half)), power(hn::Sub(whole, half)));
  const Vec vanishing = hn::IfThenZeroElse(hn::Le(x, Number(-744.44)), scaled);
  const Vec guarded = hn::IfThenElse(hn::Ge(x, Number(709.75)), Number(kUndefined), vanishing);
  return hn::IfThenElse(hn::Eq(x, x), guarded, x);
}

#if HWY_TARGET <= HWY_SSSE3 && HWY_TARGET >= HWY_SSE4
// Without fused multiplication the polynomial is what takes long: e^x = 2^(k/128) e^r with k = round(128 x / ln 2), the
// power from a table, e^r by its series to the fifth power, the rest below 1e-18 (P. T. P. Tang: Table-driven
// implementation of the exponential function, ACM TOMS 15, 1989).
HWY_INLINE Vec PlainExp(Vec x) {
  const Lanes lanes;
  const Bits bits;
  const Vec sum = hn::MulAdd(x, Number(184.6649652337873), Number(kRounder));
  const Vec k = hn::Sub(sum, Number(kRounder));
  Vec r = hn::NegMulAdd(k, Number(0x1.62e42fee00000p-8), x);
  r = hn::NegMulAdd(k, Number(0x1.a39ef35793c76p-40), r);
  const auto places = hn::BitCast(bits, sum);
  const auto entry = [&](std::size_t lane) {
    return Number(
        kExpTable[static_cast<std::size_t>(hn::ExtractLane(places, lane)) % kExpTable.size()]);
  };
  const Vec table = hn::InterleaveLower(lanes, entry(0), entry(1));
  const Vec power =
      hn::BitCast(lanes, hn::Add(hn::BitCast(bits, table), hn::ShiftLeft<45>(places)));
  const Vec r2 = hn::Mul(r, r);
  const Vec low = hn::MulAdd(Number(1.0 / 6), r, Number(0.5));
  const Vec high = hn::MulAdd(Number(1.0 / 120), r, Number(1.0 / 24));
  const Vec growth = hn::MulAdd(hn::MulAdd(high, r2, low), r2, r);
  return hn::MulAdd(power, growth, power);
}
#else
HWY_INLINE Vec PlainExp(Vec x) {
  const Bits bits;
  const ExpParts parts = SplitExp(x);
  return hn::BitCast(Lanes(), hn::Add(hn::BitCast(bits, parts.fraction),
                                      hn::ShiftLeft<52>(hn::BitCast(bits, parts.sum))));
}
#endif

HWY_INLINE Vec ExpVec(Vec x) {
  // There the result is a normal number, whose exponent can be raised in place.
  const bool plain = hn::AllTrue(Lanes(), hn::Lt(hn::Abs(x), Number(708)));
  return HWY_LIKELY(plain) ? PlainExp(x) : GuardedExp(x);
}

// ln x = k ln 2 + ln(1 + f), 1 + f from sqrt(1/2) to sqrt 2; with s = f / (2 + f): ln(1 + f) = f - f^2/2 +
// s (f^2/2 + s^2 P(s^2)), which keeps the low bits (K. C. Ng's method in fdlibm, Sun Microsystems, 1993). P interpolates at
// Chebyshev nodes, the relative error of the sum below 5e-18.
inline constexpr double kLnCoefficients[] = {
    0.66666666666666696, 0.39999999999898272, 0.28571428626533618, 0.22222211043776857,
    0.18182895750119193, 0.15331501611145329, 0.1461916613488797,
};

inline double ScalarLn(double x) {
  return x <= 0 ? kUndefined : std::log(x);
}

HWY_INLINE Vec LnVec(Vec x) {
  const Lanes lanes;
  const Bits bits;
  const auto plain =
      hn::And(hn::Ge(x, Number(0x1p-1022)), hn::Le(x, Number(0x1.fffffffffffffp1023)));
  if (HWY_UNLIKELY(!hn::AllTrue(lanes, plain))) return ByLanes(&ScalarLn, x);
  // The exponent that leaves a fraction from sqrt(1/2) on.
  const auto raised = hn::Sub(hn::BitCast(bits, x), hn::Set(bits, 0x3FE6A09E667F3BCD));
  const auto exponent =
      hn::And(raised, hn::Set(bits, static_cast<std::int64_t>(0xFFF0000000000000U)));
  const Vec fraction = hn::BitCast(lanes, hn::Sub(hn::BitCast(bits, x), exponent));
  // The exponent as a number, by way of one large enough to hold it beside its low bits.
  const auto biased =
      hn::Add(hn::BitCast(bits, hn::ShiftRight<52>(hn::BitCast(
                                    hn::RebindToUnsigned<Lanes>(),
                                    hn::Add(exponent, hn::Set(bits, std::int64_t{1023} << 52))))),
              hn::BitCast(bits, Number(0x1p52)));
  const Vec k = hn::Sub(hn::BitCast(lanes, biased), Number(0x1p52 + 1023));
  const Vec f = hn::Sub(fraction, Number(1));
  const Vec s = hn::Div(f, hn::Add(f, Number(2)));
  const Vec z = hn::Mul(s, s);
  const Vec p = hn::Mul(z, Polynomial(kLnCoefficients, z));
  const Vec half_square = hn::Mul(Number(0.5), hn::Mul(f, f));
  const Vec low = hn::MulAdd(s, hn::Add(half_square, p), hn::Mul(k, Number(0x1.a39ef35793c76p-33)));
  return hn::MulAdd(k, Number(0x1.62e42fee00000p-1), hn::Sub(f, hn::Sub(half_square, low)));
}

// sin x = +-sin r, r = x - q pi with pi in four parts whose products with q are exact (Cody, Waite); sin r = r + r^3 P(r^2),
// P interpolating at Chebyshev nodes, its relative error below 1e-16.
inline constexpr double kSinCoefficients[] = {
    -0.16666666666666666,   0.0083333333333333159,   -0.00019841269841254955,
    2.7557319219158432e-06, -2.5052107616384595e-08, 1.6058977272815506e-10,
    -7.643969031052769e-13, 2.7314289861226158e-15,
};
// q stays below 2^20.
inline constexpr double kLargestPlainAngle = 3e6;

/// sin(x - q pi), its sign turned where the last bit of `turns` is set.
HWY_INLINE Vec ReducedSin(Vec x, Vec q, hn::Vec<Bits> turns) {
  const Lanes lanes;
  Vec r = hn::NegMulAdd(q, Number(0x1.921fb54000000p+1), x);
  r = hn::NegMulAdd(q, Number(0x1.10b4610000000p-29), r);
  r = hn::NegMulAdd(q, Number(0x1.a626330000000p-57), r);
  r = hn::NegMulAdd(q, Number(0x1.45c06e0e68948p-85), r);
  const Vec y = hn::Mul(r, r);
  const Vec sine = hn::MulAdd(Polynomial(kSinCoefficients, y), hn::Mul(y, r), r);
  return hn::Xor(sine, hn::BitCast(lanes, hn::ShiftLeft<63>(turns)));
}

HWY_INLINE bool ArePlainAngles(Vec x) {
  return hn::AllTrue(Lanes(), hn::Lt(hn::Abs(x), Number(kLargestPlainAngle)));
}

inline double ScalarSin(double x) {
  return std::sin(x);
}
inline double ScalarCos(double x) {
  return std::cos(x);
}

HWY_INLINE Vec SinVec(Vec x) {
  if (HWY_UNLIKELY(!ArePlainAngles(x))) return ByLanes(&ScalarSin, x);
  const Vec sum = hn::MulAdd(x, Number(0.31830988618379067), Number(kRounder));
  const Vec sine = ReducedSin(x, hn::Sub(sum, Number(kRounder)), hn::BitCast(Bits(), sum));
  // Keeps the sign of zero.
  return hn::IfThenElse(hn::Eq(x, Number(0)), x, sine);
}

/// cos x = sin(x + pi/2): reduced by odd multiples of pi/2.
HWY_INLINE Vec CosVec(Vec x) {
  if (HWY_UNLIKELY(!ArePlainAngles(x))) return ByLanes(&ScalarCos, x);
  const Vec sum =
      hn::Add(hn::MulAdd(x, Number(0.31830988618379067), Number(-0.5)), Number(kRounder));
  const Vec q = hn::Add(hn::Sub(sum, Number(kRounder)), Number(0.5));
  const auto turns = hn::Add(hn::BitCast(Bits(), sum), hn::Set(Bits(), 1));
  return ReducedSin(x, q, turns);
}

}  // namespace tarnwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // include guard per instruction set
