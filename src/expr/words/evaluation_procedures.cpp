#include "expr/words/evaluation_procedures.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "base/undefined.h"
#include "expr/words/expr_word.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr double kBeyondInt64 = 0x1p63;
constexpr double kExpOverflow = 709.75;
constexpr double kExpUnderflow = -744.44;
constexpr double kOrderTolerance = 1e-20;
constexpr double kEqualTolerance = 1e-30;
constexpr std::int64_t kLargestFactorial = 170;

double First(const TExprRec& rec) {
  return *rec.Args[0];
}
double Second(const TExprRec& rec) {
  return *rec.Args[1];
}
double Truth(bool holds) {
  return holds ? 1 : 0;
}

std::int64_t LowByte(std::int64_t value) {
  return value & 0xFF;
}

/// The result of `compute` over both arguments rounded; undefined where one cannot be.
template <class Compute>
double OfRounded(const TExprRec& rec, Compute compute) {
  const std::optional<std::int64_t> a = RoundToInteger(First(rec));
  const std::optional<std::int64_t> b = RoundToInteger(Second(rec));
  return a && b ? static_cast<double>(compute(*a, *b)) : kUndefined;
}

double Products(double base, std::int64_t exponent) {
  double result = 1;
  for (double square = base; exponent > 0; exponent >>= 1, square *= square) {
    if (exponent & 1) result *= square;
  }
  return result;
}

}  // namespace

std::optional<std::int64_t> RoundToInteger(double value) {
  const double whole = std::nearbyint(value);
  if (!(whole >= -kBeyondInt64 && whole < kBeyondInt64)) return std::nullopt;
  return static_cast<std::int64_t>(whole);
}

double IntegerPower(double base, std::int64_t exponent) {
  if (exponent < -kLargestProductPower || exponent > kLargestProductPower)
    return std::pow(base, static_cast<double>(exponent));
  return exponent < 0 ? 1 / Products(base, -exponent) : Products(base, exponent);
}

void LoadOperand(TExprRec& rec) {
  rec.Res = First(rec);
}
void CompareStrings(TExprRec& rec) {
  rec.Res = Truth(static_cast<const TLogicalStringOper&>(*rec.Word).Holds());
}
void NextRandom(TExprRec& rec) {
  rec.Res = static_cast<TRandomFunction&>(*rec.Word).Next();
}

void Pi(TExprRec& rec) {
  rec.Res = std::numbers::pi;
}

void Factorial(TExprRec& rec) {
  const std::optional<std::int64_t> n = RoundToInteger(First(rec));
  if (!n) {
    rec.Res = kUndefined;
  } else if (*n > kLargestFactorial) {
    rec.Res = std::numeric_limits<double>::infinity();
  } else {
    double product = 1;
    for (std::int64_t factor = 2; factor <= *n; ++factor) product *= static_cast<double>(factor);
    rec.Res = product;
  }
}

void Percent(TExprRec& rec) {
  rec.Res = First(rec) * 0.01;
}
void Negate(TExprRec& rec) {
  rec.Res = -First(rec);
}
void Identity(TExprRec& rec) {
  rec.Res = First(rec);
}
void Power(TExprRec& rec) {
  rec.Res = std::pow(First(rec), Second(rec));
}
void IntPower(TExprRec& rec) {
  const std::optional<std::int64_t> exponent = RoundToInteger(Second(rec));
  rec.Res = exponent ? IntegerPower(First(rec), *exponent) : kUndefined;
}
void Multiply(TExprRec& rec) {
  rec.Res = First(rec) * Second(rec);
}
void Divide(TExprRec& rec) {
  rec.Res = Second(rec) == 0 ? kUndefined : First(rec) / Second(rec);
}

void IntegerDivide(TExprRec& rec) {
  rec.Res = OfRounded(rec, [](std::int64_t a, std::int64_t b) {
    if (b == 0) throw EIntegerDivision("Integer division by zero (div)");
    if (b == -1 && a == std::numeric_limits<std::int64_t>::min())
      throw EIntegerDivision("Integer division overflows (div)");
    return a / b;
  });
}

void Modulo(TExprRec& rec) {
  rec.Res = OfRounded(rec, [](std::int64_t a, std::int64_t b) {
    if (b == 0) throw EIntegerDivision("Integer division by zero (mod)");
    return b == -1 ? 0 : a % b;
  });
}

