// Ctrl+C: the batch program says so and ends at once, wherever it is. Files are written whole or not at all, so nothing
// half done stays behind. What reads until it is told to end asks to be told instead.
#pragma once

#include <csignal>

namespace tarnwick::cli {

/// From now on Ctrl+C ends the process with exit status 1 and one line on standard error.
void EndOnInterrupt();

/// While one lives, Ctrl+C and a polite request to end (SIGTERM) are only noted. One at a time.
class InterruptCaught {
 public:
  InterruptCaught();
  ~InterruptCaught();
  InterruptCaught(const InterruptCaught&) = delete;
  InterruptCaught& operator=(const InterruptCaught&) = delete;

  bool Asked() const;

 private:
  struct sigaction interrupt_before_ {};
  struct sigaction end_before_ {};
};

}  // namespace tarnwick::cli
