#include "data/import/load_target.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "data/series/points_mark.h"

namespace tarnwick {
namespace {

constexpr std::size_t kPointsPerFlush = 8192;

bool RisesFrom(const PointChain& points, std::span<const double> x) {
  if (x.empty()) return true;
  return (points.Empty() || x.front() >= points.LastX()) && std::is_sorted(x.begin(), x.end());
}

/// The column at that position gives the errors, where they come from one; none where the source has no such column.
std::optional<std::int32_t> ErrorColumnOf(const ErrorRule& rule, const std::string& name,
                                          std::int32_t position, UnusableErrors& unusable) {
  if (rule.kind != ErrorKind::Column || name.empty()) return std::nullopt;
  unusable.no_column = position < 0;
  return position < 0 ? std::nullopt : std::optional(position);
}

/// Where empty lines stand between many neighbouring rows, they part nothing.
void DropSinglePoints(std::vector<std::int32_t>& begins) {
  constexpr std::ptrdiff_t kMany = 8;
  std::vector<std::int32_t> kept;
  for (auto from = begins.begin(); from != begins.end();) {
    const auto apart = std::adjacent_find(
        from, begins.end(), [](std::int32_t one, std::int32_t next) { return next != one + 1; });
    const auto to = apart == begins.end() ? apart : apart + 1;
    if (to - from < kMany) kept.insert(kept.end(), from, to);
    from = to;
  }
  begins = std::move(kept);
}

}  // namespace

SkipReason ReasonOf(const RowValues& values) {
  if (std::isnan(values.x)) {
    return IsMissingValue(values.x) ? SkipReason::XMissing : SkipReason::XNotNumber;
  }
  return IsMissingValue(values.y) ? SkipReason::YMissing : SkipReason::YNotNumber;
}

LoadTarget::LoadTarget(TDataSeries& series, std::optional<std::int64_t> rows,
                       std::int32_t point_limit, ColumnTransforms transforms)
    : series_(series),
      rows_(series.Source(), rows, point_limit),
      transforms_(std::move(transforms)),
      columns_(transforms_.x.columns) {
  columns_.insert(columns_.end(), transforms_.y.columns.begin(), transforms_.y.columns.end());
  const TDSInfo& info = series.Source();
  y_error_column_ =
      ErrorColumnOf(series.Errors().y, info.YErrorColumn, info.y_error_index, report_.y_errors);
  x_error_column_ =
      ErrorColumnOf(series.Errors().x, info.XErrorColumn, info.x_error_index, report_.x_errors);
  if (series_.Fit().Result()) {
    last_fit_ = series_.Fit().Last();
    fitted_ = MarkOf(series_);
  }
  series_.Clear();
  report_.loaded = true;
}

std::int64_t LoadTarget::Points() const {
  return series_.PointCount() + static_cast<std::int64_t>(x_.size());
}

bool LoadTarget::TakesColumns() const {
  return rows_.Chooser().TakesAll() && !transforms_.x && !transforms_.y && !rows_.GoesOn();
}

void LoadTarget::TakeColumns(std::span<const double> x, std::span<const double> y,
                             const OwnErrorSpans& errors) {
  rows_.Chooser().PassTaken(static_cast<std::int64_t>(x.size()));
  for (std::size_t from = 0; from < x.size();) {
    const std::size_t rows = rows_.Pieces().RowsToFall(x.subspan(from));
    TakeStretch(x.subspan(from, rows), y.subspan(from, rows), errors.Part(from, rows));
    from += rows;
  }
}

void LoadTarget::TakeStretch(std::span<const double> x, std::span<const double> y,
                             const OwnErrorSpans& errors) {
  const auto rows = static_cast<std::int64_t>(x.size());
  rows_.Pieces().SeeRows(x);
  if (!rows_.OfChosenRun()) return;
  rows_.Pieces().TakePoint(added_);
  report_.rows_read += rows;
  added_ += rows;
  for (const double error : errors.y) report_.y_errors.Count(error);
  for (const double error : errors.x) report_.x_errors.Count(error);
  if (x_.empty() && RisesFrom(series_.Points(), x)) {
    Give(x, y, errors);
    return;
  }
  x_.insert(x_.end(), x.begin(), x.end());
  y_.insert(y_.end(), y.begin(), y.end());
  y_errors_.insert(y_errors_.end(), errors.y.begin(), errors.y.end());
  x_errors_.insert(x_errors_.end(), errors.x.begin(), errors.x.end());
  FlushWhenWorthwhile();
}

std::optional<SkipReason> LoadTarget::AddPoint(const RowValues& values) {
  const RowValues point = PointOf(transforms_, values);
  if (std::isnan(point.x) || std::isnan(point.y)) return ReasonOf(point);
  rows_.Pieces().TakePoint(added_++);
  x_.push_back(point.x);
  y_.push_back(point.y);
  if (y_error_column_) {
    y_errors_.push_back(values.y_error);
    report_.y_errors.Count(values.y_error);
  }
  if (x_error_column_) {
    x_errors_.push_back(values.x_error);
    report_.x_errors.Count(values.x_error);
  }
  if (x_.size() % kPointsPerFlush == 0) FlushWhenWorthwhile();
  return std::nullopt;
}

/// Rising points go in as they come. Others wait until they are as many as half of those already there: each batch is
/// merged into the whole, so few large ones cost less.
void LoadTarget::FlushWhenWorthwhile() {
  const auto many = static_cast<std::size_t>(series_.PointCount()) / 2;
  if (x_.size() >= many || RisesFrom(series_.Points(), x_)) Flush();
}

void LoadTarget::Flush() {
  Give(x_, y_, {y_errors_, x_errors_});
  for (std::vector<double>* const values : {&x_, &y_, &y_errors_, &x_errors_}) values->clear();
}

/// Piece by piece: which id is the first that one can have is known only when the points before are in.
void LoadTarget::Give(std::span<const double> x, std::span<const double> y,
                      const OwnErrorSpans& errors) {
  const auto give = [&](std::size_t first, std::size_t count) {
    series_.AddPoints(x.subspan(first, count), y.subspan(first, count), errors.Part(first, count));
  };
  const std::span<const PieceFinder::Beginning> all = rows_.Pieces().Beginnings();
  std::size_t from = 0;
  while (begins_.size() < all.size()) {
    const auto at = static_cast<std::size_t>(all[begins_.size()].point - given_);
    if (at >= x.size()) break;
    give(from, at - from);
    begins_.push_back(series_.LastId() + 1);
    from = at;
  }
  give(from, x.size() - from);
  given_ += static_cast<std::int64_t>(x.size());
}

/// A table with an empty line behind every row has no gaps.
PointGaps LoadTarget::GapsFound() const {
  constexpr std::ptrdiff_t kMostFalls = 50;  // more are steps of a lattice
  const auto falls = std::ranges::count(rows_.Pieces().Beginnings(), PieceFinder::Cause::Fall,
                                        &PieceFinder::Beginning::cause);
  const bool falls_count = rows_.Pieces().FallsOnlyToBegin() && falls <= kMostFalls;
  std::vector<std::int32_t> begins, uncertain;
  for (std::size_t i = 0; i < begins_.size(); ++i) {
    using enum PieceFinder::Cause;
    const PieceFinder::Cause cause = rows_.Pieces().Beginnings()[i].cause;
    if (cause == Fall && !falls_count) continue;
    std::vector<std::int32_t>& found = cause == SkippedRow ? uncertain : begins;
    const bool apart = begins_[i] > 1 && begins_[i] <= series_.LastId();
    if (apart && (found.empty() || found.back() != begins_[i])) found.push_back(begins_[i]);
  }
  if (2 * begins.size() > series_.Points().Size()) begins.clear();
  DropSinglePoints(begins);
  if (!uncertain.empty()) AddGapsOfSkippedRows(uncertain, begins);
  return {std::move(begins), series_.LastId()};
}

void LoadTarget::AddGapsOfSkippedRows(std::span<const std::int32_t> uncertain,
                                      std::vector<std::int32_t>& begins) const {
  const std::vector<std::int32_t> ids = Ids(series_.Points());
  const std::vector<double> by_x = XValues(series_.Points());
  const std::vector<std::uint32_t> order = ArrivalOrder(series_.Points());
  std::vector<double> x;
  x.reserve(order.size());
  for (const std::uint32_t index : order) x.push_back(by_x[index]);
  const auto places_of = [&](std::span<const std::int32_t> lowest) {
    std::vector<std::size_t> places;
    places.reserve(lowest.size());
    for (const std::int32_t id : lowest) {
      const auto at = std::ranges::lower_bound(order, id, {}, [&ids](auto i) { return ids[i]; });
      places.push_back(static_cast<std::size_t>(at - order.begin()));
    }
    return places;
  };
  for (const std::size_t place : GapsInEvenSteps(x, places_of(uncertain), places_of(begins))) {
    begins.push_back(ids[order[place]]);
  }
  std::ranges::sort(begins);
  begins.erase(std::unique(begins.begin(), begins.end()), begins.end());
}

void LoadTarget::CountErrorsOfCounts() {
  if (series_.Errors().y.kind != ErrorKind::Counts) return;
  series_.Points().ForEachPoint(
      [this](double, double y) { report_.y_errors.Count(y > 0 ? std::sqrt(y) : y); });
}

void LoadTarget::Finish() {
  if (!x_.empty()) Flush();
  CountErrorsOfCounts();
  if (!begins_.empty()) series_.SetGaps(GapsFound());
  // The same points as before: what was fitted to them still holds.
  if (fitted_ && MarkOf(series_) == *fitted_) series_.Fit().SetLast(last_fit_);
  series_.Source().PointsEdited = false;
  report_.runs = rows_.Pieces().Run();
  report_.points = series_.PointCount();
  report_.replaced = added_ - report_.points;
  report_.sampled_every = rows_.Chooser().Every();
}

}  // namespace tarnwick