void Add(TExprRec& rec) {
  rec.Res = First(rec) + Second(rec);
}
void Subtract(TExprRec& rec) {
  rec.Res = First(rec) - Second(rec);
}
void Greater(TExprRec& rec) {
  rec.Res = Truth(First(rec) > Second(rec));
}
void GreaterOrEqual(TExprRec& rec) {
  rec.Res = Truth(First(rec) + kOrderTolerance >= Second(rec));
}
void LessOrEqual(TExprRec& rec) {
  rec.Res = Truth(Second(rec) + kOrderTolerance >= First(rec));
}
void Less(TExprRec& rec) {
  rec.Res = Truth(First(rec) <= Second(rec));
}
void Unequal(TExprRec& rec) {
  rec.Res = Truth(std::abs(First(rec) - Second(rec)) > kEqualTolerance);
}
void Equal(TExprRec& rec) {
  rec.Res = Truth(std::abs(First(rec) - Second(rec)) < kEqualTolerance);
}

void Not(TExprRec& rec) {
  const std::optional<std::int64_t> a = RoundToInteger(First(rec));
  rec.Res = a ? static_cast<double>(LowByte(*a) ^ 1) : kUndefined;
}
void Or(TExprRec& rec) {
  rec.Res = OfRounded(rec, [](std::int64_t a, std::int64_t b) {
    return LowByte(a) != 0 || LowByte(b) != 0 ? 1 : 0;
  });
}
void And(TExprRec& rec) {
  rec.Res = OfRounded(rec, [](std::int64_t a, std::int64_t b) {
    return LowByte(a) != 0 && LowByte(b) != 0 ? 1 : 0;
  });
}
void Xor(TExprRec& rec) {
  rec.Res = OfRounded(rec, [](std::int64_t a, std::int64_t b) { return LowByte(a) ^ LowByte(b); });
}

void Assign(TExprRec& rec) {
  *rec.Args[0] = Second(rec);
  rec.Res = Second(rec);
}

void Exp(TExprRec& rec) {
  const double a = First(rec);
  rec.Res = a >= kExpOverflow ? kUndefined : a <= kExpUnderflow ? 0 : std::exp(a);
}
void Square(TExprRec& rec) {
  rec.Res = First(rec) * First(rec);
}
void SquareRoot(TExprRec& rec) {
  rec.Res = First(rec) < 0 ? kUndefined : std::sqrt(First(rec));
}
void Absolute(TExprRec& rec) {
  rec.Res = std::abs(First(rec));
}
void Round(TExprRec& rec) {
  const std::optional<std::int64_t> a = RoundToInteger(First(rec));
  rec.Res = a ? static_cast<double>(*a) : kUndefined;
}
void Truncate(TExprRec& rec) {
  const double whole = std::trunc(First(rec));
  // The sum drops the sign of zero, as a whole number has none.
  rec.Res = whole >= -kBeyondInt64 && whole < kBeyondInt64 ? whole + 0.0 : kUndefined;
}
void Ln(TExprRec& rec) {
  rec.Res = First(rec) <= 0 ? kUndefined : std::log(First(rec));
}
void Log10(TExprRec& rec) {
  rec.Res = First(rec) <= 0 ? kUndefined : std::log10(First(rec));
}
void LogN(TExprRec& rec) {
  // Extended precision, so that whole powers have whole logarithms.
  const bool defined = First(rec) > 0 && Second(rec) > 0;
  rec.Res = defined ? static_cast<double>(std::log2(static_cast<long double>(Second(rec))) /
                                          std::log2(static_cast<long double>(First(rec))))
                    : kUndefined;
}
void Max(TExprRec& rec) {
  rec.Res = First(rec) >= Second(rec) ? First(rec) : Second(rec);
}
void Min(TExprRec& rec) {
  rec.Res = First(rec) > Second(rec) ? Second(rec) : First(rec);
}
void Sin(TExprRec& rec) {
  rec.Res = std::sin(First(rec));
}
void Cos(TExprRec& rec) {
  rec.Res = std::cos(First(rec));
}
void Tan(TExprRec& rec) {
  rec.Res = std::tan(First(rec));
}
void ArcSin(TExprRec& rec) {
  rec.Res = std::asin(First(rec));
}
void ArcCos(TExprRec& rec) {
  rec.Res = std::acos(First(rec));
}
void ArcTan2(TExprRec& rec) {
  rec.Res = std::atan2(First(rec), Second(rec));
}
void Sinh(TExprRec& rec) {
  rec.Res = std::sinh(First(rec));
}
void Cosh(TExprRec& rec) {
  rec.Res = std::cosh(First(rec));
}
void Tanh(TExprRec& rec) {
  rec.Res = std::tanh(First(rec));
}
void ArcSinh(TExprRec& rec) {
  rec.Res = std::asinh(First(rec));
}
void ArcCosh(TExprRec& rec) {
  rec.Res = std::acosh(First(rec));
}
void ArcTanh(TExprRec& rec) {
  rec.Res = std::atanh(First(rec));
}
void DegToRad(TExprRec& rec) {
  rec.Res = First(rec) * std::numbers::pi / 180;
}
void RadToDeg(TExprRec& rec) {
  rec.Res = First(rec) * 180 / std::numbers::pi;
}

}  // namespace tarnwick
