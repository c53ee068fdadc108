// What the added words do, and the functions that their derivatives need: one procedure each, reading a record's arguments
// and writing its result.
#pragma once

#include "expr/words/expr_rec.h"

namespace tarnwick {

void ArcTan(TExprRec& rec);
void Erf(TExprRec& rec);
void Erfc(TExprRec& rec);
void Gamma(TExprRec& rec);
void LnGamma(TExprRec& rec);
void BesselJ(TExprRec& rec);
void Voigt(TExprRec& rec);
/// The second argument where the first is not 0, else the third; undefined where the first is.
void If(TExprRec& rec);

// Of no word's own.
void Digamma(TExprRec& rec);
/// The real part of w(a + ib) and its derivatives by a and b.
void FaddeevaRe(TExprRec& rec);
void FaddeevaReByX(TExprRec& rec);
void FaddeevaReByY(TExprRec& rec);

}  // namespace tarnwick
