// The DataSet: a named series of points with base line, statistics, regression, fitting model and source description,
// telling its listeners what changed. Knows nothing of drawing, axes, files' layout or windows.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "data/data_state.h"
#include "data/ds_info.h"
#include "data/points/point_chain.h"
#include "data/regression_type.h"
#include "data/statistics.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

/// What a DataSet tells its listeners. The numbers are part of the interface.
enum class ChangeCode : int {
  Destroyed = 0,
  Data = 1,
  BaseLine = 2,
  Regression = 4,
  Fit = 5,
  PointAdded = 7
};

class TDataSeries {
 public:
  using Listener = std::function<void(TDataSeries&, ChangeCode)>;

  TDataSeries();
  virtual ~TDataSeries();  ///< calls every listener once with Destroyed
  TDataSeries(const TDataSeries&) = delete;
  TDataSeries& operator=(const TDataSeries&) = delete;

  // --- listeners. A listener may remove or replace any listener, itself too, while it is called.
  /// Registers or replaces the listener of `key`; a new key is called last.
  void SetListener(int key, Listener listener);
  void RemoveListener(int key);
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
  tarnwick::RegressionType RegressionType() const { return settings_.regression_type; }
  void SetRegressionType(tarnwick::RegressionType value);
  std::int32_t RegressionSteps() const { return settings_.regression_steps; }
  void SetRegressionSteps(std::int32_t value);
  double RegressionAlpha() const { return settings_.regression_alpha; }
  void SetRegressionAlpha(double value);
  const std::string& XColExpr() const { return settings_.XColExpr; }
  void SetXColExpr(std::string text) { settings_.XColExpr = std::move(text); }
  const std::string& YColExpr() const { return settings_.YColExpr; }
  void SetYColExpr(std::string text) { settings_.YColExpr = std::move(text); }
  TDSInfo& Source() { return settings_.source; }
  const TDSInfo& Source() const { return settings_.source; }
  /// The model. It is told of every change of points and base line; its own changes raise Fit.
  TCurFit& Fit() { return fit_; }
  const TCurFit& Fit() const { return fit_; }

  // --- points
  const PointChain& Points() const { return points_; }
  std::int32_t PointCount() const { return static_cast<std::int32_t>(points_.Size()); }
  /// Places one point by the rules of tolerance and duplicates; answers the new number of points. An undefined X has no
  /// place in the order: such a point is left out without a word. Infinite X are ordered like any other.
  std::int32_t AddPoint(double x, double y);
  /// The same for many points in one change (one PointAdded at the end), with the same result as one by one. The spans
  /// have the same length.
  void AddPoints(std::span<const double> x, std::span<const double> y);
  void Clear();
  bool SetY(std::int32_t id, double y);  ///< false when no point has that id
  std::optional<double> GetY(std::int32_t id) const;
  bool DeletePoint(std::int32_t id);  ///< false when no point has that id
  /// Adds dx to every X. Does nothing when dx is not finite: that would lose the points' order.
  void ShiftX(double dx);
  /// Puts off listeners' calls until the matching EndUpdate, which raises Data once if anything changed. Nests.
  void BeginUpdate();
  void EndUpdate();

  // --- figures (computed when first asked for, kept until the next change)
  double CorrectedY(double x, double y) const;
  /// After an edit that could narrow them, Y extremes come from a pass over all points in single precision. Undefined Y are
  /// left out; Y extremes are undefined when there is no other.
  Extremes GetExtremes() const;
  /// The smallest X (or corrected Y) above 0, in single precision where that can hold it; the minimum when there is none.
  double SmallestPositiveX() const;
  double SmallestPositiveY() const;
  StatisticsRecord XStatistics() const;
  StatisticsRecord YStatistics() const;  ///< of stored Y
  /// Runs the regression when it is stale. Throws Error "internal error: regression", "Unknown regression type",
  /// "Invalid Running Average limit".
  void UpdateRegression();
  bool RegressionStale() const { return regression_stale_; }
  /// What the last run threw, which later updates do not throw again; empty when it went well.
  const std::string& RegressionFailure() const { return regression_failure_; }
  /// Filled by the spline and the smoother only: X and the value, which stands in both `y` and `regression`.
  const PointChain& RegressionCurve() const { return regression_curve_; }

  // --- the state as a value
  DataState State() const;
  void SetState(const DataState& state);  ///< raises Data; Fit before it when the model differs

 private:
  struct ListenerEntry {
    int key = 0;
    std::shared_ptr<const Listener> call;  // null: removed while listeners are being called
  };
  struct StatisticsCaches {
    std::optional<StatisticsRecord> x, y;
  };

  void Raise(ChangeCode code);
  void PointsChanged();
  void BaseLineChanged();
  void RegressionSettingChanged();

  void PlacePoint(double x, double y);
  bool PlaceLate(double x, double y);
  void OverwritePoint(const PointChain::Place& place, double x, double y);
  std::int32_t NewId();
  void TakeIntoAccount(double x, double y, std::size_t points);
  std::size_t AppendAscending(std::span<const double> x, std::span<const double> y);
  bool ShouldMerge(std::span<const double> x) const;
  void MergePoints(std::span<const double> x, std::span<const double> y);
  void RemoveDuplicates();

  void EnsureExtremes() const;
  void RecomputeExtremes() const;
  void FindYExtremes() const;
  void SettleAutoZero() const;
  void RunRegression();

  // ZeroValue and BaseLineSlope follow AutoZero when figures are asked for.
  mutable DataSettings settings_;
  PointChain points_;
  PointChain regression_curve_;
  std::int32_t id_counter_ = 0;
  // Points within the tolerance of each other may stand side by side although duplicates are not allowed.
  bool close_points_ = false;
  mutable Extremes extremes_;
  mutable bool extremes_stale_ = false;
  mutable std::optional<double> smallest_positive_y_;
  bool regression_stale_ = true;
  std::string regression_failure_;
  mutable StatisticsCaches statistics_;
  TCurFit fit_;

  std::vector<ListenerEntry> listeners_;
  int calling_listeners_ = 0;
  int update_depth_ = 0;
  bool changed_in_update_ = false;
};

}  // namespace tarnwick
