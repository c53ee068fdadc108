// Progress for a terminal: a bar on standard error once work lasts longer than a second. Never cancels: Ctrl+C ends the
// whole process.
#pragma once

#include <chrono>
#include <string>

#include "base/progress.h"

namespace tarnwick::cli {

class TerminalProgress final : public Progress {
 public:
  TerminalProgress();
  ~TerminalProgress() override;
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;

  void Begin(std::string_view title, std::string_view subject, std::int64_t total) override;
  bool Advance(std::int64_t done) override;
  bool Cancelled() const override { return false; }

 private:
  using Clock = std::chrono::steady_clock;
  void Draw(std::int64_t done) const;

  std::string caption_;
  std::int64_t total_ = 0;
  Clock::time_point started_;
  Clock::time_point drawn_;
  bool is_terminal_ = false;
  bool bar_shown_ = false;
};

}  // namespace tarnwick::cli
