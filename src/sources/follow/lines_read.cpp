#include "sources/follow/lines_read.h"

#include <functional>

#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

std::uint64_t Joined(std::uint64_t before, std::string_view line) {
  constexpr std::uint64_t kOddFactor = 0x9E3779B97F4A7C15U;  // 2^64 over the golden ratio
  return (before ^ std::hash<std::string_view>()(line)) * kOddFactor + 1;
}

/// The upper bits are those that all of the lower ones went into.
std::uint32_t Kept(std::uint64_t hash) {
  return static_cast<std::uint32_t>(hash >> 32U);
}

}  // namespace

void LinesRead::Add(std::string_view lines) {
  hashes_.resize(count_);
  LineWalker walker(lines, '\n');
  while (!walker.AtEnd()) {
    hash_ = Joined(hash_, walker.Next());
    hashes_.push_back(Kept(hash_));
  }
  count_ = hashes_.size();
}

void LinesRead::Restart() {
  count_ = 0;
  hash_ = 0;
}

std::size_t LinesRead::PassKnown(std::string_view lines) {
  LineWalker walker(lines, '\n');
  std::size_t passed = 0;
  while (!walker.AtEnd() && !AtEnd()) {
    const std::uint64_t next = Joined(hash_, walker.Next());
    if (Kept(next) != hashes_[count_]) break;
    hash_ = next;
    ++count_;
    passed = static_cast<std::size_t>(walker.Position() - lines.data());
  }
  return passed;
}

}  // namespace tarnwick
