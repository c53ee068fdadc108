// One simulated measurement and its fit: points drawn from a family of curves, and a start as users choose it. Knows the truth,
// which no fit does.
#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "chance.h"
#include "families.h"
#include "fit/fit_result.h"

namespace tarnwick::bench {

using Numbers = std::vector<double>;

/// What is measured, and what would have been without errors.
struct Scene {
  Numbers parameters;
  Numbers x;
  Numbers clean;
  Numbers y;
  double range = 0;
  double sigma = 0;
  std::optional<std::size_t> spoiled;
};

/// The family's curve at these X.
Numbers Curve(const Family& family, const Numbers& values, const Numbers& x);
/// Its derivatives by all parameters, a row per X: central differences, 0 where they have no value.
Eigen::MatrixXd JacobianOf(const Family& family, const Numbers& values, const Numbers& x);

Numbers DrawParameters(const Family& family, Chance& chance);
/// From `first` to 10: most experiments are evenly spaced, some by equal ratios, some anyhow.
Numbers DrawX(int points, double first, Chance& chance);
double RangeOf(const Numbers& values);

/// The fit of the family to the scene, by some method, from a start as users choose it beside `near`: near, within a factor of
/// three, of ten with a wrong sign at times, at ones.
FitResult FitScene(const Family& family, const Numbers& near, const Scene& scene, Chance& chance);

/// The one by the Newton-type method with these parameters held.
FitResult FitWithout(const Family& family, const std::vector<std::string>& held,
                     const Numbers& start, const Scene& scene);

}  // namespace tarnwick::bench
