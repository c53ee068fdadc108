// What the built-in words do: one procedure each, reading a record's arguments and writing its result. Trouble with
// numbers is an undefined result; only an integer division without a result throws.
#pragma once

#include <cstdint>
#include <optional>

#include "expr/words/expr_rec.h"

namespace tarnwick {

/// The whole number nearest to `value`, ties to even; nothing for NaN and beyond 64 bits.
std::optional<std::int64_t> RoundToInteger(double value);

/// `base` raised to a whole power: by products up to the 8th, else by the platform's power function.
double IntegerPower(double base, std::int64_t exponent);
/// The largest exponent, positive or negative, that is computed by products.
inline constexpr std::int64_t kLargestProductPower = 8;

// Words made by the engine itself.
void LoadOperand(TExprRec& rec);
void CompareStrings(TExprRec& rec);
void NextRandom(TExprRec& rec);

// Operators.
void Pi(TExprRec& rec);
void Factorial(TExprRec& rec);
void Percent(TExprRec& rec);
void Negate(TExprRec& rec);
void Identity(TExprRec& rec);
void Power(TExprRec& rec);
void IntPower(TExprRec& rec);
void Multiply(TExprRec& rec);
void Divide(TExprRec& rec);
void IntegerDivide(TExprRec& rec);
void Modulo(TExprRec& rec);
void Add(TExprRec& rec);
void Subtract(TExprRec& rec);
void Greater(TExprRec& rec);
void GreaterOrEqual(TExprRec& rec);
void LessOrEqual(TExprRec& rec);
void Less(TExprRec& rec);
void Unequal(TExprRec& rec);
void Equal(TExprRec& rec);
void Not(TExprRec& rec);
void Or(TExprRec& rec);
void And(TExprRec& rec);
void Xor(TExprRec& rec);
void Assign(TExprRec& rec);

// Functions.
void Exp(TExprRec& rec);
void Square(TExprRec& rec);
void SquareRoot(TExprRec& rec);
void Absolute(TExprRec& rec);
void Round(TExprRec& rec);
void Truncate(TExprRec& rec);
void Ln(TExprRec& rec);
void Log10(TExprRec& rec);
void LogN(TExprRec& rec);
void Max(TExprRec& rec);
void Min(TExprRec& rec);
void Sin(TExprRec& rec);
void Cos(TExprRec& rec);
void Tan(TExprRec& rec);
void ArcSin(TExprRec& rec);
void ArcCos(TExprRec& rec);
void ArcTan2(TExprRec& rec);
void Sinh(TExprRec& rec);
void Cosh(TExprRec& rec);
void Tanh(TExprRec& rec);
void ArcSinh(TExprRec& rec);
void ArcCosh(TExprRec& rec);
void ArcTanh(TExprRec& rec);
void DegToRad(TExprRec& rec);
void RadToDeg(TExprRec& rec);

}  // namespace tarnwick
