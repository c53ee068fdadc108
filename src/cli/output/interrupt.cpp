#include "cli/output/interrupt.h"

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

volatile std::sig_atomic_t asked = 0;

void NoteInterrupt(int) {
  asked = 1;
}

}  // namespace

InterruptCaught::InterruptCaught() {
  asked = 0;
  struct sigaction action {};
  action.sa_handler = &NoteInterrupt;
  ::sigaction(SIGINT, &action, &interrupt_before_);
  // As EndOnInterrupt has it.
  if (interrupt_before_.sa_handler == SIG_IGN) ::sigaction(SIGINT, &interrupt_before_, nullptr);
  ::sigaction(SIGTERM, &action, &end_before_);
}

InterruptCaught::~InterruptCaught() {
  ::sigaction(SIGINT, &interrupt_before_, nullptr);
  ::sigaction(SIGTERM, &end_before_, nullptr);
}

bool InterruptCaught::Asked() const {
  return asked != 0;
}

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
