#include "expr/words/added_words.h"

#include "expr/words/added_procedures.h"

namespace tarnwick {
namespace {

using enum WordClass;

constexpr BuiltinWord kWords[] = {
    {"arctan", AddedFunction, Notation::Function, 0, 1, &ArcTan, "angle whose tangent is a"},
    {"erf", AddedFunction, Notation::Function, 0, 1, &Erf, "error function"},
    {"erfc", AddedFunction, Notation::Function, 0, 1, &Erfc, "1 - erf(a), without losing digits"},
    {"gamma", AddedFunction, Notation::Function, 0, 1, &Gamma,
     "gamma function, undefined at 0, -1, -2 ..."},
    {"lngamma", AddedFunction, Notation::Function, 0, 1, &LnGamma,
     "natural logarithm of |gamma(a)|"},
    {"besselj", AddedFunction, Notation::Function, 0, 2, &BesselJ,
     "Bessel function J of b, of the order a rounded"},
    {"voigt", AddedFunction, Notation::Function, 0, 3, &Voigt,
     "Gaussian of deviation |b| and Lorentzian of half width |c| convolved, at a; of area 1"},
    {"if", AddedFunction, Notation::Function, 0, 3, &If, "b where a is not 0, else c"},
};

}  // namespace

std::span<const BuiltinWord> AddedWords() {
  return kWords;
}

void InsertFormulaWords(TExpressList& words) {
  for (const std::span<const BuiltinWord> table : {BuiltinWords(), AddedWords()}) {
    for (const BuiltinWord& word : table) words.Insert(MakeWord(word));
  }
}

}  // namespace tarnwick
