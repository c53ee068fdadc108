// Hands the errors that points bring with them to the ids that the points get. Knows how points are placed; no listeners.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "data/points/point_chain.h"
#include "data/series/placed_points.h"
#include "data/series/point_errors.h"

namespace tarnwick {

/// For one batch. A point that is overwritten loses what it had: the new one brings its own errors, or none.
class BatchErrors {
 public:
  /// Both must outlive it.
  BatchErrors(PointErrors& errors, const OwnErrorSpans& own, const PlacedPoints& points)
      : errors_(errors), own_(own), points_(points) {}

  /// The values from the position `first` on made `count` points, with the ids from first_id on.
  void Made(std::size_t first, std::size_t count, std::int32_t first_id);
  /// The value at the position was placed, as PlacedPoints::Place answered.
  void Placed(std::size_t position, double x, std::int32_t id);
  /// To be called once every value has its place.
  void Finish();

 private:
  // A value that overwrote the first point of its very X, whose id nobody has looked up yet.
  struct Overwriting {
    std::size_t position;
    double x;
  };

  // Nothing is brought, and nothing is there to lose.
  bool Idle() const;
  void Give(std::size_t position, std::int32_t id);

  PointErrors& errors_;
  const OwnErrorSpans& own_;
  const PlacedPoints& points_;
  std::vector<Overwriting> overwriting_;
};

}  // namespace tarnwick
