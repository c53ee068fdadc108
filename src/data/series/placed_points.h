// The points of a DataSet with the rules by which they are placed: order, ids, and what one abscissa is. Knows no base line, no
// figures and no listeners.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "data/points/point_batch.h"
#include "data/points/point_chain.h"

namespace tarnwick {

/// Which points are of one abscissa, and whether several may be.
struct PlacingRules {
  double tolerance = 0;  ///< X distance
  Duplicates duplicates = Duplicates::Forbidden;

  bool Overwrites() const { return duplicates == Duplicates::Forbidden; }
};

/// Functions that give ids throw Error when there is none left.
class PlacedPoints {
 public:
  const PointChain& Chain() const { return chain_; }
  /// For the regression values, which no rule touches.
  PointChain& ChainForRegression() { return chain_; }
  std::int32_t LastId() const { return last_id_; }  ///< the last one given out
  /// The points that rules unknown here have placed.
  void Assume(const PointChain& chain, std::int32_t last_id);
  /// The rules that placed the points are no longer those of the next ones.
  void RulesChanged() { close_points_ = true; }

  static constexpr std::int32_t kNotLookedUp = 0;
  /// Makes a new point or overwrites one; X is not undefined. Answers the point's id, or kNotLookedUp where it overwrote the
  /// first one of that very X without a look at its id.
  std::int32_t Place(double x, double y, const PlacingRules& rules);
  /// Appends the leading values that come as new points behind all others; answers how many.
  std::size_t AppendAscending(std::span<const double> x, std::span<const double> y,
                              const PlacingRules& rules);
  /// Whether Merge is right for these values and quicker than placing each.
  bool ShouldMerge(std::span<const double> x, const PlacingRules& rules) const;
  /// Does what placing each would do; no X is undefined.
  BatchOutcome Merge(std::span<const double> x, std::span<const double> y,
                     const PlacingRules& rules);

  void SetY(std::size_t index, double y);
  void Erase(std::size_t index) { chain_.Erase(chain_.PlaceOf(index)); }
  void ShiftX(double dx);
  /// Of two points within the tolerance the earlier stays. False when there were none.
  bool RemoveDuplicates(double tolerance);

 private:
  std::optional<std::int32_t> PlaceLate(double x, double y, const PlacingRules& rules);
  std::int32_t Overwrite(const PointChain::Place& place, double x, double y);
  std::int32_t NewId();
  std::size_t IdsLeft() const;

  PointChain chain_;
  std::int32_t last_id_ = 0;
  // Points within the tolerance of each other may stand side by side although duplicates are not allowed.
  bool close_points_ = false;
};

}  // namespace tarnwick
