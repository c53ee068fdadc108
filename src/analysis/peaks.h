// Peaks by comparing each point with its two neighbours alone. Knows DataSets; no axis, no mark.
#pragma once

#include <optional>
#include <vector>

#include "data/series/data_series.h"

namespace tarnwick {

/// Where peaks are looked for, and how far they must rise above both neighbours. In units of the data.
struct PeakSearch {
  std::optional<double> left = {};   ///< X of the first point looked at is not below
  std::optional<double> right = {};  ///< no triple of points begins here or beyond
  double noise = 0;                  ///< exceeded on both sides
};

struct Peak {
  double x = 0;
  double y = 0;  ///< stored Y, or the regression's value where that was looked at
};

/// The peaks in order of X: points that exceed both neighbours by more than the noise, all less the base line. Looks at the
/// regression curve where the regression has one, at regression values where there is a regression, else at Y; a regression is
/// brought up to date first (what it throws comes through). A flat top of several points is none, and neither is an end. Throws
/// Error "No Data Found in DataSet ...!" or "No Data Found in the Margins for DataSet ...!" (fewer than three points from the
/// left margin on).
std::vector<Peak> FindPeaks(TDataSeries& source, const PeakSearch& search);

}  // namespace tarnwick
