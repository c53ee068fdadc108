#include "app/canvas/point_selection.h"

#include <algorithm>

#include "data/points/point_columns.h"
#include "desk/document/document.h"

namespace tarnwick {
namespace {

constexpr std::size_t kPage = 10;

std::size_t Stepped(std::size_t index, std::size_t count, PointWalk walk) {
  const std::size_t last = count - 1;
  switch (walk) {
    case PointWalk::Left:
      return index - std::min<std::size_t>(index, 1);
    case PointWalk::Right:
      return std::min(index + 1, last);
    case PointWalk::PageLeft:
      return index - std::min(index, kPage);
    case PointWalk::PageRight:
      return std::min(index + kPage, last);
    case PointWalk::First:
      return 0;
    case PointWalk::Last:
      return last;
  }
  return index;
}

bool IsBackwards(PointWalk walk) {
  return walk == PointWalk::Left || walk == PointWalk::PageLeft;
}

}  // namespace

void PointSelection::Take(const std::optional<PickedPoint>& point) {
  point_ = point;
  gone_ = false;
  child_ = document_.SelectedChild();
  series_ = document_.Graph().CurrentSeriesIndex();
  const TSeries* series = document_.Graph().CurrentSeries();
  if (!point || !series) return;
  index_ = PickablePoints(*series).LowerBound(point->x);
  const auto found = IndexOfPoint();
  if (!found) return;
  index_ = *found;
  point_ = PickedPointAt(*series, index_);
}

bool PointSelection::IsSameSeries() const {
  return child_ == document_.SelectedChild() && series_ == document_.Graph().CurrentSeriesIndex();
}

std::optional<std::size_t> PointSelection::IndexOfPoint() const {
  const TSeries* series = document_.Graph().CurrentSeries();
  if (!series || !point_ || !IsSameSeries()) return std::nullopt;
  const PointChain& points = PickablePoints(*series);
  if (point_->on_curve != IsShownThroughCurve(*series)) return std::nullopt;
  if (point_->on_curve) {
    const auto index = static_cast<std::size_t>(point_->number) - 1;
    return index < points.Size() ? std::optional(index) : std::nullopt;
  }
  // Nearly always it stands where it stood; looking for an ID goes through the chain.
  if (index_ < points.Size() && points.At(index_).id == point_->number) return index_;
  return IndexOfId(points, point_->number);
}

std::size_t PointSelection::FirstIndex(PointWalk walk) const {
  const PointChain& points = PickablePoints(*document_.Graph().CurrentSeries());
  const TAxis& axis = document_.Graph().Axis(AxisId::X);
  const bool backwards = IsBackwards(walk);
  const double edge = backwards ? axis.Max() : axis.Min();
  const std::size_t found = points.LowerBound(edge);
  if (backwards && found > 0 && (found == points.Size() || points.At(found).x > edge)) {
    return found - 1;
  }
  return std::min(found, points.Size() - 1);
}

bool PointSelection::Walk(PointWalk walk) {
  const TSeries* series = document_.Graph().CurrentSeries();
  if (!series || PickablePoints(*series).Empty()) return false;
  const std::size_t count = PickablePoints(*series).Size();
  const auto present = IndexOfPoint();
  const bool to_end = walk == PointWalk::First || walk == PointWalk::Last;
  if (present || to_end) {
    index_ = Stepped(present.value_or(0), count, walk);
  } else if (gone_ && IsSameSeries()) {
    // Where the point was stands the one that followed it.
    if (IsBackwards(walk)) index_ -= std::min<std::size_t>(index_, 1);
    index_ = std::min(index_, count - 1);
  } else {
    index_ = FirstIndex(walk);
  }
  child_ = document_.SelectedChild();
  series_ = document_.Graph().CurrentSeriesIndex();
  gone_ = false;
  point_ = PickedPointAt(*series, index_);
  return true;
}

void PointSelection::Refresh() {
  if (!point_) return;
  const auto index = IndexOfPoint();
  if (index) {
    index_ = *index;
    point_ = PickedPointAt(*document_.Graph().CurrentSeries(), index_);
  } else {
    point_.reset();
    gone_ = true;
  }
}

}  // namespace tarnwick
