// How points come into a DataSet and leave it.

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/error.h"
#include "base/undefined.h"
#include "data/data_series.h"
#include "data/points/point_batch.h"

namespace tarnwick {

namespace {

// Also when the bounds are still undefined. An undefined value widens nothing.
void Widen(double& min, double& max, double value) {
  if (IsUndefined(value)) return;
  if (!(min <= value)) min = value;
  if (!(max >= value)) max = value;
}

}  // namespace

std::int32_t TDataSeries::AddPoint(double x, double y) {
  if (IsUndefined(x)) return PointCount();
  PlacePoint(x, y);
  TakeIntoAccount(x, y, points_.Size());
  PointsChanged();
  Raise(ChangeCode::PointAdded);
  return PointCount();
}

void TDataSeries::AddPoints(std::span<const double> x, std::span<const double> y) {
  bool added = false;
  bool asked_to_merge = false;
  for (std::size_t i = 0; i < x.size();) {
    const std::size_t run = AppendAscending(x.subspan(i), y.subspan(i));
    i += run;
    added = added || run > 0;
    if (i == x.size()) break;
    if (IsUndefined(x[i])) {
      ++i;
      continue;
    }
    added = true;
    if (!asked_to_merge && x[i] < points_.LastX()) {
      asked_to_merge = true;
      if (ShouldMerge(x.subspan(i))) {
        MergePoints(x.subspan(i), y.subspan(i));
        break;
      }
    }
    PlacePoint(x[i], y[i]);
    TakeIntoAccount(x[i], y[i], points_.Size());
    ++i;
  }
  if (!added) return;
  PointsChanged();
  Raise(ChangeCode::PointAdded);
}

// Where the new point goes, or which point it overwrites. The point before which a new one goes is searched by X alone: a
// tolerance must not break the order.
void TDataSeries::PlacePoint(double x, double y) {
  const double tolerance = settings_.NumericalTolerance;
  const bool overwrites = !settings_.DuplicatesAllowed;
  if (PlaceLate(x, y)) return;
  if (points_.Empty()) {
    points_.Append(NewId(), x, y);
  } else if (x >= points_.LastX()) {
    if (overwrites && x - tolerance <= points_.LastX()) {
      OverwritePoint(points_.PlaceOf(points_.Size() - 1), x, y);
    } else {
      points_.Append(NewId(), x, y);
    }
  } else {
    const PointChain::Place place = points_.LowerPlace(x);
    const PointChain::Place near = tolerance == 0 ? place : points_.LowerPlace(x - tolerance);
    if (overwrites && near != points_.End() && std::abs(points_.X(near) - x) <= tolerance) {
      OverwritePoint(near, x, y);
    } else {
      points_.Insert(place, {NewId(), x, y, 0});
    }
  }
}

// Lets a point in the middle wait where only an equal X can be in its way; false when it did not.
bool TDataSeries::PlaceLate(double x, double y) {
  const bool overwrites = !settings_.DuplicatesAllowed;
  const double last = points_.LastX();
  // Of several points at the last X, the last one is overwritten.
  const bool inside = x < last || (overwrites && x == last && !close_points_);
  if (!inside || points_.Empty() || (overwrites && settings_.NumericalTolerance != 0)) return false;
  if (id_counter_ == std::numeric_limits<std::int32_t>::max()) return false;
  const auto duplicates = overwrites ? Duplicates::Forbidden : Duplicates::Allowed;
  const PointChain::Late outcome = points_.PlaceLate(id_counter_ + 1, x, y, duplicates);
  if (outcome == PointChain::Late::Inserted) ++id_counter_;
  return outcome != PointChain::Late::NotTaken;
}

// A tolerance that grew after the points came lets an X pass its neighbour; the point moves there with its id.
void TDataSeries::OverwritePoint(const PointChain::Place& place, double x, double y) {
  const PointChain::Place next = points_.Next(place);
  if (next == points_.End() || points_.X(next) >= x) {
    points_.Set(place, x, y);
    return;
  }
  Point point = points_.At(place);
  point.x = x;
  point.y = y;
  points_.Erase(place);
  points_.Insert(points_.LowerPlace(x), point);
}

std::int32_t TDataSeries::NewId() {
  if (id_counter_ == std::numeric_limits<std::int32_t>::max()) {
    throw Error("A DataSet holds at most 2147483647 points");
  }
  return ++id_counter_;
}

// What a placed point, the chain now holding `points`, does to base line and extremes.
void TDataSeries::TakeIntoAccount(double x, double y, std::size_t points) {
  const auto becomes_zero = [&] { settings_.ZeroValue = y, settings_.BaseLineSlope = 0; };
  if (points == 1) {
    extremes_stale_ = settings_.AutoZero && !std::isfinite(y);
    if (settings_.AutoZero && !extremes_stale_) becomes_zero();
    extremes_.x_min = extremes_.x_max = x;
    extremes_.y_min = extremes_.y_max =
        y - settings_.ZeroValue - (settings_.BaseLineSlope == 0 ? 0 : settings_.BaseLineSlope * x);
  } else if (settings_.AutoZero && y < settings_.ZeroValue && std::isfinite(y)) {
    becomes_zero();
    extremes_stale_ = true;
  } else if (!extremes_stale_) {
    Widen(extremes_.x_min, extremes_.x_max, x);
    Widen(
        extremes_.y_min, extremes_.y_max,
        y - settings_.ZeroValue - (settings_.BaseLineSlope == 0 ? 0 : settings_.BaseLineSlope * x));
  }
}

// Appends the leading values that come as new points behind all others; answers how many.
std::size_t TDataSeries::AppendAscending(std::span<const double> x, std::span<const double> y) {
  const double tolerance = settings_.NumericalTolerance;
  const bool overwrites = !settings_.DuplicatesAllowed;
  const std::size_t room =
      static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - id_counter_);
  std::size_t run = 0;
  bool first = points_.Empty();
  double last = points_.LastX();
  while (run < x.size() && run < room) {
    const double here = x[run];
    const bool behind = first || (here >= last && !(overwrites && here - tolerance <= last));
    if (!behind || IsUndefined(here)) break;
    first = false;
    last = here;
    ++run;
  }
  const std::size_t before = points_.Size();
  points_.AppendRun(id_counter_ + 1, x.first(run), y.first(run));
  id_counter_ += static_cast<std::int32_t>(run);
  for (std::size_t i = 0; i < run; ++i) TakeIntoAccount(x[i], y[i], before + i + 1);
  return run;
}

