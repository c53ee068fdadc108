#include "data/series/placed_points.h"

#include <cmath>
#include <limits>
#include <optional>

#include "base/error.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

bool AreOneWithin(double tolerance, double x, double before) {
  return std::abs(x - before) <= tolerance || (x == before && tolerance >= 0);
}

bool HoldsNeighboursWithin(double tolerance, const PointChain& chain) {
  std::optional<double> last;
  bool found = false;
  chain.ForEachChunk([&](const ChunkView& chunk) {
    if (last) found |= AreOneWithin(tolerance, chunk.x.front(), *last);
    for (std::size_t i = 1; i < chunk.x.size(); ++i) {
      found |= AreOneWithin(tolerance, chunk.x[i], chunk.x[i - 1]);
    }
    last = chunk.x.back();
  });
  return found;
}

}  // namespace

void PlacedPoints::Assume(const PointChain& chain, std::int32_t last_id) {
  chain_ = chain;
  last_id_ = last_id;
  close_points_ = true;
}

std::size_t PlacedPoints::IdsLeft() const {
  return static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - last_id_);
}

// Where the new point goes, or which point it overwrites. The point before which a new one goes is searched by X alone: a
// tolerance must not break the order.
std::int32_t PlacedPoints::Place(double x, double y, const PlacingRules& rules) {
  const double tolerance = rules.tolerance;
  const bool overwrites = rules.Overwrites();
  if (const std::optional<std::int32_t> late = PlaceLate(x, y, rules)) return *late;
  if (!chain_.Empty() && x < chain_.LastX()) {
    const PointChain::Place place = chain_.LowerPlace(x);
    const PointChain::Place near = tolerance == 0 ? place : chain_.LowerPlace(x - tolerance);
    if (overwrites && near != chain_.End() && std::abs(chain_.X(near) - x) <= tolerance) {
      return Overwrite(near, x, y);
    }
    chain_.Insert(place, {NewId(), x, y, 0});
  } else if (!chain_.Empty() && overwrites && x - tolerance <= chain_.LastX()) {
    return Overwrite(chain_.PlaceOf(chain_.Size() - 1), x, y);
  } else {
    chain_.Append(NewId(), x, y);
  }
  return last_id_;
}

// Lets a point in the middle wait where only an equal X can be in its way; answers what Place does, nothing when it did not.
std::optional<std::int32_t> PlacedPoints::PlaceLate(double x, double y, const PlacingRules& rules) {
  const bool overwrites = rules.Overwrites();
  const double last = chain_.LastX();
  // Of several points at the last X, the last one is overwritten.
  const bool inside = x < last || (overwrites && x == last && !close_points_);
  if (!inside || chain_.Empty() || (overwrites && rules.tolerance != 0)) return std::nullopt;
  if (IdsLeft() == 0) return std::nullopt;
  switch (chain_.PlaceLate(last_id_ + 1, x, y, rules.duplicates)) {
    case PointChain::Late::NotTaken:
      break;
    case PointChain::Late::Inserted:
      return ++last_id_;
    case PointChain::Late::Overwrote:
      return kNotLookedUp;
  }
  return std::nullopt;
}

// A tolerance that grew after the points came lets an X pass its neighbour; the point moves there with its id.
std::int32_t PlacedPoints::Overwrite(const PointChain::Place& place, double x, double y) {
  Point point = chain_.At(place);
  const PointChain::Place next = chain_.Next(place);
  if (next == chain_.End() || chain_.X(next) >= x) {
    chain_.Set(place, x, y);
    return point.id;
  }
  point.x = x;
  point.y = y;
  chain_.Erase(place);
  chain_.Insert(chain_.LowerPlace(x), point);
  return point.id;
}

std::int32_t PlacedPoints::NewId() {
  if (IdsLeft() == 0) {
    throw Error("A DataSet holds at most 2147483647 points");
  }
  return ++last_id_;
}

std::size_t PlacedPoints::AppendAscending(std::span<const double> x, std::span<const double> y,
                                          const PlacingRules& rules) {
  const double tolerance = rules.tolerance;
  const bool overwrites = rules.Overwrites();
  const std::size_t room = IdsLeft();
  std::size_t run = 0;
  bool first = chain_.Empty();
  double last = chain_.LastX();
  while (run < x.size() && run < room) {
    const double here = x[run];
    const bool behind = first || (here >= last && !(overwrites && here - tolerance <= last));
    if (!behind || IsUndefined(here)) break;
    first = false;
    last = here;
    ++run;
  }
  chain_.AppendRun(last_id_ + 1, x.first(run), y.first(run));
  last_id_ += static_cast<std::int32_t>(run);
  return run;
}

// Merging rewrites the whole chain: worth it when many values of the batch are out of order.
bool PlacedPoints::ShouldMerge(std::span<const double> x, const PlacingRules& rules) const {
  if (rules.Overwrites() && (rules.tolerance != 0 || close_points_)) {
    return false;
  }
  if (x.size() > std::numeric_limits<std::uint32_t>::max() || x.size() > IdsLeft()) {
    return false;
  }
  constexpr std::size_t kInsertsPerPoint =
      40;  // one insert costs about as much as rewriting so many points
  std::size_t inserts = 0;
  double last = chain_.LastX();
  for (const double here : x) {
    if (here < last) {
      ++inserts;
    } else {
      last = here;
    }
  }
  return inserts * kInsertsPerPoint > chain_.Size() + x.size();
}

BatchOutcome PlacedPoints::Merge(std::span<const double> x, std::span<const double> y,
                                 const PlacingRules& rules) {
  BatchOutcome outcome = MergeBatch(chain_, x, y, rules.duplicates, last_id_);
  last_id_ = outcome.last_id;
  return outcome;
}

void PlacedPoints::SetY(std::size_t index, double y) {
  const PointChain::Place place = chain_.PlaceOf(index);
  chain_.Set(place, chain_.X(place), y);
}

void PlacedPoints::ShiftX(double dx) {
  chain_.ShiftX(dx);
  close_points_ = true;  // rounding may have made neighbours equal
}

bool PlacedPoints::RemoveDuplicates(double tolerance) {
  close_points_ = close_points_ && !(tolerance >= 0);
  // Nearly always there is nothing to remove, and no second chain is made for it.
  if (!HoldsNeighboursWithin(tolerance, chain_)) return false;
  PointChain kept;
  for (PointChain::Place place; place != chain_.End(); place = chain_.Next(place)) {
    const Point point = chain_.At(place);
    const bool duplicate = !kept.Empty() && AreOneWithin(tolerance, point.x, kept.LastX());
    if (!duplicate) kept.Append(point);
  }
  if (kept.Size() == chain_.Size()) return false;
  chain_ = std::move(kept);
  return true;
}

}  // namespace tarnwick
