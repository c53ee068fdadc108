// Models with a term that may not be there: fitted to measurements of which the truth has it, or has it not. Knows the truth.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "families.h"
#include "simulated_fit.h"

namespace tarnwick::bench {

/// A family with terms, each of which hangs on its first parameter: at 0 the others of it mean nothing. The first term may not be
/// there.
struct TermTrial {
  Family family;
  std::vector<std::vector<std::string>> terms;
};

std::span<const TermTrial> AllTermTrials();

struct TermFit {
  /// Deviations by which the truth differs from the nearest curve without one of its terms; nothing where the first is not there.
  std::optional<double> significance;
  Said said = Said::Doubted;
  bool unfinished = false;
  bool told_absent = false;  ///< some term is said to be absent perhaps
  /// The fit is as good as the truth: its curve is nearer to the points.
  bool found = false;
  FitResult result;
};

/// `height` is that of the first term in deviations by which it stands out of what the others can make up for, were they linear;
/// nothing: it is not there.
TermFit SimulateTerm(const TermTrial& trial, const Measurement& measurement,
                     std::optional<double> height);

}  // namespace tarnwick::bench
