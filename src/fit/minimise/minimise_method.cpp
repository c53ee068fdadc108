#include "fit/minimise/minimise_method.h"

#include <algorithm>
#include <array>

#include "fit/minimise/minimise_conjugate_gradient.h"
#include "fit/minimise/minimise_powell.h"
#include "fit/minimise/minimise_simplex.h"

namespace tarnwick {
namespace {

constexpr std::array kMethods{
    MinimiseMethod{FitProcType::cfp_Powell, "Powell's method", MinimisePowell},
    MinimiseMethod{FitProcType::cfp_Simplex, "the simplex method", MinimiseSimplex},
    MinimiseMethod{FitProcType::cfp_ConjGrad, "the conjugate-gradient method",
                   MinimiseConjugateGradient},
    MinimiseMethod{FitProcType::cfp_SimplexPowell, "the simplex and Powell's method",
                   MinimiseSimplexPowell},
};

}  // namespace

std::span<const MinimiseMethod> ScalarMinimiseMethods() {
  return kMethods;
}

const MinimiseMethod* FindScalarMinimiseMethod(FitProcType type) {
  const auto row = std::ranges::find(kMethods, type, &MinimiseMethod::type);
  return row == kMethods.end() ? nullptr : &*row;
}

}  // namespace tarnwick
