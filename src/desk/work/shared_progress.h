// Progress told on one thread and read on another.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

#include "base/progress.h"

namespace tarnwick {

class SharedProgress final : public Progress {
 public:
  // the working side
  void Begin(std::string_view title, std::string_view subject, std::int64_t total) override;
  bool Advance(std::int64_t done) override;
  bool Cancelled() const override { return cancelled_; }

  // the showing side
  struct Reading {
    std::string subject;
    std::int64_t done = 0;
    std::int64_t total = 0;  ///< 0: unknown
  };
  Reading Read() const;
  void Cancel() { cancelled_ = true; }

 private:
  mutable std::mutex mutex_;
  std::string subject_;
  std::atomic<std::int64_t> total_ = 0;
  std::atomic<std::int64_t> done_ = 0;
  std::atomic<bool> cancelled_ = false;
};

}  // namespace tarnwick
