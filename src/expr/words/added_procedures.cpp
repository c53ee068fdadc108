#include "expr/words/added_procedures.h"

#include <cmath>

#include "base/undefined.h"
#include "expr/words/special_functions.h"

namespace tarnwick {
namespace {

double First(const TExprRec& rec) {
  return *rec.Args[0];
}
double Second(const TExprRec& rec) {
  return *rec.Args[1];
}
double Third(const TExprRec& rec) {
  return *rec.Args[2];
}

}  // namespace

void ArcTan(TExprRec& rec) {
  rec.Res = std::atan(First(rec));
}
void Erf(TExprRec& rec) {
  rec.Res = std::erf(First(rec));
}
void Erfc(TExprRec& rec) {
  rec.Res = std::erfc(First(rec));
}
void Gamma(TExprRec& rec) {
  rec.Res = GammaOf(First(rec));
}
void LnGamma(TExprRec& rec) {
  rec.Res = LnGammaOf(First(rec));
}
void BesselJ(TExprRec& rec) {
  rec.Res = BesselJOf(First(rec), Second(rec));
}
void Voigt(TExprRec& rec) {
  rec.Res = VoigtOf(First(rec), Second(rec), Third(rec));
}
void If(TExprRec& rec) {
  const double condition = First(rec);
  rec.Res = std::isnan(condition) ? kUndefined : condition != 0 ? Second(rec) : Third(rec);
}

void Digamma(TExprRec& rec) {
  rec.Res = DigammaOf(First(rec));
}
void FaddeevaRe(TExprRec& rec) {
  rec.Res = FaddeevaReal(First(rec), Second(rec));
}
void FaddeevaReByX(TExprRec& rec) {
  rec.Res = FaddeevaSlope(First(rec), Second(rec)).real();
}
void FaddeevaReByY(TExprRec& rec) {
  // w' is the derivative along x; along y it is i w'.
  rec.Res = -FaddeevaSlope(First(rec), Second(rec)).imag();
}

}  // namespace tarnwick
