#include "data/import/piece_finder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "base/quantile.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kBlanksOfRun = 2;
constexpr std::size_t kFewestOneWay = 3;  // rows of a run that a comment ends
constexpr double kEven = 0.15;     // steps differ by no more than this share: months are even
constexpr double kMostEven = 0.9;  // of the steps
constexpr double kLong = 1.5;      // times the usual step is a gap

/// 1 where it rises, -1 where it falls, 0 where it stands.
int DirectionOf(double from, double to) {
  return to > from ? 1 : to < from ? -1 : 0;
}

}  // namespace

void PieceFinder::PassBlankLines(std::int32_t lines) {
  blanks_ = std::max(blanks_, lines);
}

bool PieceFinder::StartsAnew(double x) const {
  return std::abs(x - first_x_) < std::abs(x - last_x_);
}

/// In the one direction that the run has had.
bool PieceFinder::GoesOn(double x) const {
  return !(rose_ && fell_) && (rose_ ? x >= last_x_ : !fell_ || x <= last_x_);
}

void PieceFinder::SeeRow(double x) {
  const std::int32_t blanks = std::exchange(blanks_, 0);
  const bool turns = begun_ && !GoesOn(x);
  const bool remark = std::exchange(remark_, false) && turns;
  const bool lifted = std::exchange(lifted_, false);
  const bool parted = (std::exchange(break_, false) && (turns || lifted)) || remark || blanks > 0;
  // An outline comes back to where it began without beginning anew.
  const bool one_way = rows_ >= kFewestOneWay && !(rose_ && fell_);
  const bool may_start = blanks > 0 || (remark && one_way);
  const bool runs_on = begun_ && blanks < kBlanksOfRun && !(may_start && StartsAnew(x));
  if (begun_ && !runs_on) ++run_;
  if (!runs_on) {
    first_x_ = x;
    rows_ = 0;
    rose_ = fell_ = false;
  } else if (!parted) {
    rose_ = rose_ || x > last_x_;
    fell_ = fell_ || x < last_x_;
  }
  gap_ = gap_ || parted;
  SeePiece(x, !begun_ || parted || !runs_on);
  last_x_ = x;
  ++rows_;
  begun_ = true;
}

void PieceFinder::SeePiece(double x, bool begins) {
  const bool anew =
      piece_rows_ >= kFewestOneWay && std::abs(x - piece_first_x_) < std::abs(x - last_x_);
  bool falls = false;
  if (direction_ == 0 && begun_ && !begins) direction_ = DirectionOf(last_x_, x);
  if (!begins && direction_ * (x - last_x_) <= 0) {
    falls_only_to_begin_ = falls_only_to_begin_ && anew && x != last_x_;
    falls = falls_only_to_begin_;
  }
  fall_ = fall_ || falls;
  if (begins || falls) {
    piece_first_x_ = x;
    piece_rows_ = 0;
  }
  ++piece_rows_;
}

std::size_t PieceFinder::RowsToFall(std::span<const double> x) const {
  if (!falls_only_to_begin_) return x.size();
  int direction = direction_;
  if (direction == 0 && begun_) direction = DirectionOf(last_x_, x.front());
  if (direction == 0 && x.size() > 1) direction = DirectionOf(x[0], x[1]);
  const auto falls = std::ranges::adjacent_find(
      x, [direction](double one, double next) { return direction * (next - one) <= 0; });
  return falls == x.end() ? x.size() : static_cast<std::size_t>(falls - x.begin()) + 1;
}

void PieceFinder::SeeRows(std::span<const double> x) {
  SeeRow(x.front());
  if (direction_ == 0 && x.size() > 1) direction_ = DirectionOf(x[0], x[1]);
  for (std::size_t i = 1; i < x.size() && !(rose_ && fell_); ++i) {
    rose_ = rose_ || x[i] > x[i - 1];
    fell_ = fell_ || x[i] < x[i - 1];
  }
  last_x_ = x.back();
  rows_ += x.size() - 1;
  piece_rows_ += x.size() - 1;
}

void PieceFinder::TakePoint(std::int64_t point) {
  const Cause cause = gap_ ? Cause::Break : fall_ ? Cause::Fall : Cause::SkippedRow;
  if ((gap_ || fall_ || skipped_) && point > 0) beginnings_.push_back({point, cause});
  gap_ = fall_ = skipped_ = false;
}

std::vector<std::size_t> GapsInEvenSteps(std::span<const double> x,
                                         std::span<const std::size_t> begins,
                                         std::span<const std::size_t> certain) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < x.size(); ++i) {
    const double step = std::abs(x[i] - x[i - 1]);
    if (step > 0 && !std::ranges::binary_search(begins, i) &&
        !std::ranges::binary_search(certain, i)) {
      steps.push_back(step);
    }
  }
  if (steps.empty()) return {};
  const double usual = MedianOf(steps);
  const auto even = std::ranges::count_if(
      steps, [usual](double step) { return std::abs(step - usual) <= kEven * usual; });
  if (static_cast<double>(even) < kMostEven * static_cast<double>(steps.size())) return {};
  std::vector<std::size_t> gaps;
  std::ranges::copy_if(begins, std::back_inserter(gaps),
                       [&](std::size_t at) { return std::abs(x[at] - x[at - 1]) > kLong * usual; });
  return gaps;
}

}  // namespace tarnwick
