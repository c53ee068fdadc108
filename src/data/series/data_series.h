// The DataSet: a named series of points with base line, statistics, regression, fitting model and source description,
// telling its listeners what changed. Knows nothing of drawing, axes, files' layout or windows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "data/ds_info.h"
#include "data/regression/regression_run.h"
#include "data/series/change_listeners.h"
#include "data/series/data_state.h"
#include "data/series/extremes.h"
#include "data/series/placed_points.h"
#include "data/series/point_errors.h"
#include "data/series/statistics.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

class BatchErrors;

class TDataSeries {
 public:
  TDataSeries();
  virtual ~TDataSeries();  ///< calls every listener once with Destroyed
  TDataSeries(const TDataSeries&) = delete;
  TDataSeries& operator=(const TDataSeries&) = delete;

  // --- listeners
  ChangeListeners& Listeners() { return listeners_; }
  /// Calls every listener in order. TSeries also tells its graph.
  virtual void Change(ChangeCode code);

  // --- settings; every setter follows the rules of its property (stale flags, duplicates removed, change codes)
  const DataSettings& Settings() const;
  const std::string& SeriesName() const { return settings_.SeriesName; }
  void SetSeriesName(std::string name) { settings_.SeriesName = std::move(name); }
  double ZeroValue() const { return Settings().ZeroValue; }
  void SetZeroValue(double value);
  double BaseLineSlope() const { return Settings().BaseLineSlope; }
  void SetBaseLineSlope(double value);
  bool AutoZero() const { return settings_.AutoZero; }
  void SetAutoZero(bool value);
  double NumericalTolerance() const { return settings_.NumericalTolerance; }
  /// Tells nobody and leaves the points as they are: it holds for points to come.
  void SetNumericalTolerance(double value);
  bool DuplicatesAllowed() const { return settings_.DuplicatesAllowed; }
  /// Forbidding duplicates removes every point whose X is within the tolerance of the one before it.
  void SetDuplicatesAllowed(bool value);
  void SetBreakAtGaps(bool value);
  tarnwick::RegressionType RegressionType() const { return settings_.regression_type; }
  void SetRegressionType(tarnwick::RegressionType value);
  void SetRegressionSteps(std::int32_t value);
  void SetRegressionAlpha(double value);
  TDSInfo& Source() { return settings_.source; }
  const TDSInfo& Source() const { return settings_.source; }
  /// The model. It is told of every change of points and base line; its own changes raise Fit.
  TCurFit& Fit() { return fit_; }
  const TCurFit& Fit() const { return fit_; }

  // --- points
  const PointChain& Points() const { return points_.Chain(); }
  std::int32_t PointCount() const { return static_cast<std::int32_t>(Points().Size()); }
  /// The last point id given out.
  std::int32_t LastId() const { return points_.LastId(); }
  /// Where the pieces of the points begin, whether lines are broken there or not.
  const PointGaps& Gaps() const { return gaps_; }
  void SetGaps(PointGaps gaps);
  /// Errors of the points. A point that is overwritten loses its own; one that is moved keeps them.
  const PointErrors& Errors() const { return errors_; }
  void SetErrors(PointErrors errors);
  /// Places one point by the rules of tolerance and duplicates; answers the new number of points. An undefined X has no
  /// place in the order: such a point is left out without a word. Infinite X are ordered like any other.
  std::int32_t AddPoint(double x, double y);
  /// The same for many points in one change (one PointAdded at the end), with the same result as one by one. The spans
  /// have the same length. What errors the points bring is kept, whatever rule gives the errors now.
  void AddPoints(std::span<const double> x, std::span<const double> y,
                 const OwnErrorSpans& own = {});
  void Clear();
  bool SetY(std::int32_t id, double y);  ///< false when no point has that id
  bool DeletePoint(std::int32_t id);     ///< false when no point has that id
  /// Adds dx to every X. Does nothing when dx is not finite: that would lose the points' order.
  void ShiftX(double dx);
  /// Puts off listeners' calls until the matching EndUpdate, which raises Data once if anything changed. Nests.
  void BeginUpdate();
  void EndUpdate();

  // --- figures (computed when first asked for, kept until the next change)
  BaseLine GetBaseLine() const;
  /// Kept up in double precision as points come. After an edit that could narrow them, FindExtremes says anew what they are.
  Extremes GetExtremes() const;
  StatisticsRecord XStatistics() const;
  StatisticsRecord YStatistics() const;  ///< of stored Y
  /// Runs the regression when it is stale. Throws what RunRegression throws.
  void UpdateRegression();
  const RegressionState& Regression() const { return regression_; }

  // --- the state as a value
  DataState State() const;
  void SetState(const DataState& state);  ///< raises Data; Fit before it when the model differs

 private:
  struct StatisticsCaches {
    std::optional<StatisticsRecord> x, y;
  };

  void Raise(ChangeCode code);
  void PointsChanged();
  void BaseLineChanged();
  void RegressionSettingChanged();

  PlacingRules Rules() const;
  void TakeIntoAccount(double x, double y, std::size_t points);
  std::size_t AppendAscending(std::span<const double> x, std::span<const double> y);
  void MergePoints(std::span<const double> x, std::span<const double> y, std::size_t first,
                   BatchErrors& errors);
  void RemoveDuplicates();

  BaseLine LineAsItStands() const { return {settings_.ZeroValue, settings_.BaseLineSlope}; }
  void LevelBaseLine(double zero) const;
  void EnsureExtremes() const;
  void SettleAutoZero() const;

  // ZeroValue and BaseLineSlope follow AutoZero when figures are asked for.
  mutable DataSettings settings_;
  PlacedPoints points_;
  PointGaps gaps_;
  PointErrors errors_;
  RegressionState regression_;
  mutable Extremes extremes_;
  mutable bool extremes_stale_ = false;
  mutable StatisticsCaches statistics_;
  TCurFit fit_;

  ChangeListeners listeners_;
  int update_depth_ = 0;
  bool changed_in_update_ = false;
};

/// Stored Y of the point with that id, if there is one.
std::optional<double> GetY(const TDataSeries& series, std::int32_t id);

}  // namespace tarnwick
