#include "cli/output/terminal_progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace tarnwick::cli {
namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kRedraw{100};
constexpr int kBarWidth = 40;

}  // namespace

TerminalProgress::TerminalProgress()
    : started_(Clock::now()), drawn_(started_), is_terminal_(isatty(STDERR_FILENO) == 1) {}

TerminalProgress::~TerminalProgress() {
  if (bar_shown_) std::fputs("\r\033[K", stderr);
}

void TerminalProgress::Begin(std::string_view title, std::string_view subject, std::int64_t total) {
  caption_ = std::string(title) + " " + std::string(subject);
  total_ = total;
}

bool TerminalProgress::Advance(std::int64_t done) {
  if (is_terminal_) {
    const Clock::time_point now = Clock::now();
    if (now - started_ >= kPatience && now - drawn_ >= kRedraw) {
      drawn_ = now;
      bar_shown_ = true;
      Draw(done);
    }
  }
  return true;
}

void TerminalProgress::Draw(std::int64_t done) const {
  if (total_ <= 0) {
    std::fprintf(stderr, "\r%s: %lld", caption_.c_str(), static_cast<long long>(done));
    return;
  }
  const double share =
      std::clamp(static_cast<double>(done) / static_cast<double>(total_), 0.0, 1.0);
  const auto filled = static_cast<std::size_t>(share * kBarWidth);
  const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, '.');
  std::fprintf(stderr, "\r%s [%s] %3d %%", caption_.c_str(), bar.c_str(),
               static_cast<int>(share * 100));
}

}  // namespace tarnwick::cli
