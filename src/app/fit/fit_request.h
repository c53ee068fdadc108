// How the window of fit settings shall be followed by a fit. A plain value.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"

namespace tarnwick {

/// With which model the DataSets beside the current one enter a common fit.
enum class JointModels { OfCurrent, Own };

struct FitRequest {
  FitRunOptions run;
  std::vector<std::size_t> beside =
      {};  ///< DataSets of the graph fitted at once with the current one; empty: it alone
  JointModels models = JointModels::OfCurrent;
  std::vector<std::string> shared = {};  ///< parameters with one value in all
  std::vector<std::string> made = {};    ///< names that became parameters by the wish to fit
  std::string variable = {};             ///< one that became the variable so
};

}  // namespace tarnwick
