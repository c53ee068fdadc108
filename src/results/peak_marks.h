// The peaks of a DataSet as marks of its graph: searched by a level of noise that the axis gives, captions, marks. Knows graphs
// and what is computed; asks nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/peaks.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// How captions write X.
struct PeakCaptions {
  int digits = 3;     ///< least number of digits of an exponent
  int precision = 4;  ///< significant digits, 1 to 17
};

struct PeakOptions {
  std::optional<double> left = {};  ///< margins of X
  std::optional<double> right = {};
  double noise_percent = 0.01;  ///< of the range of the DataSet's Y axis
  PeakCaptions captions = {};
};

/// The peaks of a DataSet of the graph, its scales being up to date. Throws Error "Scaling Error in Y Axis!" where the axis it is
/// drawn against has no valid range, then what FindPeaks throws.
std::vector<Peak> PeaksOn(const TxyGraph& graph, TSeries& series, const PeakOptions& options);

std::string PeakCaption(double x, const PeakCaptions& captions);

/// Marks each peak with a vertical line under its X and shows the graph's marks. Answers their IDs.
std::vector<std::int32_t> MarkPeaks(TxyGraph& graph, const std::vector<Peak>& peaks,
                                    const PeakCaptions& captions);

}  // namespace tarnwick
