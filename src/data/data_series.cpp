#include "data/data_series.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "data/regression.h"

namespace tarnwick {

TDataSeries::TDataSeries() {
  fit_.SetOnChange([this] { Raise(ChangeCode::Fit); });
}

TDataSeries::~TDataSeries() {
  TDataSeries::Change(ChangeCode::Destroyed);
}

void TDataSeries::SetListener(int key, Listener listener) {
  auto call = std::make_shared<const Listener>(std::move(listener));
  for (ListenerEntry& entry : listeners_) {
    if (entry.key == key && entry.call != nullptr) {
      entry.call = std::move(call);
      return;
    }
  }
  listeners_.push_back({key, std::move(call)});
}

void TDataSeries::RemoveListener(int key) {
  for (ListenerEntry& entry : listeners_) {
    if (entry.key == key) entry.call = nullptr;
  }
  if (calling_listeners_ == 0) {
    std::erase_if(listeners_, [](const ListenerEntry& entry) { return entry.call == nullptr; });
  }
}

void TDataSeries::Change(ChangeCode code) {
  if (listeners_.empty()) return;
  // Entries are only emptied, never taken out, while calls are under way: the positions hold.
  struct Calls {
    TDataSeries& series;
    explicit Calls(TDataSeries& owner) : series(owner) { ++series.calling_listeners_; }
    ~Calls() {
      if (--series.calling_listeners_ > 0) return;
      std::erase_if(series.listeners_,
                    [](const ListenerEntry& entry) { return entry.call == nullptr; });
    }
  } const calls(*this);
  const std::size_t present = listeners_.size();
  for (std::size_t i = 0; i < present; ++i) {
    const std::shared_ptr<const Listener> call = listeners_[i].call;
    if (call != nullptr && *call) (*call)(*this, code);
  }
}

void TDataSeries::BeginUpdate() {
  ++update_depth_;
}

void TDataSeries::EndUpdate() {
  if (update_depth_ == 0 || --update_depth_ > 0) return;
  if (std::exchange(changed_in_update_, false)) Change(ChangeCode::Data);
}

void TDataSeries::Raise(ChangeCode code) {
  if (update_depth_ > 0) {
    changed_in_update_ = true;
  } else {
    Change(code);
  }
}

void TDataSeries::PointsChanged() {
  regression_stale_ = true;
  statistics_.x.reset();
  statistics_.y.reset();
  smallest_positive_y_.reset();
  fit_.DataChanged();
}

void TDataSeries::BaseLineChanged() {
  extremes_stale_ = true;
  smallest_positive_y_.reset();
  fit_.DataChanged();
  Raise(ChangeCode::BaseLine);
}

void TDataSeries::RegressionSettingChanged() {
  regression_stale_ = true;
  Raise(ChangeCode::Regression);
}

const DataSettings& TDataSeries::Settings() const {
  SettleAutoZero();
  return settings_;
}

void TDataSeries::SetZeroValue(double value) {
  if (value == settings_.ZeroValue) return;
  settings_.ZeroValue = value;
  BaseLineChanged();
}

void TDataSeries::SetBaseLineSlope(double value) {
  if (value == settings_.BaseLineSlope) return;
  settings_.BaseLineSlope = value;
  BaseLineChanged();
}

void TDataSeries::SetAutoZero(bool value) {
  if (value == settings_.AutoZero) return;
  SettleAutoZero();
  settings_.AutoZero = value;
  BaseLineChanged();
}

void TDataSeries::SetNumericalTolerance(double value) {
  if (value == settings_.NumericalTolerance) return;
  settings_.NumericalTolerance = value;
  close_points_ = true;
  statistics_ = {};
}

void TDataSeries::SetDuplicatesAllowed(bool value) {
  if (value == settings_.DuplicatesAllowed) return;
  settings_.DuplicatesAllowed = value;
  if (!value) RemoveDuplicates();
}

void TDataSeries::SetRegressionType(tarnwick::RegressionType value) {
  if (value == settings_.regression_type) return;
  settings_.regression_type = value;
  if (value == RegressionType::None) {
    points_.ClearRegression();
    regression_curve_.Clear();
  }
  RegressionSettingChanged();
}

void TDataSeries::SetRegressionSteps(std::int32_t value) {
  if (value == settings_.regression_steps) return;
  settings_.regression_steps = value;
  fit_.DataChanged();
  RegressionSettingChanged();
}

void TDataSeries::SetRegressionAlpha(double value) {
  if (value == settings_.regression_alpha) return;
  settings_.regression_alpha = value;
  fit_.DataChanged();
  RegressionSettingChanged();
}

void TDataSeries::UpdateRegression() {
  if (!regression_stale_) return;
  regression_stale_ = false;
  regression_curve_.Clear();
  regression_failure_.clear();
  try {
    RunRegression();
  } catch (const Error& error) {
    points_.ClearRegression();  // what stands there is of another regression
    regression_failure_ = error.what();
    throw;
  }
}

void TDataSeries::RunRegression() {
  const double alpha = settings_.regression_alpha;
  CurveSampling sampling;
  sampling.steps = std::min(settings_.regression_steps, CurveSampling::MostSteps(points_.Size()));
  if (!points_.Empty()) {
    sampling.x_min = points_.Front().x;
    sampling.x_max = points_.LastX();
  }
  switch (settings_.regression_type) {
    case RegressionType::None:
      throw Error("internal error: regression");
    case RegressionType::Parabola:
      return EvaluateInto(points_, FitParabola(points_));
    case RegressionType::RobustLine:
      return EvaluateInto(points_, FitRobustLine(points_));
    case RegressionType::Line:
      return EvaluateInto(points_, FitLine(points_));
    case RegressionType::Spline:
      points_.ClearRegression();
      if (!settings_.DuplicatesAllowed && settings_.regression_steps != 0) {
        regression_curve_ = SplineCurve(points_, sampling, alpha);
      }
      return;
    case RegressionType::Smoother:
      points_.ClearRegression();
      regression_curve_ = SmoothedCurve(points_, sampling);
      return;
    case RegressionType::ExponentialSmoothing:
      return SmoothExponentially(points_, alpha);
    case RegressionType::RunningAverage:
      return AverageRunning(points_, alpha);
  }
  throw Error("Unknown regression type");
}

DataState TDataSeries::State() const {
  SettleAutoZero();
  // Who takes over a regression that failed is to hear why.
  const bool regression_stale = regression_stale_ || !regression_failure_.empty();
  return {settings_,       points_,          regression_curve_, id_counter_,        extremes_,
          extremes_stale_, regression_stale, fit_.Settings(),   fit_.SharedResult()};
}

void TDataSeries::SetState(const DataState& state) {
  settings_ = state.settings;
  points_ = state.points;
  regression_curve_ = state.regression_curve;
  id_counter_ = state.id_counter;
  PointsChanged();
  extremes_ = state.extremes;
  extremes_stale_ = state.extremes_stale;
  regression_stale_ = state.regression_stale;
  regression_failure_.clear();
  close_points_ = true;
  if (state.fit != fit_.Settings()) fit_.SetSettings(state.fit, true);
  fit_.SetResult(state.fit_result);
  Raise(ChangeCode::Data);
}

}  // namespace tarnwick
