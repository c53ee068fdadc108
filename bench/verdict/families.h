// The models that simulated measurements come from and are fitted by. Knows expressions and the ranges of their parameters.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace tarnwick::bench {

/// What an error of a parameter is measured by: a size by itself, a place by the unit of X, a level by the spread of the curve;
/// a height is a level that the curve stands and falls with.
enum class Meaning { Height, Level, Size, Place };

struct DrawnParameter {
  std::string name;
  double low = 0;
  double high = 0;
  Meaning meaning = Meaning::Level;
};

/// A model, and where its parameters are drawn from.
struct Family {
  std::string name;
  std::string expression;
  std::vector<DrawnParameter> parameters;
  double first_x = 0;
};

/// Of what is measured, by what is fitted to it.
struct Trial {
  const Family* fitted = nullptr;
  const Family* truth = nullptr;
  bool IsRightModel() const { return fitted == truth; }
};

/// Every family fitted to its own data, then models fitted to data that are not theirs.
std::vector<Trial> AllTrials();

}  // namespace tarnwick::bench
