#include "cli/interrupt.h"

#include <unistd.h>

#include <csignal>
#include <string_view>

namespace tarnwick::cli {
namespace {

constexpr std::string_view kMessage = "tarnwick-cli: cancelled\n";
constexpr std::string_view kMessageOverBar = "\r\033[Ktarnwick-cli: cancelled\n";

// Only what POSIX lists as safe in a signal handler.
template <const std::string_view& kText>
void OnInterrupt(int) {
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, kText.data(), kText.size());
  ::_exit(1);
}

}  // namespace

void EndOnInterrupt() {
  // A shell that starts the program in the background has it ignore Ctrl+C: that stays.
  struct sigaction action {};
  ::sigaction(SIGINT, nullptr, &action);
  if (action.sa_handler == SIG_IGN) return;
  action.sa_handler =
      ::isatty(STDERR_FILENO) == 1 ? &OnInterrupt<kMessageOverBar> : &OnInterrupt<kMessage>;
  ::sigaction(SIGINT, &action, nullptr);
}

}  // namespace tarnwick::cli
