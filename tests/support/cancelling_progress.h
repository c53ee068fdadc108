// A progress that is cancelled after so many steps, and keeps what it was told to show.
#pragma once

#include <string>

#include "base/progress.h"

namespace tarnwick::testing {

class CancellingProgress final : public Progress {
 public:
  /// Cancelled from step number `steps` on.
  explicit CancellingProgress(int steps) : left_(steps) {}
  void Begin(std::string_view title, std::string_view subject, std::int64_t) override {
    shown_ = std::string(title) + ": " + std::string(subject);
  }
  bool Advance(std::int64_t) override { return --left_ > 0; }
  bool Cancelled() const override { return left_ <= 0; }
  /// Title and subject as "title: subject"; empty before.
  const std::string& Shown() const { return shown_; }

 private:
  int left_;
  std::string shown_;
};

}  // namespace tarnwick::testing
