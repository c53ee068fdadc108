// The peaks of a DataSet of a graph as a table: found by the rule of neighbours or by prominence, measured above the base line.
// Knows graphs and what is computed; asks nothing.
#pragma once

#include <string>
#include <vector>

#include "analysis/peak_figures.h"
#include "results/peak_marks.h"

namespace tarnwick {

enum class PeakRule { Neighbours, Prominence };

struct PeakTableOptions {
  PeakRule rule = PeakRule::Prominence;
  double times_noise =
      6;  ///< prominence that a peak has at least, in standard deviations of the noise
  PeakOptions search = {};  ///< margins of both rules, and the noise level of neighbours
};

struct PeakTable {
  std::vector<PeakFigures> peaks;
  std::string told;  ///< what was decided, a sentence
};

/// Looks at points with a finite Y between the margins. Throws Error "No Data Found in the Margins for DataSet ...!" where
/// these are
/// fewer than three, and by the rule of neighbours what PeaksOn throws.
PeakTable MakePeakTable(const TxyGraph& graph, TSeries& series, const PeakTableOptions& options);

}  // namespace tarnwick
