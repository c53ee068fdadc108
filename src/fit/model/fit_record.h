// What a model remembers of its last fit: what was found, the model as the fit left it, and what changed since. Plain values;
// knows no rules.
#pragma once

#include <cstdint>
#include <memory>

#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

/// A fit as it was.
struct FitRecord {
  FitSettings model;  ///< with the values that it left
  std::shared_ptr<const FitResult> result;
};

struct LastFit {
  std::shared_ptr<const FitRecord> record;  ///< null: none is known
  // Since the fit; false without a record.
  bool model_changed = false;
  bool points_changed = false;  ///< or what else of the DataSet a fit goes by: base line, errors
  /// A file held one that makes no sense.
  bool damaged = false;

  bool Holds() const { return record && !model_changed && !points_changed; }
  bool operator==(const LastFit&) const = default;
};

/// Tells the points of a fit from others, in a file that anything may have written.
struct PointsMark {
  std::int64_t count = 0;
  std::uint64_t hash = 0;  ///< of all that a fit goes by
  bool operator==(const PointsMark&) const = default;
};

}  // namespace tarnwick
