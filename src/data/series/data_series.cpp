#include "data/series/data_series.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/undefined.h"
#include "data/points/point_columns.h"
#include "data/points/y_extremes.h"
#include "data/series/batch_errors.h"

namespace tarnwick {

TDataSeries::TDataSeries() {
  fit_.SetOnChange([this] { Raise(ChangeCode::Fit); });
}

TDataSeries::~TDataSeries() {
  TDataSeries::Change(ChangeCode::Destroyed);
}

void TDataSeries::Change(ChangeCode code) {
  listeners_.Call(*this, code);
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
  regression_.stale = true;
  if (statistics_.x) statistics_.x.reset();
  if (statistics_.y) statistics_.y.reset();
  fit_.DataChanged();
}

void TDataSeries::BaseLineChanged() {
  extremes_stale_ = true;
  fit_.DataChanged();
  Raise(ChangeCode::BaseLine);
}

void TDataSeries::RegressionSettingChanged() {
  regression_.stale = true;
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
  points_.RulesChanged();
  statistics_ = {};
}

void TDataSeries::SetDuplicatesAllowed(bool value) {
  if (value == settings_.DuplicatesAllowed) return;
  settings_.DuplicatesAllowed = value;
  if (!value) RemoveDuplicates();
}

void TDataSeries::SetBreakAtGaps(bool value) {
  if (value == settings_.BreakAtGaps) return;
  settings_.BreakAtGaps = value;
  Raise(ChangeCode::Data);
}

void TDataSeries::SetGaps(PointGaps gaps) {
  if (gaps == gaps_) return;
  gaps_ = std::move(gaps);
  Raise(ChangeCode::Data);
}

void TDataSeries::SetErrors(PointErrors errors) {
  if (errors == errors_) return;
  errors_ = std::move(errors);
  fit_.DataChanged();
  Raise(ChangeCode::Data);
}

void TDataSeries::SetRegressionType(tarnwick::RegressionType value) {
  if (value == settings_.regression_type) return;
  // A fit takes the points of such a curve.
  if (HasRegressionCurve(value) || HasRegressionCurve(settings_.regression_type))
    fit_.DataChanged();
  settings_.regression_type = value;
  if (value == RegressionType::None) {
    points_.ChainForRegression().ClearRegression();
    regression_.curve.Clear();
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

// --- points

PlacingRules TDataSeries::Rules() const {
  return {settings_.NumericalTolerance,
          settings_.DuplicatesAllowed ? Duplicates::Allowed : Duplicates::Forbidden};
}

std::int32_t TDataSeries::AddPoint(double x, double y) {
  if (IsUndefined(x)) return PointCount();
  const OwnErrorSpans none;
  BatchErrors errors(errors_, none, points_);
  errors.Placed(0, x, points_.Place(x, y, Rules()));
  errors.Finish();
  TakeIntoAccount(x, y, Points().Size());
  PointsChanged();
  Raise(ChangeCode::PointAdded);
  return PointCount();
}

void TDataSeries::AddPoints(std::span<const double> x, std::span<const double> y,
                            const OwnErrorSpans& own) {
  const PlacingRules rules = Rules();
  BatchErrors errors(errors_, own, points_);
  bool added = false;
  bool asked_to_merge = false;
  for (std::size_t i = 0; i < x.size();) {
    const std::size_t run = AppendAscending(x.subspan(i), y.subspan(i));
    errors.Made(i, run, LastId() + 1 - static_cast<std::int32_t>(run));
    i += run;
    added = added || run > 0;
    if (i == x.size()) break;
    if (IsUndefined(x[i])) {
      ++i;
      continue;
    }
    added = true;
    if (!asked_to_merge && x[i] < Points().LastX()) {
      asked_to_merge = true;
      if (points_.ShouldMerge(x.subspan(i), rules)) {
        MergePoints(x, y, i, errors);
        break;
      }
    }
    errors.Placed(i, x[i], points_.Place(x[i], y[i], rules));
    TakeIntoAccount(x[i], y[i], Points().Size());
    ++i;
  }
  errors.Finish();
  if (!added) return;
  PointsChanged();
  Raise(ChangeCode::PointAdded);
}

// What a placed point, the chain now holding `points`, does to base line and extremes.
void TDataSeries::TakeIntoAccount(double x, double y, std::size_t points) {
  if (points == 1) {
    extremes_stale_ = settings_.AutoZero && !std::isfinite(y);
    if (settings_.AutoZero && !extremes_stale_) LevelBaseLine(y);
    const double corrected = LineAsItStands().CorrectedY(x, y);
    extremes_ = {x, x, corrected, corrected};
  } else if (settings_.AutoZero && y < settings_.ZeroValue && std::isfinite(y)) {
    LevelBaseLine(y);
    extremes_stale_ = true;
  } else if (!extremes_stale_) {
    Widen(extremes_.x_min, extremes_.x_max, x);
    Widen(extremes_.y_min, extremes_.y_max, LineAsItStands().CorrectedY(x, y));
  }
}

std::size_t TDataSeries::AppendAscending(std::span<const double> x, std::span<const double> y) {
  const std::size_t before = Points().Size();
  const std::size_t run = points_.AppendAscending(x, y, Rules());
  std::size_t taken = 0;
  while (taken < run && (settings_.AutoZero || before + taken == 0)) {
    TakeIntoAccount(x[taken], y[taken], before + taken + 1);
    ++taken;
  }
  if (taken == run || extremes_stale_) return run;
  Extremes extremes = extremes_;  // in registers
  const BaseLine line = LineAsItStands();
  Widen(extremes.x_min, extremes.x_max, x[taken]);
  Widen(extremes.x_min, extremes.x_max, x[run - 1]);
  if (line.slope == 0) {  // the base line moves them alike
    const YExtremes stored = ExtremesOf(y.subspan(taken, run - taken));
    if (stored.min <= stored.max) {
      Widen(extremes.y_min, extremes.y_max, line.CorrectedY(0, stored.min));
      Widen(extremes.y_min, extremes.y_max, line.CorrectedY(0, stored.max));
    }
  } else {
    for (std::size_t i = taken; i < run; ++i)
      Widen(extremes.y_min, extremes.y_max, line.CorrectedY(x[i], y[i]));
  }
  extremes_ = extremes;
  return run;
}

void TDataSeries::MergePoints(std::span<const double> x, std::span<const double> y,
                              std::size_t first, BatchErrors& errors) {
  std::vector<double> kept_x;
  std::vector<double> kept_y;
  std::vector<std::size_t> kept;
  x = x.subspan(first);
  y = y.subspan(first);
  if (std::any_of(x.begin(), x.end(), IsUndefined)) {
    for (std::size_t i = 0; i < x.size(); ++i) {
      if (IsUndefined(x[i])) continue;
      kept_x.push_back(x[i]);
      kept_y.push_back(y[i]);
      kept.push_back(first + i);
    }
    x = kept_x;
    y = kept_y;
  }
  std::size_t points = Points().Size();
  std::int32_t id = LastId();
  const BatchOutcome outcome = points_.Merge(x, y, Rules());
  for (std::size_t i = 0; i < x.size(); ++i) {
    const bool made = outcome.made_point[i] != 0;
    errors.Placed(kept.empty() ? first + i : kept[i], x[i],
                  made ? ++id : PlacedPoints::kNotLookedUp);
    points += outcome.made_point[i];
    TakeIntoAccount(x[i], y[i], points);
  }
}

void TDataSeries::Clear() {
  points_ = {};
  gaps_ = {};
  errors_.y_values = errors_.x_values = {};
  regression_.curve.Clear();
  extremes_ = {};
  PointsChanged();
  extremes_stale_ = true;
  Raise(ChangeCode::Data);
}

bool TDataSeries::SetY(std::int32_t id, double y) {
  const std::optional<std::size_t> index = IndexOfId(Points(), id);
  double x = 0;
  if (index) {
    x = Points().At(*index).x;
    points_.SetY(*index, y);
  }
  // Not a new point: only a count of 1 would reset the extremes.
  if (settings_.AutoZero && y < settings_.ZeroValue && std::isfinite(y)) {
    LevelBaseLine(y);
    extremes_stale_ = true;
  } else if (!extremes_stale_) {
    Widen(extremes_.y_min, extremes_.y_max, LineAsItStands().CorrectedY(x, y));
  }
  PointsChanged();
  Raise(ChangeCode::Data);
  return index.has_value();
}

bool TDataSeries::DeletePoint(std::int32_t id) {
  const std::optional<std::size_t> index = IndexOfId(Points(), id);
  if (!index) return false;
  points_.Erase(*index);
  PointsChanged();
  extremes_stale_ = true;
  Raise(ChangeCode::Data);
  return true;
}

void TDataSeries::ShiftX(double dx) {
  if (Points().Empty() || !std::isfinite(dx)) return;
  points_.ShiftX(dx);
  PointsChanged();
  extremes_stale_ = true;
  Raise(ChangeCode::Data);
}

void TDataSeries::RemoveDuplicates() {
  if (points_.RemoveDuplicates(settings_.NumericalTolerance)) {
    PointsChanged();
    extremes_stale_ = true;
  }
  if (extremes_stale_) Raise(ChangeCode::Data);
}

// --- figures

void TDataSeries::LevelBaseLine(double zero) const {
  settings_.ZeroValue = zero;
  settings_.BaseLineSlope = 0;
}

BaseLine TDataSeries::GetBaseLine() const {
  SettleAutoZero();
  return LineAsItStands();
}

Extremes TDataSeries::GetExtremes() const {
  EnsureExtremes();
  return extremes_;
}

void TDataSeries::EnsureExtremes() const {
  if (!extremes_stale_) return;
  extremes_stale_ = false;
  if (settings_.AutoZero) {
    const double smallest = SmallestY(Points());
    if (std::isfinite(smallest)) LevelBaseLine(smallest);
  }
  extremes_ = FindExtremes(Points(), LineAsItStands());
}

void TDataSeries::SettleAutoZero() const {
  if (settings_.AutoZero) EnsureExtremes();
}

StatisticsRecord TDataSeries::XStatistics() const {
  if (!statistics_.x) {
    statistics_.x = ComputeStatistics(XValues(Points()), settings_.NumericalTolerance);
  }
  return *statistics_.x;
}

StatisticsRecord TDataSeries::YStatistics() const {
  if (!statistics_.y) {
    std::vector<double> values = YValues(Points());
    SortValues(values);
    statistics_.y = ComputeStatistics(values, settings_.NumericalTolerance);
  }
  return *statistics_.y;
}

void TDataSeries::UpdateRegression() {
  if (!regression_.stale) return;
  regression_ = {{}, false, {}};
  PointChain& points = points_.ChainForRegression();
  try {
    regression_.curve =
        RunRegression(points, {settings_.regression_type, settings_.regression_steps,
                               settings_.regression_alpha, Rules().duplicates});
  } catch (const Error& error) {
    points.ClearRegression();  // what stands there is of another regression
    regression_.failure = error.what();
    throw;
  }
}

// --- the state as a value

DataState TDataSeries::State() const {
  SettleAutoZero();
  // Who takes over a regression that failed is to hear why.
  const bool regression_stale = regression_.stale || !regression_.failure.empty();
  return {settings_,         Points(),         gaps_,      errors_,
          regression_.curve, points_.LastId(), extremes_,  extremes_stale_,
          regression_stale,  fit_.Settings(),  fit_.Last()};
}

void TDataSeries::SetState(const DataState& state) {
  settings_ = state.settings;
  points_.Assume(state.points, state.id_counter);
  gaps_ = state.gaps;
  errors_ = state.errors;
  PointsChanged();
  regression_ = {state.regression_curve, state.regression_stale, {}};
  extremes_ = state.extremes;
  extremes_stale_ = state.extremes_stale;
  if (state.fit != fit_.Settings()) fit_.SetSettings(state.fit, MarkModified::Yes);
  fit_.SetLast(state.last_fit);
  Raise(ChangeCode::Data);
}

std::optional<double> GetY(const TDataSeries& series, std::int32_t id) {
  const std::optional<std::size_t> index = IndexOfId(series.Points(), id);
  if (!index) return std::nullopt;
  return series.Points().At(*index).y;
}

}  // namespace tarnwick