// Merging rewrites the whole chain: worth it when many values of the batch are out of order.
bool TDataSeries::ShouldMerge(std::span<const double> x) const {
  if (!settings_.DuplicatesAllowed && (settings_.NumericalTolerance != 0 || close_points_)) {
    return false;
  }
  if (x.size() > std::numeric_limits<std::uint32_t>::max() ||
      x.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - id_counter_)) {
    return false;
  }
  constexpr std::size_t kInsertsPerPoint =
      40;  // one insert costs about as much as rewriting so many points
  std::size_t inserts = 0;
  double last = points_.LastX();
  for (const double here : x) {
    if (here < last) {
      ++inserts;
    } else {
      last = here;
    }
  }
  return inserts * kInsertsPerPoint > points_.Size() + x.size();
}

void TDataSeries::MergePoints(std::span<const double> x, std::span<const double> y) {
  std::vector<double> kept_x;
  std::vector<double> kept_y;
  if (std::any_of(x.begin(), x.end(), IsUndefined)) {
    for (std::size_t i = 0; i < x.size(); ++i) {
      if (IsUndefined(x[i])) continue;
      kept_x.push_back(x[i]);
      kept_y.push_back(y[i]);
    }
    x = kept_x;
    y = kept_y;
  }
  std::size_t points = points_.Size();
  const BatchOutcome outcome = MergeBatch(
      points_, x, y, settings_.DuplicatesAllowed ? Duplicates::Allowed : Duplicates::Forbidden,
      id_counter_);
  id_counter_ = outcome.last_id;
  for (std::size_t i = 0; i < x.size(); ++i) {
    points += outcome.made_point[i];
    TakeIntoAccount(x[i], y[i], points);
  }
}

void TDataSeries::Clear() {
  points_.Clear();
  regression_curve_.Clear();
  id_counter_ = 0;
  extremes_ = {};
  PointsChanged();
  extremes_stale_ = true;
  close_points_ = false;
  Raise(ChangeCode::Data);
}

bool TDataSeries::SetY(std::int32_t id, double y) {
  const std::optional<std::size_t> index = points_.IndexOfId(id);
  double x = 0;
  if (index) {
    const PointChain::Place place = points_.PlaceOf(*index);
    x = points_.X(place);
    points_.Set(place, x, y);
  }
  // Not a new point: only a count of 1 would reset the extremes.
  if (settings_.AutoZero && y < settings_.ZeroValue && std::isfinite(y)) {
    settings_.ZeroValue = y;
    settings_.BaseLineSlope = 0;
    extremes_stale_ = true;
  } else if (!extremes_stale_) {
    Widen(extremes_.y_min, extremes_.y_max, CorrectedY(x, y));
  }
  PointsChanged();
  Raise(ChangeCode::Data);
  return index.has_value();
}

std::optional<double> TDataSeries::GetY(std::int32_t id) const {
  const std::optional<std::size_t> index = points_.IndexOfId(id);
  if (!index) return std::nullopt;
  return points_.At(*index).y;
}

bool TDataSeries::DeletePoint(std::int32_t id) {
  const std::optional<std::size_t> index = points_.IndexOfId(id);
  if (!index) return false;
  points_.Erase(points_.PlaceOf(*index));
  PointsChanged();
  extremes_stale_ = true;
  Raise(ChangeCode::Data);
  return true;
}

void TDataSeries::ShiftX(double dx) {
  if (points_.Empty() || !std::isfinite(dx)) return;
  points_.ShiftX(dx);
  close_points_ = true;  // rounding may have made neighbours equal
  PointsChanged();
  extremes_stale_ = true;
  Raise(ChangeCode::Data);
}

// The earlier of two points within the tolerance stays.
void TDataSeries::RemoveDuplicates() {
  const double tolerance = settings_.NumericalTolerance;
  PointChain kept;
  for (PointChain::Place place = points_.Begin(); place != points_.End();
       place = points_.Next(place)) {
    const Point point = points_.At(place);
    const bool duplicate = !kept.Empty() && (std::abs(point.x - kept.LastX()) <= tolerance ||
                                             (point.x == kept.LastX() && tolerance >= 0));
    if (!duplicate) kept.Append(point);
  }
  close_points_ = close_points_ && !(tolerance >= 0);
  if (kept.Size() < points_.Size()) {
    points_ = kept;
    PointsChanged();
    extremes_stale_ = true;
  }
  if (extremes_stale_) Raise(ChangeCode::Data);
}

}  // namespace tarnwick
