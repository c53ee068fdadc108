// Where long work that tells no progress learns that nobody waits for it any more. Knows no work.
#pragma once

#include "base/error.h"
#include "base/progress.h"

namespace tarnwick {

class Cancelled final : public Error {
 public:
  Cancelled() : Error("Cancelled.") {}
};

class CancelPoint {
 public:
  /// Of work that is always waited for.
  CancelPoint() = default;
  /// `progress` outlives the work.
  explicit CancelPoint(const Progress& progress) : progress_(&progress) {}

  /// To be passed every few milliseconds. Throws Cancelled.
  void Pass() const {
    if (progress_ && progress_->Cancelled()) throw Cancelled();
  }

 private:
  const Progress* progress_ = nullptr;
};

}  // namespace tarnwick
