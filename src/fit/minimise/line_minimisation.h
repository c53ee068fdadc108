// The minimum of the objective along a line, for the methods that go from line to line. Knows no method and no parameter
// space beyond a point and a direction. W. H. Press, B. P. Flannery, S. A. Teukolsky and W. T. Vetterling describe the
// bracket; the search inside it is R. P. Brent, Algorithms for Minimization without Derivatives (1973), chapter 5.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "fit/minimise/minimise_run.h"

namespace tarnwick {

/// The objective as a function of the step along a line; +infinity where it is undefined.
using LineFunction = std::function<double(double step)>;

struct LinePoint {
  double step = 0;
  double value = 0;
};

/// Three steps in rising or falling order, the middle one not higher than the outer ones.
struct LineBracket {
  LinePoint first;
  LinePoint middle;
  LinePoint last;
};

/// Goes downhill from the steps 0 (where the value is `at_zero`) and 1.0 by golden-ratio expansion and parabolas until the
/// function rises or ends. Empty when it still falls at the greatest step that makes sense.
std::optional<LineBracket> BracketMinimum(const LineFunction& f, double at_zero);

/// The lowest point inside the bracket to a relative 0.0001 of the step; never higher than the middle. An undefined value
/// shuts its side of the bracket.
LinePoint MinimiseInBracket(const LineFunction& f, const LineBracket& bracket);

/// Line after line of one run, with one scratch point for all.
class LineMinimisation {
 public:
  explicit LineMinimisation(MinimiseRun& run) : run_(run), trial_(run.ParameterCount()) {}

  /// Moves `p`, where the objective is `value`, to the minimum along `direction`, scales the direction by the step found and
  /// answers the value there. When no step is lower, `p` and `direction` stay and `value` is the answer: where the
  /// objective does not depend on a parameter, the parameter must not drift.
  double Minimise(std::span<double> p, double value, std::span<double> direction);

  /// True when the objective fell without end along the last line; `p` then stayed.
  bool Endless() const { return endless_; }

 private:
  double ValueAt(std::span<const double> p, std::span<const double> direction, double step);

  MinimiseRun& run_;
  std::vector<double> trial_;
  bool endless_ = false;
};

}  // namespace tarnwick
