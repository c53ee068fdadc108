// The work of one fit as plain values, picked from a DataSet. Knows DataSets; no minimiser and no result.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "data/series/data_series.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

/// Which of the points between the margins enter: thinned by NPoints, or every one.
enum class FitPointChoice { Thinned, All };
/// Whether a method other than the Newton-type one is followed by it.
enum class FinishingStep { No, Yes };
/// What the points are: the DataSet's own, or those of the spline or smoothed curve that it shows in their place.
enum class FitPointSource { Points, RegressionCurve };

struct FitRunOptions {
  FitPointChoice points = FitPointChoice::Thinned;
  FinishingStep finish = FinishingStep::No;
  int threads = 0;  ///< 0 = as many as help; the result does not depend on it
};

/// A fit as plain values, taken from a DataSet: runs on any thread.
struct FitJob {
  std::string data_set;  ///< its name; empty where it need not be told apart
  FitSettings settings;
  std::vector<double> x;  ///< points that enter
  std::vector<double> y;  ///< with the base line taken off; finite
  /// The error of each Y, above 0 and finite, where the fit may weigh by them; else empty.
  std::vector<double> errors;
  std::int64_t points_in_range = 0;
  std::int64_t points_chosen = 0;         ///< after thinning, those without a finite Y among them
  std::int64_t points_without_error = 0;  ///< left out because no error above 0 tells their weight
  FitPointSource source = FitPointSource::Points;
  bool has_x_errors = false;  ///< the points have errors of X, which no fit takes into account
  std::string some_rows;      ///< which of the source's rows they are, as SomeRowsText; empty: all
  FitRunOptions options;
};

/// Picks the points by the model's margins: LeftMargin <= x < RightMargin, then the first and of the following one in
/// (count + 1) / NPoints + 1, the quotient truncated. All when NPoints is not above 0. A DataSet with a spline or a smoothed
/// curve (RegressionType 4 or 5) gives the points of that. Points whose Y is not finite are left out.
FitJob PrepareFit(const TDataSeries& series, const FitRunOptions& options = {});

/// A point between the margins: as stored, and with the base line taken off Y, which is finite.
using FitPointVisitor = std::function<void(const Point& point, double corrected_y)>;
/// Visits all that a fit of the DataSet's model could take, whether or not they have an error. Answers whose they are.
FitPointSource ForEachFitPoint(const TDataSeries& series, const FitPointVisitor& visit);

}  // namespace tarnwick
