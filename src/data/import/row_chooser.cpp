#include "data/import/row_chooser.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr double kMostRows = 4e18;

/// A bound that the user gave as a number, as a whole number of rows; 0 when it is undefined.
std::int64_t Rows(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<std::int64_t>(std::clamp(value, -kMostRows, kMostRows));
}

}  // namespace

bool RowChooser::NeedsRowCount(const TDSInfo& info) {
  return (info.AutoRowHitFreq && !info.AllRows) || info.RowChoiceMode == RowChoice::DropLast;
}

RowChooser::RowChooser(TDSInfo& info, std::optional<std::int64_t> rows, std::int32_t point_limit)
    : info_(info), rows_left_(rows), point_limit_(point_limit) {
  if (info.RowChoiceMode == RowChoice::SkipRows) {
    const std::int64_t skipped = std::max<std::int64_t>(Rows(info.RowChoiceValue1), 0);
    next_ += skipped;
    if (rows_left_) *rows_left_ -= std::min(skipped, *rows_left_);
  } else if (info.RowChoiceMode == RowChoice::DropLast && rows_left_) {
    // A row is the last when its number exceeds V2, hence one less than the rows that stay.
    const std::int64_t dropped = std::max<std::int64_t>(Rows(std::round(info.RowChoiceValue1)), 0);
    *rows_left_ -= std::min(dropped, *rows_left_);
    info.RowChoiceValue2 = static_cast<double>(*rows_left_ - 1);
  }
  searching_ = info.RowChoiceMode == RowChoice::FromX || info.RowChoiceMode == RowChoice::BetweenX;
  if (!searching_) BeginTaking();
}

void RowChooser::BeginTaking() {
  searching_ = false;
  if (info_.AutoRowHitFreq && !info_.AllRows && rows_left_) {
    const std::int64_t every = *rows_left_ / point_limit_ + 1;
    info_.RowSamplingFrequency = static_cast<std::int32_t>(
        std::min<std::int64_t>(every, std::numeric_limits<std::int32_t>::max()));
  }
  every_ = info_.AllRows ? 1 : std::max(info_.RowSamplingFrequency, 1);
  if (rows_left_ && *rows_left_ <= 0) next_ = kNoRow;
}

void RowChooser::PassSearched(std::int64_t rows) {
  next_ += rows;
  if (rows_left_) *rows_left_ -= rows;
}

RowVerdict RowChooser::Take(double x, double y) {
  if (searching_) {
    if (!(x >= info_.RowChoiceValue1)) {
      PassSearched(1);
      return RowVerdict::Passed;
    }
    BeginTaking();
  }
  const bool good = !std::isnan(x) && !std::isnan(y);
  if (good && BoundsX() && x > info_.RowChoiceValue2) {
    next_ = kNoRow;
    return RowVerdict::Stopped;
  }
  const std::int64_t current = next_ + every_ - 1;
  next_ =
      BoundsRows() && static_cast<double>(current) > info_.RowChoiceValue2 ? kNoRow : current + 1;
  return good ? RowVerdict::Point : RowVerdict::Skipped;
}

bool RowChooser::TakesAll() const {
  return !searching_ && every_ == 1 && next_ != kNoRow && !BoundsX() && !BoundsRows();
}

bool RowChooser::BoundsX() const {
  return info_.RowChoiceMode == RowChoice::UntilX || info_.RowChoiceMode == RowChoice::BetweenX;
}

bool RowChooser::BoundsRows() const {
  return info_.RowChoiceMode == RowChoice::FirstRows || info_.RowChoiceMode == RowChoice::DropLast;
}

}  // namespace tarnwick
