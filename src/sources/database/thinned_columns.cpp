#include "sources/database/thinned_columns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarnwick {
namespace {

/// By X, then by every Y. A row without Y is after those with one: NaN orders nothing.
bool IsBefore(std::span<const double> row, std::span<const double> other) {
  const auto key = [](double value) {
    return std::isnan(value) ? std::numeric_limits<double>::infinity() : value;
  };
  return std::ranges::lexicographical_compare(row, other,
                                              [&](double a, double b) { return key(a) < key(b); });
}

}  // namespace

ThinnedColumns::ThinnedColumns(double x_min, double x_max, int columns, std::size_t ys)
    : x_min_(x_min),
      per_x_(x_max > x_min ? columns / (x_max - x_min) : 0),
      columns_(columns),
      ys_(ys),
      width_(1 + ys),
      slots_(2 + 2 * ys),
      kept_(static_cast<std::size_t>(columns) * slots_ * width_,
            std::numeric_limits<double>::quiet_NaN()) {}

std::size_t ThinnedColumns::ColumnOf(double x) const {
  const double column = (x - x_min_) * per_x_;
  if (!(column > 0)) return 0;
  return static_cast<std::size_t>(std::min(column, static_cast<double>(columns_ - 1)));
}

void ThinnedColumns::Add(const double* row) {
  if (!std::isfinite(row[0])) return;
  const auto is_number = [](double y) { return std::isfinite(y); };
  if (std::none_of(row + 1, row + width_, is_number)) return;
  ++rows_;
  Keep(row);
}

/// Of equal ones the first in the order of rows, so that it does not matter which came first.
void ThinnedColumns::Keep(const double* row) {
  double* const column = kept_.data() + ColumnOf(row[0]) * slots_ * width_;
  const auto put = [&](std::size_t slot) { std::copy_n(row, width_, column + slot * width_); };
  const auto is_before = [&](std::size_t slot) {
    return IsBefore({row, width_}, {column + slot * width_, width_});
  };
  if (std::isnan(column[0]) || is_before(0)) put(0);
  if (std::isnan(column[width_]) || (row[0] >= column[width_] && !is_before(1))) put(1);
  for (std::size_t y = 1; y <= ys_; ++y) {
    if (!std::isfinite(row[y])) continue;
    const double lowest = column[2 * y * width_ + y];
    const double highest = column[(2 * y + 1) * width_ + y];
    if (!(row[y] >= lowest) || (row[y] == lowest && is_before(2 * y))) put(2 * y);
    if (!(row[y] <= highest) || (row[y] == highest && is_before(2 * y + 1))) put(2 * y + 1);
  }
}

void ThinnedColumns::Clear() {
  std::ranges::fill(kept_, std::numeric_limits<double>::quiet_NaN());
  rows_ = 0;
}

void ThinnedColumns::Merge(const ThinnedColumns& other) {
  for (std::size_t at = 0; at < other.kept_.size(); at += width_) {
    if (!std::isnan(other.kept_[at])) Keep(other.kept_.data() + at);
  }
  rows_ += other.rows_;
}

ThinnedRows ThinnedColumns::Rows() const {
  std::vector<const double*> kept;
  for (std::size_t at = 0; at < kept_.size(); at += width_) {
    if (!std::isnan(kept_[at])) kept.push_back(kept_.data() + at);
  }
  const auto before = [&](const double* one, const double* other) {
    return IsBefore({one, width_}, {other, width_});
  };
  const auto same = [&](const double* one, const double* other) {
    return !before(one, other) && !before(other, one);
  };
  std::ranges::sort(kept, before);
  kept.erase(std::unique(kept.begin(), kept.end(), same), kept.end());
  ThinnedRows rows{.x = {}, .y = std::vector<std::vector<double>>(ys_), .rows = rows_};
  for (const double* const row : kept) {
    rows.x.push_back(row[0]);
    for (std::size_t y = 0; y < ys_; ++y) rows.y[y].push_back(row[1 + y]);
  }
  return rows;
}

}  // namespace tarnwick
